// SPDX-License-Identifier: Apache-2.0
#include "source_reader.h"

#include <cstdint>

zryaml::parse::SourceReader::SourceReader(const Source &stSource) noexcept : m_stSource(stSource)
{
    Rewind();
    const int iFirst = RawNext(), iSecond = RawNext(), iThird = RawNext();
    m_bBigEndian = iFirst == 0xFE && iSecond == 0xFF;
    m_bUtf16 = m_bBigEndian || (iFirst == 0xFF && iSecond == 0xFE);
    const int iMark = m_bUtf16 ? 2 : iFirst == 0xEF && iSecond == 0xBB && iThird == 0xBF ? 3 : 0;
    Rewind();
    for (int i = 0; i < iMark; ++i)
        (void)RawNext();
}

int zryaml::parse::SourceReader::Next() noexcept
{
    if (!m_bUtf16)
        return RawNext();
    if (m_ulGiven == m_ulLength && !CharRead())
        return EOF;
    return m_aucChar[m_ulGiven++];
}

void zryaml::parse::SourceReader::Rewind() noexcept
{
    m_ulAt = 0;
    m_bReadable = m_stSource.pstFile == nullptr || fseek(m_stSource.pstFile, 0, SEEK_SET) == 0;
}

int zryaml::parse::SourceReader::RawNext() noexcept
{
    int iByte = EOF;
    if (m_stSource.pstFile != nullptr)
        iByte = m_bReadable ? getc_unlocked(m_stSource.pstFile) : EOF;
    else if (m_ulAt < m_stSource.svText.size())
        iByte = static_cast<unsigned char>(m_stSource.svText[m_ulAt]);
    m_ulAt += iByte != EOF ? 1 : 0;
    return iByte;
}

int zryaml::parse::SourceReader::UnitNext() noexcept
{
    const int iFirst = RawNext(), iSecond = RawNext();
    if (iSecond == EOF)
        return EOF;
    return m_bBigEndian ? iFirst * 256 + iSecond : iSecond * 256 + iFirst;
}

// Reads one character of UTF-16; half a pair is one, too.
bool zryaml::parse::SourceReader::CharRead() noexcept
{
    constexpr unsigned char aucLead[] = {0, 0, 0xC0, 0xE0, 0xF0}; // by the length
    const int iUnit = UnitNext();
    auto uiChar = static_cast<uint32_t>(iUnit);
    if (iUnit == EOF)
        return false;
    if (uiChar >= 0xD800 && uiChar < 0xDC00)
        uiChar = 0x10000 + (uiChar % 0x400) * 0x400 + static_cast<uint32_t>(UnitNext()) % 0x400;
    m_ulGiven = 0;
    m_ulLength = uiChar < 0x80 ? 1 : uiChar < 0x800 ? 2 : uiChar < 0x10000 ? 3 : 4;
    for (size_t ul = m_ulLength - 1; ul > 0; --ul, uiChar /= 64)
        m_aucChar[ul] = static_cast<unsigned char>(0x80 + uiChar % 64);
    m_aucChar[0] = static_cast<unsigned char>(aucLead[m_ulLength] + uiChar);
    return true;
}
