// SPDX-License-Identifier: Apache-2.0
// The exported operations on anchors, aliases, copies and merges. What a load never does is refused here: a copy of a
// collection into itself, which would go on for ever.
#include "merge_key.h"
#include "parse_internal.h"
#include "tree_builder.h"

#include <utility>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

// Whether a place lies in the collection that is to be copied there.
uint32_t PlaceCheck(const YamlListNode *place, const YamlListNode &source) noexcept
{
    if (source.uiDataType == YAML_DATATYPE_SCALAR)
        return YAML_OK;
    while (place != nullptr && place != &source)
        place = place->pstFather;
    return place == nullptr ? YAML_OK : YAML_FAIL(YAML_ERR_PARAM, "Can not copy a collection into itself.");
}

// Runs a step of a builder that copies a node to where the current node is.
template <typename... Parameters, typename... Arguments>
uint32_t CopyRun(YamlHandle &handle, YamlListNode *&current, const YamlListNode &source,
                 uint32_t (TreeBuilder::*step)(Parameters...) noexcept, Arguments &&...arguments) noexcept
{
    const uint32_t refusal = PlaceCheck(current, source);
    if (refusal != YAML_OK)
        return refusal;
    TreeBuilder builder = {handle, current};
    const uint32_t result = (builder.*step)(std::forward<Arguments>(arguments)...);
    current = builder.current;
    return result;
}

// Runs a copy of keys, the first of which goes first below the insertion node or right after it.
uint32_t KeysRun(YamlHandle &handle, YamlListNode *&insert, const YamlListNode &source, bool isFirst, bool test,
                 uint32_t (*copy)(YamlHandle &, KeysPlace &, const YamlListNode &) noexcept) noexcept
{
    uint32_t result = PlaceCheck(insert, source);
    if (result != YAML_OK)
        return result;
    KeysPlace place = {isFirst ? insert : insert->pstFather, isFirst ? nullptr : insert, test};
    result = copy(handle, place, source);
    if (result == YAML_OK && place.previous != nullptr)
        insert = place.previous;
    return result;
}

} // namespace

YamlAnchorNode *yaml_AnchorNodeAlloc(YamlHandle *pstHandle, const char *pcName)
{
    return AnchorCreate(*pstHandle, pcName);
}

uint32_t yaml_AnchorRecord(YamlHandle *pstHandle, const char *pcName, YamlListNode *pstNewNode, uint32_t uiAnchorType)
{
    return pcName == nullptr ? YAML_OK : AnchorAdd(*pstHandle, pcName, *pstNewNode, uiAnchorType);
}

void yaml_AnchorRecordEnd(YamlHandle *pstHandle, YamlListNode *pstNode)
{
    if ((pstNode->uiState & NODE_ANCHORED) != 0)
        AnchorFinish(*pstHandle, *pstNode);
}

YamlAnchorNode *yaml_AnchorObjFind(const YamlHandle *pstHandle, const char *pcName)
{
    return AnchorFind(*pstHandle, pcName);
}

void yaml_AnchorNodesRelease(YamlList *pstHead)
{
    AnchorListRelease(*pstHead);
}

void yaml_AnchorListRealse(YamlHandle *pstHandle)
{
    AnchorsRelease(*pstHandle);
}

uint32_t yaml_AliasProcess(const yaml_event_t *pstEvent, YamlListNode **ppstCurrNode, YamlHandle *pstHandle,
                           uint32_t *puiKeyValueFlag)
{
    TreeBuilder builder = {*pstHandle, *ppstCurrNode, *puiKeyValueFlag};
    const uint32_t result = builder.TakeAlias(*pstEvent);
    *ppstCurrNode = builder.current;
    *puiKeyValueFlag = builder.expected;
    return result;
}

uint32_t yaml_AnchorNodesParse(YamlHandle *pstHandle, YamlListNode **ppstCurrNode, YamlAnchorNode *pstAnchor,
                               uint32_t *puiKeyValueFlag)
{
    TreeBuilder builder = {*pstHandle, *ppstCurrNode, *puiKeyValueFlag};
    uint32_t result = PlaceCheck(*ppstCurrNode, *pstAnchor->pstAnchoredNode);
    if (result == YAML_OK)
        result = builder.PlaceCopy(*pstAnchor);
    *ppstCurrNode = builder.current;
    *puiKeyValueFlag = builder.expected;
    return result;
}

