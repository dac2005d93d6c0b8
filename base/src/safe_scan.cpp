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
    const char *pcAt;   // next character to read
    va_list stArgs;
};

struct Number {
    uint64_t ulValue; // NumberMax: too large for any type
    bool bMinus;
    bool bDigits;
};

constexpr uint64_t NumberMax = uint64_t{1} << 40U;

[[nodiscard]] bool IsSpace(char cOne) noexcept
{
    return cOne == ' ' || (cOne >= '\t' && cOne <= '\r');
}

void SpaceSkip(Scan &stScan) noexcept
{
    while (IsSpace(*stScan.pcAt))
        ++stScan.pcAt;
}

// Every '%' must begin a conversion that this reader knows, so that a format is refused before anything is stored.
[[nodiscard]] bool IsKnown(const char *pcFormat) noexcept
{
    for (; *pcFormat != '\0'; ++pcFormat)
        if (*pcFormat == '%' && (*++pcFormat == '\0' || strchr("dux%scn", *pcFormat) == nullptr))
            return false;
    return true;
}

[[nodiscard]] uint32_t DigitOf(char cOne) noexcept
{
    if (cOne >= '0' && cOne <= '9')
        return static_cast<uint32_t>(cOne - '0');
    const char cLower = static_cast<char>(cOne | 0x20);
    return cLower >= 'a' && cLower <= 'f' ? static_cast<uint32_t>(cLower - 'a') + 10 : UINT32_MAX;
}

[[nodiscard]] Number NumberRead(const char *&pcAt, uint32_t uiBase) noexcept
{
    Number stNumber{0, *pcAt == '-', false};
    if (*pcAt == '-' || *pcAt == '+')
        ++pcAt;
    if (uiBase == 16 && pcAt[0] == '0' && (pcAt[1] == 'x' || pcAt[1] == 'X'))
        pcAt += 2;
    for (; DigitOf(*pcAt) < uiBase; ++pcAt) {
        stNumber.ulValue = std::min(stNumber.ulValue * uiBase + DigitOf(*pcAt), NumberMax);
        stNumber.bDigits = true;
    }
    return stNumber;
}

[[nodiscard]] Step IntScan(Scan &stScan) noexcept
{
    int *piDest = va_arg(stScan.stArgs, int *);
    if (piDest == nullptr)
        return Step::Refused;
    const Number stNumber = NumberRead(stScan.pcAt, 10);
    const auto iValue = static_cast<int64_t>(stNumber.ulValue) * (stNumber.bMinus ? -1 : 1);
    if (!stNumber.bDigits || iValue < INT_MIN || iValue > INT_MAX)
        return Step::Mismatch;
    *piDest = static_cast<int>(iValue);
    return Step::Stored;
}

[[nodiscard]] Step UnsignedScan(Scan &stScan, uint32_t uiBase) noexcept
{
    auto *puiDest = va_arg(stScan.stArgs, unsigned *);
    if (puiDest == nullptr)
        return Step::Refused;
    const Number stNumber = NumberRead(stScan.pcAt, uiBase);
    if (!stNumber.bDigits || stNumber.ulValue > (stNumber.bMinus ? 0 : UINT_MAX))
        return Step::Mismatch;
    *puiDest = static_cast<unsigned>(stNumber.ulValue);
    return Step::Stored;
}

[[nodiscard]] Step WordScan(Scan &stScan) noexcept
{
    char *pcDest = va_arg(stScan.stArgs, char *);
    const unsigned uiSize = va_arg(stScan.stArgs, unsigned);
    if (pcDest == nullptr)
        return Step::Refused;
    const char *pcWord = stScan.pcAt;
    while (*stScan.pcAt != '\0' && !IsSpace(*stScan.pcAt))
        ++stScan.pcAt;
    const auto ulLength = static_cast<size_t>(stScan.pcAt - pcWord);
    const bool bFits = ulLength < uiSize;
    if (bFits)
        memcpy(pcDest, pcWord, ulLength);
    if (uiSize != 0)
        pcDest[bFits ? ulLength : 0] = '\0';
    return bFits ? Step::Stored : Step::Mismatch;
}

[[nodiscard]] Step CharScan(Scan &stScan) noexcept
{
    char *pcDest = va_arg(stScan.stArgs, char *);
    const unsigned uiSize = va_arg(stScan.stArgs, unsigned);
    if (pcDest == nullptr)
        return Step::Refused;
    if (uiSize == 0)
        return Step::Mismatch;
    *pcDest = *stScan.pcAt++;
    return Step::Stored;
}

[[nodiscard]] Step CountStore(Scan &stScan) noexcept
{
    int *piDest = va_arg(stScan.stArgs, int *);
    if (piDest == nullptr)
        return Step::Refused;
    *piDest = static_cast<int>(std::min<ptrdiff_t>(stScan.pcAt - stScan.pcText, INT_MAX));
    return Step::Passed;
}

[[nodiscard]] Step LiteralScan(Scan &stScan, char cExpected) noexcept
{
    if (*stScan.pcAt == '\0')
        return Step::End;
    if (*stScan.pcAt != cExpected)
        return Step::Mismatch;
    ++stScan.pcAt;
    return Step::Passed;
}

[[nodiscard]] Step ConversionScan(Scan &stScan, char cKind) noexcept
{
    if (cKind == 'n')
        return CountStore(stScan);
    if (cKind != 'c')
        SpaceSkip(stScan);
    if (*stScan.pcAt == '\0')
        return Step::End;
    switch (cKind) {
    case 'd':
        return IntScan(stScan);
    case 'u':
        return UnsignedScan(stScan, 10);
    case 'x':
        return UnsignedScan(stScan, 16);
    case 's':
        return WordScan(stScan);
    case 'c':
        return CharScan(stScan);
    default:
        return LiteralScan(stScan, cKind);
    }
}

[[nodiscard]] int FormatScan(Scan &stScan, const char *pcFormat) noexcept
{
    int iStored = 0;
    for (; *pcFormat != '\0'; ++pcFormat) {
        Step eStep = Step::Passed;
        if (IsSpace(*pcFormat))
            SpaceSkip(stScan);
        else if (*pcFormat == '%')
            eStep = ConversionScan(stScan, *++pcFormat);
        else
            eStep = LiteralScan(stScan, *pcFormat);

        if (eStep == Step::Refused || (eStep == Step::End && iStored == 0))
            return -1;
        if (eStep == Step::End || eStep == Step::Mismatch)
            return iStored;
        iStored += eStep == Step::Stored ? 1 : 0;
    }
    return iStored;
}

} // namespace

int sscanf_s(const char *pcText, const char *pcFormat, ...)
{
    if (pcText == nullptr || pcFormat == nullptr || !IsKnown(pcFormat))
        return -1;
    Scan stScan{.pcText = pcText, .pcAt = pcText, .stArgs = {}};
    va_start(stScan.stArgs, pcFormat);
    const int iStored = FormatScan(stScan, pcFormat);
    va_end(stScan.stArgs);
    return iStored;
}
