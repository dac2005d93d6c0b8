// SPDX-License-Identifier: Apache-2.0
// Finds the node that a key path names: formats the path and walks the tree from the root, one component at a time. It
// only reads the tree and allocates nothing.
#include "query_internal.h"

#include <cstring>

namespace {

#define FIND_FAIL(uiCode, ...) (YAML_LOG(YAML_LOG_ERROR, (uiCode), __VA_ARGS__), nullptr)

// Formats the path; false if it is empty or does not fit. Without a '%' it is copied as it stands.
__attribute__((format(printf, 2, 0))) bool PathFormat(char (&acPath)[YAML_KEY_BUF_SIZE], const char *pcKeyFormat,
                                                      va_list stArgs) noexcept
{
    const size_t ulLength = strnlen(pcKeyFormat, sizeof(acPath));
    if (memchr(pcKeyFormat, '%', ulLength) != nullptr)
        return vsnprintf_s(acPath, sizeof(acPath), sizeof(acPath) - 1, pcKeyFormat, stArgs) > 0;
    if (ulLength == 0 || ulLength == sizeof(acPath))
        return false;
    memcpy(acPath, pcKeyFormat, ulLength + 1);
    return true;
}

// The entry with a number, which may be no node itself; NULL past the end, or past an entry that is no node.
YamlListNode *EntryAt(const YamlListNode &stSeq, uint32_t uiIndex) noexcept
{
    const YamlList &stHead = stSeq.stChildList;
    const YamlList *pstLink = stHead.next;
    for (; uiIndex > 0 && pstLink != &stHead && IsNode(*NodeOf(pstLink, NodeLink::Seq)); --uiIndex)
        pstLink = pstLink->next;
    return pstLink == &stHead || uiIndex > 0 ? nullptr : NodeOf(pstLink, NodeLink::Seq);
}

YamlListNode *KeyWithText(const YamlList &stKeys, const WantedKey &stWanted) noexcept
{
    for (YamlListNode &stKey : NodeRange(stKeys, NodeLink::Child)) {
        if (stWanted.IsOf(stKey) && stKey.uiSameWithAnchor != 1)
            return &stKey;
    }
    return nullptr;
}

YamlListNode *FindInSeq(YamlListNode &stSeq, uint32_t uiIndex) noexcept
{
    if (!HasChildren(stSeq))
        return FIND_FAIL(YAML_ERR_EMPTY, "The current sequence branch is empty.");
    if (uiIndex == YAML_INDEX_NONE)
        return FIND_FAIL(YAML_ERR_INDEX, "The array index has not been specified.");
    YamlListNode *pstElement = EntryAt(stSeq, uiIndex);
    if (pstElement != nullptr && !IsNode(*pstElement)) {
        YAML_LOG(YAML_LOG_WARN, YAML_ERR_PARAM, "Can't find the node with the index: %u", uiIndex);
        return nullptr;
    }
    return pstElement;
}

YamlListNode *FindInMap(const YamlList &stKeys, std::string_view svName, uint32_t uiIndex) noexcept
{
    if (ListIsEmpty(stKeys)) {
        YAML_NOTE(YAML_OK, "The current map branch is empty.");
        return nullptr;
    }
    YamlListNode *pstKey = KeyWithText(stKeys, WantedKey(svName));
    if (pstKey == nullptr || uiIndex == YAML_INDEX_NONE)
        return pstKey;
    const YamlListNode *pstValue = FirstChild(*pstKey);
    if (pstValue == nullptr)
        return FIND_FAIL(YAML_ERR_EMPTY, "The child list is empty when find property in map list.");
    if (pstKey->uiNextLevelType != YAML_DATATYPE_SEQ)
        return FIND_FAIL(YAML_ERR_NODE_TYPE,
                         "The next node type is not sequence when find property in map list. (Type=%u, Key=%.*s)",
                         pstKey->uiNextLevelType, static_cast<int>(svName.size()), svName.data());
    YamlListNode *pstElement = EntryAt(*pstValue, uiIndex);
    return pstElement != nullptr && IsNode(*pstElement) ? pstElement : nullptr;
}

YamlListNode *FindInScalar(YamlListNode &stScalar, std::string_view svName, uint32_t uiIndex) noexcept
{
    if (!HasChildren(stScalar))
        return FIND_FAIL(YAML_ERR_EMPTY, "There is not any data below this branch. (NodeData=%s)", stScalar.pcValue);
    YamlListNode *pstValue = FirstChild(stScalar);
    if (pstValue == nullptr)
        return nullptr;
    switch (stScalar.uiNextLevelType) {
    case YAML_DATATYPE_MAP:
        return FindInMap(pstValue->stChildList, svName, uiIndex);
    case YAML_DATATYPE_SEQ:
        return FindInSeq(*pstValue, uiIndex);
    default: // a path may end on a scalar value whose text it names
        return svName == pstValue->pcValue ? pstValue : nullptr;
    }
}

// What one component names from a node.
YamlListNode *Find(YamlListNode &stNode, std::string_view svName, uint32_t uiIndex) noexcept
{
    switch (stNode.uiDataType) {
    case YAML_DATATYPE_MAP:
        return FindInMap(stNode.stChildList, svName, uiIndex);
    case YAML_DATATYPE_SEQ:
        return FindInSeq(stNode, uiIndex);
    case YAML_DATATYPE_SCALAR:
        return FindInScalar(stNode, svName, uiIndex);
    default:
        return FIND_FAIL(YAML_ERR_PARAM, "Unknown data type.");
    }
}

// Reads the index of a leading chain, of which pcDigits is the first character; the number of digits, 0 if rejected.
uint32_t LeadingIndexGet(char *pcDigits, uint32_t *puiIndex) noexcept
{
    uint32_t uiDigits = 0;
    while (IsDigit(pcDigits[uiDigits]))
        ++uiDigits;
    if (pcDigits[uiDigits] == '\0')
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_KEY, "Can not find ']' to pair with '['. (Key=%s)", pcDigits - 1);
    else if (pcDigits[uiDigits] != ']')
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_KEY, "The key doesn't contain any digital character between '[' and ']'.");
    else if (uiDigits == 0)
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_KEY, "Failed to get legal sequence index from '[' and ']'.");
    else if (yaml_IndexGet(pcDigits, puiIndex) != YAML_OK)
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_KEY, "Failed to get sequence index from key. (Key=%.*s)",
                 static_cast<int>(uiDigits + 1), pcDigits - 1);
    else
        return uiDigits;
    return 0;
}

} // namespace

