// SPDX-License-Identifier: Apache-2.0
// The keys of one map: insertion of a key read from the file, the test for a repeated one, and the value of a key that
// overrides a merged one.
#include "map_key.h"

#include "node.h"
#include "parse_internal.h"

#include <utility>

namespace zryaml::parse {

namespace {

// The last key of a map, or NULL.
YamlListNode *LastKey(YamlListNode &map) noexcept
{
    return HasChildren(map) ? NodeOf(map.stChildList.prev, ChildLinkOf(map)) : nullptr;
}

ZRYAML_RARE uint32_t FatherMissing() noexcept
{
    return YAML_FAIL(YAML_ERR_PARSE, "The father node is NULL.");
}

ZRYAML_RARE uint32_t KeyRepeatRefuse(const YamlListNode &key, const YamlListNode &first) noexcept
{
    const uint32_t code = YAML_FAIL(YAML_ERR_SAME, "There is a same scalar in this list. (Scalar=%s)", key.pcValue);
    ErrorFirstPlaceAdd(first.uiLine, first.uiColumn);
    return code;
}

// Marks a key that overrides a merged one.
ZRYAML_RARE void KeyMark(YamlListNode &key, YamlListNode &merged) noexcept
{
    YAML_NOTE(YAML_ERR_SAME, "There is a same scalar in alias list. (Scalar=%s)", key.pcValue);
    key.uiSameWithAnchor = 1;
    key.uPrivate.pstSameKey = &merged;
    merged.uPrivate.pstSameKey = &key;
}

// Inserts a key unless its text is there already.
uint32_t SearchedKeyInsert(YamlListNode &map, YamlListNode *previous, YamlListNode &key) noexcept
{
    const SameKeys same = KeysFind(map, key.pcValue);
    if (same.written != nullptr)
        return KeyRepeatRefuse(key, *same.written);
    if (same.merged != nullptr)
        KeyMark(key, *same.merged);
    return KeyInsert(map, previous, key, same.hash);
}

// Puts a key into the index of its map, which grows with it, and deals with one of the same text.
uint32_t IndexedKeyTest(YamlListNode &map, YamlListNode &key, uint32_t hash) noexcept
{
    YamlListNode *same = nullptr;
    const uint32_t result = KeyIndexTest(map, key, hash, same);
    if (result != YAML_OK || same == nullptr)
        return result;
    const YamlListNode *written = same->uiFromAlias != 0 ? same->uPrivate.pstSameKey : same;
    if (written != nullptr)
        return KeyRepeatRefuse(key, *written);
    KeyMark(key, *same);
    return YAML_OK;
}

uint32_t IndexedKeyInsert(YamlListNode &map, YamlListNode *previous, YamlListNode &key, HeldKey *held) noexcept
{
    const uint32_t hash = KeyHash(key);
    uint32_t result = YAML_OK;
    if (KeyIndexPrefetch(map, hash) && held != nullptr)
        *held = {&key, hash};
    else
        result = IndexedKeyTest(map, key, hash);
    if (result == YAML_OK)
        KeyHang(map, previous, key);
    return result;
}

} // namespace

SameKeys KeysFind(const YamlListNode &map, std::string_view text) noexcept
{
    SameKeys found;
    if (HasKeyIndex(map)) {
        found.hash = TextHash(text);
        YamlListNode *key = KeyIndexFind(map, text, found.hash);
        const bool isMerged = key != nullptr && key->uiFromAlias != 0;
        found.written = isMerged ? key->uPrivate.pstSameKey : key;
        found.merged = isMerged ? key : nullptr;
        return found;
    }
    if (IsNewKey(map, TextMarkOf(text)))
        return found;
    const WantedKey wanted(text);
    for (YamlListNode &key : Children(map)) {
        if (wanted.IsOf(key))
            (key.uiFromAlias == 0 ? found.written : found.merged) = &key;
    }
    return found;
}

void KeyRemove(YamlListNode &map, YamlListNode &key) noexcept
{
    if (key.uPrivate.pstSameKey != nullptr)
        key.uPrivate.pstSameKey->uPrivate.pstSameKey = nullptr; // the merged key is overridden no more
    else if (HasKeyIndex(map))
        KeyIndexRemove(map, key);
    NodeFree(key);
    if (!HasChildren(map))
        map.uiNextLevelType = YAML_DATATYPE_NONE;
}

uint32_t KeyPlace(YamlListNode &key, YamlListNode &current, HeldKey *held) noexcept
{
    YamlListNode *previous = nullptr; // the node below the open map on the way up is the key before
    YamlListNode *map = &current;
    for (; map != nullptr && (map->uiState & NODE_OPEN) == 0; map = map->pstFather)
        previous = map;
    if (map == nullptr) { // a tree made by hand
        map = UnmarkedCollection(current, YAML_DATATYPE_MAP);
        if (map == nullptr)
            return FatherMissing();
        for (previous = &current; previous != map && previous->pstFather != map;)
            previous = previous->pstFather;
    }
    if (previous == nullptr || previous == map)
        previous = LastKey(*map);
    const uint32_t mark = key.uPlace.uiTextMark;
    if (mark != 0 && IsNewKey(*map, mark)) [[likely]]
        return KeyInsert(*map, previous, key, 0);
    const bool isIndexGrowing = (~map->uiState & (NODE_GROWING | NODE_INDEXED)) == 0;
    return isIndexGrowing ? IndexedKeyInsert(*map, previous, key, held) : SearchedKeyInsert(*map, previous, key);
}

uint32_t KeySettle(HeldKey &held) noexcept
{
    YamlListNode &key = *std::exchange(held.key, nullptr);
    return IndexedKeyTest(*key.pstFather, key, held.hash);
}

YamlListNode *MergedKeyOf(const YamlListNode &marked) noexcept
{
    if (marked.uPrivate.pstSameKey != nullptr)
        return marked.uPrivate.pstSameKey;
    for (YamlListNode &key : Children(*marked.pstFather)) {
        if (key.uiFromAlias == 1 && key.pcValue != nullptr && strcmp(key.pcValue, marked.pcValue) == 0)
            return &key;
    }
    return nullptr;
}

void ValueReplace(YamlListNode &merged, YamlListNode &value) noexcept
{
    ValueDrop(merged);
    ChildAppend(merged, value);
}

void ValueDrop(YamlListNode &merged) noexcept
{
    while (YamlListNode *child = FirstChild(merged))
        NodeFree(*child);
    merged.uiNextLevelType = YAML_DATATYPE_NONE; // whatever comes next decides it anew
}

} // namespace zryaml::parse
