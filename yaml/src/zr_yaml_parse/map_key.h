// SPDX-License-Identifier: Apache-2.0
// The keys of one map: finding those that have a text, hanging one in and taking one out.
#pragma once

#include "key_search.h"
#include "node_place.h"

namespace zryaml::parse {

struct SameKeys { // the keys of one map that have a certain text
    YamlListNode *written = nullptr;
    YamlListNode *merged = nullptr;
    uint32_t hash = 0; // of the text, where an index was asked for it
    [[nodiscard]] bool Any() const noexcept { return written != nullptr || merged != nullptr; }
};

// Finds the keys of a map with a text, at the same cost however many keys it has.
[[nodiscard]] SameKeys KeysFind(const YamlListNode &map, std::string_view text) noexcept;

// Hangs a key into a map, right after another key or, with a NULL one, as the first.
inline void KeyHang(YamlListNode &map, YamlListNode *previous, YamlListNode &key) noexcept
{
    key.pstFather = &map;
    ChildTypeFix(map, YAML_DATATYPE_SCALAR);
    ListInsertAfter(previous != nullptr ? LinkIn(map, *previous) : map.stChildList, LinkIn(map, key));
}

// The same, and the filter or the index of the map learns of it. The hash is the one of KeysFind, or 0. 12 if out of
// memory (logged).
[[nodiscard]] inline uint32_t KeyInsert(YamlListNode &map, YamlListNode *previous, YamlListNode &key,
                                        uint32_t hash) noexcept
{
    if ((map.uiState & (NODE_GROWING | NODE_INDEXED)) == NODE_INDEXED) [[unlikely]]
        KeyIndexDrop(map);
    const uint32_t result = KeyNote(map, key, hash);
    if (result == YAML_OK)
        KeyHang(map, previous, key);
    return result;
}

// Takes a key out of a map and releases it.
void KeyRemove(YamlListNode &map, YamlListNode &key) noexcept;

struct HeldKey {
    YamlListNode *key = nullptr; // NULL: none is held
    uint32_t hash = 0;           // of its text
};

// Hangs a key of the file behind the key that the current node is or hangs below. A text that the map has is refused,
// but where a merge brought it the key is marked: its value goes below the merged one.
// Where the map is so large that the test waits for memory, the key may be held: it is hung, and memory is fetched
// while the next event is parsed; then KeySettle makes up for the test, before anything else happens.
[[nodiscard]] uint32_t KeyPlace(YamlListNode &key, YamlListNode &current, HeldKey *held) noexcept;

[[nodiscard]] uint32_t KeySettle(HeldKey &held) noexcept;

// The merged key that a marked key repeats, or NULL.
[[nodiscard]] YamlListNode *MergedKeyOf(const YamlListNode &marked) noexcept;
// Makes a node the only value of a merged key.
void ValueReplace(YamlListNode &merged, YamlListNode &value) noexcept;
// Releases the value of a merged key; what hangs below it is released with the document.
void ValueDrop(YamlListNode &merged) noexcept;

} // namespace zryaml::parse
