// SPDX-License-Identifier: Apache-2.0
// Source lines with *** in the place of what --redact hides.
#pragma once

#include "redact.h"
#include "source_window.h"

#include <compare>
#include <map>

namespace zryaml::cli {

// What is hidden lies from the place of a hidden value to that of the next key or value, whatever is written there:
// quotes, further lines, comments. Paths are those of the source by itself, so that neither layers nor a stack that
// could not be loaded matter. A source that is no document by itself has no paths, and so no lines that may be shown.
class ExcerptMask {
public:
    explicit ExcerptMask(const Options &options);

    // As source_window, with what is hidden masked; none as well if it is not known what that is.
    [[nodiscard]] std::optional<SourceWindow> window(const std::string &file, uint32_t line, uint32_t column);

private:
    struct Mark { // where a key or a value begins
        uint32_t line, column;
        bool hidden;
        auto operator<=>(const Mark &) const = default;
    };
    struct Source {
        std::string text;
        std::vector<Mark> marks; // in the order of the text; none: nothing may be shown
    };

    const Source &source(const std::string &file);
    void value_mark(Source &source, const Value &value, PathPattern::Components &path) const;
    void entries_mark(Source &source, const Value &value, PathPattern::Components &path) const;
    [[nodiscard]] bool hides(const Value &value, const PathPattern::Components &path) const;
    [[nodiscard]] static bool is_hidden(const Source &source, uint32_t line, uint32_t column);

    std::vector<PathPattern> patterns_;
    bool expand_;
    bool merge_forms_;
    std::map<std::string, Source> sources_; // each is read once: what is masked is what was looked at
};

} // namespace zryaml::cli
