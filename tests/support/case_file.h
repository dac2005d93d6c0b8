// SPDX-License-Identifier: Apache-2.0
// Reads a file of cases. Each step is a line that begins with an operation; case_test.cpp lists them.
//
//     get a.b c.d => =x           the operation, its argument, and after " => " what it must give
//     load a: &x 1\nb: *X => 2 19000013 The alias has not defined. (Alias=X) | at 2:4 ...
//                                 " | " stands between the lines of an outcome
//     load                        "| " begins a further line of an argument,
//     | a: [1, 2]                 two spaces begin a further line of an outcome
//       {a:[1 2]}
//     let GONE 1 19000003 Can not find the yaml node with key. (Key=$)
//                                 names lines of outcomes; GONE(x) is the text with x in the place of the $
//
// In arguments and outcomes "\(3 k#,)" stands for "k0,k1,k2,"; in arguments also \n \t \r \0 \\ and \xHH for one byte.
// A line that begins with '#', and an empty one, is for the reader.
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
std::string Unescaped(std::string_view text);
// The other way round: whatever is no printable ASCII character becomes an escape.
std::string Printable(std::string_view text);
std::string Replaced(std::string text, std::string_view what, std::string_view by);
