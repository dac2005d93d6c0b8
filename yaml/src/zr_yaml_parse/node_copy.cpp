// SPDX-License-Identifier: Apache-2.0
// Deep copies of anchored nodes. A copy never shares a node with its source, is marked as one, and is charged to its
// document. It is what the source reads as: keys that a merge marked as repeated are not copied.
#include "parse_internal.h"

#include <cstring>

namespace {

struct CopyLevel { // one more collection entered by a copy, as long as it lives
    explicit CopyLevel(YamlHandle &stHandle) noexcept : m_stHandle(stHandle) { ++m_stHandle.uiCopyDepth; }
    ~CopyLevel() { --m_stHandle.uiCopyDepth; }
    CopyLevel(const CopyLevel &) = delete;
    CopyLevel &operator=(const CopyLevel &) = delete;

private:
    YamlHandle &m_stHandle;
};

// Where the copies of a map's keys go: below a fresh copy of the map, or into a map that may have keys of its own.
struct KeyPlace {
    YamlListNode *pstMap;
    YamlListNode *pstPrevious; // NULL: the next key goes first
    bool bTest;                // whether the map may have a key already
};

uint32_t KeyCopy(YamlHandle &stHandle, KeyPlace &stPlace, const YamlListNode &stSourceKey) noexcept
{
    bool bSkip = stSourceKey.uiSameWithAnchor == 1; // the merged key of that text is copied in its stead
    SameKeys stSame;
    if (!bSkip && stPlace.bTest) {
        const uint32_t uiResult = KeysFind(*stPlace.pstMap, stSourceKey.pcValue, stSame);
        if (uiResult != YAML_OK)
            return uiResult;
        bSkip = stSame.pstWritten != nullptr || stSame.pstMerged != nullptr;
    }
    if (bSkip) {
        YAML_NOTE(YAML_ERR_SAME, "There is a same scalar in previous key list. (Scalar=%s)", stSourceKey.pcValue);
        return CopyCharge(stHandle, strlen(stSourceKey.pcValue) + 1);
    }
    YamlListNode *pstCopy = yaml_SingleNodeDup(&stHandle, &stSourceKey);
    if (pstCopy == nullptr)
        return YAML_ERR_NOMEM;
    const uint32_t uiResult = KeyInsert(*stPlace.pstMap, stPlace.pstPrevious, *pstCopy, stSame.ulHash);
    if (uiResult != YAML_OK)
        return uiResult;
    stPlace.pstPrevious = pstCopy;
    if (!HasChildren(stSourceKey) && stPlace.pstMap->uiDataType == YAML_DATATYPE_MAP)
        return YAML_FAIL(YAML_ERR_PARSE, "Can not merge a single scalar in sequence anchor to map. (Scalar=%s)",
                         stSourceKey.pcValue);
    return yaml_AnchorNodesClone(&stHandle, pstCopy, &stSourceKey);
}

} // namespace

uint32_t zryaml::parse::ContentCopy(YamlHandle &stHandle, YamlListNode &stCopy, const YamlListNode &stSource) noexcept
{
    if (stSource.uiDataType == YAML_DATATYPE_SCALAR) {
        stCopy.uiNextLevelType = YAML_DATATYPE_NONE; // an anchored key's value is not part of the anchor
        return YAML_OK;
    }
    const CopyLevel stLevel(stHandle);
    const uint32_t uiResult = DepthCheck(stHandle, stHandle.uiCopyDepth);
    if (uiResult != YAML_OK)
        return uiResult;
    YamlListNode *pstInsert = &stCopy;
    return stSource.uiDataType == YAML_DATATYPE_MAP ? yaml_MapAnchorCopy(&stHandle, &pstInsert, &stSource, 1)
                                                    : yaml_SequenceAnchorCopy(&stHandle, &stCopy, &stSource, 1);
}

