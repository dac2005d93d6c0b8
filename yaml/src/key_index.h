// SPDX-License-Identifier: Apache-2.0
// Keys of large maps by their text. A map of many keys gets an index while it is filled and keeps it, read-only, so
// that any number of threads may search in it; whatever changes the keys of the map later drops it.
#pragma once

#include "node_tree.h"

namespace zryaml {

[[nodiscard]] inline bool HasKeyIndex(const YamlListNode &map) noexcept
{
    return (map.uiState & NODE_INDEXED) != 0;
}

// The key with that text of a map that has an index; NULL if there is none. Of a merged key and the written one that
// overrides it, it is the merged one, which holds the value: a marked key is never found.
[[nodiscard]] YamlListNode *KeyIndexFind(const YamlListNode &map, std::string_view text) noexcept;

// For layers, which change the keys of complete maps: an index follows.
constexpr uint32_t IndexFromKeys = 32;                        // maps of so many keys have one
[[nodiscard]] bool KeyIndexBuild(YamlListNode &map) noexcept; // false if out of memory (logged)
// Before a key is hung into its map, and before one is taken out. False if out of memory (logged).
[[nodiscard]] bool KeyIndexAdd(YamlListNode &map, YamlListNode &key) noexcept;
void KeyIndexForget(YamlListNode &map, const YamlListNode &key) noexcept;
// Makes the indexes of another document indexes of this one.
void KeyIndexesTakeOver(YamlHandle &handle, YamlHandle &other) noexcept;

} // namespace zryaml
