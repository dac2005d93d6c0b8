// SPDX-License-Identifier: Apache-2.0
// The exported operations that build a tree: each runs one step of a builder on the state that its caller holds.
#include "map_key.h"
#include "parse_internal.h"
#include "tree_builder.h"

using namespace zryaml;
using namespace zryaml::parse;

uint32_t yaml_EventAnalyze(const yaml_event_t *pstEvent, YamlListNode **ppstCurrNode, uint32_t *puiKeyValueFlag,
                           uint32_t *puiLastEventType, uint32_t *puiDocumentCount, YamlHandle *pstHandle)
{
    TreeBuilder builder = {*pstHandle, *ppstCurrNode, *puiKeyValueFlag, *puiLastEventType, *puiDocumentCount};
    const uint32_t result = builder.Take(*pstEvent);
    *ppstCurrNode = builder.current;
    *puiKeyValueFlag = builder.expected;
    *puiLastEventType = builder.lastEvent;
    *puiDocumentCount = builder.documents;
    return result;
}

uint32_t yaml_ScalarProcess(const yaml_event_t *pstEvent, YamlListNode **ppstCurrNode, YamlHandle *pstHandle,
                            uint32_t *puiKeyValueFlag, [[maybe_unused]] uint32_t uiLastEventType)
{
    TreeBuilder builder = {*pstHandle, *ppstCurrNode, *puiKeyValueFlag};
    const uint32_t result = builder.TakeScalar(*pstEvent);
    *ppstCurrNode = builder.current;
    *puiKeyValueFlag = builder.expected;
    return result;
}

uint32_t yaml_ScalarNodeAdd(YamlHandle *pstHandle, YamlListNode *pstNewNode, YamlListNode **ppstCurrNode,
                            uint32_t *puiKeyValueFlag)
{
    TreeBuilder builder = {*pstHandle, *ppstCurrNode, *puiKeyValueFlag};
    const uint32_t result = builder.PlaceScalar(*pstNewNode);
    *ppstCurrNode = builder.current;
    *puiKeyValueFlag = builder.expected;
    return result;
}

uint32_t yaml_ScalarNodeAddInMap(YamlListNode *pstNewNode, YamlListNode *pstCurrNode, uint32_t *puiKeyValueFlag)
{
    return ScalarPlaceInMap(*pstNewNode, *pstCurrNode, *puiKeyValueFlag, nullptr);
}

uint32_t yaml_ScalarNodeAddInSeq(YamlListNode *pstNewNode, YamlListNode *pstCurrNode)
{
    ElementPlace(*pstNewNode, *pstCurrNode);
    return YAML_OK;
}

uint32_t yaml_SeqStartProcess(const yaml_event_t *pstEvent, uint32_t uiLastEventType, YamlListNode **ppstCurrNode,
                              YamlHandle *pstHandle)
{
    TreeBuilder builder = {*pstHandle, *ppstCurrNode};
    const uint32_t result = builder.Open(SequenceKind, uiLastEventType, pstEvent->data.sequence_start.anchor);
    *ppstCurrNode = builder.current;
    return result;
}

uint32_t yaml_SeqEndProcess(YamlHandle *pstHandle, YamlListNode **ppstCurrNode, uint32_t *puiKeyValueFlag)
{
    TreeBuilder builder = {*pstHandle, *ppstCurrNode};
    builder.Close(YAML_DATATYPE_SEQ);
    *ppstCurrNode = builder.current;
    *puiKeyValueFlag = ExpectKey;
    return YAML_OK;
}

uint32_t yaml_MapStartProcess(const yaml_event_t *pstEvent, uint32_t uiLastEventType, YamlListNode **ppstCurrNode,
                              YamlHandle *pstHandle)
{
    TreeBuilder builder = {*pstHandle, *ppstCurrNode};
    const uint32_t result = builder.Open(MapKind, uiLastEventType, pstEvent->data.mapping_start.anchor);
    *ppstCurrNode = builder.current;
    return result;
}

void yaml_MapNodeAddInSeq(YamlListNode *pstNewNode, YamlListNode *pstCurrNode)
{
    ElementPlace(*pstNewNode, *pstCurrNode);
}

void yaml_MapEndProcess(YamlHandle *pstHandle, YamlListNode **ppstCurrNode)
{
    TreeBuilder builder = {*pstHandle, *ppstCurrNode};
    builder.Close(YAML_DATATYPE_MAP);
    *ppstCurrNode = builder.current;
}

uint32_t yaml_ScalarNodeAddWithKeyRole(YamlListNode *pstNewNode, YamlListNode *pstCurrNode)
{
    pstNewNode->uPlace.uiTextMark = TextMarkOf(pstNewNode->pcValue); // an element had its number there
    return KeyPlace(*pstNewNode, *pstCurrNode, nullptr);
}

YamlListNode *yaml_SameKeyFindInAnchor(const YamlListNode *pstKeyNode)
{
    return MergedKeyOf(*pstKeyNode);
}

uint32_t yaml_AnchorNodeReplace(YamlListNode *pstNewNode, YamlListNode *pstSameKeyNode)
{
    ValueReplace(*pstSameKeyNode, *pstNewNode);
    return YAML_OK;
}

void yaml_AnchorChildListRemove(YamlListNode *pstSameKeyNode)
{
    ValueDrop(*pstSameKeyNode);
}
