// SPDX-License-Identifier: Apache-2.0
// From parse events to the tree: scalars, and the start and end of sequences and maps. What a start or a scalar makes
// hangs in the innermost open collection; an end returns to the collection that it closes.
#include "parse_internal.h"

#include <yaml.h>

namespace {

struct CollectionKind { // how sequences and maps differ
    uint32_t uiDataType;
    uint32_t uiEventType;
    const char *pcAsKey; // refusal of such a collection as a key
};
constexpr CollectionKind g_stSequence = {YAML_DATATYPE_SEQ, YAML_SEQUENCE_START_EVENT,
                                         "It does not support appearing a sequence event after map event."};
constexpr CollectionKind g_stMap = {YAML_DATATYPE_MAP, YAML_MAPPING_START_EVENT,
                                    "It does not support continuous map events."};

const char *TextOf(const yaml_char_t *pucText) noexcept
{
    return reinterpret_cast<const char *>(pucText);
}

YamlListNode *OpenCollection(const YamlHandle &stHandle, YamlListNode &stCurrNode) noexcept
{
    switch (yaml_CurrEventGet(&stHandle)) {
    case YAML_SEQUENCE_START_EVENT:
        return InnermostCollection(stCurrNode, YAML_DATATYPE_SEQ);
    case YAML_MAPPING_START_EVENT:
        return InnermostCollection(stCurrNode, YAML_DATATYPE_MAP);
    default:
        return nullptr;
    }
}

YamlListNode *CollectionCreate(YamlHandle &stHandle, const CollectionKind &stKind) noexcept
{
    YamlListNode *pstNode = yaml_ListNodeAlloc(&stHandle);
    if (pstNode != nullptr) {
        pstNode->uiDataType = stKind.uiDataType;
        OwnBytesAdd(stHandle, 0);
    } else if (&stKind == &g_stMap) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to allocate node for map node.");
    }
    return pstNode;
}

// Hangs the new value of a key that repeats a merged key under the merged one.
uint32_t MarkedKeyValueSet(YamlHandle &stHandle, const YamlListNode &stKey, YamlListNode &stValue,
                           const char *pcAnchor) noexcept
{
    YamlListNode *pstMerged = yaml_SameKeyFindInAnchor(&stKey);
    if (pstMerged == nullptr)
        return YAML_FAIL(YAML_ERR_PARSE,
                         stValue.uiDataType == YAML_DATATYPE_SEQ
                             ? "Failed to process sequence start event: can not find node in anchor but the current "
                               "father node has been set as same node with anchor. (Scalar=%s)"
                             : "Failed to process map start event: can not find node in anchor but the current "
                               "father node has been set as same node with anchor. (Scalar=%s)",
                         stKey.pcValue);
    if (pcAnchor != nullptr)
        AnchorNameDrop(stHandle, pcAnchor); // it is not recorded, and an older one must not answer for it
    return yaml_AnchorNodeReplace(&stValue, pstMerged);
}

// Hangs a collection below the root, in a sequence or under a key.
void CollectionPlace(YamlListNode &stNode, YamlListNode *pstOpen, YamlListNode &stCurrNode) noexcept
{
    const bool bInSeq = pstOpen != nullptr && pstOpen->uiDataType == YAML_DATATYPE_SEQ;
    if (bInSeq && stNode.uiDataType == YAML_DATATYPE_MAP)
        return yaml_MapNodeAddInSeq(&stNode, &stCurrNode);
    YamlListNode &stFather = bInSeq ? *pstOpen : stCurrNode;
    ChildAppend(stFather, stNode);
    if (stFather.uiDataType == YAML_DATATYPE_NONE && stNode.uiDataType == YAML_DATATYPE_MAP)
        stFather.uiDataType = YAML_DATATYPE_MAP; // only the root
}

