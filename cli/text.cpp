// SPDX-License-Identifier: Apache-2.0
// Decodes UTF-8 strictly: no overlong form, no surrogate, nothing above U+10FFFF.
#include "text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <wchar.h>

namespace zryaml::cli {

namespace {

struct Lead { // first bytes, their number of continuation bytes, and the least code that needs as many
    uint8_t ucMask, ucBits;
    size_t ulFollowing;
    char32_t uiLeast;
};
constexpr std::array g_astLead = {
    Lead{0x80, 0x00, 0, 0},
    Lead{0xE0, 0xC0, 1, 0x80},
    Lead{0xF0, 0xE0, 2, 0x800},
    Lead{0xF8, 0xF0, 3, 0x10000},
};

std::optional<char32_t> Decode(std::string_view svText, const Lead &stLead)
{
    if (svText.size() <= stLead.ulFollowing)
        return std::nullopt;
    char32_t uiCode = static_cast<uint8_t>(svText[0]) & static_cast<uint8_t>(~stLead.ucMask);
    for (size_t ul = 1; ul <= stLead.ulFollowing; ++ul) {
        const auto ucByte = static_cast<uint8_t>(svText[ul]);
        if ((ucByte & 0xC0U) != 0x80U)
            return std::nullopt;
        uiCode = (uiCode << 6U) | (ucByte & 0x3FU);
    }
    const bool bSurrogate = uiCode >= 0xD800 && uiCode <= 0xDFFF;
    return uiCode < stLead.uiLeast || uiCode > 0x10FFFF || bSurrogate ? std::nullopt : std::optional(uiCode);
}

struct CodeRange {
    char32_t uiFirst, uiLast;
};
constexpr std::array g_astHidden = {
    CodeRange{0x00, 0x1F},     CodeRange{0x7F, 0x9F},     CodeRange{0x200E, 0x200F},
    CodeRange{0x2028, 0x202E}, CodeRange{0x2066, 0x2069}, CodeRange{0xFEFF, 0xFEFF},
};

} // namespace

Character CharacterFirst(std::string_view svText)
{
    const auto ucFirst = static_cast<uint8_t>(svText.front());
    for (const Lead &stLead : g_astLead) {
        if ((ucFirst & stLead.ucMask) != stLead.ucBits)
            continue;
        const std::optional<char32_t> stCode = Decode(svText, stLead);
        return {stCode, svText.substr(0, stCode ? stLead.ulFollowing + 1 : 1)};
    }
    return {std::nullopt, svText.substr(0, 1)};
}

bool IsHidden(const Character &stCharacter)
{
    return !stCharacter.stCode || std::ranges::any_of(g_astHidden, [&](const CodeRange &stRange) {
        return *stCharacter.stCode >= stRange.uiFirst && *stCharacter.stCode <= stRange.uiLast;
    });
}

std::string EscapeOf(const Character &stCharacter)
{
    const uint32_t uiCode = stCharacter.stCode.value_or(static_cast<uint8_t>(stCharacter.svBytes.front()));
    switch (stCharacter.stCode.value_or(0)) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    char acEscape[16];
    (void)snprintf(acEscape, sizeof(acEscape), uiCode < 0x80 || !stCharacter.stCode ? "\\x%02x" : "\\u%04x", uiCode);
    return acEscape;
}

std::string VisibleText(std::string_view svText)
{
    std::string stVisible;
    while (!svText.empty()) {
        const Character stCharacter = CharacterFirst(svText);
        stVisible += IsHidden(stCharacter) ? EscapeOf(stCharacter) : std::string(stCharacter.svBytes);
        svText.remove_prefix(stCharacter.svBytes.size());
    }
    return stVisible;
}

std::string ValidText(std::string_view svText)
{
    std::string stValid;
    while (!svText.empty()) {
        const Character stCharacter = CharacterFirst(svText);
        stValid += stCharacter.stCode ? stCharacter.svBytes : "\xEF\xBF\xBD";
        svText.remove_prefix(stCharacter.svBytes.size());
    }
    return stValid;
}

size_t WidthOf(const Character &stCharacter)
{
    const int iWidth = stCharacter.stCode ? wcwidth(static_cast<wchar_t>(*stCharacter.stCode)) : -1;
    return iWidth < 0 ? 1 : static_cast<size_t>(iWidth);
}

} // namespace zryaml::cli
