// SPDX-License-Identifier: Apache-2.0
// Stands between libyaml and what it reads: refuses a file that is too large, has too many or too long %TAG directives,
// or too many blanks in a row, as its bytes arrive, before they are parsed. libyaml's time grows with the square of the
// number of directives, with their length times the number of tags, and with the longest run of blanks in a text times
// the number of its words, because it wipes its buffer for blanks at each.
#pragma once

#include "parse_internal.h"

#include <yaml.h>

namespace zryaml::parse {

class InputGuard {
public:
    // Puts itself in front of the reader that the parser has been given. Must live as long as the parser reads.
    InputGuard(yaml_parser_t &stParser, const YamlLimits &stLimits) noexcept;
    InputGuard(const InputGuard &) = delete;
    InputGuard &operator=(const InputGuard &) = delete;

    // The code of the refusal, which has been logged; 0 if there was none.
    [[nodiscard]] uint32_t Refusal() const noexcept { return m_uiRefusal; }

private:
    static int Read(void *pGuard, unsigned char *pucBuffer, size_t ulSize, size_t *pulRead) noexcept;
    [[nodiscard]] uint64_t BlanksScan(const unsigned char *pucText, size_t ulLength) noexcept;
    [[nodiscard]] bool IsBlank(const unsigned char *pucText, size_t ulLength, size_t ulAt) const noexcept;
    [[nodiscard]] bool IsBlankUnit(const unsigned char *pucText, size_t ulLength, size_t ulAt) const noexcept;
    void DirectivesScan(const unsigned char *pucText, size_t ulLength) noexcept;
    [[nodiscard]] const unsigned char *DirectiveSkip(const unsigned char *puc, const unsigned char *pucEnd) noexcept;
    [[nodiscard]] bool IsLineStart(const unsigned char *pucText, size_t ulAt) const noexcept;
    [[nodiscard]] uint32_t Check(const unsigned char *pucText, size_t ulLength) noexcept;

    yaml_read_handler_t *m_pfnRead; // libyaml's own
    void *m_pReadData;
    const YamlLimits &m_stLimits;
    uint64_t m_ulBytes = 0;
    uint64_t m_ulBlanks = 0; // in a row, up to the end of the part before
    uint32_t m_uiDirectives = 0;
    uint32_t m_uiRefusal = YAML_OK;
    size_t m_ulMatched = 0;          // characters of "%TAG" seen
    size_t m_ulDirective = 0;        // bytes of the directive at hand, 0 outside
    unsigned char m_ucBefore = '\n'; // the last byte of the part before
    bool m_bUtf16 = false;
    bool m_bBigEndian = false;
};

} // namespace zryaml::parse
