// SPDX-License-Identifier: Apache-2.0
// Alias events: the anchored node is copied to where the alias stands, as a sequence item or as the value of a key. An
// alias as the value of "<<" is a merge.
#include "parse_internal.h"

#include <cstring>
#include <yaml.h>

namespace {

// An alias as a value of the map that is open; the next scalar of that map is a key again.
uint32_t AliasInMap(YamlHandle &stHandle, YamlListNode **ppstCurrNode, const YamlAnchorNode &stAnchor,
                    uint32_t *puiKeyValueFlag) noexcept
{
    const YamlListNode *pstMap = InnermostCollection(**ppstCurrNode, YAML_DATATYPE_MAP);
    if (pstMap == nullptr || !ValueExpected(*pstMap, **ppstCurrNode))
        return YAML_FAIL(YAML_ERR_EVENT, "It does not support an alias as a map key. (Alias=%s)",
                         stAnchor.pcAnchorName);
    *puiKeyValueFlag = 0;
    return yaml_AnchorInsertInMap(&stHandle, ppstCurrNode, stAnchor.pstAnchoredNode,
                                  yaml_FirstNodeCheck(*ppstCurrNode));
}

uint32_t AliasInSequence(YamlHandle &stHandle, YamlListNode **ppstCurrNode, const YamlAnchorNode &stAnchor) noexcept
{
    YamlListNode *pstSeq = InnermostCollection(**ppstCurrNode, YAML_DATATYPE_SEQ);
    const uint32_t uiFirstFlag = pstSeq == *ppstCurrNode && !HasChildren(*pstSeq) ? 1 : 0;
    return yaml_AnchorInsertInSequence(&stHandle, ppstCurrNode, stAnchor.pstAnchoredNode, uiFirstFlag);
}

uint32_t UnknownRefuse(const char *pcName) noexcept
{
    const uint32_t uiCode = YAML_FAIL(YAML_ERR_ALIAS, "The alias has not defined. (Alias=%s)", pcName);
    ErrorHintAdd("'&%s' must stand before this alias, on something that has ended", pcName);
    return uiCode;
}

} // namespace

uint32_t yaml_AliasProcess(const yaml_event_t *pstEvent, YamlListNode **ppstCurrNode, YamlHandle *pstHandle,
                           uint32_t *puiKeyValueFlag)
{
    const char *pcName = reinterpret_cast<const char *>(pstEvent->data.alias.anchor);
    YamlAnchorNode *pstAnchor = yaml_AnchorObjFind(pstHandle, pcName);
    if (pstAnchor == nullptr)
        return UnknownRefuse(pcName);
    pstHandle->pcAlias = pcName;
    const uint32_t uiResult = yaml_AnchorNodesParse(pstHandle, ppstCurrNode, pstAnchor, puiKeyValueFlag);
    pstHandle->pcAlias = nullptr;
    return uiResult;
}

uint32_t yaml_AnchorNodesParse(YamlHandle *pstHandle, YamlListNode **ppstCurrNode, YamlAnchorNode *pstAnchor,
                               uint32_t *puiKeyValueFlag)
{
    switch (yaml_CurrEventGet(pstHandle)) {
    case YAML_SEQUENCE_START_EVENT:
        return AliasInSequence(*pstHandle, ppstCurrNode, *pstAnchor);
    case YAML_MAPPING_START_EVENT:
        return AliasInMap(*pstHandle, ppstCurrNode, *pstAnchor, puiKeyValueFlag);
    default:
        return YAML_FAIL(YAML_ERR_PARAM, "There is an invalid event in the event stack.");
    }
}

uint32_t yaml_AnchorInsertInSequence(YamlHandle *pstHandle, YamlListNode **ppstCurrNode, const YamlListNode *pstSrcNode,
                                     uint32_t uiFirstFlag)
{
    YamlListNode *pstSeq = uiFirstFlag == 1 ? *ppstCurrNode : InnermostCollection(**ppstCurrNode, YAML_DATATYPE_SEQ);
    if (pstSeq == nullptr)
        return YAML_FAIL(YAML_ERR_PARAM, "There is an invalid event in the event stack.");
    YamlListNode *pstCopy = yaml_SingleNodeDup(pstHandle, pstSrcNode);
    if (pstCopy == nullptr)
        return YAML_ERR_NOMEM;
    ChildAppend(*pstSeq, *pstCopy);
    *ppstCurrNode = pstCopy;
    return ContentCopy(*pstHandle, *pstCopy, *pstSrcNode);
}

uint32_t yaml_AnchorInsertInMap(YamlHandle *pstHandle, YamlListNode **ppstCurrNode, const YamlListNode *pstSrcNode,
                                uint32_t uiFirstFlag)
{
    YamlListNode &stKey = **ppstCurrNode;
    if (stKey.pcValue != nullptr && strcmp(stKey.pcValue, "<<") == 0)
        return yaml_AnchorInsertInMapWithoutMapNode(pstHandle, ppstCurrNode, pstSrcNode, uiFirstFlag);
    if (stKey.uiSameWithAnchor == 1) {
        YamlListNode *pstMerged = yaml_SameKeyFindInAnchor(&stKey);
        if (pstMerged == nullptr)
            return YAML_FAIL(YAML_ERR_PARSE,
                             "Can not find node in anchor but the current father node has been set as same node with "
                             "anchor. (Scalar=%s)",
                             stKey.pcValue);
        yaml_AnchorChildListRemove(pstMerged);
        *ppstCurrNode = pstMerged;
    }
    return yaml_DirectAnchorInsertInMap(pstHandle, ppstCurrNode, pstSrcNode);
}

uint32_t yaml_DirectAnchorInsertInMap(YamlHandle *pstHandle, YamlListNode **ppstCurrNode,
                                      const YamlListNode *pstSrcNode)
{
    if (yaml_ScalarAnchorCopy(pstHandle, ppstCurrNode, pstSrcNode) != YAML_OK) {
        if (pstSrcNode->uiDataType == YAML_DATATYPE_SCALAR)
            YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to allocate memory for dup scalar node.");
        return YAML_ERR_NOMEM;
    }
    return ContentCopy(*pstHandle, **ppstCurrNode, *pstSrcNode);
}
