// SPDX-License-Identifier: Apache-2.0
// The scans see characters, but only those that can matter: a run of blanks that is too long does not fit into one
// part, so what begins and ends a part is decoded, and what stands around a '%'.
#include "input_guard.h"

#include <algorithm>
#include <cstring>
#include <string_view>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

using zryaml::parse::IsLineBreak;

constexpr std::string_view Directive = "%TAG";
constexpr size_t DirectiveMax = 1024; // characters of one directive; no legitimate one is longer
constexpr size_t BlanksMax = 16384;   // bytes of a run of blanks and line breaks; libyaml reads parts of so many

constexpr bool IsBlank(char32_t character) noexcept
{
    return character == ' ' || character == '\t' || IsLineBreak(character);
}

// Whether a byte can belong to a blank, in any form of Unicode.
constexpr bool IsBlankByte(unsigned char byte) noexcept
{
    return std::string_view("\0\t\n\r ()\x80\x85\xA8\xA9\xC2\xE2", 13).find(static_cast<char>(byte)) !=
           std::string_view::npos;
}

// Where the bytes begin that may all belong to the blanks at the end of a part.
size_t TrailingBlanks(const unsigned char *part, size_t length) noexcept
{
    while (length > 0 && IsBlankByte(part[length - 1]))
        --length;
    return length;
}

} // namespace

namespace zryaml::parse {

InputGuard::InputGuard(yaml_parser_t &parser, const YamlLimits &limits) noexcept
    : m_read(parser.read_handler), m_readData(parser.read_handler_data), m_limits(limits)
{
    parser.read_handler = Read;
    parser.read_handler_data = this;
}

int InputGuard::Read(void *guard, unsigned char *buffer, size_t size, size_t *length) noexcept
{
    auto &self = *static_cast<InputGuard *>(guard);
    if (self.m_read(self.m_readData, buffer, size, length) == 0)
        return 0;
    self.m_refusal = self.Check(buffer, *length);
    self.m_bytes += *length;
    return self.m_refusal == YAML_OK ? 1 : 0;
}

uint32_t InputGuard::Check(const unsigned char *part, size_t length) noexcept
{
    const auto limit = static_cast<size_t>(m_limits.ulFileBytes);
    if (m_bytes + length <= limit)
        return Scan(part, length);
    m_refusedAt = limit;
    return YAML_FAIL(YAML_ERR_NOMEM, "The file is too large. (Limit=%zu)", limit);
}

uint32_t InputGuard::Scan(const unsigned char *part, size_t length) noexcept
{
    const size_t blanks = TrailingBlanks(part, length);
    size_t percent = 0; // the next one, or the end
    uint32_t result = YAML_OK;
    for (size_t at = 0; at < length && result == YAML_OK;) {
        if (percent <= at && IsIdle()) {
            const void *found = memchr(part + at, '%', length - at);
            percent = found != nullptr ? static_cast<size_t>(static_cast<const unsigned char *>(found) - part) : length;
        }
        const size_t next = IsIdle() ? StartBefore(part, std::min(percent, blanks)) : at;
        if (next > at) { // nothing matters in between
            at = next;
            m_end = m_bytes + at;
            m_decoder.Restart();
        }
        m_whole = m_decoder.Take(part[at++]);
        if (m_whole)
            result = Take(m_decoder.Character(), m_bytes + at);
    }
    return result;
}

// Where a character begins so far before a place in a part that at least one whole character fits between.
size_t InputGuard::StartBefore(const unsigned char *part, size_t at) const noexcept
{
    if (m_decoder.IsWide()) {
        at -= std::min<size_t>(at, (m_bytes + at) % 2 + 2);
        return at;
    }
    for (int back = 0; at > 0 && back < 4; ++back) {
        if ((part[--at] & 0xC0U) != 0x80U)
            break;
    }
    return at;
}

uint32_t InputGuard::Take(char32_t character, uint64_t end) noexcept
{
    const uint64_t begin = m_end;
    m_end = end;
    const uint32_t result = BlanksTake(character, begin, end);
    return result != YAML_OK ? result : DirectiveTake(character, begin);
}

uint32_t InputGuard::BlanksTake(char32_t character, uint64_t begin, uint64_t end) noexcept
{
    if (IsBlank(character)) {
        m_blanks += end - begin;
        return YAML_OK;
    }
    if (m_blanks > BlanksMax) {
        m_refusedAt = begin - m_blanks;
        return YAML_FAIL(YAML_ERR_EVENT, "There are too many blanks in a row. (Limit=%zu)", BlanksMax);
    }
    m_blanks = 0;
    return YAML_OK;
}

// A directive is all ASCII; a text line that begins with "%TAG" counts too.
uint32_t InputGuard::DirectiveTake(char32_t character, uint64_t begin) noexcept
{
    constexpr char32_t ByteOrderMark = 0xFEFF; // libyaml takes one at the beginning of any line
    const bool lineStart = IsLineBreak(m_last) || m_last == ByteOrderMark;
    m_last = character;
    if (m_directive != 0) {
        m_directive = IsLineBreak(character) || character >= 0x80 ? 0 : m_directive + 1;
    } else if (m_matched != 0 || (character == '%' && lineStart)) {
        m_directiveAt = m_matched == 0 ? begin : m_directiveAt;
        m_matched = character == static_cast<unsigned char>(Directive[m_matched]) ? m_matched + 1 : 0;
        if (m_matched == Directive.size()) {
            ++m_directives;
            m_directive = m_matched;
            m_matched = 0;
        }
    }
    m_refusedAt = m_directiveAt;
    if (m_directive > DirectiveMax)
        return YAML_FAIL(YAML_ERR_EVENT, "The directive is too long. (Limit=%zu)", DirectiveMax);
    if (m_directives > m_limits.uiDirectives)
        return YAML_FAIL(YAML_ERR_EVENT, "There are too many directives. (Limit=%u)", m_limits.uiDirectives);
    return YAML_OK;
}

} // namespace zryaml::parse
