// SPDX-License-Identifier: Apache-2.0
// Reads a source a second time, to tell what is wrong in it.
#pragma once

#include "load_explain.h"

#include <array>

namespace zryaml::parse {

// Gives a source from its start, byte by byte, as UTF-8 without a byte order mark, whichever form of Unicode it has;
// nothing if it cannot be read twice.
class SourceReader {
public:
    explicit SourceReader(const Source &stSource) noexcept;

    // The next byte, or EOF.
    [[nodiscard]] int Next() noexcept;
    // Bytes of the source itself that have been given; a character of UTF-16 counts once it is given whole.
    [[nodiscard]] size_t At() const noexcept { return m_ulGiven == m_ulLength ? m_ulAt : m_ulAt - 1; }

private:
    void Rewind() noexcept;
    [[nodiscard]] int RawNext() noexcept;
    [[nodiscard]] int UnitNext() noexcept;
    [[nodiscard]] bool CharRead() noexcept;

    const Source &m_stSource;
    size_t m_ulAt = 0;
    bool m_bReadable = true;
    bool m_bUtf16 = false;
    bool m_bBigEndian = false;
    std::array<unsigned char, 4> m_aucChar = {}; // one character of UTF-16 as UTF-8
    size_t m_ulGiven = 0, m_ulLength = 0;        // bytes of it
};

} // namespace zryaml::parse
