// SPDX-License-Identifier: Apache-2.0
// Hands each parse event to its handler; while the debug switch is 1, traces it.
#include "parse_internal.h"

#include <iterator>
#include <utility>
#include <yaml.h>

namespace {

constexpr const char *g_apcEventName[] = {
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
static_assert(std::size(g_apcEventName) == YAML_MAPPING_END_EVENT + 1);

void EventTrace(const yaml_event_t &stEvent) noexcept
{
    switch (stEvent.type) {
    case YAML_ALIAS_EVENT:
        YAML_NOTE(YAML_OK, "- event type: ALIAS(anchor=%s)", stEvent.data.alias.anchor);
        break;
    case YAML_SCALAR_EVENT:
        YAML_NOTE(YAML_OK, "- event type: SCALAR(value=%s)", stEvent.data.scalar.value);
        break;
    default:
        YAML_NOTE(YAML_OK, "%s", g_apcEventName[stEvent.type]);
        break;
    }
}

} // namespace

uint32_t yaml_EventAnalyze(const yaml_event_t *pstEvent, YamlListNode **ppstCurrNode, uint32_t *puiKeyValueFlag,
                           uint32_t *puiLastEventType, uint32_t *puiDocumentCount, YamlHandle *pstHandle)
{
    const auto uiType = static_cast<uint32_t>(pstEvent->type);
    const uint32_t uiLastType = std::exchange(*puiLastEventType, uiType);
    if (uiType == YAML_NO_EVENT || uiType > YAML_MAPPING_END_EVENT)
        return YAML_FAIL(YAML_ERR_EVENT, "Unknown parse event. (Event=%u)", uiType);
    if (DebugSwitch() == 1)
        EventTrace(*pstEvent);
    pstHandle->uiLine = static_cast<uint32_t>(pstEvent->start_mark.line + 1);
    pstHandle->uiColumn = static_cast<uint32_t>(pstEvent->start_mark.column + 1);

    switch (pstEvent->type) {
    case YAML_DOCUMENT_START_EVENT:
        ++*puiDocumentCount;
        return YAML_OK;
    case YAML_ALIAS_EVENT:
        return yaml_AliasProcess(pstEvent, ppstCurrNode, pstHandle, puiKeyValueFlag);
    case YAML_SCALAR_EVENT:
        return yaml_ScalarProcess(pstEvent, ppstCurrNode, pstHandle, puiKeyValueFlag, uiLastType);
    case YAML_SEQUENCE_START_EVENT:
        return yaml_SeqStartProcess(pstEvent, uiLastType, ppstCurrNode, pstHandle);
    case YAML_SEQUENCE_END_EVENT:
        return yaml_SeqEndProcess(pstHandle, ppstCurrNode, puiKeyValueFlag);
    case YAML_MAPPING_START_EVENT:
        *puiKeyValueFlag = 0;
        return yaml_MapStartProcess(pstEvent, uiLastType, ppstCurrNode, pstHandle);
    case YAML_MAPPING_END_EVENT:
        yaml_MapEndProcess(pstHandle, ppstCurrNode);
        return YAML_OK;
    default:
        return YAML_OK; // start and end of the stream, end of the document
    }
}
