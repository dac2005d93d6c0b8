// SPDX-License-Identifier: Apache-2.0
// Walks the entries of a map or sequence as it reads.
#include "value_entry.h"

using namespace zryaml;
using namespace zryaml::query;

namespace {

// The next entry that shows, from a place on.
const YamlListNode *Shown(NodeRange::Iterator entry) noexcept
{
    while (!(entry == NodeRange::End{}) && (*entry).uiSameWithAnchor == 1)
        ++entry;
    return entry == NodeRange::End{} ? nullptr : &*entry;
}

} // namespace

const YamlListNode *zryaml::query::EntryFirst(const YamlListNode *value) noexcept
{
    return value == nullptr ? nullptr : Shown(Children(*value).begin());
}

const YamlListNode *zryaml::query::EntryNext(const YamlListNode &value, const YamlListNode &entry) noexcept
{
    const NodeLink by = ChildLinkOf(value);
    return Shown({LinkOf(entry, by).next, &value.stChildList, by});
}

const YamlListNode *zryaml::query::EntryAt(const YamlListNode *value, uint32_t index) noexcept
{
    const YamlListNode *entry = EntryFirst(value);
    for (; entry != nullptr && index > 0; --index)
        entry = EntryNext(*value, *entry);
    return entry;
}
