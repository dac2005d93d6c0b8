// SPDX-License-Identifier: Apache-2.0
// Looking for directives the guard sees bytes, not characters: zero bytes are passed over, so that it reads UTF-16 as
// well.
#include "input_guard.h"

#include <cstring>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view g_svDirective = "%TAG";
constexpr size_t DirectiveMax = 1024; // bytes of one directive; a longer one serves nobody
constexpr size_t BlanksMax = 16384;   // bytes of a run of blanks and line breaks; libyaml reads parts of so many

// Whether a byte ends the line of a directive, in which only ASCII may stand.
constexpr bool IsLineEnd(unsigned char ucByte) noexcept
{
    return ucByte == '\n' || ucByte == '\r' || ucByte >= 0x80;
}

} // namespace

InputGuard::InputGuard(yaml_parser_t &stParser, const YamlLimits &stLimits) noexcept
    : m_pfnRead(stParser.read_handler), m_pReadData(stParser.read_handler_data), m_stLimits(stLimits)
{
    stParser.read_handler = Read;
    stParser.read_handler_data = this;
}

int InputGuard::Read(void *pGuard, unsigned char *pucBuffer, size_t ulSize, size_t *pulRead) noexcept
{
    auto &stGuard = *static_cast<InputGuard *>(pGuard);
    if (stGuard.m_pfnRead(stGuard.m_pReadData, pucBuffer, ulSize, pulRead) == 0)
        return 0;
    stGuard.m_uiRefusal = stGuard.Check(pucBuffer, *pulRead);
    return stGuard.m_uiRefusal == YAML_OK ? 1 : 0;
}

uint32_t InputGuard::Check(const unsigned char *pucText, size_t ulLength) noexcept
{
    if (m_ulBytes == 0 && ulLength > 0) { // by the byte order mark
        m_bUtf16 = pucText[0] >= 0xFE;
        m_bBigEndian = pucText[0] == 0xFE;
    }
    m_ulBytes += ulLength;
    if (m_ulBytes > m_stLimits.ulFileBytes) {
        const uint32_t uiCode = YAML_FAIL(YAML_ERR_NOMEM, "The file is too large. (Limit=%zu)",
                                          static_cast<size_t>(m_stLimits.ulFileBytes));
        ErrorHintAdd("a file may have %zu bytes (limit ulFileBytes)", static_cast<size_t>(m_stLimits.ulFileBytes));
        return uiCode;
    }
    if (BlanksScan(pucText, ulLength) > BlanksMax) {
        const uint32_t uiCode = YAML_FAIL(YAML_ERR_EVENT, "There are too many blanks in a row. (Limit=%zu)", BlanksMax);
        ErrorHintAdd("spaces, tabs and line breaks may come to %zu bytes in a row", BlanksMax);
        return uiCode;
    }
    DirectivesScan(pucText, ulLength);
    if (m_ulDirective > DirectiveMax) {
        const uint32_t uiCode = YAML_FAIL(YAML_ERR_EVENT, "The directive is too long. (Limit=%zu)", DirectiveMax);
        ErrorHintAdd("a %%TAG directive may have %zu bytes", DirectiveMax);
        return uiCode;
    }
    if (m_uiDirectives > m_stLimits.uiDirectives) {
        const uint32_t uiCode =
            YAML_FAIL(YAML_ERR_EVENT, "There are too many directives. (Limit=%u)", m_stLimits.uiDirectives);
        ErrorHintAdd("a file may have %u %%TAG directives (limit uiDirectives)", m_stLimits.uiDirectives);
        return uiCode;
    }
    return YAML_OK;
}

// Whether a byte belongs to a blank or a line break of YAML 1.1, by the bytes around it; at the border of a part,
// whether it may.
bool InputGuard::IsBlank(const unsigned char *pucText, size_t ulLength, size_t ulAt) const noexcept
{
    const auto Is = [=](size_t ul, auto... Bytes) { return ul >= ulLength || ((pucText[ul] == Bytes) || ...); };
    if (m_bUtf16)
        return IsBlankUnit(pucText, ulLength, ulAt);
    switch (pucText[ulAt]) {
    case ' ':
    case '\t':
    case '\n':
    case '\r':
        return true;
    case 0xC2: // NEL is C2 85, LS and PS are E2 80 A8 and E2 80 A9; before the first byte stands number -1
        return Is(ulAt + 1, 0x85);
    case 0x85:
        return Is(ulAt - 1, 0xC2);
    case 0xE2:
        return Is(ulAt + 1, 0x80) && Is(ulAt + 2, 0xA8, 0xA9);
    case 0x80:
        return Is(ulAt - 1, 0xE2) && Is(ulAt + 1, 0xA8, 0xA9);
    case 0xA8:
    case 0xA9:
        return Is(ulAt - 1, 0x80);
    default:
        return false;
    }
}

