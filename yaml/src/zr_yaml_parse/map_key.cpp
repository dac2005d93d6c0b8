// SPDX-License-Identifier: Apache-2.0
// The keys of one map: insertion of a key read from the file, the test for a repeated one, and the value of a key that
// overrides a merged one. A map with many keys has an index of them by text while it is open.
//
// Invariant of the index: for each text it holds the merged key, if there is one, else the written one; and a merged
// key and the written key that overrides it name each other in pstSameKey.
#include "parse_internal.h"
#include "text_index.h"

namespace {

const char *KeyText(const YamlListNode &stKey) noexcept
{
    return stKey.pcValue;
}

constexpr uint32_t IndexFromKeys = 16; // up to here a walk over the keys is the faster search

// The key of the map that the current node is or hangs below; the last key when it is the map itself.
YamlListNode *KeyBefore(YamlListNode &stMap, YamlListNode &stCurrNode) noexcept
{
    if (&stCurrNode == &stMap)
        return HasChildren(stMap) ? NodeOf(stMap.stChildList.prev, ChildLinkOf(stMap)) : nullptr;
    YamlListNode *pstNode = &stCurrNode;
    while (pstNode->pstFather != &stMap)
        pstNode = pstNode->pstFather;
    return pstNode;
}

} // namespace

struct YamlKeyIndex : TextIndex<YamlListNode, KeyText> {};

namespace {

// Gives an open map an index of all its keys.
uint32_t IndexMake(YamlListNode &stMap, uint32_t uiKeys) noexcept
{
    auto *pstIndex = static_cast<YamlKeyIndex *>(ZR_MemAlloc(sizeof(YamlKeyIndex), yaml_MemHandleGet()));
    if (pstIndex == nullptr)
        return YAML_FAIL(YAML_ERR_NOMEM, "Allocate memory for key index failed.");
    *pstIndex = {};
    stMap.uPrivate.pstKeyIndex = pstIndex; // from here on it goes with the map
    if (!pstIndex->Reserve(uiKeys + 1))
        return YAML_FAIL(YAML_ERR_NOMEM, "Allocate memory for key index failed.");
    for (YamlListNode &stKey : Children(stMap)) {
        if (stKey.uiSameWithAnchor == 0)
            (void)pstIndex->Put(stKey, TextHash(stKey.pcValue));
    }
    return YAML_OK;
}

uint32_t KeysWalk(YamlListNode &stMap, const char *pcText, SameKeys &stFound) noexcept
{
    const WantedKey stWanted(pcText);
    uint32_t uiKeys = 0;
    for (YamlListNode &stKey : Children(stMap)) {
        ++uiKeys;
        if (stWanted.IsOf(stKey))
            (stKey.uiFromAlias == 0 ? stFound.pstWritten : stFound.pstMerged) = &stKey;
    }
    const bool bOpen = (stMap.uiState & NODE_OPEN) != 0;
    return bOpen && uiKeys >= IndexFromKeys ? IndexMake(stMap, uiKeys) : YAML_OK;
}

} // namespace

uint32_t zryaml::parse::KeysFind(YamlListNode &stMap, const char *pcText, SameKeys &stFound) noexcept
{
    stFound = {};
    if (stMap.uPrivate.pstKeyIndex == nullptr)
        return KeysWalk(stMap, pcText, stFound);
    stFound.ulHash = TextHash(pcText);
    YamlListNode *pstKey = stMap.uPrivate.pstKeyIndex->Find(pcText, stFound.ulHash);
    const bool bMerged = pstKey != nullptr && pstKey->uiFromAlias != 0;
    stFound.pstWritten = bMerged ? pstKey->uPrivate.pstSameKey : pstKey;
    stFound.pstMerged = bMerged ? pstKey : nullptr;
    return YAML_OK;
}

