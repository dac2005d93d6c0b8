// SPDX-License-Identifier: Apache-2.0
// Formatted texts.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

namespace zryaml::bench {

// A printf-style text of at most 255 bytes.
__attribute__((format(printf, 1, 2))) [[nodiscard]] inline std::string Printed(const char *format, ...)
{
    char text[256];
    va_list values;
    va_start(values, format);
    (void)vsnprintf(text, sizeof text, format, values);
    va_end(values);
    return text;
}

} // namespace zryaml::bench
