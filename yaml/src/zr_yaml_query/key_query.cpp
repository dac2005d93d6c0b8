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
KeyQuery::KeyQuery(YamlHandle &handle, const char *keyFormat, va_list arguments) noexcept
    : m_handle(handle), m_keyFormat(keyFormat)
{
    va_copy(m_args, arguments);
}

uint32_t KeyQuery::PathMake() noexcept
{
    if (m_hasPath)
        return YAML_OK;
    m_hasPath = true;
    return PathFormat(m_path, m_keyFormat, m_args);
}

void KeyQuery::Explain() noexcept
{
    (void)PathMake();
    ErrorKeyPathAdd(m_path);
    ErrorFileAdd(ZRYAML_NameGet(&m_handle));
}

// Where nothing is found, what typed reads say of the path is said as well.
void KeyQuery::PathExplain() noexcept
{
    const PathEnd end = PathFollow(ZRYAML_RootGet(&m_handle), m_path);
    if (end.code != YAML_OK) {
        PathEndExplain(end);
    } else { // lookups by format take no index behind '}'
        ErrorSentence("nothing is found by this key path");
        ErrorHintAdd("write a key with backslashes, as in a\\.b[0], where an index follows it");
    }
}

void KeyQuery::NodeExplain(const YamlListNode &node, const char *wanted) noexcept
{
    const YamlListNode *value = m_indexed == 1 ? &node : FirstChild(node);
    if (value != nullptr)
        KindExplain(*value, wanted);
    else if (PathMake() == YAML_OK) // the path ends with the text of a scalar, which is no key
        PathExplain();
    Explain();
}

Found KeyQuery::NodeFind() noexcept
{
    YamlListNode *node = QuickFind(m_handle, m_keyFormat, m_args, m_indexed);
    const Found found = node != nullptr ? Found{node, YAML_OK} : OrdinaryFind();
    if (found.pstNode != nullptr)
        ReadMark(*found.pstNode);
    return found;
}

Found KeyQuery::OrdinaryFind() noexcept
{
    m_indexed = 0;
    Found found = {nullptr, PathMake()};
    if (found.uiCode == YAML_OK) {
        found = PathWalk(m_handle, m_path, m_indexed);
        if (found.pstNode == nullptr)
            PathExplain();
    }
    if (found.pstNode == nullptr)
        Explain();
    return found;
}

uint32_t KeyQuery::ValueFind(const YamlListNode *&value) noexcept
{
    const Found found = NodeFind();
    if (found.pstNode == nullptr)
        return found.uiCode;
    value = m_indexed == 1 ? found.pstNode : FirstChild(*found.pstNode);
    if (value != nullptr)
        return YAML_OK;
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "There is not any data in the child list.");
    NodeExplain(*found.pstNode, "");
    return YAML_ERR_EMPTY;
}

uint32_t KeyQuery::Read(const YamlListNode *&value) noexcept
{
    const YamlListNode *node = QuickFind(m_handle, m_keyFormat, m_args, m_indexed);
    const YamlListNode *found = node == nullptr || m_indexed == 1 ? node : FirstChild(*node);
    if (found != nullptr) {
        ReadMark(*found);
        value = found;
        return YAML_OK;
    }
    return OrdinaryRead(value);
}

uint32_t KeyQuery::OrdinaryRead(const YamlListNode *&pstValue) noexcept
{
    if (const uint32_t uiCode = PathMake(); uiCode != YAML_OK) {
        Explain();
        return uiCode;
    }
    const PathEnd end = PathFollow(ZRYAML_RootGet(&m_handle), m_path);
    if (end.code == YAML_OK) {
        ReadMark(*end.value);
        pstValue = end.value;
        return YAML_OK;
    }
    if (end.code == YAML_ERR_NOT_FOUND)
        ErrorNote(end.code, "%s", ""); // not logged
    else
        YAML_LOG(YAML_LOG_ERROR, end.code, "Can not read the value with key. (Key=%s)", m_path);
    PathEndExplain(end);
    Explain();
    return end.code;
}