// The same for UTF-16, where two bytes that begin at an even place of the file are a unit.
bool InputGuard::IsBlankUnit(const unsigned char *pucText, size_t ulLength, size_t ulAt) const noexcept
{
    const size_t ulUnit = ulAt - (m_ulBytes - ulLength + ulAt) % 2; // beyond the end if it began in the part before
    if (ulUnit >= ulLength || ulUnit + 1 == ulLength)
        return true;
    const unsigned char ucLow = pucText[ulUnit + (m_bBigEndian ? 1 : 0)];
    switch (pucText[ulUnit + (m_bBigEndian ? 0 : 1)]) {
    case 0x00:
        return ucLow == ' ' || ucLow == '\t' || ucLow == '\n' || ucLow == '\r' || ucLow == 0x85;
    case 0x20:
        return ucLow == 0x28 || ucLow == 0x29;
    default:
        return false;
    }
}

// Follows a run of blanks from part to part, and tells how long one was that ends here; one within a part is short.
uint64_t InputGuard::BlanksScan(const unsigned char *pucText, size_t ulLength) noexcept
{
    size_t ulLeading = 0;
    while (ulLeading < ulLength && IsBlank(pucText, ulLength, ulLeading))
        ++ulLeading;
    m_ulBlanks += ulLeading;
    if (ulLeading == ulLength)
        return 0;
    uint64_t ulTrailing = 0;
    while (IsBlank(pucText, ulLength, ulLength - 1 - ulTrailing))
        ++ulTrailing;
    return std::exchange(m_ulBlanks, ulTrailing);
}

// Whether a line begins at a place, by the bytes before it: behind a line break of YAML 1.1 or a byte order mark. Where
// the border of a part hides some of them, it may.
bool InputGuard::IsLineStart(const unsigned char *pucText, size_t ulAt) const noexcept
{
    const auto Before = [=](size_t ulBack, unsigned char ucByte) {
        return ulBack > ulAt || pucText[ulAt - ulBack] == ucByte;
    };
    switch (ulAt > 0 ? pucText[ulAt - 1] : m_ucBefore) {
    case '\n':
    case '\r':
        return true;
    case 0x85: // NEL is C2 85
        return m_bUtf16 || Before(2, 0xC2);
    case 0xA8: // LS and PS are E2 80 A8 and E2 80 A9
    case 0xA9:
        return Before(2, 0x80) && Before(3, 0xE2);
    case 0xBF: // the byte order mark is EF BB BF
        return Before(2, 0xBB) && Before(3, 0xEF);
    case 0x20: // LS and PS in UTF-16, and its byte order marks
    case 0x28:
    case 0x29:
    case 0xFE:
    case 0xFF:
        return m_bUtf16;
    default:
        return false;
    }
}

// Counts the bytes of a directive up to the end of its line, and tells where it ends.
const unsigned char *InputGuard::DirectiveSkip(const unsigned char *puc, const unsigned char *pucEnd) noexcept
{
    for (; puc != pucEnd && !IsLineEnd(*puc); ++puc)
        m_ulDirective += *puc != 0 ? 1 : 0;
    if (puc != pucEnd && m_ulDirective <= DirectiveMax)
        m_ulDirective = 0;
    return puc;
}

void InputGuard::DirectivesScan(const unsigned char *pucText, size_t ulLength) noexcept
{
    const unsigned char *pucEnd = pucText + ulLength;
    for (const unsigned char *puc = pucText; puc != pucEnd; ++puc) {
        if (m_ulDirective != 0) {
            puc = DirectiveSkip(puc, pucEnd);
            if (puc == pucEnd || m_ulDirective != 0)
                break; // at the end of this part, or too long
        }
        if (m_ulMatched == 0) { // most of a file is passed here
            const void *pPercent = memchr(puc, '%', static_cast<size_t>(pucEnd - puc));
            if (pPercent == nullptr)
                break;
            puc = static_cast<const unsigned char *>(pPercent);
            const unsigned char *pucBefore = puc;
            while (pucBefore != pucText && pucBefore[-1] == 0)
                --pucBefore;
            m_ulMatched = IsLineStart(pucText, static_cast<size_t>(pucBefore - pucText)) ? 1 : 0;
        } else if (*puc != 0) {
            m_ulMatched = *puc == static_cast<unsigned char>(g_svDirective[m_ulMatched]) ? m_ulMatched + 1 : 0;
            if (m_ulMatched == g_svDirective.size()) {
                ++m_uiDirectives;
                m_ulDirective = m_ulMatched;
                m_ulMatched = 0;
            }
        }
    }
    while (ulLength > 0 && pucText[ulLength - 1] == 0)
        --ulLength;
    if (ulLength > 0)
        m_ucBefore = pucText[ulLength - 1];
}