YamlListNode *yaml_NodeGetByKey(YamlHandle *pstHandle, uint32_t *puiIndexed, const char *pcKeyFormat, va_list stArgs)
{
    char acPath[YAML_KEY_BUF_SIZE];
    if (!PathFormat(acPath, pcKeyFormat, stArgs))
        return FIND_FAIL(YAML_ERR_BUF, "The input key is too long to format.");
    return yaml_NodeFind(pstHandle, acPath, static_cast<uint32_t>(strlen(acPath)) + 1, puiIndexed);
}

YamlListNode *yaml_NodeFind(YamlHandle *pstHandle, char *pcKeyPath, uint32_t uiKeyLen, uint32_t *puiIndexed)
{
    YamlListNode &stRoot = pstHandle->stRoot;
    YamlListNode *pstTop = FirstChild(stRoot);
    uint32_t uiIndexed = 0;
    YamlListNode *pstFound = nullptr;
    if (stRoot.uiDataType == YAML_DATATYPE_MAP && pstTop != nullptr) {
        pstFound = yaml_NodeFindByKey(pstTop, pcKeyPath, uiKeyLen, &uiIndexed);
    } else if (pcKeyPath[0] != '[') {
        return FIND_FAIL(YAML_ERR_KEY,
                         "The current file is begin with sequence, but the key is begin with map. (Key=%s)", pcKeyPath);
    } else {
        uint32_t uiRemainLen = uiKeyLen - 1;
        // The root of an empty document has no children either, and so reads as an empty sequence.
        pstFound = yaml_SeqNodeFindByKey(pstTop != nullptr ? pstTop : &stRoot, pcKeyPath + 1, &uiRemainLen, &uiIndexed);
    }
    *puiIndexed = uiIndexed;
    return pstFound;
}

