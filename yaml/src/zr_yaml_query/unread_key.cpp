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
bool IsPassedOver(const YamlListNode &key) noexcept
{
    const YamlListNode *value = FirstChild(key);
    return key.uiSameWithAnchor == 1 || value == nullptr || (value->uiState & NODE_ANCHORED) != 0;
}

// The node that follows a node and all that is below it.
const YamlListNode *Behind(const YamlListNode *node) noexcept
{
    for (; node->pstFather != nullptr; node = node->pstFather) {
        const YamlListNode &father = *node->pstFather;
        const NodeLink by = ChildLinkOf(father);
        const YamlList *next = LinkOf(*node, by).next;
        if (next != &father.stChildList)
            return NodeOf(next, by);
    }
    return nullptr;
}

const YamlListNode *UnreadFrom(const YamlListNode *node) noexcept
{
    while (node != nullptr) {
        const bool isKey = IsKey(*node);
        const bool passed = isKey && IsPassedOver(*node);
        if (isKey && !passed && !IsRead(*node))
            return node;
        const YamlListNode *below = passed ? nullptr : FirstChild(*node);
        node = below != nullptr ? below : Behind(node);
    }
    return nullptr;
}

void UnreadFill(const YamlListNode &key, YamlUnreadKey &unread) noexcept
{
    const YamlListNode *written = key.uPrivate.pstSameKey; // where a merged key was overridden
    const YamlListNode &place = written != nullptr ? *written : key;
    unread.pcKey = key.pcValue;
    unread.pcSource = SourceNameOf(&place);
    unread.uiLine = place.uiLine;
    unread.uiColumn = place.uiColumn;
    unread.uiFromAlias = place.uiFromAlias;
    unread.pstNode = &key;
    if (ZRYAML_ValuePathGet(&key, sizeof(unread.acPath), unread.acPath) >= sizeof(unread.acPath))
        CutMark(unread.acPath, sizeof(unread.acPath));
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
    const YamlListNode *from = pstKey->pstNode != nullptr ? Behind(pstKey->pstNode) : ZRYAML_RootGet(pstHandle);
    const YamlListNode *unread = UnreadFrom(from);
    if (unread == nullptr)
        return YAML_ERR_ITER_END;
    UnreadFill(*unread, *pstKey);
    return YAML_OK;
}
