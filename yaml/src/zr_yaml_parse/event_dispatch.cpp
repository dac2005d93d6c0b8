// SPDX-License-Identifier: Apache-2.0
// Passes each parse event to its handler; while the debug switch is 1, traces it.
#include "node.h"
#include "parse_internal.h"
#include "tree_builder.h"

#include <iterator>
#include <utility>
#include <yaml.h>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

constexpr const char *g_eventName[] = {
    "NO EVENT",
    "- event type: STREAM-START",
    "- event type: STREAM-END",
    "- event type: DOCUMENT-START",
    "- event type: DOCUMENT-END",
    "- event type: ALIAS",  // traced with its anchor
    "- event type: SCALAR", // traced with its value
    "- event type: SEQUENCE-START",
    "- event type: SEQUENCE-END",
    "- event type: MAPPING-START",
    "- event type: MAPPING-end",
};
static_assert(std::size(g_eventName) == YAML_MAPPING_END_EVENT + 1);

ZRYAML_RARE void EventTrace(const yaml_event_t &event) noexcept
{
    switch (event.type) {
    case YAML_ALIAS_EVENT:
        YAML_NOTE(YAML_OK, "- event type: ALIAS(anchor=%s)", event.data.alias.anchor);
        break;
    case YAML_SCALAR_EVENT:
        YAML_NOTE(YAML_OK, "- event type: SCALAR(value=%s)", event.data.scalar.value);
        break;
    default:
        YAML_NOTE(YAML_OK, "%s", g_eventName[event.type]);
        break;
    }
}

ZRYAML_RARE uint32_t EventRefuse(uint32_t type) noexcept
{
    return YAML_FAIL(YAML_ERR_EVENT, "Unknown parse event. (Event=%u)", type);
}

} // namespace

[[gnu::always_inline]] inline uint32_t zryaml::parse::TreeBuilder::Handle(const yaml_event_t &event,
                                                                          uint32_t before) noexcept
{
    switch (event.type) {
    case YAML_DOCUMENT_START_EVENT:
        ++documents;
        return YAML_OK;
    case YAML_ALIAS_EVENT:
        return TakeAlias(event);
    case YAML_SCALAR_EVENT:
        return TakeScalar(event);
    case YAML_SEQUENCE_START_EVENT:
        return Open(SequenceKind, before, event.data.sequence_start.anchor);
    case YAML_SEQUENCE_END_EVENT:
        Close(YAML_DATATYPE_SEQ);
        expected = ExpectKey;
        return YAML_OK;
    case YAML_MAPPING_START_EVENT:
        expected = ExpectKey;
        return Open(MapKind, before, event.data.mapping_start.anchor);
    case YAML_MAPPING_END_EVENT:
        Close(YAML_DATATYPE_MAP);
        return YAML_OK;
    default:
        return YAML_OK; // start and end of the stream, end of the document
    }
}

uint32_t zryaml::parse::TreeBuilder::Take(const yaml_event_t &event) noexcept
{
    const uint32_t settled = Settle();
    if (settled != YAML_OK)
        return settled;
    const auto type = static_cast<uint32_t>(event.type);
    const uint32_t before = std::exchange(lastEvent, type);
    if (type == YAML_NO_EVENT || type > YAML_MAPPING_END_EVENT)
        return EventRefuse(type);
    if (DebugSwitch() == 1)
        EventTrace(event);
    handle.uiLine = static_cast<uint32_t>(event.start_mark.line + 1);
    handle.uiColumn = static_cast<uint32_t>(event.start_mark.column + 1);

    const uint32_t result = Handle(event, before);
    return handle.uiLoadFlags == 0 || result != YAML_OK ? result : TakeLayerForm(event);
}
