// SPDX-License-Identifier: Apache-2.0
// Where nodes go: every child hangs under its own father, in document order, and the collection that is open when an
// event arrives is known by its mark, whatever the current node happens to be.
#include "parse_internal.h"

namespace {

// A tree made by hand carries no marks. There the current node is the collection itself, just opened, or stands in it.
YamlListNode *UnmarkedCollection(YamlListNode &stCurrNode, uint32_t uiDataType) noexcept
{
    YamlListNode *pstFather = stCurrNode.pstFather;
    if (stCurrNode.uiDataType == uiDataType && !HasChildren(stCurrNode))
        return &stCurrNode;
    if (pstFather != nullptr && pstFather->uiDataType == uiDataType)
        return pstFather; // from an element or a key
    if (uiDataType == YAML_DATATYPE_SEQ)
        return stCurrNode.uiDataType == YAML_DATATYPE_SEQ ? &stCurrNode : nullptr;
    return pstFather != nullptr ? pstFather->pstFather : nullptr; // from the value of a key
}

} // namespace

void zryaml::parse::ChildAppend(YamlListNode &stFather, YamlListNode &stChild) noexcept
{
    stChild.pstFather = &stFather;
    yaml_FatherNodeNextLevelTypeSet(&stChild, stChild.uiDataType);
    ListInsertAfter(*stFather.stChildList.prev, LinkIn(stFather, stChild));
}

void zryaml::parse::ChildInsertAfter(YamlListNode &stPrevious, YamlListNode &stChild) noexcept
{
    YamlListNode &stFather = *stPrevious.pstFather;
    stChild.pstFather = &stFather;
    ListInsertAfter(LinkIn(stFather, stPrevious), LinkIn(stFather, stChild));
}

void zryaml::parse::ChildrenDetach(YamlListNode &stFather) noexcept
{
    while (YamlListNode *pstChild = FirstChild(stFather)) {
        YamlList &stLink = LinkIn(stFather, *pstChild);
        ListRemove(stLink);
        ListInit(stLink);
        pstChild->pstFather = nullptr;
    }
}

YamlListNode *zryaml::parse::InnermostCollection(YamlListNode &stCurrNode, uint32_t uiDataType) noexcept
{
    // While loading this takes two steps at the most: element or key, value, or the collection itself.
    for (YamlListNode *pstNode = &stCurrNode; pstNode != nullptr; pstNode = pstNode->pstFather) {
        if ((pstNode->uiState & NODE_OPEN) != 0)
            return pstNode;
    }
    return UnmarkedCollection(stCurrNode, uiDataType);
}

bool zryaml::parse::ValueExpected(const YamlListNode &stMap, const YamlListNode &stCurrNode) noexcept
{
    return stCurrNode.pstFather == &stMap && !HasChildren(stCurrNode);
}

uint32_t yaml_FirstNodeCheck(const YamlListNode *pstNode)
{
    const YamlListNode &stFather = *pstNode->pstFather;
    const NodeLink eLink = stFather.uiNextLevelType == YAML_DATATYPE_SEQ ? NodeLink::Seq : NodeLink::Child;
    return NodeOf(stFather.stChildList.next, eLink) == pstNode ? 1 : 0;
}

void yaml_FatherNodeNextLevelTypeSet(YamlListNode *pstNode, uint32_t uiDataType)
{
    YamlListNode *pstFather = pstNode->pstFather;
    if (pstFather != nullptr && pstFather->uiNextLevelType == YAML_DATATYPE_NONE)
        pstFather->uiNextLevelType = uiDataType;
}
