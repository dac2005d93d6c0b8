// SPDX-License-Identifier: Apache-2.0
// Where nodes go: every child hangs under its own father, in document order, and the collection that is open when an
// event arrives is known by its mark, whatever the current node happens to be.
#pragma once

#include "../node_tree.h"

namespace zryaml::parse {

// The first child fixes the type of its father's children.
inline void ChildTypeFix(YamlListNode &stFather, uint32_t uiDataType) noexcept
{
    if (stFather.uiNextLevelType == YAML_DATATYPE_NONE)
        stFather.uiNextLevelType = uiDataType;
}

// Hangs a node below a father as its last child.
inline void ChildAppend(YamlListNode &stFather, YamlListNode &stChild) noexcept
{
    stChild.pstFather = &stFather;
    ChildTypeFix(stFather, stChild.uiDataType);
    if (stFather.uiDataType == YAML_DATATYPE_SEQ)
        stChild.uPlace.uiNumber =
            HasChildren(stFather) ? NodeOf(stFather.stChildList.prev, NodeLink::Seq)->uPlace.uiNumber + 1 : 0;
    ListInsertAfter(*stFather.stChildList.prev, LinkIn(stFather, stChild));
}

// Numbers the elements of a sequence anew, after one went or came that was not the last.
void ElementsNumber(const YamlListNode &stSeq) noexcept;

// Hangs a node right after another one, below the same father. Elements are not numbered.
inline void ChildInsertAfter(YamlListNode &stPrevious, YamlListNode &stChild) noexcept
{
    YamlListNode &stFather = *stPrevious.pstFather;
    stChild.pstFather = &stFather;
    ListInsertAfter(LinkIn(stFather, stPrevious), LinkIn(stFather, stChild));
}

// Takes all children off a node; their links and fathers no longer reach it.
void ChildrenDetach(YamlListNode &stFather) noexcept;

// A tree made by hand carries no marks. There the current node is the collection itself, just opened, or stands in it.
[[nodiscard]] YamlListNode *UnmarkedCollection(YamlListNode &stCurrNode, uint32_t uiDataType) noexcept;

// The innermost open collection, known by its mark, or else by its type; NULL if none. While loading this takes two
// steps at the most: element or key, value, or the collection itself.
[[nodiscard]] inline YamlListNode *InnermostCollection(YamlListNode &stCurrNode, uint32_t uiDataType) noexcept
{
    for (YamlListNode *pstNode = &stCurrNode; pstNode != nullptr; pstNode = pstNode->pstFather) {
        if ((pstNode->uiState & NODE_OPEN) != 0)
            return pstNode;
    }
    return UnmarkedCollection(stCurrNode, uiDataType);
}

// Whether the current node is a key of the map that still waits for its value.
[[nodiscard]] inline bool ValueExpected(const YamlListNode &stMap, const YamlListNode &stCurrNode) noexcept
{
    return stCurrNode.pstFather == &stMap && !HasChildren(stCurrNode);
}

} // namespace zryaml::parse
