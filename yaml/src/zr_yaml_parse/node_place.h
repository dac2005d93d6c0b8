// SPDX-License-Identifier: Apache-2.0
// Where nodes go: every child hangs under its own father, in document order, and the collection that is open when an
// event arrives is known by its mark, whatever the current node happens to be.
#pragma once

#include "../node_tree.h"

namespace zryaml::parse {

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

// Whether a node is the first one below its father.
[[nodiscard]] inline bool IsFirstChild(const YamlListNode &stNode) noexcept
{
    const YamlListNode &stFather = *stNode.pstFather;
    const NodeLink eLink = stFather.uiNextLevelType == YAML_DATATYPE_SEQ ? NodeLink::Seq : NodeLink::Child;
    return NodeOf(stFather.stChildList.next, eLink) == &stNode;
}

// Whether the current node is a key of the map that still waits for its value.
[[nodiscard]] inline bool ValueExpected(const YamlListNode &stMap, const YamlListNode &stCurrNode) noexcept
{
    return stCurrNode.pstFather == &stMap && !HasChildren(stCurrNode);
}

} // namespace zryaml::parse
