// SPDX-License-Identifier: Apache-2.0
// --redact: which texts are printed as ***, in results and in diagnostics.
#pragma once

#include "report.h"

#include <string_view>
#include <unordered_set>
#include <zr_yaml.hpp>

namespace zryaml::cli {

// A key path whose components may be patterns: * is any part of a key, or alone any key or index; ** any number of
// components; brackets stand for themselves.
class PathPattern {
public:
    // Throws a Failure if the text is malformed: a pattern that hides nothing would be found out too late.
    explicit PathPattern(std::string_view text);

    using Components = std::vector<std::string>; // '.' and a key, or '[' and an index
    [[nodiscard]] bool matches(const Components &path) const;
    [[nodiscard]] bool matches(std::string_view path) const;
    // From now on an index fits any index.
    void indices_widen();

private:
    Components components_;
};

[[nodiscard]] std::vector<PathPattern> patterns_read(const std::vector<std::string> &texts);

// What is hidden in a document: values on matching paths, and what was interpolated from them.
class Redactor {
public:
    Redactor(const std::vector<std::string> &patterns, const Value &root);

    [[nodiscard]] bool hides(const Value &value) const { return hidden_.count(value.node()) != 0; }
    // The text of a scalar as it may be shown.
    [[nodiscard]] std::string_view text(const Value &scalar) const
    {
        return hides(scalar) ? mark : scalar.text().value_or("");
    }

    static constexpr std::string_view mark = "***";

private:
    void matching_hide(const std::vector<PathPattern> &patterns, const Value &value, PathPattern::Components &path);
    void referring_hide(const Value &root);

    std::unordered_set<const YamlListNode *> hidden_;
};

// A log record up to the first thing that could be a text of a document.
[[nodiscard]] std::string record_redacted(std::string_view record);
// A diagnostic without hidden texts: nothing about the text of a hidden value, and nothing that is quoted from a
// document that could not be loaded, whose paths are not known.
[[nodiscard]] Diagnostic redacted(Diagnostic diagnostic, const std::vector<PathPattern> &patterns);

} // namespace zryaml::cli
