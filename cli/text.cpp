// SPDX-License-Identifier: Apache-2.0
// What a character is, is asked of utf8proc, which decodes strictly.
#include "text.h"

#include <cstdio>
#include <utf8proc.h>

namespace zryaml::cli {

namespace {

constexpr int32_t zero_width_non_joiner = 0x200C; // these two shape letters and emoji
constexpr int32_t zero_width_joiner = 0x200D;

} // namespace

Character character_first(std::string_view text) noexcept
{
    utf8proc_int32_t code = -1;
    const utf8proc_ssize_t length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t *>(text.data()),
                                                     static_cast<utf8proc_ssize_t>(text.size()), &code);
    return length > 0 ? Character{code, text.substr(0, static_cast<size_t>(length))} : Character{-1, text.substr(0, 1)};
}

bool is_hidden(const Character &character) noexcept
{
    if (character.code < 0)
        return true;
    switch (utf8proc_category(character.code)) {
    case UTF8PROC_CATEGORY_CC:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
        return true;
    case UTF8PROC_CATEGORY_CF:
        return utf8proc_charwidth(character.code) == 0 && character.code != zero_width_non_joiner &&
               character.code != zero_width_joiner;
    default:
        return false;
    }
}

std::string escape_of(const Character &character)
{
    if (character.bytes == "\n")
        return "\\n";
    if (character.bytes == "\r")
        return "\\r";
    if (character.bytes == "\t")
        return "\\t";
    const bool byte = character.code < 0x80;
    const auto code = static_cast<uint32_t>(character.code);
    char escape[16];
    (void)snprintf(escape, sizeof(escape),
                   byte             ? "\\x%02x"
                   : code <= 0xFFFF ? "\\u%04x"
                                    : "\\U%08x",
                   byte ? static_cast<unsigned char>(character.bytes.front()) : code);
    return escape;
}

std::string visible_text(std::string_view text)
{
    std::string visible;
    while (!text.empty()) {
        const Character character = character_first(text);
        if (is_hidden(character))
            visible += escape_of(character);
        else
            visible += character.bytes;
        text.remove_prefix(character.bytes.size());
    }
    return visible;
}

std::string valid_text(std::string_view text)
{
    std::string valid;
    while (!text.empty()) {
        const Character character = character_first(text);
        valid += character.code >= 0 ? character.bytes : "\xEF\xBF\xBD";
        text.remove_prefix(character.bytes.size());
    }
    return valid;
}

size_t width_of(const Character &character) noexcept
{
    return character.code < 0 ? 1 : static_cast<size_t>(utf8proc_charwidth(character.code));
}

} // namespace zryaml::cli
