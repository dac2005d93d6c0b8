// SPDX-License-Identifier: Apache-2.0
// Reads names and indices out of a format: as they stand there, as the value of "[%u]" or of a "%s" that is a whole
// name, or put together from plain conversions. Everything else is odd.
#include "quick_find.h"
#include "value_entry.h"

#include <array>
#include <cstdarg>
#include <cstring>

using namespace zryaml;
using namespace zryaml::query;

namespace zryaml::query {
namespace {

constexpr uint32_t PlainDigits = 9; // any number of so many fits
constexpr size_t NameSize = 256;    // of a name that is put together; a longer one is odd

enum Special : uint8_t { Ordinary = 0, Syntax = 1, Conversion = 2 };

constexpr std::array<uint8_t, 256> g_special = [] {
    std::array<uint8_t, 256> special = {};
    for (const char character : {'\0', '\\', '.', '[', ']', '{', '}'})
        special[static_cast<unsigned char>(character)] = Syntax;
    special[static_cast<unsigned char>('%')] = Conversion;
    return special;
}();

// The first character that is special in this way.
const char *SpecialFind(const char *text, uint32_t mask) noexcept
{
    while ((g_special[static_cast<unsigned char>(*text)] & mask) == 0)
        ++text;
    return text;
}

class FormatReader {
public:
    // cppcheck-suppress uninitMemberVar ; a name is written before it is read
    FormatReader(const char *format, va_list arguments) noexcept : m_format(format), m_at(format)
    {
        va_copy(m_arguments, arguments);
        if (format[0] != '%' || format[1] != 's' || format[2] != '\0')
            return;
        const char *path = va_arg(m_arguments, const char *); // the argument is the path, in which '%' is ordinary
        m_format = m_at = path != nullptr ? path : "";
        m_mask = Syntax;
    }
    ~FormatReader() { va_end(m_arguments); }
    FormatReader(const FormatReader &) = delete;
    FormatReader &operator=(const FormatReader &) = delete;

    // What comes next, unchanged.
    [[nodiscard]] char Next() const noexcept { return *m_at; }
    void Skip() noexcept { ++m_at; }
    // Whether the formatted path, once all is read, is one that the ordinary lookup takes.
    [[nodiscard]] bool Fits() const noexcept { return m_at - m_format + m_longer < YAML_KEY_BUF_SIZE; }

    // Reads a name, up to a '.', a '[' or the end; empty if there is none or it is odd.
    [[nodiscard]] std::string_view Name() noexcept
    {
        const char *begin = m_at;
        m_at = SpecialFind(begin, m_mask);
        const std::string_view plain(begin, static_cast<size_t>(m_at - begin));
        return *m_at != '%' || m_mask == Syntax ? plain : NameMake(plain);
    }

    // Reads "[digits]"; false if it is anything else.
    [[nodiscard]] bool Index(uint32_t &index) noexcept
    {
        const char *digit = m_at + 1;
        if (*digit == '%' && m_mask != Syntax)
            return IndexTake(index);
        const char *first = digit;
        for (index = 0; IsDigit(*digit) && digit - first < PlainDigits; ++digit)
            index = index * 10 + static_cast<uint32_t>(*digit - '0');
        if (digit == first || *digit != ']')
            return false;
        m_at = digit + 1;
        return true;
    }

private:
    // Reads a conversion of an integer that is not negative, from its '%' on; false if it is another one.
    bool NumberTake(uint64_t &number) noexcept
    {
        const char *conversion = m_at + 1;
        const bool wide = *conversion == 'l' || *conversion == 'z'; // both have 64 bits
        conversion += wide ? 1 : 0;
        if (*conversion == 'u') {
            number = wide ? va_arg(m_arguments, unsigned long) : va_arg(m_arguments, unsigned);
        } else if (*conversion == 'd') {
            const int64_t value = wide ? va_arg(m_arguments, long) : va_arg(m_arguments, int);
            if (value < 0)
                return false;
            number = static_cast<uint64_t>(value);
        } else {
            return false;
        }
        m_longer -= conversion + 1 - m_at;
        m_at = conversion + 1;
        return true;
    }

