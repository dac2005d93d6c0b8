// SPDX-License-Identifier: Apache-2.0
// Characters out of bytes, whichever form of Unicode a text has, and the places they stand at.
#pragma once

#include <cstdint>

namespace zryaml::parse {

class TextDecoder {
public:
    // Takes the next byte of a text, from its first on. Whether it ends a character; a byte order mark is none.
    [[nodiscard]] bool Take(unsigned char byte) noexcept
    {
        if (m_form == Form::Unknown)
            m_form = byte == 0xFE ? Form::BigEndian : byte == 0xFF ? Form::LittleEndian : Form::Utf8;
        const bool ends = m_form == Form::Utf8 ? TakeUtf8(byte) : TakeUtf16(byte);
        return ends && (m_character != ByteOrderMark || !m_first) && Began();
    }
    [[nodiscard]] char32_t Character() const noexcept { return m_character; }
    // Goes on with another character of the same text, which begins with the next byte.
    void Restart() noexcept
    {
        m_odd = m_first = false;
        m_missing = 0;
        m_high = 0;
    }
    [[nodiscard]] bool IsWide() const noexcept // UTF-16
    {
        return m_form == Form::LittleEndian || m_form == Form::BigEndian;
    }

private:
    enum class Form { Unknown, Utf8, LittleEndian, BigEndian };
    static constexpr char32_t ByteOrderMark = 0xFEFF, Broken = 0xFFFD;

    bool Began() noexcept
    {
        m_first = false;
        return true;
    }

    bool TakeUtf8(unsigned char byte) noexcept
    {
        if ((byte & 0xC0U) == 0x80U) {
            m_character = m_missing > 0 ? m_character << 6 | (byte & 0x3FU) : Broken;
            m_missing -= m_missing > 0 ? 1 : 0;
            return m_missing == 0;
        }
        m_missing = byte < 0xC0 ? 0 : byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
        m_character = byte & (0xFFU >> (m_missing == 0 ? 0 : m_missing + 2));
        return m_missing == 0;
    }

    bool TakeUtf16(unsigned char byte) noexcept
    {
        m_odd = !m_odd;
        if (m_odd) {
            m_half = byte;
            return false;
        }
        const char32_t unit = m_form == Form::BigEndian ? m_half << 8 | byte : char32_t{byte} << 8 | m_half;
        const bool low = unit >= 0xDC00 && unit < 0xE000;
        m_character = low && m_high != 0 ? 0x10000 + (m_high % 0x400) * 0x400 + unit % 0x400 : unit;
        m_high = unit >= 0xD800 && unit < 0xDC00 ? unit : 0;
        return m_high == 0;
    }

    Form m_form = Form::Unknown;
    bool m_first = true; // no character has come yet
    bool m_odd = false;  // half of a unit of UTF-16 has come, or
    int m_missing = 0;   // so many bytes of a character are to come
    char32_t m_character = 0, m_half = 0, m_high = 0;
};

[[nodiscard]] constexpr bool IsLineBreak(char32_t character) noexcept // of YAML 1.1
{
    return character == '\n' || character == '\r' || character == 0x85 || character == 0x2028 || character == 0x2029;
}

struct Place { // both from 1
    uint32_t line = 0, column = 0;
    constexpr bool operator==(const Place &) const noexcept = default;
};

// Counts lines and columns as libyaml does.
class PlaceCounter {
public:
    void Take(char32_t character) noexcept
    {
        if (character == '\n' && m_last == '\r')
            ; // one break of two characters
        else if (IsLineBreak(character))
            m_place = {m_place.line + 1, 1};
        else
            ++m_place.column;
        m_last = character;
    }
    // Of the next character.
    [[nodiscard]] Place At() const noexcept { return m_place; }

private:
    Place m_place = {1, 1};
    char32_t m_last = 0;
};

} // namespace zryaml::parse
