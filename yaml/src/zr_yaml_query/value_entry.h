// SPDX-License-Identifier: Apache-2.0
// The entries of a map or sequence as it reads: keys, without those that a merge marked as repeated, or elements.
#pragma once

#include "../key_index.h"
#include "query_internal.h"

namespace zryaml::query {

// The first entry; NULL if there is none. A NULL value has none.
[[nodiscard]] const YamlListNode *EntryFirst(const YamlListNode *pstValue) noexcept;
[[nodiscard]] const YamlListNode *EntryNext(const YamlListNode &stValue, const YamlListNode &stEntry) noexcept;
[[nodiscard]] const YamlListNode *EntryAt(const YamlListNode *pstValue, uint32_t uiIndex) noexcept;

// The key with a text in a list of keys, NULL if there is none. In the header, as lookups spend their time here.
[[nodiscard]] inline YamlListNode *KeyFind(const YamlList &stKeys, std::string_view svKey) noexcept
{
    const WantedKey stWanted(svKey);
    for (YamlListNode &stKey : NodeRange(stKeys, NodeLink::Child)) {
        if (stWanted.IsOf(stKey) && stKey.uiSameWithAnchor != 1)
            return &stKey;
    }
    return nullptr;
}
// As above, in a map.
[[nodiscard]] inline YamlListNode *KeyFind(const YamlListNode &stMap, std::string_view svKey) noexcept
{
    return HasKeyIndex(stMap) ? KeyIndexFind(stMap, svKey) : KeyFind(stMap.stChildList, svKey);
}

// An entry of a map is a key, which leads to its value; an entry of a sequence is the value itself.
[[nodiscard]] inline const YamlListNode *EntryValue(const YamlListNode &stValue, const YamlListNode &stEntry) noexcept
{
    return stValue.uiDataType == YAML_DATATYPE_MAP ? FirstChild(stEntry) : &stEntry;
}

} // namespace zryaml::query
