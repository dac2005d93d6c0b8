// SPDX-License-Identifier: Apache-2.0
// Finds the node that a key path names, by the generous rules of lookups by format: walks the tree from the root, one
// component at a time. It only reads the tree and allocates nothing.
#include "node_find.h"
#include "value_entry.h"

#include <cstring>

using namespace zryaml;
using namespace zryaml::query;

namespace {

#define FIND_FAIL(uiCode, ...)                    \
    Found                                         \
    {                                             \
        nullptr, YAML_FAIL((uiCode), __VA_ARGS__) \
    }

constexpr Found NotFound = {nullptr, YAML_ERR_NOT_FOUND}; // in silence

// The entry with a number, which may be no node itself; NULL past the end, or past an entry that is no node.
YamlListNode *EntryAt(const YamlListNode &seq, uint32_t index) noexcept
{
    const YamlList &head = seq.stChildList;
    const YamlList *link = head.next;
    for (; index > 0 && link != &head && IsNode(*NodeOf(link, NodeLink::Seq)); --index)
        link = link->next;
    return link == &head || index > 0 ? nullptr : NodeOf(link, NodeLink::Seq);
}

Found FoundOrNot(YamlListNode *node) noexcept
{
    return node != nullptr ? Found{node, YAML_OK} : NotFound;
}

Found FindInSeq(YamlListNode &seq, uint32_t uiIndex) noexcept
{
    if (!HasChildren(seq))
        return FIND_FAIL(YAML_ERR_EMPTY, "The current sequence branch is empty.");
    if (uiIndex == YAML_INDEX_NONE)
        return FIND_FAIL(YAML_ERR_INDEX, "The array index has not been specified.");
    YamlListNode *element = EntryAt(seq, uiIndex);
    if (element != nullptr && !IsNode(*element)) {
        YAML_LOG(YAML_LOG_WARN, YAML_ERR_PARAM, "Can't find the node with the index: %u", uiIndex);
        return {nullptr, YAML_ERR_PARAM};
    }
    return FoundOrNot(element);
}

// What a key that has been searched for and an index lead to.
Found KeyGive(YamlListNode *key, std::string_view name, uint32_t index) noexcept
{
    if (key == nullptr || index == YAML_INDEX_NONE)
        return FoundOrNot(key);
    const YamlListNode *value = FirstChild(*key);
    if (value == nullptr)
        return FIND_FAIL(YAML_ERR_EMPTY, "The child list is empty when find property in map list.");
    if (key->uiNextLevelType != YAML_DATATYPE_SEQ)
        return FIND_FAIL(YAML_ERR_NODE_TYPE,
                         "The next node type is not sequence when find property in map list. (Type=%u, Key=%.*s)",
                         key->uiNextLevelType, static_cast<int>(name.size()), name.data());
    YamlListNode *element = EntryAt(*value, index);
    return FoundOrNot(element != nullptr && IsNode(*element) ? element : nullptr);
}

// A map, or a list of keys that may be in none.
template <typename Keys> Found FindInMap(const Keys &keys, bool isEmpty, std::string_view name, uint32_t index) noexcept
{
    if (!isEmpty)
        return KeyGive(KeyFind(keys, name), name, index);
    YAML_NOTE(YAML_OK, "The current map branch is empty.");
    return NotFound;
}

Found FindInScalar(YamlListNode &scalar, std::string_view name, uint32_t index) noexcept
{
    if (!HasChildren(scalar))
        return FIND_FAIL(YAML_ERR_EMPTY, "There is not any data below this branch. (NodeData=%s)", scalar.pcValue);
    YamlListNode *pstValue = FirstChild(scalar);
    if (pstValue == nullptr)
        return NotFound;
    switch (scalar.uiNextLevelType) {
    case YAML_DATATYPE_MAP:
        return FindInMap(*pstValue, !HasChildren(*pstValue), name, index);
    case YAML_DATATYPE_SEQ:
        return FindInSeq(*pstValue, index);
    default: // a path may end on a scalar value whose text it names
        return FoundOrNot(name == pstValue->pcValue ? pstValue : nullptr);
    }
}

// What one component names from a node.
Found Find(YamlListNode &node, std::string_view name, uint32_t index) noexcept
{
    switch (node.uiDataType) {
    case YAML_DATATYPE_MAP:
        return FindInMap(node, !HasChildren(node), name, index);
    case YAML_DATATYPE_SEQ:
        return FindInSeq(node, index);
    case YAML_DATATYPE_SCALAR:
        return FindInScalar(node, name, index);
    default:
        return FIND_FAIL(YAML_ERR_PARAM, "Unknown data type.");
    }
}

// The name of a component; one with escapes goes to the buffer.
std::string_view NameOf(const PathComponent &component, char (&nameBuffer)[YAML_KEY_BUF_SIZE]) noexcept
{
    if (component.text.size() < 2 && !component.alone) {
        const char text[2] = {component.text.empty() ? '\0' : component.text[0], '\0'};
        YAML_SECURE(strncpy_s(nameBuffer, sizeof(nameBuffer), text, sizeof(nameBuffer) - 1));
        return component.text;
    }
    if (component.name.find('\\') == component.name.npos)
        return component.name;
    return {nameBuffer, NameUnescape(component.name, nameBuffer, sizeof(nameBuffer) - 1)};
}

// Follows a path from a map, a sequence or an element down.
Found Walk(YamlListNode *pstNode, std::string_view path, uint32_t &indexed) noexcept
{
    char nameBuffer[YAML_KEY_BUF_SIZE];
    for (size_t parsed = 0;;) {
        if (parsed >= path.size())
            return FIND_FAIL(YAML_ERR_KEY, "The length of key is 0.");
        const PathComponent component = ComponentScan({path.data() + parsed, path.size() - parsed});
        const uint32_t code = PathRefuse(component, component.alone ? PathPlace::Index : PathPlace::Name);
        if (code != YAML_OK)
            return {nullptr, code};
        const uint32_t uiIndex = component.HasIndex() ? static_cast<uint32_t>(component.index) : YAML_INDEX_NONE;
        const std::string_view name = NameOf(component, nameBuffer);
        if (component.HasIndex() && name.empty() && pstNode->uiDataType != YAML_DATATYPE_SEQ)
            return FIND_FAIL(YAML_ERR_NODE_TYPE,
                             "The current node is not sequence node but the sequence index is %u. (DataType=%u)",
                             uiIndex, pstNode->uiDataType);
        const Found found = Find(*pstNode, name, uiIndex);
        if (found.pstNode == nullptr) {
            YAML_LOG(YAML_LOG_WARN, YAML_ERR_NOT_FOUND, "Can not find the yaml node with key. (Key=%.*s)",
                     static_cast<int>(name.size()), name.data());
            return found;
        }
        pstNode = found.pstNode;
        parsed += component.used;
        if (parsed > path.size()) {
            indexed = component.HasIndex() ? 1 : 0;
            return found;
        }
    }
}

// Follows a path from a sequence down, its first '[' being done; uiRest counts what has not been read.
Found FrontWalk(YamlListNode *pstNode, std::string_view path, uint32_t &rest, uint32_t &indexed) noexcept
{
    for (;;) {
        const PathComponent index = IndexScan(path);
        uint32_t code = PathRefuse(index, PathPlace::Front, false);
        if (code != YAML_OK)
            return {nullptr, code};
        rest -= static_cast<uint32_t>(index.digits.size() + 1);
        const auto uiIndex = static_cast<uint32_t>(index.index);
        const Found found = FindInSeq(*pstNode, uiIndex);
        if (found.pstNode == nullptr) {
            YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOT_FOUND, "Can't find the specified value. (Index=%u)", uiIndex);
            return found;
        }
        code = PathRefuse(index, PathPlace::Front);
        if (code != YAML_OK)
            return {nullptr, code};
        path.remove_prefix(index.digits.size() + 1);
        if (path.empty()) {
            indexed = 1;
            return found;
        }
        --rest;
        const bool indexFollows = path.front() == '[';
        path.remove_prefix(1);
        if (!indexFollows)
            return Walk(found.pstNode, path, indexed);
        if (found.pstNode->uiDataType != YAML_DATATYPE_SEQ)
            return FIND_FAIL(YAML_ERR_NODE_TYPE, "The current level node is not sequence node.");
        pstNode = found.pstNode;
    }
}

} // namespace

