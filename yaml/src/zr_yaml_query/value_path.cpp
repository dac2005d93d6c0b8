// SPDX-License-Identifier: Apache-2.0
// The key path of a value, written so that a lookup finds it again.
#include "query_internal.h"

namespace {

class PathText { // counts what does not fit
public:
    PathText(char *pcBuf, uint32_t uiSize) noexcept : m_pcBuf(pcBuf), m_uiSize(uiSize) {}

    void Put(char cChar) noexcept
    {
        if (m_uiLength + 1 < m_uiSize)
            m_pcBuf[m_uiLength] = cChar;
        ++m_uiLength;
    }
    void Put(const char *pcText) noexcept
    {
        for (; *pcText != '\0'; ++pcText)
            Put(*pcText);
    }
    [[nodiscard]] uint32_t End() noexcept
    {
        if (m_uiSize > 0)
            m_pcBuf[m_uiLength < m_uiSize ? m_uiLength : m_uiSize - 1] = '\0';
        return m_uiLength;
    }
    [[nodiscard]] bool IsEmpty() const noexcept { return m_uiLength == 0; }

private:
    char *m_pcBuf;
    uint32_t m_uiSize;
    uint32_t m_uiLength = 0;
};

void NamePut(const char *pcName, PathText &stPath) noexcept
{
    if (!stPath.IsEmpty())
        stPath.Put('.');
    if (*pcName == '\0')
        stPath.Put("{}"); // the only form of an empty name that may end a path
    for (; *pcName != '\0'; ++pcName) {
        if (IsMetaChar(*pcName))
            stPath.Put('\\');
        stPath.Put(*pcName);
    }
}

void IndexPut(const YamlListNode &stElement, PathText &stPath) noexcept
{
    char acDigits[sizeof("[4294967295]")];
    (void)snprintf(acDigits, sizeof(acDigits), "[%u]", stElement.uPlace.uiNumber);
    stPath.Put(acDigits);
}

// Writes the path down to a node; a value has the path of its key.
void PathPut(const YamlListNode &stNode, PathText &stPath) noexcept
{
    const YamlListNode *pstFather = stNode.pstFather;
    if (pstFather == nullptr)
        return;
    PathPut(*pstFather, stPath);
    if (pstFather->uiDataType == YAML_DATATYPE_SEQ)
        IndexPut(stNode, stPath);
    else if (pstFather->uiDataType == YAML_DATATYPE_MAP && pstFather->pstFather != nullptr) // not the root
        NamePut(stNode.pcValue, stPath);
}

} // namespace

uint32_t ZRYAML_ValuePathGet(const YamlListNode *pstValue, uint32_t uiBufSize, char *pcBuf)
{
    PathText stPath(pcBuf, uiBufSize);
    if (pstValue != nullptr)
        PathPut(*pstValue, stPath);
    return stPath.End();
}
