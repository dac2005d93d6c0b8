// SPDX-License-Identifier: Apache-2.0
// Standard input, which a document and the excerpts of its diagnostics are both read from.
#pragma once

#include <string>

namespace zryaml::cli {

constexpr const char *input_argument = "-";   // names standard input on the command line
constexpr const char *input_name = "<stdin>"; // and so it is called in diagnostics

// All of standard input, read when it is first asked for; throws a Failure if it cannot be read.
[[nodiscard]] const std::string &input_text();

} // namespace zryaml::cli
