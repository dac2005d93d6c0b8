// SPDX-License-Identifier: Apache-2.0
// Scalars of a record: numbers, booleans, durations, sizes, enumerations and texts, with their ranges.
#include "value_read.h"

#include "../nearest_text.h"

#include <cstring>

namespace {

using namespace zryaml;
using namespace zryaml::bind;

bool TextStore(YamlReading &reading, const PlanField &plan, const char *text, void *member) noexcept
{
    const YamlStorage *storage = plan.field->pstStorage;
    if (storage != nullptr && storage->pfnTextSet != nullptr)
        return storage->pfnTextSet(member, text) == YAML_OK || Starve(reading);
    memcpy(member, &text, sizeof(text));
    return true;
}

bool IsOutside(const PlanField &plan, ScalarValue value) noexcept
{
    const bool none = plan.kind == YAML_KIND_DOUBLE && value.number != value.number;
    return (plan.hasLeast && (none || ScalarIsLess(plan.scalar, value, plan.least))) ||
           (plan.hasGreatest && (none || ScalarIsLess(plan.scalar, plan.greatest, value)));
}

bool TellRange(YamlReading &reading, const PlanField &plan, const YamlListNode &node, ScalarValue value) noexcept
{
    const char *least = plan.hasLeast ? plan.field->pcMin : nullptr;
    const char *greatest = plan.hasGreatest ? plan.field->pcMax : nullptr;
    char hint[SentenceSize] = "";
    if (least != nullptr && greatest != nullptr)
        (void)snprintf(hint, sizeof(hint), "%s to %s is allowed", least, greatest);
    const Finding finding = {.code = YAML_ERR_RANGE, .value = &node, .hint = hint};
    if (least != nullptr && ScalarIsLess(plan.scalar, value, plan.least))
        return Tell(reading, finding, "'%s' is less than %s", node.pcValue, least);
    if (greatest != nullptr && ScalarIsLess(plan.scalar, plan.greatest, value))
        return Tell(reading, finding, "'%s' is greater than %s", node.pcValue, greatest);
    return Tell(reading, finding, "'%s' is in no range", node.pcValue);
}

bool NumberRead(YamlReading &reading, const PlanField &plan, const YamlListNode &node, void *member) noexcept
{
    ScalarValue value = {};
    if (ScalarParse(plan.scalar, node.pcValue, value) != Fit::Yes) {
        char sentence[SentenceSize];
        char hint[SentenceSize];
        (void)ZRYAML_ScalarExplain(&plan.scalar, node.pcValue, sizeof(sentence), sentence);
        (void)ScalarHint(plan.scalar, plan.field->pcMin, plan.field->pcMax, sizeof(hint), hint);
        return Tell(reading, {.code = YAML_ERR_VALUE, .value = &node, .hint = hint}, "%s", sentence);
    }
    if (IsOutside(plan, value))
        return TellRange(reading, plan, node, value);
    ScalarStore(plan.scalar, value, member);
    return true;
}

// The names with commas between them, cut where there are too many.
void NamesJoin(const YamlField &field, char *text, size_t size) noexcept
{
    size_t used = 0;
    for (uint32_t index = 0; index < field.uiNames; ++index) {
        const char *name = field.pstNames[index].pcText;
        if (used + strlen(name) + sizeof(", ...") >= size) {
            (void)snprintf(text + used, size - used, ", ...");
            return;
        }
        used += static_cast<size_t>(snprintf(text + used, size - used, "%s%s", index != 0 ? ", " : "", name));
    }
}

bool NameRead(YamlReading &reading, const PlanField &plan, const YamlListNode &node, void *member) noexcept
{
    const YamlField &field = *plan.field;
    NearestText nearest{node.pcValue};
    for (uint32_t index = 0; index < field.uiNames; ++index) {
        if (strcmp(field.pstNames[index].pcText, node.pcValue) != 0)
            continue;
        ScalarValue value = {};
        value.whole = field.pstNames[index].lValue;
        ScalarStore(plan.scalar, value, member);
        return true;
    }
    for (uint32_t index = 0; index < field.uiNames; ++index)
        nearest.Offer(field.pstNames[index].pcText);
    char names[SentenceSize];
    char hint[SentenceSize] = "";
    NamesJoin(field, names, sizeof(names));
    if (nearest.Best() != nullptr)
        (void)snprintf(hint, sizeof(hint), "did you mean '%s'?", nearest.Best());
    return Tell(reading, {.code = YAML_ERR_VALUE, .value = &node, .hint = hint}, "'%s' is not one of %s", node.pcValue,
                names);
}

} // namespace

bool zryaml::bind::ScalarRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value,
                              void *member) noexcept
{
    if (value.uiDataType != YAML_DATATYPE_SCALAR)
        return WrongType(reading, value, YAML_DATATYPE_SCALAR);
    if (plan.kind == YAML_KIND_TEXT)
        return TextStore(reading, plan, value.pcValue, member);
    return plan.kind == YAML_KIND_ENUM ? NameRead(reading, plan, value, member)
                                       : NumberRead(reading, plan, value, member);
}
