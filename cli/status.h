// SPDX-License-Identifier: Apache-2.0
// The exit statuses of the command.
#pragma once

namespace zryaml::cli {

enum class Status : int {
    found = 0,   // found, or valid
    missing = 1, // nothing there, or invalid
    misuse = 2,  // wrong use, an unreadable file, or a result that could not be written
};

} // namespace zryaml::cli
