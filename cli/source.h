// SPDX-License-Identifier: Apache-2.0
// The texts that documents are loaded from: standard input, and single lines of a source for diagnostics.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace zryaml::cli {

constexpr const char *g_pcInputArgument = "-";   // names standard input on the command line
constexpr const char *g_pcInputName = "<stdin>"; // and so it is called in diagnostics

// All of standard input, read when it is first asked for; throws a Failure if it cannot be read.
[[nodiscard]] const std::string &InputText();

// One line of a source, 1-based, without its end; none if the source cannot be read twice or has no such line.
[[nodiscard]] std::optional<std::string> SourceLine(const std::string &stFile, uint32_t uiLine);

} // namespace zryaml::cli
