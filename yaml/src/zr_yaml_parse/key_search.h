// SPDX-License-Identifier: Apache-2.0
// How a key that repeats another one is found. While a map is filled it has a filter that tells in most cases that a
// key is new, and from so many keys on an index instead, which stays.
#pragma once

#include "../key_index.h"
#include "text_hash.h"

namespace zryaml::parse {

// The filter of a map: in its first 58 bits one for each mark of a text that was seen, then the number of its keys.
constexpr uint32_t FilterBits = 58;
constexpr uint64_t FilterOneKey = uint64_t{1} << FilterBits;
static_assert(IndexFromKeys < uint64_t{1} << (64 - FilterBits));

[[nodiscard]] constexpr uint64_t FilterBitOf(uint32_t mark) noexcept
{
    const uint32_t mixed = mark * 0x9E3779B1U;
    return uint64_t{1} << (static_cast<uint64_t>(mixed) * FilterBits >> 32);
}

// Whether a map surely has no key with the text of that mark.
[[nodiscard]] inline bool IsNewKey(const YamlListNode &map, uint32_t mark) noexcept
{
    return (map.uiState & (NODE_GROWING | NODE_INDEXED)) == NODE_GROWING &&
           (map.uPrivate.ulKeyFilter & FilterBitOf(mark)) == 0;
}

// From now on the map is filled through KeyNote only; it has no keys yet.
inline void KeysBegin(YamlListNode &map) noexcept
{
    map.uiState |= NODE_GROWING;
    map.uPrivate.ulKeyFilter = 0;
}
// The map is complete. An index stays.
inline void KeysEnd(YamlListNode &map) noexcept
{
    if ((map.uiState & NODE_INDEXED) == 0)
        map.uPrivate.ulKeyFilter = 0;
    map.uiState &= ~NODE_GROWING;
}

// Makes an index of all keys of a map that is being filled. 12 if out of memory (logged).
[[nodiscard]] uint32_t KeyIndexMake(YamlListNode &map) noexcept;
// Puts a key into the index of its map; the hash is that of its text, or 0. 12 if out of memory (logged).
[[nodiscard]] uint32_t KeyIndexPut(YamlListNode &map, YamlListNode &key, uint32_t hash) noexcept;
// The same by the hash of its text, unless a key with that text is there: then that one is given.
[[nodiscard]] uint32_t KeyIndexTest(YamlListNode &map, YamlListNode &key, uint32_t hash, YamlListNode *&same) noexcept;
// The hash of a key's text.
[[nodiscard]] uint32_t KeyHash(const YamlListNode &key) noexcept;
// Whether the index of a map is so large that a search waits for memory; fetches it for a hash then.
[[nodiscard]] bool KeyIndexPrefetch(const YamlListNode &map, uint32_t hash) noexcept;
// KeyIndexFind, by the hash of the text.
[[nodiscard]] YamlListNode *KeyIndexFind(const YamlListNode &map, std::string_view text, uint32_t hash) noexcept;
// Takes a key out of the index.
void KeyIndexRemove(YamlListNode &map, const YamlListNode &key) noexcept;
// Gives back all indexes of a document.
void KeyIndexesRelease(YamlHandle &handle) noexcept;

// Enters a key that is about to be hung into its map into the filter or the index. 12 if out of memory (logged).
[[nodiscard]] inline uint32_t KeyNote(YamlListNode &map, YamlListNode &key, uint32_t hash) noexcept
{
    if ((map.uiState & (NODE_GROWING | NODE_INDEXED)) == NODE_GROWING) {
        if (map.uPrivate.ulKeyFilter < (IndexFromKeys - 1) * FilterOneKey) [[likely]] {
            const uint32_t mark = key.uPlace.uiTextMark;
            map.uPrivate.ulKeyFilter += FilterOneKey;
            map.uPrivate.ulKeyFilter |= mark != 0 ? FilterBitOf(mark) : FilterOneKey - 1;
            return YAML_OK;
        }
        const uint32_t result = KeyIndexMake(map);
        if (result != YAML_OK)
            return result;
    }
    return (map.uiState & NODE_INDEXED) != 0 ? KeyIndexPut(map, key, hash) : YAML_OK;
}

} // namespace zryaml::parse
