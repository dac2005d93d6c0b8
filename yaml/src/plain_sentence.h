// SPDX-License-Identifier: Apache-2.0
// What a failure is called for people: one plain sentence, and the way out where it is always the same.
#pragma once

#include <cstdint>

namespace zryaml {

struct PlainSentence {    // printf-style, with the first arguments of the log record that they stand for
    const char *sentence; // NULL: nothing better is known than the record
    const char *pcHint;   // never NULL
};

// By code and format of the log record.
[[nodiscard]] PlainSentence PlainSentenceFind(uint32_t code, const char *record) noexcept;

} // namespace zryaml