YamlListNode *yaml_SingleNodeDup(YamlHandle *pstHandle, const YamlListNode *pstSrcNode)
{
    const bool bText = pstSrcNode->pcValue != nullptr;
    const std::string_view svText = bText ? pstSrcNode->pcValue : "";
    if (CopyCharge(*pstHandle, bText ? svText.size() + 1 : 0) != YAML_OK)
        return nullptr;
    YamlListNode *pstCopy = yaml_ListNodeAlloc(pstHandle);
    if (pstCopy == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to allocate memory to dup node.");
        return nullptr;
    }
    if (bText && !TextSet(*pstHandle, *pstCopy, svText)) {
        yaml_ListNodeFree(pstCopy);
        return nullptr;
    }
    pstCopy->uiFromAlias = 1;
    pstCopy->uiDataType = pstSrcNode->uiDataType;
    pstCopy->uiNextLevelType = pstSrcNode->uiNextLevelType;
    return pstCopy;
}

uint32_t yaml_ScalarAnchorCopy(YamlHandle *pstHandle, YamlListNode **ppstInsertNode, const YamlListNode *pstSrcNode)
{
    YamlListNode *pstCopy = yaml_SingleNodeDup(pstHandle, pstSrcNode);
    if (pstCopy == nullptr)
        return YAML_ERR_NOMEM;
    ChildAppend(**ppstInsertNode, *pstCopy);
    *ppstInsertNode = pstCopy;
    return YAML_OK;
}

uint32_t yaml_AnchorNodesClone(YamlHandle *pstHandle, YamlListNode *pstDstNode, const YamlListNode *pstSrcNode)
{
    if (pstSrcNode->uiNextLevelType > YAML_DATATYPE_SCALAR)
        return YAML_FAIL(YAML_ERR_PARAM, "There is a unknown data type when copy anchor node. (DataType=%u)",
                         pstSrcNode->uiNextLevelType);
    const YamlListNode *pstValue = FirstChild(*pstSrcNode);
    if (pstValue == nullptr)
        return YAML_OK;
    YamlListNode *pstCopy = pstDstNode;
    const uint32_t uiResult = yaml_ScalarAnchorCopy(pstHandle, &pstCopy, pstValue);
    if (uiResult != YAML_OK)
        return uiResult;
    if (pstValue->uiDataType == YAML_DATATYPE_SCALAR && HasChildren(*pstValue))
        return yaml_AnchorNodesClone(pstHandle, pstCopy, pstValue);
    return ContentCopy(*pstHandle, *pstCopy, *pstValue);
}

uint32_t yaml_MapAnchorCopy(YamlHandle *pstHandle, YamlListNode **ppstInsertNode, const YamlListNode *pstSrcNode,
                            uint32_t uiFirstFlag)
{
    if (FirstChild(*pstSrcNode) == nullptr)
        return YAML_OK;
    // With the first flag the map had no keys, and those of the source differ, so that there is nothing to test.
    KeyPlace stPlace = {*ppstInsertNode, nullptr, false};
    if (uiFirstFlag != 1)
        stPlace = {(*ppstInsertNode)->pstFather, *ppstInsertNode, true};
    for (const YamlListNode &stKey : Children(*pstSrcNode)) {
        const uint32_t uiResult = KeyCopy(*pstHandle, stPlace, stKey);
        if (uiResult != YAML_OK)
            return uiResult;
    }
    if (stPlace.pstPrevious != nullptr)
        *ppstInsertNode = stPlace.pstPrevious;
    return YAML_OK;
}

uint32_t yaml_SequenceAnchorCopy(YamlHandle *pstHandle, YamlListNode *pstDstNode, const YamlListNode *pstSrcNode,
                                 uint32_t uiFirstFlag)
{
    YamlListNode *pstPrevious = pstDstNode; // without the first flag the copies go behind this element
    for (const YamlListNode &stItem : Children(*pstSrcNode)) {
        YamlListNode *pstCopy = yaml_SingleNodeDup(pstHandle, &stItem);
        if (pstCopy == nullptr)
            return YAML_ERR_NOMEM;
        if (uiFirstFlag == 1)
            ChildAppend(*pstDstNode, *pstCopy);
        else
            ChildInsertAfter(*pstPrevious, *pstCopy);
        pstPrevious = pstCopy;
        if (ContentCopy(*pstHandle, *pstCopy, stItem) != YAML_OK)
            return YAML_ERR_NOMEM;
    }
    if (uiFirstFlag != 1)
        ElementsNumber(*pstDstNode->pstFather);
    return YAML_OK;
}
