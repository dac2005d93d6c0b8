// SPDX-License-Identifier: Apache-2.0
// Reads a source a second time, to tell what is wrong in it.
#pragma once

#include "source.h"
#include "text_decoder.h"

#include <array>

namespace zryaml::parse {

// Gives a source character by character from its start, up to a number of bytes; nothing if it cannot be read twice.
class SourceReader {
public:
    static constexpr char32_t End = UINT32_MAX;

    explicit SourceReader(const Source &source, uint64_t bytes = UINT64_MAX) noexcept : m_source(source), m_bytes(bytes)
    {}
    // The next character, or End.
    [[nodiscard]] char32_t Next() noexcept;
    // Bytes of the source that have been read.
    [[nodiscard]] uint64_t At() const noexcept { return m_at; }

private:
    const Source &m_source;
    uint64_t m_bytes;
    uint64_t m_at = 0;
    TextDecoder m_decoder;
    std::array<unsigned char, 4096> m_part; // bytes of the source read at once
    size_t m_given = 0, m_length = 0;       // those of them that are given, and all
};

} // namespace zryaml::parse
