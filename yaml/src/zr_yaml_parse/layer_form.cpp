// SPDX-License-Identifier: Apache-2.0
// What only loads of layers know: tags that say how a value lies over another, and merge forms.
#include "../document_load.h"
#include "../layer_tag.h"
#include "../nearest_text.h"
#include "tree_builder.h"

namespace {

using namespace zryaml;

// The tag before the node that an event has made, or NULL.
const char *TagOf(const yaml_event_t &event) noexcept
{
    switch (event.type) {
    case YAML_SCALAR_EVENT:
        return reinterpret_cast<const char *>(event.data.scalar.tag);
    case YAML_SEQUENCE_START_EVENT:
        return reinterpret_cast<const char *>(event.data.sequence_start.tag);
    case YAML_MAPPING_START_EVENT:
        return reinterpret_cast<const char *>(event.data.mapping_start.tag);
    default:
        return nullptr;
    }
}

bool EndsValue(const yaml_event_t &event) noexcept
{
    return event.type == YAML_SCALAR_EVENT || event.type == YAML_SEQUENCE_END_EVENT ||
           event.type == YAML_MAPPING_END_EVENT;
}

// Notes a tag of layers in its node, and one that looks as if it was to be one. False if it is neither.
bool TagTake(YamlListNode &node, const char *name) noexcept
{
    LayerTag tag = LayerTagNamed(name);
    const bool misspelt = tag == LayerTag::None;
    if (misspelt) {
        NearestText nearest(name);
        for (const std::string_view known : LayerTagNames)
            nearest.Offer(known);
        tag = nearest.Best() != nullptr ? LayerTagNamed(nearest.Best()) : LayerTag::None;
    }
    LayerTagSet(node, tag);
    node.uiState |= misspelt && tag != LayerTag::None ? NODE_TAG_MISSPELT : 0;
    return tag != LayerTag::None;
}

} // namespace

uint32_t zryaml::parse::TreeBuilder::TakeLayerForm(const yaml_event_t &event) noexcept
{
    const char *name = (handle.uiLoadFlags & LOAD_TAGS) != 0 ? TagOf(event) : nullptr;
    if (name != nullptr && TagTake(*current, name))
        handle.uiLoadFlags |= LOAD_TAGS_SEEN;
    return (handle.uiLoadFlags & LOAD_MERGE_FORMS) != 0 && EndsValue(event) ? MergeForm() : uint32_t{YAML_OK};
}
