// SPDX-License-Identifier: Apache-2.0
// Finds what a formatted key path names, and explains why nothing is found.
#include "key_query.h"
#include "../value_lookup.h"
#include "quick_find.h"

using namespace zryaml;
using namespace zryaml::query;
// The format was checked where the caller wrote it; here it is handed on with its arguments.
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

// cppcheck-suppress uninitMemberVar ; the path is made when it is first needed
KeyQuery::KeyQuery(YamlHandle &stHandle, const char *pcKeyFormat, va_list stArgs) noexcept
    : m_stHandle(stHandle), m_pcKeyFormat(pcKeyFormat)
{
    va_copy(m_stArgs, stArgs);
}

uint32_t KeyQuery::PathMake() noexcept
{
    if (m_bPath)
        return YAML_OK;
    m_bPath = true;
    return PathFormat(m_acPath, m_pcKeyFormat, m_stArgs);
}

void KeyQuery::Explain() noexcept
{
    (void)PathMake();
    ErrorKeyPathAdd(m_acPath);
    ErrorFileAdd(ZRYAML_NameGet(&m_stHandle));
}

// Where nothing is found, what typed reads say of the path is said as well.
void KeyQuery::PathExplain() noexcept
{
    const PathEnd stEnd = PathFollow(ZRYAML_RootGet(&m_stHandle), m_acPath);
    if (stEnd.code != YAML_OK) {
        PathEndExplain(stEnd);
    } else { // lookups by format take no index behind '}'
        ErrorSentence("nothing is found by this key path");
        ErrorHintAdd("write a key with backslashes, as in a\\.b[0], where an index follows it");
    }
}

void KeyQuery::NodeExplain(const YamlListNode &stNode, const char *pcWanted) noexcept
{
    const YamlListNode *pstValue = m_uiIndexed == 1 ? &stNode : FirstChild(stNode);
    if (pstValue != nullptr)
        KindExplain(*pstValue, pcWanted);
    else if (PathMake() == YAML_OK) // the path ends with the text of a scalar, which is no key
        PathExplain();
    Explain();
}

Found KeyQuery::NodeFind() noexcept
{
    YamlListNode *pstNode = QuickFind(m_stHandle, m_pcKeyFormat, m_stArgs, m_uiIndexed);
    const Found stFound = pstNode != nullptr ? Found{pstNode, YAML_OK} : OrdinaryFind();
    if (stFound.pstNode != nullptr)
        ReadMark(*stFound.pstNode);
    return stFound;
}

Found KeyQuery::OrdinaryFind() noexcept
{
    m_uiIndexed = 0;
    Found stFound = {nullptr, PathMake()};
    if (stFound.uiCode == YAML_OK) {
        stFound = PathWalk(m_stHandle, m_acPath, m_uiIndexed);
        if (stFound.pstNode == nullptr)
            PathExplain();
    }
    if (stFound.pstNode == nullptr)
        Explain();
    return stFound;
}

uint32_t KeyQuery::ValueFind(const YamlListNode *&pstValue) noexcept
{
    const Found stFound = NodeFind();
    if (stFound.pstNode == nullptr)
        return stFound.uiCode;
    pstValue = m_uiIndexed == 1 ? stFound.pstNode : FirstChild(*stFound.pstNode);
    if (pstValue != nullptr)
        return YAML_OK;
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "There is not any data in the child list.");
    NodeExplain(*stFound.pstNode, "");
    return YAML_ERR_EMPTY;
}

uint32_t KeyQuery::Read(const YamlListNode *&pstValue) noexcept
{
    const YamlListNode *pstNode = QuickFind(m_stHandle, m_pcKeyFormat, m_stArgs, m_uiIndexed);
    const YamlListNode *pstFound = pstNode == nullptr || m_uiIndexed == 1 ? pstNode : FirstChild(*pstNode);
    if (pstFound != nullptr) {
        ReadMark(*pstFound);
        pstValue = pstFound;
        return YAML_OK;
    }
    return OrdinaryRead(pstValue);
}

uint32_t KeyQuery::OrdinaryRead(const YamlListNode *&pstValue) noexcept
{
    if (const uint32_t uiCode = PathMake(); uiCode != YAML_OK) {
        Explain();
        return uiCode;
    }
    const PathEnd stEnd = PathFollow(ZRYAML_RootGet(&m_stHandle), m_acPath);
    if (stEnd.code == YAML_OK) {
        ReadMark(*stEnd.value);
        pstValue = stEnd.value;
        return YAML_OK;
    }
    if (stEnd.code == YAML_ERR_NOT_FOUND)
        ErrorNote(stEnd.code, "%s", ""); // not logged
    else
        YAML_LOG(YAML_LOG_ERROR, stEnd.code, "Can not read the value with key. (Key=%s)", m_acPath);
    PathEndExplain(stEnd);
    Explain();
    return stEnd.code;
}
