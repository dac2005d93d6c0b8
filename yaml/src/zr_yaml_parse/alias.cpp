// SPDX-License-Identifier: Apache-2.0
// Alias events: the anchored node is copied to where the alias stands, as an element of a sequence or as the value of a
// key. An alias as the value of "<<" is a merge.
#include "event_stack.h"
#include "map_key.h"
#include "node_copy.h"
#include "parse_internal.h"
#include "tree_builder.h"

#include <cstring>

namespace zryaml::parse {

namespace {

uint32_t StackRefuse() noexcept
{
    return YAML_FAIL(YAML_ERR_PARAM, "There is an invalid event in the event stack.");
}

} // namespace

uint32_t MergedKeyMissing(const YamlListNode &key) noexcept
{
    return YAML_FAIL(YAML_ERR_PARSE,
                     "Can not find node in anchor but the current father node has been set as same node with anchor. "
                     "(Scalar=%s)",
                     key.pcValue);
}

uint32_t TreeBuilder::TakeAlias(const yaml_event_t &event) noexcept
{
    const char *name = reinterpret_cast<const char *>(event.data.alias.anchor);
    const YamlAnchorNode *anchor = AnchorFind(handle, name);
    if (anchor == nullptr)
        return YAML_FAIL(YAML_ERR_ALIAS, "The alias has not defined. (Alias=%s)", name);
    handle.pcAlias = name;
    const uint32_t result = PlaceCopy(*anchor);
    handle.pcAlias = nullptr;
    return result;
}

uint32_t TreeBuilder::PlaceCopy(const YamlAnchorNode &anchor) noexcept
{
    const uint32_t open = OpenEventOf(handle);
    if (open == YAML_SEQUENCE_START_EVENT)
        return PlaceElementCopy(InnermostCollection(*current, YAML_DATATYPE_SEQ), *anchor.pstAnchoredNode);
    if (open != YAML_MAPPING_START_EVENT)
        return StackRefuse();
    const YamlListNode *map = InnermostCollection(*current, YAML_DATATYPE_MAP);
    if (map == nullptr || !ValueExpected(*map, *current))
        return YAML_FAIL(YAML_ERR_EVENT, "It does not support an alias as a map key. (Alias=%s)", anchor.pcAnchorName);
    expected = ExpectKey; // the next scalar of that map
    return PlaceValueCopy(*anchor.pstAnchoredNode, IsFirstChild(*current));
}

uint32_t TreeBuilder::PlaceElementCopy(YamlListNode *sequence, const YamlListNode &source) noexcept
{
    if (sequence == nullptr)
        return StackRefuse();
    YamlListNode *copy = ChildCopy(handle, *sequence, source);
    if (copy == nullptr)
        return YAML_ERR_NOMEM;
    current = copy;
    return ContentCopy(handle, *copy, source);
}

uint32_t TreeBuilder::PlaceValueCopy(const YamlListNode &source, bool isFirst) noexcept
{
    const YamlListNode &key = *current;
    if (key.pcValue != nullptr && strcmp(key.pcValue, "<<") == 0)
        return Merge(source, isFirst);
    if (key.uiSameWithAnchor == 1) {
        YamlListNode *merged = MergedKeyOf(key);
        if (merged == nullptr)
            return MergedKeyMissing(key);
        ValueDrop(*merged);
        current = merged;
    }
    return PlaceCopyBelow(source);
}

uint32_t TreeBuilder::PlaceCopyBelow(const YamlListNode &source) noexcept
{
    YamlListNode *copy = ChildCopy(handle, *current, source);
    if (copy == nullptr) {
        if (source.uiDataType == YAML_DATATYPE_SCALAR)
            YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to allocate memory for dup scalar node.");
        return YAML_ERR_NOMEM;
    }
    current = copy;
    return ContentCopy(handle, *copy, source);
}

} // namespace zryaml::parse
