// SPDX-License-Identifier: Apache-2.0
// The merge key "<<" with an alias as its value: the keys of the anchored map, or the first key of each map in the
// anchored sequence, are copied to where "<<" stands. Keys that the map has win over merged ones.
#include "parse_internal.h"

#include <cstring>

namespace {

// Takes the "<<" key out of its map, together with what it was counted for and the anchor it may carry.
void MergeKeyRelease(YamlHandle &stHandle, YamlListNode &stMergeKey) noexcept
{
    if (DebugSwitch() == 1)
        stHandle.uiMemSize -= static_cast<uint32_t>(sizeof(YamlListNode) + strlen(stMergeKey.pcValue) + 1);
    AnchorOfNodeDrop(stHandle, stMergeKey);
    KeyRemove(*stMergeKey.pstFather, stMergeKey);
}

// Whether an item of a merged sequence gives a key: yes for a map with keys, no for an empty one; others are refused.
uint32_t ItemCheck(const YamlListNode &stItem) noexcept
{
    if (stItem.uiDataType == YAML_DATATYPE_SCALAR)
        return YAML_FAIL(YAML_ERR_PARSE, "Can not merge a single scalar to a map. (Scalar=%s)", stItem.pcValue);
    if (stItem.uiDataType == YAML_DATATYPE_SEQ)
        return YAML_FAIL(YAML_ERR_PARSE, "Can not merge a sequence to a map.");
    return YAML_OK;
}

// Copies the first key of an item into the map, after *ppstPrevious, unless the map has it; the copy is then the
// previous one.
uint32_t FirstKeyCopy(YamlHandle &stHandle, YamlListNode &stMap, YamlListNode **ppstPrevious,
                      const YamlListNode &stKey) noexcept
{
    SameKeys stSame;
    uint32_t uiResult = KeysFind(stMap, stKey.pcValue, stSame);
    if (uiResult != YAML_OK)
        return uiResult;
    if (stSame.pstWritten != nullptr || stSame.pstMerged != nullptr) {
        YAML_NOTE(YAML_ERR_SAME, "There is a same scalar in previous key list. (Scalar=%s)", stKey.pcValue);
        return CopyCharge(stHandle, strlen(stKey.pcValue) + 1);
    }
    YamlListNode *pstCopy = yaml_SingleNodeDup(&stHandle, &stKey);
    if (pstCopy == nullptr)
        return YAML_ERR_NOMEM;
    uiResult = KeyInsert(stMap, *ppstPrevious, *pstCopy, stSame.ulHash);
    if (uiResult != YAML_OK)
        return uiResult;
    *ppstPrevious = pstCopy;
    return yaml_AnchorNodesClone(&stHandle, pstCopy, &stKey) == YAML_OK ? YAML_OK : uint32_t{YAML_ERR_NOMEM};
}

} // namespace

uint32_t yaml_Sequence2MapCopy(YamlHandle *pstHandle, YamlListNode **ppstInsertNode, const YamlListNode *pstSrcNode,
                               uint32_t uiFirstFlag)
{
    YamlListNode *pstMap = uiFirstFlag == 1 ? *ppstInsertNode : (*ppstInsertNode)->pstFather;
    YamlListNode *pstPrevious = uiFirstFlag == 1 ? nullptr : *ppstInsertNode;
    for (const YamlListNode &stItem : Children(*pstSrcNode)) {
        uint32_t uiResult = ItemCheck(stItem);
        if (uiResult == YAML_OK)
            uiResult = CopyCharge(*pstHandle, 0);
        if (uiResult != YAML_OK)
            return uiResult;
        const YamlListNode *pstKey = FirstChild(stItem);
        if (pstKey != nullptr)
            uiResult = FirstKeyCopy(*pstHandle, *pstMap, &pstPrevious, *pstKey);
        if (uiResult != YAML_OK)
            return uiResult;
    }
    if (pstPrevious != nullptr)
        *ppstInsertNode = pstPrevious;
    return YAML_OK;
}

uint32_t yaml_AnchorInsertInMapWithoutMapNode(YamlHandle *pstHandle, YamlListNode **ppstCurrNode,
                                              const YamlListNode *pstSrcNode, uint32_t uiFirstFlag)
{
    YamlListNode &stMergeKey = **ppstCurrNode;
    YamlListNode *pstInsert =
        uiFirstFlag == 1 ? stMergeKey.pstFather : NodeOf(stMergeKey.stChildLink.prev, NodeLink::Child);
    const uint32_t uiSourceType = pstSrcNode->uiDataType;
    uint32_t uiResult = YAML_OK;
    // Said before the key goes, of which the text may be.
    if (uiSourceType != YAML_DATATYPE_MAP && uiSourceType != YAML_DATATYPE_SEQ)
        uiResult =
            YAML_FAIL(YAML_ERR_EVENT, "Can not merge mapping with a single scalar. (Scalar=%s)", pstSrcNode->pcValue);
    MergeKeyRelease(*pstHandle, stMergeKey);

    if (uiSourceType == YAML_DATATYPE_MAP)
        uiResult = yaml_MapAnchorCopy(pstHandle, &pstInsert, pstSrcNode, uiFirstFlag);
    else if (uiSourceType == YAML_DATATYPE_SEQ)
        uiResult = yaml_Sequence2MapCopy(pstHandle, &pstInsert, pstSrcNode, uiFirstFlag);

    // The next key goes after the last merged one, whose value is now current; a map without keys stays current itself.
    YamlListNode *pstValue = FirstChild(*pstInsert);
    *ppstCurrNode = pstValue != nullptr ? pstValue : pstInsert;
    return uiResult;
}
