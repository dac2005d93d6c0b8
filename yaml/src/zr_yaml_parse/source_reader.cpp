// SPDX-License-Identifier: Apache-2.0
#include "source_reader.h"

char32_t zryaml::parse::SourceReader::Next() noexcept
{
    while (m_at < m_bytes) {
        if (m_given == m_length) {
            m_given = 0;
            m_length = m_source.ReadAgain(m_at, m_part.data(), m_part.size());
            if (m_length == 0)
                break;
        }
        ++m_at;
        if (m_decoder.Take(m_part[m_given++]))
            return m_decoder.Character();
    }
    return End;
}
