// SPDX-License-Identifier: Apache-2.0
// Lists the keys that nobody has read.
#include "../record_size.h"
#include "../text_cut.h"
#include "../value_source.h"
#include "read_mark.h"

using namespace zryaml;
using namespace zryaml::query;

namespace {

// A key that is not listed: a repeated one, which reads as the merged key, or a template for aliases and merges.
bool IsPassedOver(const YamlListNode &stKey) noexcept
{
    const YamlListNode *pstValue = FirstChild(stKey);
    return stKey.uiSameWithAnchor == 1 || pstValue == nullptr || (pstValue->uiState & NODE_ANCHORED) != 0;
}

// The node that follows a node and all that is below it.
const YamlListNode *Behind(const YamlListNode *pstNode) noexcept
{
    for (; pstNode->pstFather != nullptr; pstNode = pstNode->pstFather) {
        const YamlListNode &stFather = *pstNode->pstFather;
        const NodeLink eLink = ChildLinkOf(stFather);
        const YamlList *pstNext = LinkOf(*pstNode, eLink).next;
        if (pstNext != &stFather.stChildList)
            return NodeOf(pstNext, eLink);
    }
    return nullptr;
}

const YamlListNode *UnreadFrom(const YamlListNode *pstNode) noexcept
{
    while (pstNode != nullptr) {
        const bool bKey = IsKey(*pstNode);
        const bool bPassed = bKey && IsPassedOver(*pstNode);
        if (bKey && !bPassed && !IsRead(*pstNode))
            return pstNode;
        const YamlListNode *pstBelow = bPassed ? nullptr : FirstChild(*pstNode);
        pstNode = pstBelow != nullptr ? pstBelow : Behind(pstNode);
    }
    return nullptr;
}

void UnreadFill(const YamlListNode &stKey, YamlUnreadKey &stUnread) noexcept
{
    const YamlListNode *pstWritten = stKey.uPrivate.pstSameKey; // where a merged key was overridden
    const YamlListNode &stPlace = pstWritten != nullptr ? *pstWritten : stKey;
    stUnread.pcKey = stKey.pcValue;
    stUnread.pcSource = SourceNameOf(&stPlace);
    stUnread.uiLine = stPlace.uiLine;
    stUnread.uiColumn = stPlace.uiColumn;
    stUnread.uiFromAlias = stPlace.uiFromAlias;
    stUnread.pstNode = &stKey;
    if (ZRYAML_ValuePathGet(&stKey, sizeof(stUnread.acPath), stUnread.acPath) >= sizeof(stUnread.acPath))
        CutMark(stUnread.acPath, sizeof(stUnread.acPath));
}

} // namespace

uint32_t ZRYAML_UnreadKeyNext(YamlHandle *pstHandle, YamlUnreadKey *pstKey)
{
    ErrorClear();
    if (pstHandle == nullptr || pstKey == nullptr)
        return YAML_FAIL(YAML_ERR_PARAM, "The parameter is null.");
    if (!RecordFits(*pstKey))
        return YAML_FAIL(YAML_ERR_PARAM, "The record is too small. (Size=%u)", pstKey->uiSize);
    if (DebugSwitch() == 0)
        return YAML_FAIL(YAML_ERR_SWITCH_OFF, "The debug switch has not been open.");
    const YamlListNode *pstFrom = pstKey->pstNode != nullptr ? Behind(pstKey->pstNode) : ZRYAML_RootGet(pstHandle);
    const YamlListNode *pstUnread = UnreadFrom(pstFrom);
    if (pstUnread == nullptr)
        return YAML_ERR_ITER_END;
    UnreadFill(*pstUnread, *pstKey);
    return YAML_OK;
}