// Places a new collection and opens it.
uint32_t CollectionOpen(YamlHandle &stHandle, const CollectionKind &stKind, YamlListNode **ppstCurrNode,
                        YamlListNode *pstOpen, const char *pcAnchor) noexcept
{
    YamlListNode *pstNode = CollectionCreate(stHandle, stKind);
    if (pstNode == nullptr)
        return YAML_ERR_NOMEM;
    const bool bMarked = (*ppstCurrNode)->uiSameWithAnchor == 1;
    if (bMarked) {
        const uint32_t uiResult = MarkedKeyValueSet(stHandle, **ppstCurrNode, *pstNode, pcAnchor);
        if (uiResult != YAML_OK) {
            yaml_ListNodeFree(pstNode);
            return uiResult;
        }
    } else {
        CollectionPlace(*pstNode, pstOpen, **ppstCurrNode);
    }
    pstNode->uiState |= NODE_OPEN;
    *ppstCurrNode = pstNode;
    yaml_EventStartSet(&stHandle, stKind.uiEventType);
    return bMarked ? YAML_OK : yaml_AnchorRecord(&stHandle, pcAnchor, pstNode, stKind.uiDataType);
}

uint32_t KeyRefuse(const CollectionKind &stKind) noexcept
{
    const uint32_t uiCode = YAML_FAIL(YAML_ERR_EVENT, "%s", stKind.pcAsKey);
    ErrorHintAdd("only a plain or quoted text can be a key");
    return uiCode;
}

uint32_t CollectionStart(YamlHandle &stHandle, const CollectionKind &stKind, YamlListNode **ppstCurrNode,
                         uint32_t uiLastEventType, const char *pcAnchor) noexcept
{
    YamlListNode *pstOpen = OpenCollection(stHandle, **ppstCurrNode);
    const bool bInMap = pstOpen != nullptr && pstOpen->uiDataType == YAML_DATATYPE_MAP;
    if (uiLastEventType == YAML_MAPPING_START_EVENT || (bInMap && !ValueExpected(*pstOpen, **ppstCurrNode)))
        return KeyRefuse(stKind);
    const uint32_t uiResult = DepthCheck(stHandle, 1);
    return uiResult != YAML_OK ? uiResult : CollectionOpen(stHandle, stKind, ppstCurrNode, pstOpen, pcAnchor);
}

void CollectionEnd(YamlHandle &stHandle, uint32_t uiDataType, YamlListNode **ppstCurrNode) noexcept
{
    yaml_EventEndSet(&stHandle);
    YamlListNode *pstClosed = InnermostCollection(**ppstCurrNode, uiDataType);
    if (pstClosed == nullptr)
        return;
    pstClosed->uiState &= ~NODE_OPEN;
    if (uiDataType == YAML_DATATYPE_MAP)
        KeyIndexRelease(*pstClosed);
    yaml_AnchorRecordEnd(&stHandle, pstClosed);
    *ppstCurrNode = pstClosed;
}

// Hangs a node at the end of the sequence that the current node is or stands in.
void ElementAdd(YamlListNode &stNewNode, YamlListNode &stCurrNode) noexcept
{
    YamlListNode *pstSeq = InnermostCollection(stCurrNode, YAML_DATATYPE_SEQ);
    if (pstSeq != nullptr)
        ChildAppend(*pstSeq, stNewNode);
}

} // namespace

uint32_t yaml_ScalarProcess(const yaml_event_t *pstEvent, YamlListNode **ppstCurrNode, YamlHandle *pstHandle,
                            uint32_t *puiKeyValueFlag, [[maybe_unused]] uint32_t uiLastEventType)
{
    const auto &stScalar = pstEvent->data.scalar;
    const std::string_view svText(TextOf(stScalar.value), stScalar.length);
    if (svText.find('\0') != std::string_view::npos)
        return YAML_FAIL(YAML_ERR_EVENT, "The scalar holds a NUL character which is not supported.");
    YamlListNode *pstNode = ScalarCreate(*pstHandle, svText);
    if (pstNode == nullptr)
        return YAML_FAIL(YAML_ERR_NOMEM, "Failed to allocate memory for scalar node.");

    YamlListNode *pstBefore = *ppstCurrNode;
    const uint32_t uiResult = yaml_ScalarNodeAdd(pstHandle, pstNode, ppstCurrNode, puiKeyValueFlag);
    if (uiResult != YAML_OK) {
        yaml_ListNodeFree(pstNode);
        *ppstCurrNode = pstBefore;
        return uiResult;
    }
    OwnBytesAdd(*pstHandle, stScalar.length + 1);
    return yaml_AnchorRecord(pstHandle, TextOf(stScalar.anchor), pstNode, YAML_DATATYPE_SCALAR);
}

