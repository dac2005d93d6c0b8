// SPDX-License-Identifier: Apache-2.0
// From FILE, what is laid over it, and PATH to a value; and from what the library says about a mistake to a Failure
// with its exit status.
#pragma once

#include "failure.h"
#include "redact.h"

#include <zr_yaml.hpp>

namespace zryaml::cli {

// A document as a command sees it. Values belong to it.
class OpenDocument {
public:
    // Loads a file, or standard input for "-", and lays over it what the options name; throws a Failure that tells
    // unreadable from invalid. Warnings and notes of a success are kept.
    OpenDocument(const Options &options, const std::string &file);
    // As above for the only file of a command; warnings and notes are told beside the result.
    explicit OpenDocument(const Options &options);

    // The value at the path that is asked for, which may be absent, or the top one without a path; throws a Failure if
    // the path is malformed.
    [[nodiscard]] Value find() const;
    // As above, for a value that must be there.
    [[nodiscard]] Value require() const;
    // As above, for the map or sequence that a listing command looks below.
    [[nodiscard]] Value collection() const;

    [[nodiscard]] Value root() const { return document_.root(); }
    [[nodiscard]] const Document &document() const noexcept { return document_; }
    // The text of a scalar as it may be shown.
    [[nodiscard]] std::string_view text(const Value &scalar) const { return redactor_.text(scalar); }
    [[nodiscard]] const Redactor &redactor() const noexcept { return redactor_; }
    [[nodiscard]] const std::vector<Diagnostic> &remarks() const noexcept { return remarks_; }
    // A warning about a value, of the code for texts that are no value.
    [[nodiscard]] Diagnostic remark(const Value &value, std::string message) const;

private:
    const Options &options_;
    std::vector<Diagnostic> remarks_;
    Document document_;
    Redactor redactor_;
};

} // namespace zryaml::cli
