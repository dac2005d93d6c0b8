// SPDX-License-Identifier: Apache-2.0
// The command line, read.
#pragma once

#include "command.h"

namespace zryaml::cli {

struct Invocation {
    const Command *command = nullptr; // NULL: only the text is to be written
    Options options;
    std::string text; // help or version
};

// Reads the command line without the program's name; throws a Failure for wrong use.
[[nodiscard]] Invocation command_line_read(const std::vector<std::string> &arguments);

} // namespace zryaml::cli