uint32_t yaml_ScalarNodeAdd(YamlHandle *pstHandle, YamlListNode *pstNewNode, YamlListNode **ppstCurrNode,
                            uint32_t *puiKeyValueFlag)
{
    YamlListNode *pstCurrNode = *ppstCurrNode;
    pstNewNode->pstFather = pstCurrNode;
    pstNewNode->uiDataType = YAML_DATATYPE_SCALAR;
    *ppstCurrNode = pstNewNode;
    const uint32_t uiOpen = yaml_CurrEventGet(pstHandle);
    if (uiOpen == YAML_SEQUENCE_START_EVENT)
        return yaml_ScalarNodeAddInSeq(pstNewNode, pstCurrNode);
    if (uiOpen == YAML_MAPPING_START_EVENT)
        return yaml_ScalarNodeAddInMap(pstNewNode, pstCurrNode, puiKeyValueFlag);
    const uint32_t uiCode = YAML_FAIL(YAML_ERR_EVENT, "Unknown last event when add scalar data. (Event=%u)", uiOpen);
    ErrorHintAdd("a document is a map or a sequence: is a space missing after a ':' or '-'?");
    return uiCode;
}

uint32_t yaml_ScalarNodeAddInMap(YamlListNode *pstNewNode, YamlListNode *pstCurrNode, uint32_t *puiKeyValueFlag)
{
    if (*puiKeyValueFlag != 1) {
        *puiKeyValueFlag = 1;
        return yaml_ScalarNodeAddWithKeyRole(pstNewNode, pstCurrNode);
    }
    *puiKeyValueFlag = 0;
    if (pstCurrNode->uiSameWithAnchor != 1) {
        ChildAppend(*pstCurrNode, *pstNewNode);
        return YAML_OK;
    }
    YamlListNode *pstMerged = yaml_SameKeyFindInAnchor(pstCurrNode);
    if (pstMerged == nullptr)
        return YAML_FAIL(YAML_ERR_PARSE,
                         "Can not find node in anchor but the current father node has been set as same node with "
                         "anchor. (Scalar=%s)",
                         pstCurrNode->pcValue);
    return yaml_AnchorNodeReplace(pstNewNode, pstMerged);
}

uint32_t yaml_ScalarNodeAddInSeq(YamlListNode *pstNewNode, YamlListNode *pstCurrNode)
{
    ElementAdd(*pstNewNode, *pstCurrNode);
    return YAML_OK;
}

uint32_t yaml_SeqStartProcess(const yaml_event_t *pstEvent, uint32_t uiLastEventType, YamlListNode **ppstCurrNode,
                              YamlHandle *pstHandle)
{
    return CollectionStart(*pstHandle, g_stSequence, ppstCurrNode, uiLastEventType,
                           TextOf(pstEvent->data.sequence_start.anchor));
}

uint32_t yaml_SeqEndProcess(YamlHandle *pstHandle, YamlListNode **ppstCurrNode, uint32_t *puiKeyValueFlag)
{
    CollectionEnd(*pstHandle, YAML_DATATYPE_SEQ, ppstCurrNode);
    *puiKeyValueFlag = 0;
    return YAML_OK;
}

uint32_t yaml_MapStartProcess(const yaml_event_t *pstEvent, uint32_t uiLastEventType, YamlListNode **ppstCurrNode,
                              YamlHandle *pstHandle)
{
    return CollectionStart(*pstHandle, g_stMap, ppstCurrNode, uiLastEventType,
                           TextOf(pstEvent->data.mapping_start.anchor));
}

void yaml_MapNodeAddInSeq(YamlListNode *pstNewNode, YamlListNode *pstCurrNode)
{
    ElementAdd(*pstNewNode, *pstCurrNode);
}

void yaml_MapEndProcess(YamlHandle *pstHandle, YamlListNode **ppstCurrNode)
{
    CollectionEnd(*pstHandle, YAML_DATATYPE_MAP, ppstCurrNode);
}
