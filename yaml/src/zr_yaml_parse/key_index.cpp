// SPDX-License-Identifier: Apache-2.0
// The index of a map's keys. All indexes of a document are on a list of its handle, from which it gives them back.
//
// Invariant: for each text an index holds the merged key, if there is one, else the written one; and a merged key and
// the written key that overrides it name each other in pstSameKey.
#include "key_search.h"
#include "node.h"
#include "parse_internal.h"
#include "text_index.h"

#include <new>
#include <utility>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

const char *KeyText(const YamlListNode &key) noexcept
{
    return key.pcValue;
}

// The text of a key; most marks tell its length.
std::string_view TextOf(const YamlListNode &key) noexcept
{
    const size_t length = key.uPlace.uiTextMark >> 25;
    const bool isTold = key.uPlace.uiTextMark != 0 && length < MarkLengthMax;
    return isTold ? std::string_view(key.pcValue, length) : std::string_view(key.pcValue);
}

ZRYAML_RARE uint32_t MemoryRefuse() noexcept
{
    return YAML_FAIL(YAML_ERR_NOMEM, "Allocate memory for key index failed.");
}

YamlHandle &HandleOf(YamlListNode &node) noexcept
{
    YamlListNode *root = &node;
    while (root->pstFather != nullptr)
        root = root->pstFather;
    static_assert(offsetof(YamlHandle, stRoot) == 0);
    return *reinterpret_cast<YamlHandle *>(root);
}

} // namespace

struct YamlKeyIndex {
    TextIndex<YamlListNode, KeyText> keys;
    YamlKeyIndex *next = nullptr;
    YamlKeyIndex **place = nullptr; // what leads to this one
};

uint32_t zryaml::parse::KeyIndexMake(YamlListNode &map) noexcept
{
    void *block = ZR_MemAlloc(sizeof(YamlKeyIndex), yaml_MemHandleGet());
    if (block == nullptr)
        return MemoryRefuse();
    YamlHandle &handle = HandleOf(map);
    // cppcheck-suppress legacyUninitvar ; it takes the new object for the one that is not there yet
    auto *index = ::new (block) YamlKeyIndex;
    index->next = handle.pstKeyIndexes;
    index->place = &handle.pstKeyIndexes;
    if (index->next != nullptr)
        index->next->place = &index->next;
    handle.pstKeyIndexes = index;
    map.uPrivate.pstKeyIndex = index;
    map.uiState |= NODE_INDEXED;
    for (YamlListNode &key : Children(map)) {
        const uint32_t result = key.uiSameWithAnchor == 0 ? KeyIndexPut(map, key, 0) : YAML_OK;
        if (result != YAML_OK)
            return result;
    }
    return YAML_OK;
}

uint32_t zryaml::parse::KeyIndexPut(YamlListNode &map, YamlListNode &key, uint32_t hash) noexcept
{
    auto &keys = map.uPrivate.pstKeyIndex->keys;
    if (key.uiSameWithAnchor != 0)
        return YAML_OK;
    if (!keys.Reserve(keys.Count() + 1))
        return MemoryRefuse();
    (void)keys.Put(key, hash != 0 ? hash : KeyHash(key));
    return YAML_OK;
}

uint32_t zryaml::parse::KeyIndexTest(YamlListNode &map, YamlListNode &key, uint32_t hash, YamlListNode *&same) noexcept
{
    auto &keys = map.uPrivate.pstKeyIndex->keys;
    if (!keys.Reserve(keys.Count() + 1))
        return MemoryRefuse();
    same = keys.FindOrPut(TextOf(key), key, hash);
    return YAML_OK;
}

uint32_t zryaml::parse::KeyHash(const YamlListNode &key) noexcept
{
    return TextHash(TextOf(key));
}

bool zryaml::parse::KeyIndexPrefetch(const YamlListNode &map, uint32_t hash) noexcept
{
    const auto &keys = map.uPrivate.pstKeyIndex->keys;
    if (!keys.IsLarge())
        return false;
    keys.Prefetch(hash);
    return true;
}

void zryaml::parse::KeyIndexRemove(YamlListNode &map, const YamlListNode &key) noexcept
{
    map.uPrivate.pstKeyIndex->keys.Remove(key.pcValue);
}

void zryaml::parse::KeyIndexesRelease(YamlHandle &handle) noexcept
{
    while (YamlKeyIndex *index = handle.pstKeyIndexes) {
        handle.pstKeyIndexes = index->next;
        index->keys.Release();
        ZR_MemFree(index, yaml_MemHandleGet());
    }
}

YamlListNode *zryaml::parse::KeyIndexFind(const YamlListNode &map, std::string_view text, uint32_t hash) noexcept
{
    return map.uPrivate.pstKeyIndex->keys.Find(text, hash);
}

YamlListNode *zryaml::KeyIndexFind(const YamlListNode &map, std::string_view text) noexcept
{
    return map.uPrivate.pstKeyIndex->keys.Find(text, TextHash(text));
}

void zryaml::KeyIndexDrop(YamlListNode &map) noexcept
{
    if (!HasKeyIndex(map))
        return;
    YamlKeyIndex *index = map.uPrivate.pstKeyIndex;
    *index->place = index->next;
    if (index->next != nullptr)
        index->next->place = index->place;
    index->keys.Release();
    ZR_MemFree(index, yaml_MemHandleGet());
    map.uPrivate.pstKeyIndex = nullptr;
    map.uiState &= ~(NODE_INDEXED | NODE_GROWING); // what is filled on is searched by a walk
}

bool zryaml::KeyIndexBuild(YamlListNode &map) noexcept
{
    return KeyIndexMake(map) == YAML_OK;
}

bool zryaml::KeyIndexAdd(YamlListNode &map, YamlListNode &key) noexcept
{
    return !HasKeyIndex(map) || KeyIndexPut(map, key, 0) == YAML_OK;
}

void zryaml::KeyIndexForget(YamlListNode &map, const YamlListNode &key) noexcept
{
    if (HasKeyIndex(map) && key.uiSameWithAnchor == 0)
        KeyIndexRemove(map, key);
}

void zryaml::KeyIndexesTakeOver(YamlHandle &handle, YamlHandle &other) noexcept
{
    YamlKeyIndex *first = std::exchange(other.pstKeyIndexes, nullptr);
    if (first == nullptr)
        return;
    YamlKeyIndex *last = first;
    while (last->next != nullptr)
        last = last->next;
    last->next = handle.pstKeyIndexes;
    if (last->next != nullptr)
        last->next->place = &last->next;
    handle.pstKeyIndexes = first;
    first->place = &handle.pstKeyIndexes;
}
