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
YamlListNode *EntryAt(const YamlListNode &stSeq, uint32_t uiIndex) noexcept
{
    const YamlList &stHead = stSeq.stChildList;
    const YamlList *pstLink = stHead.next;
    for (; uiIndex > 0 && pstLink != &stHead && IsNode(*NodeOf(pstLink, NodeLink::Seq)); --uiIndex)
        pstLink = pstLink->next;
    return pstLink == &stHead || uiIndex > 0 ? nullptr : NodeOf(pstLink, NodeLink::Seq);
}

Found FoundOrNot(YamlListNode *pstNode) noexcept
{
    return pstNode != nullptr ? Found{pstNode, YAML_OK} : NotFound;
}

Found FindInSeq(YamlListNode &stSeq, uint32_t uiIndex) noexcept
{
    if (!HasChildren(stSeq))
        return FIND_FAIL(YAML_ERR_EMPTY, "The current sequence branch is empty.");
    if (uiIndex == YAML_INDEX_NONE)
        return FIND_FAIL(YAML_ERR_INDEX, "The array index has not been specified.");
    YamlListNode *pstElement = EntryAt(stSeq, uiIndex);
    if (pstElement != nullptr && !IsNode(*pstElement)) {
        YAML_LOG(YAML_LOG_WARN, YAML_ERR_PARAM, "Can't find the node with the index: %u", uiIndex);
        return {nullptr, YAML_ERR_PARAM};
    }
    return FoundOrNot(pstElement);
}

// What a key that has been searched for and an index lead to.
Found KeyGive(YamlListNode *pstKey, std::string_view svName, uint32_t uiIndex) noexcept
{
    if (pstKey == nullptr || uiIndex == YAML_INDEX_NONE)
        return FoundOrNot(pstKey);
    const YamlListNode *pstValue = FirstChild(*pstKey);
    if (pstValue == nullptr)
        return FIND_FAIL(YAML_ERR_EMPTY, "The child list is empty when find property in map list.");
    if (pstKey->uiNextLevelType != YAML_DATATYPE_SEQ)
        return FIND_FAIL(YAML_ERR_NODE_TYPE,
                         "The next node type is not sequence when find property in map list. (Type=%u, Key=%.*s)",
                         pstKey->uiNextLevelType, static_cast<int>(svName.size()), svName.data());
    YamlListNode *pstElement = EntryAt(*pstValue, uiIndex);
    return FoundOrNot(pstElement != nullptr && IsNode(*pstElement) ? pstElement : nullptr);
}

// A map, or a list of keys that may be in none.
template <typename Keys>
Found FindInMap(const Keys &stKeys, bool bEmpty, std::string_view svName, uint32_t uiIndex) noexcept
{
    if (!bEmpty)
        return KeyGive(KeyFind(stKeys, svName), svName, uiIndex);
    YAML_NOTE(YAML_OK, "The current map branch is empty.");
    return NotFound;
}

Found FindInScalar(YamlListNode &stScalar, std::string_view svName, uint32_t uiIndex) noexcept
{
    if (!HasChildren(stScalar))
        return FIND_FAIL(YAML_ERR_EMPTY, "There is not any data below this branch. (NodeData=%s)", stScalar.pcValue);
    YamlListNode *pstValue = FirstChild(stScalar);
    if (pstValue == nullptr)
        return NotFound;
    switch (stScalar.uiNextLevelType) {
    case YAML_DATATYPE_MAP:
        return FindInMap(*pstValue, !HasChildren(*pstValue), svName, uiIndex);
    case YAML_DATATYPE_SEQ:
        return FindInSeq(*pstValue, uiIndex);
    default: // a path may end on a scalar value whose text it names
        return FoundOrNot(svName == pstValue->pcValue ? pstValue : nullptr);
    }
}

// What one component names from a node.
Found Find(YamlListNode &stNode, std::string_view svName, uint32_t uiIndex) noexcept
{
    switch (stNode.uiDataType) {
    case YAML_DATATYPE_MAP:
        return FindInMap(stNode, !HasChildren(stNode), svName, uiIndex);
    case YAML_DATATYPE_SEQ:
        return FindInSeq(stNode, uiIndex);
    case YAML_DATATYPE_SCALAR:
        return FindInScalar(stNode, svName, uiIndex);
    default:
        return FIND_FAIL(YAML_ERR_PARAM, "Unknown data type.");
    }
}

// The name of a component; one with escapes goes to the buffer.
std::string_view NameOf(const PathComponent &stComponent, char (&acName)[YAML_KEY_BUF_SIZE]) noexcept
{
    if (stComponent.text.size() < 2 && !stComponent.alone) {
        const char acText[2] = {stComponent.text.empty() ? '\0' : stComponent.text[0], '\0'};
        YAML_SECURE(strncpy_s(acName, sizeof(acName), acText, sizeof(acName) - 1));
        return stComponent.text;
    }
    if (stComponent.name.find('\\') == stComponent.name.npos)
        return stComponent.name;
    return {acName, NameUnescape(stComponent.name, acName, sizeof(acName) - 1)};
}

