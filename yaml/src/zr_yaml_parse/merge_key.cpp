// SPDX-License-Identifier: Apache-2.0
// The merge key "<<" with an alias as its value: the keys of the anchored map, or the first key of each map in the
// anchored sequence, are copied to where "<<" stands. Keys that the map has win over merged ones. Where a load
// takes merge forms, maps and sequences of maps may stand there themselves.
#include "merge_key.h"

#include "../document_load.h"
#include "map_key.h"
#include "node.h"
#include "parse_internal.h"
#include "tree_builder.h"

#include <cstring>

namespace zryaml::parse {

namespace {

// Takes the "<<" key out of its map, together with what it was counted for and the anchor it may carry.
void MergeKeyRelease(YamlHandle &handle, YamlListNode &mergeKey) noexcept
{
    MemoryUncount(handle, sizeof(YamlListNode) + strlen(mergeKey.pcValue) + 1);
    AnchorOfNodeDrop(handle, mergeKey);
    KeyRemove(*mergeKey.pstFather, mergeKey);
}

// A map gives its first key, an empty one none; anything else is refused.
uint32_t ElementCheck(const YamlListNode &element) noexcept
{
    if (element.uiDataType == YAML_DATATYPE_SCALAR)
        return YAML_FAIL(YAML_ERR_PARSE, "Can not merge a single scalar to a map. (Scalar=%s)", element.pcValue);
    if (element.uiDataType == YAML_DATATYPE_SEQ)
        return YAML_FAIL(YAML_ERR_PARSE, "Can not merge a sequence to a map.");
    return YAML_OK;
}

uint32_t FirstKeyCopy(YamlHandle &handle, KeysPlace &place, const YamlListNode &element) noexcept
{
    const YamlListNode *key = FirstChild(element);
    if (key == nullptr)
        return YAML_OK;
    YamlListNode *copy = nullptr;
    const uint32_t result = KeyCopy(handle, place, *key, copy);
    if (copy == nullptr)
        return result;
    return ValueCopy(handle, *copy, *key) == YAML_OK ? YAML_OK : uint32_t{YAML_ERR_NOMEM};
}

// The merge-key type of YAML 1.1: all keys of each map, those of earlier maps win. Maps that stand here, and not behind
// an alias, have a place of their own.
uint32_t AllKeysCopy(YamlHandle &handle, KeysPlace &place, const YamlListNode &sequence) noexcept
{
    for (const YamlListNode &element : Children(sequence)) {
        if (handle.pcAlias == nullptr) {
            handle.uiLine = element.uiLine;
            handle.uiColumn = element.uiColumn;
        }
        uint32_t result = ElementCheck(element);
        if (result == YAML_OK)
            result = CopyCharge(handle, 0);
        if (result == YAML_OK)
            result = KeysCopy(handle, place, element);
        if (result != YAML_OK)
            return result;
    }
    return YAML_OK;
}

} // namespace

uint32_t FirstKeysCopy(YamlHandle &handle, KeysPlace &place, const YamlListNode &sequence) noexcept
{
    for (const YamlListNode &element : Children(sequence)) {
        uint32_t result = ElementCheck(element);
        if (result == YAML_OK)
            result = CopyCharge(handle, 0);
        if (result == YAML_OK)
            result = FirstKeyCopy(handle, place, element);
        if (result != YAML_OK)
            return result;
    }
    return YAML_OK;
}

uint32_t TreeBuilder::Merge(const YamlListNode &source, bool isFirst) noexcept
{
    YamlListNode &mergeKey = *current;
    KeysPlace place = {mergeKey.pstFather, nullptr, !isFirst};
    if (!isFirst)
        place.previous = NodeOf(mergeKey.stChildLink.prev, NodeLink::Child);
    const KeysPlace start = place;
    const uint32_t sourceType = source.uiDataType;
    uint32_t result = YAML_OK;
    // Log before freeing the key: pcValue may be its text.
    if (sourceType != YAML_DATATYPE_MAP && sourceType != YAML_DATATYPE_SEQ)
        result = YAML_FAIL(YAML_ERR_EVENT, "Can not merge mapping with a single scalar. (Scalar=%s)", source.pcValue);
    MergeKeyRelease(handle, mergeKey);

    if (sourceType == YAML_DATATYPE_MAP) {
        result = KeysCopy(handle, place, source);
    } else if (sourceType == YAML_DATATYPE_SEQ) {
        place.test = true; // its maps may have a key in common
        const bool forms = (handle.uiLoadFlags & LOAD_MERGE_FORMS) != 0;
        result = forms ? AllKeysCopy(handle, place, source) : FirstKeysCopy(handle, place, source);
    }
    if (result != YAML_OK)
        place = start;
    // The next key goes after the last merged one, whose value is now current; a map without keys stays current itself.
    current = place.previous != nullptr ? place.previous : place.map;
    if (YamlListNode *value = FirstChild(*current))
        current = value;
    return result;
}

uint32_t TreeBuilder::MergeForm() noexcept
{
    const YamlListNode &value = *current;
    YamlListNode &key = *value.pstFather;
    if (key.uiDataType != YAML_DATATYPE_SCALAR || strcmp(key.pcValue, "<<") != 0 ||
        StateGet(key, NODE_STYLE_MASK, NODE_STYLE_SHIFT) != YAML_STYLE_PLAIN)
        return YAML_OK;
    handle.uiLine = value.uiLine;
    handle.uiColumn = value.uiColumn;
    current = &key;
    return Merge(value, IsFirstChild(key));
}

} // namespace zryaml::parse
