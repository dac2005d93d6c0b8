// SPDX-License-Identifier: Apache-2.0
// Where nodes go: every child hangs under its own father, in document order, and the collection that is open when an
// event arrives is known by its mark, whatever the current node happens to be.
#pragma once

#include "../node_tree.h"

namespace zryaml::parse {

// Numbers the elements of a sequence anew, after one went or came that was not the last.
void ElementsNumber(const YamlListNode &seq) noexcept;

// Hangs a node right after another one, below the same father. Elements are not numbered.
inline void ChildInsertAfter(YamlListNode &previous, YamlListNode &child) noexcept
{
    YamlListNode &father = *previous.pstFather;
    child.pstFather = &father;
    ListInsertAfter(LinkIn(father, previous), LinkIn(father, child));
}

// Takes all children off a node; their links and fathers no longer reach it.
void ChildrenDetach(YamlListNode &father) noexcept;

// A tree made by hand carries no marks. There the current node is the collection itself, just opened, or stands in it.
[[nodiscard]] YamlListNode *UnmarkedCollection(YamlListNode &currNode, uint32_t dataType) noexcept;

// The innermost open collection, known by its mark, or else by its type; NULL if none. While loading this takes two
// steps at the most: element or key, value, or the collection itself.
[[nodiscard]] inline YamlListNode *InnermostCollection(YamlListNode &currNode, uint32_t dataType) noexcept
{
    for (YamlListNode *node = &currNode; node != nullptr; node = node->pstFather) {
        if ((node->uiState & NODE_OPEN) != 0)
            return node;
    }
    return UnmarkedCollection(currNode, dataType);
}

// Whether a node is the first one below its father.
[[nodiscard]] inline bool IsFirstChild(const YamlListNode &node) noexcept
{
    const YamlListNode &father = *node.pstFather;
    const NodeLink by = father.uiNextLevelType == YAML_DATATYPE_SEQ ? NodeLink::Seq : NodeLink::Child;
    return NodeOf(father.stChildList.next, by) == &node;
}

// Whether the current node is a key of the map that still waits for its value.
[[nodiscard]] inline bool ValueExpected(const YamlListNode &map, const YamlListNode &currNode) noexcept
{
    return currNode.pstFather == &map && !HasChildren(currNode);
}

} // namespace zryaml::parse
