// SPDX-License-Identifier: Apache-2.0
// What is told of a wrong command line.
#pragma once

#include "command_table.h"
#include "failure.h"

namespace zryaml::cli {

// The failure of a command line. Names what was not expected if there is such an argument, else gives the message;
// without a command NULL stands for it.
[[nodiscard]] Failure usage_failure(const Command *command, const std::vector<std::string> &unexpected,
                                    std::string message);

} // namespace zryaml::cli