    bool IndexTake(uint32_t &index) noexcept
    {
        uint64_t number = 0;
        ++m_at;
        if (!NumberTake(number) || number > INT32_MAX || *m_at != ']')
            return false;
        ++m_at;
        m_longer += 10; // its digits, at most
        index = static_cast<uint32_t>(number);
        return true;
    }

    // Reads a "%s"; false if its text is empty or has characters that would be path syntax.
    bool TextTake(std::string_view &text) noexcept
    {
        const char *begin = va_arg(m_arguments, const char *);
        if (begin == nullptr)
            return false;
        const char *end = SpecialFind(begin, Syntax);
        text = {begin, static_cast<size_t>(end - begin)};
        m_at += 2;
        m_longer += end - begin - 2;
        return *end == '\0' && end != begin;
    }

    bool Append(std::string_view text) noexcept
    {
        if (text.size() > NameSize - m_length)
            return false;
        memcpy(m_name + m_length, text.data(), text.size());
        m_length += text.size();
        return true;
    }

    bool AppendNumber() noexcept
    {
        uint64_t number = 0;
        if (!NumberTake(number))
            return false;
        char digits[20];
        size_t first = sizeof(digits);
        do
            digits[--first] = static_cast<char>('0' + number % 10);
        while ((number /= 10) != 0);
        m_longer += static_cast<ptrdiff_t>(sizeof(digits) - first);
        return Append({digits + first, sizeof(digits) - first});
    }

    // Makes a name whose plain beginning has been read, up to its first conversion.
    std::string_view NameMake(std::string_view part) noexcept
    {
        m_length = 0;
        for (bool made = Append(part); made;) {
            const char *begin = m_at;
            if (*begin == '%' && begin[1] == 's') {
                if (!TextTake(part))
                    return {};
                if (m_length == 0 && (*m_at == '.' || *m_at == '[' || *m_at == '\0'))
                    return part; // the whole name
                made = Append(part);
            } else if (*begin == '%') {
                made = AppendNumber();
            } else {
                m_at = SpecialFind(begin, Syntax | Conversion);
                if (m_at == begin)
                    return {m_name, m_length};
                made = Append({begin, static_cast<size_t>(m_at - begin)});
            }
        }
        return {};
    }

    const char *m_format;
    const char *m_at;
    uint32_t m_mask = Syntax | Conversion;
    va_list m_arguments;
    ptrdiff_t m_longer = 0; // how much what has been read gets longer when it is formatted
    size_t m_length = 0;    // of the name put together
    char m_name[NameSize];
};

YamlListNode *ElementAt(const YamlListNode &sequence, uint32_t index) noexcept
{
    for (YamlListNode &element : NodeRange(sequence.stChildList, NodeLink::Seq)) {
        if (index-- == 0)
            return &element;
    }
    return nullptr;
}

} // namespace

YamlListNode *QuickFind(YamlHandle &handle, const char *keyFormat, va_list arguments, uint32_t &indexed) noexcept
{
    FormatReader reader(keyFormat, arguments);
    YamlListNode *node = &handle.stRoot;
    YamlListNode *value = FirstChild(*node); // of the key or element found so far
    uint32_t type = node->uiDataType;        // of the value
    for (;;) {
        if (value == nullptr)
            return nullptr;
        indexed = reader.Next() == '[' ? 1 : 0;
        if (indexed != 0) {
            uint32_t index = 0;
            if (type != YAML_DATATYPE_SEQ || !reader.Index(index))
                return nullptr;
            node = value = ElementAt(*value, index);
            type = node != nullptr ? node->uiDataType : YAML_DATATYPE_NONE;
        } else {
            const std::string_view name = reader.Name();
            if (type != YAML_DATATYPE_MAP || name.empty())
                return nullptr;
            node = KeyFind(*value, name);
            value = node != nullptr ? FirstChild(*node) : nullptr;
            type = node != nullptr ? node->uiNextLevelType : YAML_DATATYPE_NONE;
        }
        const char next = node != nullptr ? reader.Next() : ']';
        if (next == '\0')
            return reader.Fits() ? node : nullptr;
        if (next == '.')
            reader.Skip();
        if ((next != '.' && next != '[') || (next == '.' && reader.Next() == '['))
            return nullptr;
    }
}

} // namespace zryaml::query
