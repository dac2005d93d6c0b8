// SPDX-License-Identifier: Apache-2.0
// Writes key paths, so that a lookup finds again what they are of.
#include "query_internal.h"

using namespace zryaml;
using namespace zryaml::query;

namespace zryaml {

void PathWriter::Put(char character) noexcept
{
    if (m_length + 1 < m_size)
        m_buffer[m_length] = character;
    ++m_length;
}

void PathWriter::KeyPut(std::string_view key) noexcept
{
    if (m_length > 0)
        Put('.');
    if (key.empty()) { // the only form of an empty name that may end a path
        Put('{');
        Put('}');
    }
    for (const char character : key) {
        if (IsPathSyntax(character))
            Put('\\');
        Put(character);
    }
}

void PathWriter::IndexPut(uint64_t index) noexcept
{
    char digits[sizeof("[18446744073709551615]")];
    (void)snprintf(digits, sizeof(digits), "[%llu]", static_cast<unsigned long long>(index));
    for (const char *digit = digits; *digit != '\0'; ++digit)
        Put(*digit);
}

size_t PathWriter::End() noexcept
{
    if (m_size > 0)
        m_buffer[m_length < m_size ? m_length : m_size - 1] = '\0';
    return m_length;
}

void PathPut(const YamlListNode &value, PathWriter &path) noexcept
{
    const YamlListNode *father = value.pstFather;
    if (father == nullptr)
        return;
    PathPut(*father, path);
    if (father->uiDataType == YAML_DATATYPE_SEQ)
        path.IndexPut(value.uPlace.uiNumber);
    else if (father->uiDataType == YAML_DATATYPE_MAP && father->pstFather != nullptr) // not the root
        path.KeyPut(value.pcValue);
}

} // namespace zryaml

uint32_t ZRYAML_ValuePathGet(const YamlListNode *pstValue, uint32_t uiBufSize, char *pcBuf)
{
    PathWriter path(pcBuf, uiBufSize);
    if (pstValue != nullptr)
        PathPut(*pstValue, path);
    return static_cast<uint32_t>(path.End());
}
