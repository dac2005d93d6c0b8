// SPDX-License-Identifier: Apache-2.0
// The entries of a map or sequence as it reads: keys, without those that a merge marked as repeated, or elements.
#pragma once

#include "../key_index.h"
#include "query_internal.h"

namespace zryaml::query {

// The first entry; NULL if there is none. A NULL value has none.
[[nodiscard]] const YamlListNode *EntryFirst(const YamlListNode *value) noexcept;
[[nodiscard]] const YamlListNode *EntryNext(const YamlListNode &value, const YamlListNode &entry) noexcept;
[[nodiscard]] const YamlListNode *EntryAt(const YamlListNode *value, uint32_t index) noexcept;

// The key with a text in a list of keys, NULL if there is none. In the header, as lookups spend their time here.
[[nodiscard]] inline YamlListNode *KeyFind(const YamlList &keys, std::string_view keyText) noexcept
{
    const WantedKey wanted(keyText);
    for (YamlListNode &key : NodeRange(keys, NodeLink::Child)) {
        if (wanted.IsOf(key) && key.uiSameWithAnchor != 1)
            return &key;
    }
    return nullptr;
}
// As above, in a map.
[[nodiscard]] inline YamlListNode *KeyFind(const YamlListNode &map, std::string_view keyText) noexcept
{
    return HasKeyIndex(map) ? KeyIndexFind(map, keyText) : KeyFind(map.stChildList, keyText);
}

// An entry of a map is a key, which leads to its value; an entry of a sequence is the value itself.
[[nodiscard]] inline const YamlListNode *EntryValue(const YamlListNode &value, const YamlListNode &entry) noexcept
{
    return value.uiDataType == YAML_DATATYPE_MAP ? FirstChild(entry) : &entry;
}

} // namespace zryaml::query
