// SPDX-License-Identifier: Apache-2.0
// Reads by key path, other than the text of a scalar and the size of a sequence: kind, place and value.
#include "key_query.h"
// The format was checked where the caller wrote it; here it is handed on with its arguments.
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

KeyQuery::KeyQuery(YamlHandle &stHandle, const char *pcKeyFormat, va_list stArgs) noexcept
    : m_stHandle(stHandle), m_pcKeyFormat(pcKeyFormat)
{
    va_copy(m_stArgs, stArgs);
}

KeyQuery::~KeyQuery()
{
    if (ErrorIsSet()) {
        char acPath[YAML_KEY_BUF_SIZE]; // formatted once more: the lookup has cut its copy into pieces
        const bool bFormatted = vsnprintf(acPath, sizeof(acPath), m_pcKeyFormat, m_stArgs) >= 0; // maybe cut
        ErrorKeyPathAdd(bFormatted ? acPath : m_pcKeyFormat);
        ErrorFileAdd(ZRYAML_NameGet(&m_stHandle));
    }
    va_end(m_stArgs);
}

YamlListNode *KeyQuery::Find() noexcept
{
    va_list stArgs;
    va_copy(stArgs, m_stArgs);
    YamlListNode *pstNode = yaml_NodeGetByKey(&m_stHandle, &m_uiIndexed, m_pcKeyFormat, stArgs);
    va_end(stArgs);
    if (pstNode != nullptr)
        ReadMark(*pstNode);
    return pstNode;
}

namespace {

const YamlListNode *ValueFind(YamlHandle *pstHandle, const char *pcKeyFormat, va_list stArgs) noexcept
{
    ErrorClear();
    if (pstHandle == nullptr || pcKeyFormat == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "The parameter is null.");
        return nullptr;
    }
    KeyQuery stQuery(*pstHandle, pcKeyFormat, stArgs);
    YamlListNode *pstNode = stQuery.Find();
    if (pstNode == nullptr || stQuery.Indexed() == 1)
        return pstNode;
    const YamlListNode *pstValue = FirstChild(*pstNode);
    if (pstValue == nullptr) // the path ends with the text of a scalar, which is no key
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "There is not any data in the child list.");
    return pstValue;
}

} // namespace

const YamlListNode *ZRYAML_ValueFind(YamlHandle *pstHandle, const char *pcKeyFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    const YamlListNode *pstValue = ValueFind(pstHandle, pcKeyFormat, stArgs);
    va_end(stArgs);
    return pstValue;
}

const YamlListNode *ZRYAML_PathFind(YamlHandle *pstHandle, const char *pcKeyPath)
{
    return ZRYAML_ValueFind(pstHandle, pcKeyPath != nullptr ? "%s" : nullptr, pcKeyPath);
}

uint32_t ZRYAML_TypeGet(YamlHandle *pstHandle, const char *pcKeyFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    const YamlListNode *pstValue = ValueFind(pstHandle, pcKeyFormat, stArgs);
    va_end(stArgs);
    return ZRYAML_ValueTypeGet(pstValue);
}

uint32_t ZRYAML_PositionGet(YamlHandle *pstHandle, uint32_t *puiLine, uint32_t *puiColumn, const char *pcKeyFormat, ...)
{
    if (puiLine == nullptr || puiColumn == nullptr)
        pstHandle = nullptr; // refused below
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    const YamlListNode *pstValue = ValueFind(pstHandle, pcKeyFormat, stArgs);
    va_end(stArgs);
    if (pstValue == nullptr)
        return ZRYAML_LastErrorGet()->uiCode;
    ZRYAML_ValuePositionGet(pstValue, puiLine, puiColumn);
    return YAML_OK;
}
