// SPDX-License-Identifier: Apache-2.0
// The command line, read.
#pragma once

#include "command.h"

namespace zryaml::cli {

struct Invocation {
    Command pfnRun = nullptr; // NULL: only stText is to be written
    Options stOptions;
    std::string stText; // help or version
};

// Reads the command line without the program's name; throws a Failure for wrong use.
[[nodiscard]] Invocation CommandLineRead(const std::vector<std::string> &astArgument);

} // namespace zryaml::cli
