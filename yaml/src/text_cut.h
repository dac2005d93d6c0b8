// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstring>

namespace zryaml {

// Ends a text that was cut to fit its buffer with "...", and before a character rather than inside one.
inline void CutMark(char *text, size_t size) noexcept
{
    size_t end = size - 4;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;
    memcpy(text + end, "...", 4);
}

} // namespace zryaml
