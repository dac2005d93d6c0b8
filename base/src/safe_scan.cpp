// SPDX-License-Identifier: Apache-2.0
//
// Bounds-checked reading. The C library's sscanf will not do: it lets a number that does not fit overflow, and writes a
// word of any length.

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstring>

#include "zr_safe.h"

namespace {

enum class Step {
    Stored,   // one more value
    Passed,   // matched, does not count
    Mismatch, // the text has something else
    End,      // the text has ended
    Refused,  // an argument is NULL
};

struct Scan {
    const char *pcText; // start of the text
    const char *at;     // next character to read
    va_list stArgs;
};

struct Number {
    uint64_t value; // NumberMax: too large for any type
    bool isNegative;
    bool hasDigits;
};

constexpr uint64_t NumberMax = uint64_t{1} << 40U;

[[nodiscard]] bool IsSpace(char one) noexcept
{
    return one == ' ' || (one >= '\t' && one <= '\r');
}

void SpaceSkip(Scan &scan) noexcept
{
    while (IsSpace(*scan.at))
        ++scan.at;
}

// Every '%' must begin a conversion that this reader knows, so that a format is refused before anything is stored.
[[nodiscard]] bool IsKnown(const char *format) noexcept
{
    for (; *format != '\0'; ++format)
        if (*format == '%' && (*++format == '\0' || strchr("dux%scn", *format) == nullptr))
            return false;
    return true;
}

[[nodiscard]] uint32_t DigitOf(char one) noexcept
{
    if (one >= '0' && one <= '9')
        return static_cast<uint32_t>(one - '0');
    const char lower = static_cast<char>(one | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<uint32_t>(lower - 'a') + 10 : UINT32_MAX;
}

[[nodiscard]] Number NumberRead(const char *&at, uint32_t base) noexcept
{
    Number number{0, *at == '-', false};
    if (*at == '-' || *at == '+')
        ++at;
    if (base == 16 && at[0] == '0' && (at[1] == 'x' || at[1] == 'X'))
        at += 2;
    for (; DigitOf(*at) < base; ++at) {
        number.value = std::min(number.value * base + DigitOf(*at), NumberMax);
        number.hasDigits = true;
    }
    return number;
}

[[nodiscard]] Step IntScan(Scan &scan) noexcept
{
    int *piDest = va_arg(scan.stArgs, int *);
    if (piDest == nullptr)
        return Step::Refused;
    const Number number = NumberRead(scan.at, 10);
    const auto iValue = static_cast<int64_t>(number.value) * (number.isNegative ? -1 : 1);
    if (!number.hasDigits || iValue < INT_MIN || iValue > INT_MAX)
        return Step::Mismatch;
    *piDest = static_cast<int>(iValue);
    return Step::Stored;
}

[[nodiscard]] Step UnsignedScan(Scan &scan, uint32_t base) noexcept
{
    auto *puiDest = va_arg(scan.stArgs, unsigned *);
    if (puiDest == nullptr)
        return Step::Refused;
    const Number number = NumberRead(scan.at, base);
    if (!number.hasDigits || number.value > (number.isNegative ? 0 : UINT_MAX))
        return Step::Mismatch;
    *puiDest = static_cast<unsigned>(number.value);
    return Step::Stored;
}

[[nodiscard]] Step WordScan(Scan &scan) noexcept
{
    char *dest = va_arg(scan.stArgs, char *);
    const unsigned size = va_arg(scan.stArgs, unsigned);
    if (dest == nullptr)
        return Step::Refused;
    const char *word = scan.at;
    while (*scan.at != '\0' && !IsSpace(*scan.at))
        ++scan.at;
    const auto length = static_cast<size_t>(scan.at - word);
    const bool fits = length < size;
    if (fits)
        memcpy(dest, word, length);
    if (size != 0)
        dest[fits ? length : 0] = '\0';
    return fits ? Step::Stored : Step::Mismatch;
}

[[nodiscard]] Step CharScan(Scan &scan) noexcept
{
    char *dest = va_arg(scan.stArgs, char *);
    const unsigned size = va_arg(scan.stArgs, unsigned);
    if (dest == nullptr)
        return Step::Refused;
    if (size == 0)
        return Step::Mismatch;
    *dest = *scan.at++;
    return Step::Stored;
}

[[nodiscard]] Step CountStore(Scan &scan) noexcept
{
    int *piDest = va_arg(scan.stArgs, int *);
    if (piDest == nullptr)
        return Step::Refused;
    *piDest = static_cast<int>(std::min<ptrdiff_t>(scan.at - scan.pcText, INT_MAX));
    return Step::Passed;
}

[[nodiscard]] Step LiteralScan(Scan &scan, char expected) noexcept
{
    if (*scan.at == '\0')
        return Step::End;
    if (*scan.at != expected)
        return Step::Mismatch;
    ++scan.at;
    return Step::Passed;
}

[[nodiscard]] Step ConversionScan(Scan &scan, char kind) noexcept
{
    if (kind == 'n')
        return CountStore(scan);
    if (kind != 'c')
        SpaceSkip(scan);
    if (*scan.at == '\0')
        return Step::End;
    switch (kind) {
    case 'd':
        return IntScan(scan);
    case 'u':
        return UnsignedScan(scan, 10);
    case 'x':
        return UnsignedScan(scan, 16);
    case 's':
        return WordScan(scan);
    case 'c':
        return CharScan(scan);
    default:
        return LiteralScan(scan, kind);
    }
}

[[nodiscard]] int FormatScan(Scan &scan, const char *format) noexcept
{
    int stored = 0;
    for (; *format != '\0'; ++format) {
        Step step = Step::Passed;
        if (IsSpace(*format))
            SpaceSkip(scan);
        else if (*format == '%')
            step = ConversionScan(scan, *++format);
        else
            step = LiteralScan(scan, *format);

        if (step == Step::Refused || (step == Step::End && stored == 0))
            return -1;
        if (step == Step::End || step == Step::Mismatch)
            return stored;
        stored += step == Step::Stored ? 1 : 0;
    }
    return stored;
}

} // namespace

int sscanf_s(const char *pcText, const char *pcFormat, ...)
{
    if (pcText == nullptr || pcFormat == nullptr || !IsKnown(pcFormat))
        return -1;
    Scan scan{.pcText = pcText, .at = pcText, .stArgs = {}};
    va_start(scan.stArgs, pcFormat);
    const int stored = FormatScan(scan, pcFormat);
    va_end(scan.stArgs);
    return stored;
}
