// SPDX-License-Identifier: Apache-2.0
// Walking a document value by value: maps as they read, without the keys that a merge marked as repeated.
#include "key_query.h"

#include <string_view>

namespace {

// The next entry of a collection that shows, from a place on.
const YamlListNode *Shown(NodeRange::Iterator stEntry) noexcept
{
    while (!(stEntry == NodeRange::End{}) && (*stEntry).uiSameWithAnchor == 1)
        ++stEntry;
    return stEntry == NodeRange::End{} ? nullptr : &*stEntry;
}

const YamlListNode *EntryFirst(const YamlListNode *pstValue) noexcept
{
    return pstValue == nullptr ? nullptr : Shown(Children(*pstValue).begin());
}

const YamlListNode *EntryNext(const YamlListNode &stValue, const YamlListNode &stEntry) noexcept
{
    const NodeLink eLink = ChildLinkOf(stValue);
    return Shown({LinkOf(stEntry, eLink).next, &stValue.stChildList, eLink});
}

// An entry of a map is a key, which leads to its value; an entry of a sequence is the value itself.
const YamlListNode *EntryValue(const YamlListNode &stValue, const YamlListNode &stEntry) noexcept
{
    return stValue.uiDataType == YAML_DATATYPE_MAP ? FirstChild(stEntry) : &stEntry;
}

void ChildFill(const YamlListNode &stValue, const YamlListNode &stEntry, uint32_t uiIndex, YamlChild &stChild) noexcept
{
    const YamlListNode *pstBelow = EntryValue(stValue, stEntry);
    const bool bMap = stValue.uiDataType == YAML_DATATYPE_MAP;
    ReadMark(stEntry);
    stChild = {bMap ? stEntry.pcValue : nullptr, pstBelow, ZRYAML_ValueTypeGet(pstBelow), uiIndex, &stEntry};
}

} // namespace

const YamlListNode *ZRYAML_RootGet(const YamlHandle *pstHandle)
{
    return pstHandle != nullptr ? FirstChild(pstHandle->stRoot) : nullptr;
}

YamlHandle *ZRYAML_DocumentGet(const YamlListNode *pstValue)
{
    if (pstValue == nullptr)
        return nullptr;
    while (pstValue->pstFather != nullptr)
        pstValue = pstValue->pstFather;
    // The root is the handle's first member.
    return reinterpret_cast<YamlHandle *>(reinterpret_cast<uintptr_t>(pstValue) - offsetof(YamlHandle, stRoot));
}

uint32_t ZRYAML_ValueTypeGet(const YamlListNode *pstValue)
{
    return pstValue != nullptr ? pstValue->uiDataType : YAML_DATATYPE_NONE;
}

const char *ZRYAML_ValueTextGet(const YamlListNode *pstValue)
{
    if (pstValue == nullptr || pstValue->uiDataType != YAML_DATATYPE_SCALAR)
        return nullptr;
    ReadMark(*pstValue);
    return pstValue->pcValue;
}

void ZRYAML_ValuePositionGet(const YamlListNode *pstValue, uint32_t *puiLine, uint32_t *puiColumn)
{
    *puiLine = pstValue != nullptr ? pstValue->uiLine : 0;
    *puiColumn = pstValue != nullptr ? pstValue->uiColumn : 0;
}

uint32_t ZRYAML_ChildCountGet(const YamlListNode *pstValue)
{
    uint32_t uiCount = 0;
    for (const YamlListNode *pst = EntryFirst(pstValue); pst != nullptr; pst = EntryNext(*pstValue, *pst))
        ++uiCount;
    return uiCount;
}

uint32_t ZRYAML_ChildNextGet(const YamlListNode *pstValue, YamlChild *pstChild)
{
    if (pstChild == nullptr)
        return YAML_ERR_PARAM;
    const YamlListNode *pstLast = pstChild->pstEntry;
    const YamlListNode *pstEntry =
        pstLast == nullptr || pstValue == nullptr ? EntryFirst(pstValue) : EntryNext(*pstValue, *pstLast);
    if (pstEntry == nullptr)
        return YAML_ERR_ITER_END;
    ChildFill(*pstValue, *pstEntry, pstLast == nullptr ? 0 : pstChild->uiIndex + 1, *pstChild);
    return YAML_OK;
}

uint32_t ZRYAML_ChildGet(const YamlListNode *pstValue, uint32_t uiIndex, YamlChild *pstChild)
{
    if (pstChild == nullptr)
        return YAML_ERR_PARAM;
    const YamlListNode *pstEntry = EntryFirst(pstValue);
    for (uint32_t ui = 0; pstEntry != nullptr && ui < uiIndex; ++ui)
        pstEntry = EntryNext(*pstValue, *pstEntry);
    if (pstEntry == nullptr)
        return YAML_ERR_ITER_END;
    ChildFill(*pstValue, *pstEntry, uiIndex, *pstChild);
    return YAML_OK;
}

const YamlListNode *ZRYAML_ChildFind(const YamlListNode *pstValue, const char *pcKey, size_t ulKeyLen)
{
    if (ZRYAML_ValueTypeGet(pstValue) != YAML_DATATYPE_MAP || pcKey == nullptr)
        return nullptr;
    const WantedKey stWanted({pcKey, ulKeyLen});
    for (const YamlListNode *pst = EntryFirst(pstValue); pst != nullptr; pst = EntryNext(*pstValue, *pst)) {
        if (stWanted.IsOf(*pst)) {
            ReadMark(*pst);
            return FirstChild(*pst);
        }
    }
    return nullptr;
}