Found zryaml::query::PathWalk(YamlHandle &handle, std::string_view path, uint32_t &indexed) noexcept
{
    YamlListNode &stRoot = handle.stRoot;
    YamlListNode *top = FirstChild(stRoot);
    const bool isMap = stRoot.uiDataType == YAML_DATATYPE_MAP && top != nullptr;
    if (!isMap && !path.starts_with('['))
        return FIND_FAIL(YAML_ERR_KEY,
                         "The current file is begin with sequence, but the key is begin with map. (Key=%.*s)",
                         static_cast<int>(path.size()), path.data());
    indexed = 0;
    if (isMap)
        return Walk(top, path, indexed);
    path.remove_prefix(1);
    auto rest = static_cast<uint32_t>(path.size() + 1);
    // The root of an empty document has no children either, and so reads as an empty sequence.
    return FrontWalk(top != nullptr ? top : &stRoot, path, rest, indexed);
}

YamlListNode *yaml_NodeGetByKey(YamlHandle *pstHandle, uint32_t *puiIndexed, const char *pcKeyFormat, va_list stArgs)
{
    char acPath[YAML_KEY_BUF_SIZE];
    if (PathFormat(acPath, pcKeyFormat, stArgs) != YAML_OK)
        return nullptr;
    return PathWalk(*pstHandle, acPath, *puiIndexed).pstNode;
}

