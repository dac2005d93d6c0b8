// SPDX-License-Identifier: Apache-2.0
// Walking a document value by value: maps as they read, without the keys that a merge marked as repeated.
#include "../record_size.h"
#include "read_mark.h"
#include "value_entry.h"

using namespace zryaml;
using namespace zryaml::query;

namespace {

void ChildFill(const YamlListNode &value, const YamlListNode &entry, uint32_t index, YamlChild &child) noexcept
{
    const YamlListNode *below = EntryValue(value, entry);
    const bool isMap = value.uiDataType == YAML_DATATYPE_MAP;
    ReadMark(entry);
    child.uiType = ZRYAML_ValueTypeGet(below);
    child.uiIndex = index;
    child.pcKey = isMap ? entry.pcValue : nullptr;
    child.pstValue = below;
    child.pstEntry = &entry;
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

void ZRYAML_ValueWrittenGet(const YamlListNode *pstValue, uint32_t *puiLine, uint32_t *puiColumn)
{
    const bool hasPlace = pstValue != nullptr && pstValue->uiLine != 0; // an assignment's value has none
    const NodePlace written = hasPlace ? WrittenPlaceOf(*pstValue) : NodePlace{};
    const bool isElsewhere = hasPlace && (written.uiLine != pstValue->uiLine || written.uiColumn != pstValue->uiColumn);
    *puiLine = isElsewhere ? written.uiLine : 0;
    *puiColumn = isElsewhere ? written.uiColumn : 0;
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
    if (pstChild == nullptr || !RecordFits(*pstChild))
        return YAML_ERR_PARAM;
    if (pstValue == nullptr)
        return YAML_ERR_ITER_END;
    const YamlListNode *last = pstChild->pstEntry;
    const YamlListNode *pstEntry = last == nullptr ? EntryFirst(pstValue) : EntryNext(*pstValue, *last);
    if (pstEntry == nullptr)
        return YAML_ERR_ITER_END;
    ChildFill(*pstValue, *pstEntry, last == nullptr ? 0 : pstChild->uiIndex + 1, *pstChild);
    return YAML_OK;
}

uint32_t ZRYAML_ChildGet(const YamlListNode *pstValue, uint32_t uiIndex, YamlChild *pstChild)
{
    if (pstChild == nullptr || !RecordFits(*pstChild))
        return YAML_ERR_PARAM;
    const YamlListNode *pstEntry = EntryAt(pstValue, uiIndex);
    if (pstEntry == nullptr)
        return YAML_ERR_ITER_END;
    ChildFill(*pstValue, *pstEntry, uiIndex, *pstChild);
    return YAML_OK;
}

const YamlListNode *ZRYAML_ChildFind(const YamlListNode *pstValue, const char *pcKey, size_t ulKeyLen)
{
    if (ZRYAML_ValueTypeGet(pstValue) != YAML_DATATYPE_MAP || pcKey == nullptr)
        return nullptr;
    const YamlListNode *pstEntry = KeyFind(*pstValue, {pcKey, ulKeyLen});
    if (pstEntry == nullptr)
        return nullptr;
    ReadMark(*pstEntry);
    return FirstChild(*pstEntry);
}
