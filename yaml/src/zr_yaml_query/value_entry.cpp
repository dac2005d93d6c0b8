// SPDX-License-Identifier: Apache-2.0
// Walks the entries of a map or sequence as it reads.
#include "value_entry.h"

using namespace zryaml;
using namespace zryaml::query;

namespace {

// The next entry that shows, from a place on.
const YamlListNode *Shown(NodeRange::Iterator stEntry) noexcept
{
    while (!(stEntry == NodeRange::End{}) && (*stEntry).uiSameWithAnchor == 1)
        ++stEntry;
    return stEntry == NodeRange::End{} ? nullptr : &*stEntry;
}

} // namespace

const YamlListNode *zryaml::query::EntryFirst(const YamlListNode *pstValue) noexcept
{
    return pstValue == nullptr ? nullptr : Shown(Children(*pstValue).begin());
}

const YamlListNode *zryaml::query::EntryNext(const YamlListNode &stValue, const YamlListNode &stEntry) noexcept
{
    const NodeLink eLink = ChildLinkOf(stValue);
    return Shown({LinkOf(stEntry, eLink).next, &stValue.stChildList, eLink});
}

const YamlListNode *zryaml::query::EntryAt(const YamlListNode *pstValue, uint32_t uiIndex) noexcept
{
    const YamlListNode *pstEntry = EntryFirst(pstValue);
    for (; pstEntry != nullptr && uiIndex > 0; --uiIndex)
        pstEntry = EntryNext(*pstValue, *pstEntry);
    return pstEntry;
}
