// SPDX-License-Identifier: Apache-2.0
// A second, plain reading of a document from libyaml's events, to compare the library with: recursive, built on
// standard containers, and without a line shared with the library. It knows no limits: ask it only of documents that
// the library does not refuse for one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

struct ReferenceResult {
    uint32_t uiCode = 0; // 0, or the code that the first error of the log must carry
    std::string text;    // what TreeText must give for a document that loads
};

ReferenceResult ReferenceLoad(std::string_view document);