uint32_t zryaml::parse::KeyInsert(YamlListNode &stMap, YamlListNode *pstPrevious, YamlListNode &stKey,
                                  uint64_t ulHash) noexcept
{
    YamlKeyIndex *pstIndex = stMap.uPrivate.pstKeyIndex;
    if (pstIndex != nullptr && stKey.uiSameWithAnchor == 0) {
        if (!pstIndex->Reserve(pstIndex->Count() + 1))
            return YAML_FAIL(YAML_ERR_NOMEM, "Allocate memory for key index failed.");
        (void)pstIndex->Put(stKey, ulHash != 0 ? ulHash : TextHash(stKey.pcValue));
    }
    if (pstPrevious != nullptr) {
        ChildInsertAfter(*pstPrevious, stKey);
        return YAML_OK;
    }
    stKey.pstFather = &stMap;
    ChildTypeFix(stMap, YAML_DATATYPE_SCALAR);
    ListInsertAfter(stMap.stChildList, stKey.stChildLink);
    return YAML_OK;
}

void zryaml::parse::KeyRemove(YamlListNode &stMap, YamlListNode &stKey) noexcept
{
    YamlKeyIndex *pstIndex = stMap.uPrivate.pstKeyIndex;
    if (stKey.uPrivate.pstSameKey != nullptr)
        stKey.uPrivate.pstSameKey->uPrivate.pstSameKey = nullptr; // the merged key is overridden no more
    else if (pstIndex != nullptr)
        pstIndex->Remove(stKey.pcValue);
    yaml_ListNodeFree(&stKey);
    if (!HasChildren(stMap))
        stMap.uiNextLevelType = YAML_DATATYPE_NONE;
}

void zryaml::parse::KeyIndexRelease(YamlListNode &stMap) noexcept
{
    if (stMap.uPrivate.pstKeyIndex == nullptr)
        return;
    stMap.uPrivate.pstKeyIndex->Release();
    ZR_MemFree(stMap.uPrivate.pstKeyIndex, yaml_MemHandleGet());
    stMap.uPrivate.pstKeyIndex = nullptr;
}

uint32_t yaml_ScalarNodeAddWithKeyRole(YamlListNode *pstNewNode, YamlListNode *pstCurrNode)
{
    YamlListNode *pstMap = InnermostCollection(*pstCurrNode, YAML_DATATYPE_MAP);
    if (pstMap == nullptr)
        return YAML_FAIL(YAML_ERR_PARSE, "The father node is NULL.");

    SameKeys stSame;
    const uint32_t uiResult = KeysFind(*pstMap, pstNewNode->pcValue, stSame);
    if (uiResult != YAML_OK)
        return uiResult;
    if (stSame.pstWritten != nullptr) {
        const uint32_t uiCode =
            YAML_FAIL(YAML_ERR_SAME, "There is a same scalar in this list. (Scalar=%s)", pstNewNode->pcValue);
        ErrorFirstPlaceAdd(stSame.pstWritten->uiLine, stSame.pstWritten->uiColumn);
        return uiCode;
    }
    if (stSame.pstMerged != nullptr) {
        YAML_NOTE(YAML_ERR_SAME, "There is a same scalar in alias list. (Scalar=%s)", pstNewNode->pcValue);
        pstNewNode->uiSameWithAnchor = 1;
        pstNewNode->uPrivate.pstSameKey = stSame.pstMerged;
        stSame.pstMerged->uPrivate.pstSameKey = pstNewNode;
    }
    return KeyInsert(*pstMap, KeyBefore(*pstMap, *pstCurrNode), *pstNewNode, stSame.ulHash);
}

YamlListNode *yaml_SameKeyFindInAnchor(const YamlListNode *pstKeyNode)
{
    if (pstKeyNode->uPrivate.pstSameKey != nullptr)
        return pstKeyNode->uPrivate.pstSameKey;
    for (YamlListNode &stKey : Children(*pstKeyNode->pstFather)) {
        if (stKey.uiFromAlias == 1 && yaml_ScalarSameCheck(&stKey, pstKeyNode, 1) != YAML_OK)
            return &stKey;
    }
    return nullptr;
}

uint32_t yaml_AnchorNodeReplace(YamlListNode *pstNewNode, YamlListNode *pstSameKeyNode)
{
    yaml_AnchorChildListRemove(pstSameKeyNode);
    ChildAppend(*pstSameKeyNode, *pstNewNode);
    return YAML_OK;
}

void yaml_AnchorChildListRemove(YamlListNode *pstSameKeyNode)
{
    while (YamlListNode *pstChild = FirstChild(*pstSameKeyNode))
        yaml_ListNodeFree(pstChild);
    pstSameKeyNode->uiNextLevelType = YAML_DATATYPE_NONE; // whatever comes next decides it anew
}
