// SPDX-License-Identifier: Apache-2.0
// Deep copies of anchored nodes. A copy never shares a node with its source, is marked as one, and is charged to its
// document. It is what the source reads as: keys that a merge marked as repeated are not copied.
#pragma once

#include "node_place.h"

namespace zryaml::parse {

// Where the copies of keys go: below a fresh copy of a map, or into a map that may have keys of its own.
struct KeysPlace {
    YamlListNode *map;
    YamlListNode *previous; // NULL: the next key goes first
    bool test;              // whether the map may have a key already
};

// A copy of one node without its children, in no place of the tree yet. NULL if out of memory or too large (logged).
[[nodiscard]] YamlListNode *NodeCopy(YamlHandle &handle, const YamlListNode &source) noexcept;
// The same, hung below a father as its last child.
[[nodiscard]] YamlListNode *ChildCopy(YamlHandle &handle, YamlListNode &father, const YamlListNode &source) noexcept;
// Fills the copy of a collection with copies of what hangs below its source; the copy of a scalar stands alone.
[[nodiscard]] uint32_t ContentCopy(YamlHandle &handle, YamlListNode &copy, const YamlListNode &source) noexcept;
// Copies the value of a key below its copy.
[[nodiscard]] uint32_t ValueCopy(YamlHandle &handle, YamlListNode &copiedKey, const YamlListNode &sourceKey) noexcept;
// Copies a key without its value, unless the map has one of its text. The copy, NULL where there is none, is then the
// previous key.
[[nodiscard]] uint32_t KeyCopy(YamlHandle &handle, KeysPlace &place, const YamlListNode &sourceKey,
                               YamlListNode *&copy) noexcept;
// Copies the keys of a map with their values.
[[nodiscard]] uint32_t KeysCopy(YamlHandle &handle, KeysPlace &place, const YamlListNode &source) noexcept;
// Copies the elements of a sequence behind the last one of another or, where there is one, behind an element of it.
[[nodiscard]] uint32_t ElementsCopy(YamlHandle &handle, YamlListNode &sequence, YamlListNode *previous,
                                    const YamlListNode &source) noexcept;

} // namespace zryaml::parse
