// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstring>

namespace zryaml {

// Ends a text that was cut to fit its buffer with "...", and before a character rather than inside one.
inline void CutMark(char *pcText, size_t ulSize) noexcept
{
    size_t ulEnd = ulSize - 4;
    while (ulEnd > 0 && (static_cast<unsigned char>(pcText[ulEnd]) & 0xC0U) == 0x80U)
        --ulEnd;
    memcpy(pcText + ulEnd, "...", 4);
}

} // namespace zryaml
