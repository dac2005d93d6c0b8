// SPDX-License-Identifier: Apache-2.0
// A second, plain reading of a document from libyaml's events, to compare the library with: recursive, built on
// standard containers, and without a line shared with the library.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The document is larger than the reference wants to expand; nothing is said about it.
constexpr uint32_t REFERENCE_TOO_LARGE = 0xFFFFFFFFU;

struct ReferenceResult {
    uint32_t uiCode = 0; // 0, the code that the first error of the log must carry, or REFERENCE_TOO_LARGE
    std::string text;    // what TreeText must give for a document that loads
};

ReferenceResult ReferenceLoad(std::string_view document);
