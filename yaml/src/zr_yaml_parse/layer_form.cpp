// SPDX-License-Identifier: Apache-2.0
// What only loads of layers know: tags that say how a value lies over another, and merge forms.
#include "../document_load.h"
#include "../layer_tag.h"
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

} // namespace

uint32_t zryaml::parse::TreeBuilder::TakeLayerForm(const yaml_event_t &event) noexcept
{
    const char *name = (handle.uiLoadFlags & LOAD_TAGS) != 0 ? TagOf(event) : nullptr;
    const LayerTag tag = name != nullptr ? LayerTagNamed(name) : LayerTag::None;
    if (tag != LayerTag::None) {
        LayerTagSet(*current, tag);
        handle.uiLoadFlags |= LOAD_TAGS_SEEN;
    }
    return (handle.uiLoadFlags & LOAD_MERGE_FORMS) != 0 && EndsValue(event) ? MergeForm() : uint32_t{YAML_OK};
}