uint32_t yaml_AnchorInsertInSequence(YamlHandle *pstHandle, YamlListNode **ppstCurrNode, const YamlListNode *pstSrcNode,
                                     uint32_t uiFirstFlag)
{
    YamlListNode *sequence = uiFirstFlag == 1 ? *ppstCurrNode : InnermostCollection(**ppstCurrNode, YAML_DATATYPE_SEQ);
    return CopyRun(*pstHandle, *ppstCurrNode, *pstSrcNode, &TreeBuilder::PlaceElementCopy, sequence, *pstSrcNode);
}

uint32_t yaml_AnchorInsertInMap(YamlHandle *pstHandle, YamlListNode **ppstCurrNode, const YamlListNode *pstSrcNode,
                                uint32_t uiFirstFlag)
{
    return CopyRun(*pstHandle, *ppstCurrNode, *pstSrcNode, &TreeBuilder::PlaceValueCopy, *pstSrcNode, uiFirstFlag == 1);
}

uint32_t yaml_DirectAnchorInsertInMap(YamlHandle *pstHandle, YamlListNode **ppstCurrNode,
                                      const YamlListNode *pstSrcNode)
{
    return CopyRun(*pstHandle, *ppstCurrNode, *pstSrcNode, &TreeBuilder::PlaceCopyBelow, *pstSrcNode);
}

uint32_t yaml_AnchorInsertInMapWithoutMapNode(YamlHandle *pstHandle, YamlListNode **ppstCurrNode,
                                              const YamlListNode *pstSrcNode, uint32_t uiFirstFlag)
{
    return CopyRun(*pstHandle, *ppstCurrNode, *pstSrcNode, &TreeBuilder::Merge, *pstSrcNode, uiFirstFlag == 1);
}

YamlListNode *yaml_SingleNodeDup(YamlHandle *pstHandle, const YamlListNode *pstSrcNode)
{
    return NodeCopy(*pstHandle, *pstSrcNode);
}

uint32_t yaml_ScalarAnchorCopy(YamlHandle *pstHandle, YamlListNode **ppstInsertNode, const YamlListNode *pstSrcNode)
{
    YamlListNode *copy = ChildCopy(*pstHandle, **ppstInsertNode, *pstSrcNode);
    if (copy == nullptr)
        return YAML_ERR_NOMEM;
    *ppstInsertNode = copy;
    return YAML_OK;
}

uint32_t yaml_AnchorNodesClone(YamlHandle *pstHandle, YamlListNode *pstDstNode, const YamlListNode *pstSrcNode)
{
    const YamlListNode *value = FirstChild(*pstSrcNode);
    const uint32_t refusal = value != nullptr ? PlaceCheck(pstDstNode, *value) : YAML_OK;
    return refusal != YAML_OK ? refusal : ValueCopy(*pstHandle, *pstDstNode, *pstSrcNode);
}

uint32_t yaml_MapAnchorCopy(YamlHandle *pstHandle, YamlListNode **ppstInsertNode, const YamlListNode *pstSrcNode,
                            uint32_t uiFirstFlag)
{
    // With the first flag the map had no keys, and those of the source differ, so that there is nothing to test.
    const bool isFirst = uiFirstFlag == 1;
    return KeysRun(*pstHandle, *ppstInsertNode, *pstSrcNode, isFirst, !isFirst, KeysCopy);
}

uint32_t yaml_Sequence2MapCopy(YamlHandle *pstHandle, YamlListNode **ppstInsertNode, const YamlListNode *pstSrcNode,
                               uint32_t uiFirstFlag)
{
    return KeysRun(*pstHandle, *ppstInsertNode, *pstSrcNode, uiFirstFlag == 1, true, FirstKeysCopy);
}

uint32_t yaml_SequenceAnchorCopy(YamlHandle *pstHandle, YamlListNode *pstDstNode, const YamlListNode *pstSrcNode,
                                 uint32_t uiFirstFlag)
{
    const bool isFirst = uiFirstFlag == 1; // else the copies go behind an element
    const uint32_t refusal = PlaceCheck(pstDstNode, *pstSrcNode);
    if (refusal != YAML_OK)
        return refusal;
    // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker): what copies go behind has a father, by contract
    return ElementsCopy(*pstHandle, isFirst ? *pstDstNode : *pstDstNode->pstFather, isFirst ? nullptr : pstDstNode,
                        *pstSrcNode);
}
