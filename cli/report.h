// SPDX-License-Identifier: Apache-2.0
// Tells of mistakes in one of the formats that --diagnostics names; one file for each.
#pragma once

#include "failure.h"

#include <memory>

namespace zryaml::cli {

class Reporter {
public:
    virtual ~Reporter() = default;
    virtual void report(const Diagnostic &diagnostic) = 0;
    // Nothing comes any more. Left out by a command that has told nothing.
    virtual void end() {}
};

[[nodiscard]] std::unique_ptr<Reporter> text_reporter(const Options &options);
[[nodiscard]] std::unique_ptr<Reporter> json_reporter();
[[nodiscard]] std::unique_ptr<Reporter> github_reporter();
[[nodiscard]] std::unique_ptr<Reporter> sarif_reporter();

// The reporter that is asked for.
[[nodiscard]] std::unique_ptr<Reporter> reporter_make(const Options &options);
// The same for what is told beside a result: never on standard output.
[[nodiscard]] std::unique_ptr<Reporter> side_reporter_make(const Options &options);

[[nodiscard]] const char *level_name(const Diagnostic &diagnostic) noexcept;
// The code's name, such as YAML_ERR_SCANNER; "YAML_ERR_PARAM" for wrong use of the command.
[[nodiscard]] const char *rule_name(const Diagnostic &diagnostic) noexcept;
// "path: message", or the message alone if it names the value or there is no path.
[[nodiscard]] std::string sentence(const Diagnostic &diagnostic);
// What is told at the second place.
[[nodiscard]] const char *first_sentence(const Diagnostic &diagnostic) noexcept;

} // namespace zryaml::cli
