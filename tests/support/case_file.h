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

// Steps that stand together: they begin without a document, with the switch off and the usual limits.
using CaseBlock = std::vector<CaseStep>;

// A block as it stands in a file, with the names of that file in front.
struct CaseText {
    size_t ulLine = 0; // of its first step
    std::string text;
};

std::vector<CaseText> CaseFileSplit(const std::string &text);
CaseBlock CaseRead(const CaseText &stCase);

// Puts a byte in the place of each escape.
std::string Unescaped(const std::string &text);
// The other way round: whatever is no printable ASCII character becomes an escape.
std::string Printable(std::string_view text);
std::string Replaced(std::string text, std::string_view what, std::string_view by);
