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
constexpr std::string_view g_cut = "...";

struct Utf8 {
    uint32_t uiCode;
    size_t ulLength; // 0: malformed
};

// Reads the first character of a text that is not empty. Overlong forms and surrogates are malformed.
[[nodiscard]] Utf8 Utf8Get(std::string_view text) noexcept
{
    constexpr uint32_t g_least[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto lead = static_cast<unsigned char>(text.front());
    const auto ones = static_cast<size_t>(std::countl_one(lead));
    const size_t length = std::max<size_t>(ones, 1);
    if (ones == 1 || ones > 4 || length > text.size())
        return {};
    uint32_t code = lead & (ones == 0 ? 0x7FU : 0x7FU >> ones);
    for (const char next : text.substr(1, length - 1)) {
        if ((static_cast<unsigned char>(next) & 0xC0U) != 0x80U)
            return {};
        code = code << 6U | (static_cast<unsigned char>(next) & 0x3FU);
    }
    if (code < g_least[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return {};
    return {code, length};
}

[[nodiscard]] bool IsPrintable(uint32_t code) noexcept
{
    return code >= 0x20 && (code < 0x7F || code > 0x9F) && code != 0x2028 && code != 0x2029;
}

// What is written for the first character: the character itself, or its escape, which is put into escape.
[[nodiscard]] std::string_view CharacterOf(std::string_view text, Utf8 character, std::span<char, 8> escape) noexcept
{
    if (character.ulLength != 0 && IsPrintable(character.uiCode))
        return text.substr(0, character.ulLength);
    switch (character.uiCode) {
    case '\n':
        return "\\n";
    case '\t':
        return "\\t";
    case '\r':
        return "\\r";
    default:
        break;
    }
    const bool isByte = character.ulLength < 2;
    const unsigned shown = isByte ? static_cast<unsigned char>(text.front()) : character.uiCode;
    const int length = snprintf(escape.data(), escape.size(), isByte ? "\\x%02x" : "\\u%04x", shown);
    return {escape.data(), static_cast<size_t>(length)};
}

// Writes the escaped text and a NUL. If it does not fit, or isCut, it ends with the mark of a cut.
void EscapeTo(std::span<char> out, std::string_view text, bool isCut) noexcept
{
    const size_t room = out.size() - g_cut.size() - 1;
    char escape[8];
    size_t used = 0;
    while (!text.empty()) {
        const Utf8 character = Utf8Get(text);
        const std::string_view piece = CharacterOf(text, character, escape);
        if (used + piece.size() > room) {
            isCut = true;
            break;
        }
        used += piece.copy(&out[used], piece.size());
        text.remove_prefix(std::max<size_t>(character.ulLength, 1));
    }
    if (isCut)
        used += g_cut.copy(&out[used], g_cut.size());
    out[used] = '\0';
}

} // namespace

zr::LogText::LogText(const char *format, va_list arguments) noexcept
{
    TextRoom<512> rawRoom;
    std::span<char> room = rawRoom.Get(0);
    va_list again;
    va_copy(again, arguments);
    const int length = vsnprintf(room.data(), room.size(), format, arguments);
    const size_t ulLength = length < 0 ? 0 : static_cast<size_t>(length);
    if (ulLength >= room.size()) {
        room = rawRoom.Get(std::min(ulLength, TextMax) + 1);
        (void)vsnprintf(room.data(), room.size(), format, again);
    }
    va_end(again);

    const std::string_view raw = length < 0 ? format : room.data();
    const std::span<char> out = m_room.Get(raw.size() * EscapeMax + g_cut.size() + 1);
    EscapeTo(out, raw, ulLength > raw.size());
    m_text = out.data();
}
