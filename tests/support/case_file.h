// SPDX-License-Identifier: Apache-2.0
// Reads a file of cases, whose form cases/README.md describes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct CaseStep {
    size_t ulLine = 0;
    std::string operation, argument;
    std::vector<std::string> expected; // lines
    bool bExpects = false;             // something is said of the outcome
};

std::vector<CaseStep> CaseFileRead(std::string_view text);

// Puts a byte in the place of each escape.
std::string Unescaped(const std::string &text);
// The other way round: whatever is no printable ASCII character becomes an escape.
std::string Printable(std::string_view text);
std::string Replaced(std::string text, std::string_view what, std::string_view by);