YamlListNode *yaml_NodeFindByKey(YamlListNode *pstNode, char *pcKeyPath, uint32_t uiKeyLen, uint32_t *puiIndexed)
{
    char acName[YAML_KEY_BUF_SIZE];
    for (uint32_t uiParsedLen = 0;;) {
        if (uiParsedLen + 1 >= uiKeyLen)
            return FIND_FAIL(YAML_ERR_KEY, "The length of key is 0.");
        PathComponent stComponent;
        if (!ComponentRead(pcKeyPath, acName, uiParsedLen, stComponent))
            return nullptr;
        const auto [svName, uiIndex] = stComponent;
        if (uiIndex != YAML_INDEX_NONE && svName.empty() && pstNode->uiDataType != YAML_DATATYPE_SEQ)
            return FIND_FAIL(YAML_ERR_NODE_TYPE,
                             "The current node is not sequence node but the sequence index is %u. (DataType=%u)",
                             uiIndex, pstNode->uiDataType);
        pstNode = Find(*pstNode, svName, uiIndex);
        if (pstNode == nullptr) {
            YAML_LOG(YAML_LOG_WARN, YAML_ERR_NOT_FOUND, "Can not find the yaml node with key. (Key=%.*s)",
                     static_cast<int>(svName.size()), svName.data());
            return nullptr;
        }
        if (uiParsedLen == uiKeyLen) {
            *puiIndexed = uiIndex != YAML_INDEX_NONE ? 1 : 0;
            return pstNode;
        }
    }
}

YamlListNode *yaml_SeqNodeFindByKey(YamlListNode *pstNode, char *pcKeyPath, uint32_t *puiRemainLen,
                                    uint32_t *puiIndexed)
{
    for (;;) {
        uint32_t uiIndex = 0;
        const uint32_t uiDigits = LeadingIndexGet(pcKeyPath, &uiIndex);
        if (uiDigits == 0)
            return nullptr;
        *puiRemainLen -= uiDigits + 1;
        YamlListNode *pstElement = FindInSeq(*pstNode, uiIndex);
        if (pstElement == nullptr)
            return FIND_FAIL(YAML_ERR_NOT_FOUND, "Can't find the specified value. (Index=%u)", uiIndex);
        char *pcBehind = pcKeyPath + uiDigits + 1;
        switch (*pcBehind) {
        case '\0':
            *puiIndexed = 1;
            return pstElement;
        case '.':
            return yaml_NodeFindByKey(pstElement, pcBehind + 1, --*puiRemainLen, puiIndexed);
        case '[':
            if (pstElement->uiDataType != YAML_DATATYPE_SEQ)
                return FIND_FAIL(YAML_ERR_NODE_TYPE, "The current level node is not sequence node.");
            --*puiRemainLen;
            pstNode = pstElement;
            pcKeyPath = pcBehind + 1;
            break;
        default:
            return FIND_FAIL(YAML_ERR_KEY, "The format of input key is wrong. (Key=%s)", pcKeyPath);
        }
    }
}

YamlListNode *yaml_PropertyFind(YamlListNode *pstNode, const char *pcKeyName, uint32_t uiIndex)
{
    return Find(*pstNode, pcKeyName, uiIndex);
}

YamlListNode *yaml_PropertyFindInMapList(const YamlList *pstHead, const char *pcKeyName, uint32_t uiIndex)
{
    return FindInMap(*pstHead, pcKeyName, uiIndex);
}

YamlListNode *yaml_PropertyFindInSeqList(YamlListNode *pstNode, uint32_t uiIndex)
{
    return FindInSeq(*pstNode, uiIndex);
}

YamlListNode *yaml_PropertyFindInScalarNode(YamlListNode *pstNode, const char *pcKeyName, uint32_t uiIndex)
{
    return FindInScalar(*pstNode, pcKeyName, uiIndex);
}