// Follows a path from a map, a sequence or an element down.
Found Walk(YamlListNode *pstNode, std::string_view svPath, uint32_t &uiIndexed) noexcept
{
    char acName[YAML_KEY_BUF_SIZE];
    for (size_t ulParsed = 0;;) {
        if (ulParsed >= svPath.size())
            return FIND_FAIL(YAML_ERR_KEY, "The length of key is 0.");
        const PathComponent stComponent = ComponentScan({svPath.data() + ulParsed, svPath.size() - ulParsed});
        const uint32_t uiCode = PathRefuse(stComponent, stComponent.alone ? PathPlace::Index : PathPlace::Name);
        if (uiCode != YAML_OK)
            return {nullptr, uiCode};
        const uint32_t uiIndex = stComponent.HasIndex() ? static_cast<uint32_t>(stComponent.index) : YAML_INDEX_NONE;
        const std::string_view svName = NameOf(stComponent, acName);
        if (stComponent.HasIndex() && svName.empty() && pstNode->uiDataType != YAML_DATATYPE_SEQ)
            return FIND_FAIL(YAML_ERR_NODE_TYPE,
                             "The current node is not sequence node but the sequence index is %u. (DataType=%u)",
                             uiIndex, pstNode->uiDataType);
        const Found stFound = Find(*pstNode, svName, uiIndex);
        if (stFound.pstNode == nullptr) {
            YAML_LOG(YAML_LOG_WARN, YAML_ERR_NOT_FOUND, "Can not find the yaml node with key. (Key=%.*s)",
                     static_cast<int>(svName.size()), svName.data());
            return stFound;
        }
        pstNode = stFound.pstNode;
        ulParsed += stComponent.used;
        if (ulParsed > svPath.size()) {
            uiIndexed = stComponent.HasIndex() ? 1 : 0;
            return stFound;
        }
    }
}

// Follows a path from a sequence down, its first '[' being done; uiRest counts what has not been read.
Found FrontWalk(YamlListNode *pstNode, std::string_view svPath, uint32_t &uiRest, uint32_t &uiIndexed) noexcept
{
    for (;;) {
        const PathComponent stIndex = IndexScan(svPath);
        uint32_t uiCode = PathRefuse(stIndex, PathPlace::Front, false);
        if (uiCode != YAML_OK)
            return {nullptr, uiCode};
        uiRest -= static_cast<uint32_t>(stIndex.digits.size() + 1);
        const auto uiIndex = static_cast<uint32_t>(stIndex.index);
        const Found stFound = FindInSeq(*pstNode, uiIndex);
        if (stFound.pstNode == nullptr) {
            YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOT_FOUND, "Can't find the specified value. (Index=%u)", uiIndex);
            return stFound;
        }
        uiCode = PathRefuse(stIndex, PathPlace::Front);
        if (uiCode != YAML_OK)
            return {nullptr, uiCode};
        svPath.remove_prefix(stIndex.digits.size() + 1);
        if (svPath.empty()) {
            uiIndexed = 1;
            return stFound;
        }
        --uiRest;
        const bool bIndexFollows = svPath.front() == '[';
        svPath.remove_prefix(1);
        if (!bIndexFollows)
            return Walk(stFound.pstNode, svPath, uiIndexed);
        if (stFound.pstNode->uiDataType != YAML_DATATYPE_SEQ)
            return FIND_FAIL(YAML_ERR_NODE_TYPE, "The current level node is not sequence node.");
        pstNode = stFound.pstNode;
    }
}

} // namespace

Found zryaml::query::PathWalk(YamlHandle &stHandle, std::string_view svPath, uint32_t &uiIndexed) noexcept
{
    YamlListNode &stRoot = stHandle.stRoot;
    YamlListNode *pstTop = FirstChild(stRoot);
    const bool bMap = stRoot.uiDataType == YAML_DATATYPE_MAP && pstTop != nullptr;
    if (!bMap && !svPath.starts_with('['))
        return FIND_FAIL(YAML_ERR_KEY,
                         "The current file is begin with sequence, but the key is begin with map. (Key=%.*s)",
                         static_cast<int>(svPath.size()), svPath.data());
    uiIndexed = 0;
    if (bMap)
        return Walk(pstTop, svPath, uiIndexed);
    svPath.remove_prefix(1);
    auto uiRest = static_cast<uint32_t>(svPath.size() + 1);
    // The root of an empty document has no children either, and so reads as an empty sequence.
    return FrontWalk(pstTop != nullptr ? pstTop : &stRoot, svPath, uiRest, uiIndexed);
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
