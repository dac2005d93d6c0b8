// SPDX-License-Identifier: Apache-2.0
//
// Bounds-checked formatting.

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>

#include "safe_size.h"
#include "zr_safe.h"

namespace {

// Whether a format stores through an argument (%n). Flags, numbers and a modifier may stand between '%' and 'n'.
[[nodiscard]] bool IsStoring(const char *format) noexcept
{
    while ((format = strchr(format, '%')) != nullptr) {
        format += 1 + strspn(format + 1, "-+ #'I.*$0123456789hlLqjzt");
        if (*format == 'n')
            return true;
        if (*format == '%')
            ++format;
    }
    return false;
}

} // namespace

int vsnprintf_s(char *pcDest, size_t ulDestMax, size_t ulCount, const char *pcFormat, va_list stArgs)
{
    if (pcDest == nullptr || ulDestMax == 0 || ulDestMax > zr::SafeSizeMax)
        return -1;
    *pcDest = '\0';
    if (pcFormat == nullptr || ulCount > zr::SafeSizeMax || IsStoring(pcFormat))
        return -1;
    const size_t room = std::min({ulCount, ulDestMax - 1, size_t{INT_MAX - 1}});
    const int length = vsnprintf(pcDest, room + 1, pcFormat, stArgs);
    if (length < 0)
        *pcDest = '\0';
    return length >= 0 && static_cast<size_t>(length) <= room ? length : -1;
}

int snprintf_s(char *pcDest, size_t ulDestMax, size_t ulCount, const char *pcFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcFormat);
    const int length = vsnprintf_s(pcDest, ulDestMax, ulCount, pcFormat, stArgs);
    va_end(stArgs);
    return length;
}
