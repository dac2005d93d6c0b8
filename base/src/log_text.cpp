// SPDX-License-Identifier: Apache-2.0
//
// Formats and escapes the text of a log record. The result is well-formed UTF-8 without control characters, so no text
// from a file can start a line of its own or control a terminal. A text that was cut ends with "...".

#include "log_text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

constexpr size_t TextMax = 65535; // bytes of a formatted text, a bound on what one record may cost
constexpr size_t EscapeMax = 4;   // bytes that one byte may become: \x1b
constexpr std::string_view g_svCut = "...";

struct Utf8 {
    uint32_t uiCode;
    size_t ulLength; // 0: malformed
};

// Reads the first character of a text that is not empty. Overlong forms and surrogates are malformed.
[[nodiscard]] Utf8 Utf8Get(std::string_view svText) noexcept
{
    constexpr uint32_t g_auiLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto uiLead = static_cast<unsigned char>(svText.front());
    const auto ulOnes = static_cast<size_t>(std::countl_one(uiLead));
    const size_t ulLength = std::max<size_t>(ulOnes, 1);
    if (ulOnes == 1 || ulOnes > 4 || ulLength > svText.size())
        return {};
    uint32_t uiCode = uiLead & (ulOnes == 0 ? 0x7FU : 0x7FU >> ulOnes);
    for (const char cNext : svText.substr(1, ulLength - 1)) {
        if ((static_cast<unsigned char>(cNext) & 0xC0U) != 0x80U)
            return {};
        uiCode = uiCode << 6U | (static_cast<unsigned char>(cNext) & 0x3FU);
    }
    if (uiCode < g_auiLeast[ulLength] || uiCode > 0x10FFFF || (uiCode >= 0xD800 && uiCode <= 0xDFFF))
        return {};
    return {uiCode, ulLength};
}

[[nodiscard]] bool IsPrintable(uint32_t uiCode) noexcept
{
    return uiCode >= 0x20 && (uiCode < 0x7F || uiCode > 0x9F) && uiCode != 0x2028 && uiCode != 0x2029;
}

// What is written for the first character: the character itself, or its escape, which is put into acEscape.
[[nodiscard]] std::string_view CharacterOf(std::string_view svText, Utf8 stChar, std::span<char, 8> acEscape) noexcept
{
    if (stChar.ulLength != 0 && IsPrintable(stChar.uiCode))
        return svText.substr(0, stChar.ulLength);
    switch (stChar.uiCode) {
    case '\n':
        return "\\n";
    case '\t':
        return "\\t";
    case '\r':
        return "\\r";
    default:
        break;
    }
    const bool bByte = stChar.ulLength < 2;
    const unsigned uiShown = bByte ? static_cast<unsigned char>(svText.front()) : stChar.uiCode;
    const int iLength = snprintf(acEscape.data(), acEscape.size(), bByte ? "\\x%02x" : "\\u%04x", uiShown);
    return {acEscape.data(), static_cast<size_t>(iLength)};
}

// Writes the escaped text and a NUL. If it does not fit, or bCut, it ends with the mark of a cut.
void EscapeTo(std::span<char> stOut, std::string_view svText, bool bCut) noexcept
{
    const size_t ulRoom = stOut.size() - g_svCut.size() - 1;
    char acEscape[8];
    size_t ulUsed = 0;
    while (!svText.empty()) {
        const Utf8 stChar = Utf8Get(svText);
        const std::string_view svPiece = CharacterOf(svText, stChar, acEscape);
        if (ulUsed + svPiece.size() > ulRoom) {
            bCut = true;
            break;
        }
        ulUsed += svPiece.copy(&stOut[ulUsed], svPiece.size());
        svText.remove_prefix(std::max<size_t>(stChar.ulLength, 1));
    }
    if (bCut)
        ulUsed += g_svCut.copy(&stOut[ulUsed], g_svCut.size());
    stOut[ulUsed] = '\0';
}

} // namespace

zr::LogText::LogText(const char *pcFormat, va_list stArgs) noexcept
{
    TextRoom<512> stRaw;
    std::span<char> stRoom = stRaw.Get(0);
    va_list stAgain;
    va_copy(stAgain, stArgs);
    const int iLength = vsnprintf(stRoom.data(), stRoom.size(), pcFormat, stArgs);
    const size_t ulLength = iLength < 0 ? 0 : static_cast<size_t>(iLength);
    if (ulLength >= stRoom.size()) {
        stRoom = stRaw.Get(std::min(ulLength, TextMax) + 1);
        (void)vsnprintf(stRoom.data(), stRoom.size(), pcFormat, stAgain);
    }
    va_end(stAgain);

    const std::string_view svRaw = iLength < 0 ? pcFormat : stRoom.data();
    const std::span<char> stOut = m_stRoom.Get(svRaw.size() * EscapeMax + g_svCut.size() + 1);
    EscapeTo(stOut, svRaw, ulLength > svRaw.size());
    m_pcText = stOut.data();
}
