// SPDX-License-Identifier: Apache-2.0
//
// Bounds-checked filling and copying.

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>

#include "safe_size.h"
#include "zr_safe.h"

namespace {

// Whether two ranges of memory overlap.
[[nodiscard]] bool IsOverlap(const char *one, size_t oneSize, const char *other, size_t otherSize) noexcept
{
    const auto at = reinterpret_cast<uintptr_t>(one);
    const auto otherAt = reinterpret_cast<uintptr_t>(other);
    return at < otherAt + otherSize && otherAt < at + oneSize;
}

[[nodiscard]] int Refuse(char *dest, int code) noexcept
{
    *dest = '\0';
    return code;
}

} // namespace

int memset_s(void *pDest, size_t ulDestMax, int iValue, size_t ulCount)
{
    if (pDest == nullptr)
        return EINVAL;
    if (ulDestMax > zr::SafeSizeMax)
        return ERANGE;
    memset(pDest, iValue, std::min(ulCount, ulDestMax));
    __asm__ volatile("" : : "r"(pDest) : "memory"); // the compiler must not drop the filling
    return ulCount > ulDestMax ? ERANGE : 0;
}

int strncpy_s(char *pcDest, size_t ulDestMax, const char *pcSource, size_t ulCount)
{
    if (pcDest == nullptr || ulDestMax == 0)
        return EINVAL;
    if (ulDestMax > zr::SafeSizeMax)
        return ERANGE;
    if (pcSource == nullptr)
        return Refuse(pcDest, EINVAL);
    if (ulCount > zr::SafeSizeMax)
        return Refuse(pcDest, ERANGE);
    const size_t ulLength = strnlen(pcSource, std::min(ulCount, ulDestMax));
    if (ulLength == ulDestMax)
        return Refuse(pcDest, ERANGE);
    const size_t read = ulLength < ulCount ? ulLength + 1 : ulLength; // the NUL is read too, if there is one
    if (IsOverlap(pcDest, ulLength + 1, pcSource, read))
        return Refuse(pcDest, EINVAL);
    memcpy(pcDest, pcSource, ulLength);
    pcDest[ulLength] = '\0';
    return 0;
}
