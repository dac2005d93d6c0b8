// SPDX-License-Identifier: Apache-2.0
// Stands between libyaml and what it reads: refuses a file that is too large, has too many or too long %TAG directives,
// or too many blanks in a row, as its bytes arrive, before they are parsed. libyaml's time grows with the square of the
// number of directives, with their length times the number of tags, and with the longest run of blanks in a text times
// the number of its words, because it wipes its buffer for blanks at each.
#pragma once

#include "parse_internal.h"
#include "text_decoder.h"

#include <yaml.h>

namespace zryaml::parse {

class InputGuard {
public:
    // Wraps the reader that the parser has been given. Must live as long as the parser reads.
    InputGuard(yaml_parser_t &parser, const YamlLimits &limits) noexcept;
    InputGuard(const InputGuard &) = delete;
    InputGuard &operator=(const InputGuard &) = delete;

    // The code of the refusal, which has been logged; 0 if there was none.
    [[nodiscard]] uint32_t Refusal() const noexcept { return m_refusal; }
    // The byte of the source at which the cause of the refusal begins.
    [[nodiscard]] uint64_t RefusedAt() const noexcept { return m_refusedAt; }

private:
    static int Read(void *guard, unsigned char *buffer, size_t size, size_t *length) noexcept;
    [[nodiscard]] uint32_t Check(const unsigned char *part, size_t length) noexcept;
    [[nodiscard]] uint32_t Scan(const unsigned char *part, size_t length) noexcept;
    [[nodiscard]] size_t StartBefore(const unsigned char *part, size_t at) const noexcept;
    [[nodiscard]] uint32_t Take(char32_t character, uint64_t end) noexcept;
    [[nodiscard]] uint32_t BlanksTake(char32_t character, uint64_t begin, uint64_t end) noexcept;
    [[nodiscard]] uint32_t DirectiveTake(char32_t character, uint64_t begin) noexcept;
    // Whether the next character matters only if it is a '%'.
    [[nodiscard]] bool IsIdle() const noexcept
    {
        return m_whole && m_blanks == 0 && m_matched == 0 && m_directive == 0;
    }

    yaml_read_handler_t *m_read; // libyaml's own
    void *m_readData;
    const YamlLimits &m_limits;
    uint32_t m_refusal = YAML_OK;
    uint64_t m_refusedAt = 0;

    TextDecoder m_decoder;
    uint64_t m_bytes = 0;   // of all parts before
    uint64_t m_end = 0;     // of the last character
    bool m_whole = false;   // no character is in progress
    char32_t m_last = '\n'; // the last character
    uint64_t m_blanks = 0;  // bytes of the run of blanks that goes on
    uint32_t m_directives = 0;
    uint64_t m_directiveAt = 0;
    size_t m_matched = 0;   // characters of "%TAG" that have come
    size_t m_directive = 0; // characters of the directive that goes on; 0 outside of one
};

} // namespace zryaml::parse