YamlListNode *yaml_NodeFind(YamlHandle *pstHandle, char *pcKeyPath, uint32_t uiKeyLen, uint32_t *puiIndexed)
{
    return PathWalk(*pstHandle, {pcKeyPath, uiKeyLen - 1}, *puiIndexed).pstNode;
}

YamlListNode *yaml_NodeFindByKey(YamlListNode *pstNode, char *pcKeyPath, uint32_t uiKeyLen, uint32_t *puiIndexed)
{
    return Walk(pstNode, {pcKeyPath, uiKeyLen - 1}, *puiIndexed).pstNode;
}

YamlListNode *yaml_SeqNodeFindByKey(YamlListNode *pstNode, char *pcKeyPath, uint32_t *puiRemainLen,
                                    uint32_t *puiIndexed)
{
    return FrontWalk(pstNode, {pcKeyPath, *puiRemainLen - 1}, *puiRemainLen, *puiIndexed).pstNode;
}

YamlListNode *yaml_PropertyFind(YamlListNode *pstNode, const char *pcKeyName, uint32_t uiIndex)
{
    return Find(*pstNode, pcKeyName, uiIndex).pstNode;
}

YamlListNode *yaml_PropertyFindInMapList(const YamlList *pstHead, const char *pcKeyName, uint32_t uiIndex)
{
    return FindInMap(*pstHead, ListIsEmpty(*pstHead), pcKeyName, uiIndex).pstNode;
}

YamlListNode *yaml_PropertyFindInSeqList(YamlListNode *pstNode, uint32_t uiIndex)
{
    return FindInSeq(*pstNode, uiIndex).pstNode;
}

YamlListNode *yaml_PropertyFindInScalarNode(YamlListNode *pstNode, const char *pcKeyName, uint32_t uiIndex)
{
    return FindInScalar(*pstNode, pcKeyName, uiIndex).pstNode;
}
