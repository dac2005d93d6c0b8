// SPDX-License-Identifier: Apache-2.0
// Unions: the alternative that a key of the map names, or, where none does, the only one that fits.
#include "value_read.h"

#include "../nearest_text.h"

#include <cstring>

namespace {

using namespace zryaml;
using namespace zryaml::bind;

constexpr uint32_t ProbesDeepest = 4; // each level multiplies the work
constexpr uint32_t NoAlternative = UINT32_MAX;

const YamlListNode *KeyOf(const YamlListNode &map, const char *text) noexcept
{
    const WantedKey wanted(text);
    for (const YamlListNode &key : Children(map)) {
        if (wanted.IsOf(key) && key.uiSameWithAnchor != 1)
            return &key;
    }
    return nullptr;
}

void *AlternativeOpen(const PlanField &plan, uint32_t index, void *record, void *member) noexcept
{
    CountStore(*plan.field, index, record);
    if (plan.field->pstStorage != nullptr)
        return plan.field->pstStorage->pfnOpen(member, index);
    return memset(member, 0, plan.width); // what another alternative left there is no value of this one
}

bool TellTag(YamlReading &reading, const PlanField &plan, const YamlListNode &tag) noexcept
{
    const YamlField &field = *plan.field;
    char names[SentenceSize] = "";
    NearestText nearest{tag.pcValue};
    for (uint32_t index = 0; index < field.uiAlternatives; ++index) {
        const char *name = field.pstAlternatives[index].pcText;
        const size_t used = strlen(names);
        (void)snprintf(names + used, sizeof(names) - used, "%s%s", index != 0 ? ", " : "", name);
        nearest.Offer(name);
    }
    char hint[SentenceSize] = "";
    if (nearest.Best() != nullptr)
        (void)snprintf(hint, sizeof(hint), "did you mean '%s'?", nearest.Best());
    return Tell(reading, {.code = YAML_ERR_VALUE, .value = &tag, .hint = hint}, "'%s' is not one of %s", tag.pcValue,
                names);
}

bool TaggedRead(YamlReading &reading, const PlanField &plan, const YamlListNode &map, void *record,
                void *member) noexcept
{
    if (map.uiDataType != YAML_DATATYPE_MAP)
        return WrongType(reading, map, YAML_DATATYPE_MAP);
    const char *tagKey = plan.field->pcTagKey != nullptr ? plan.field->pcTagKey : "type";
    const YamlListNode *key = KeyOf(map, tagKey);
    const YamlListNode *tag = key != nullptr ? FirstChild(*key) : nullptr;
    if (tag == nullptr)
        return Tell(reading, {.code = YAML_ERR_MISSING_KEY, .value = &map}, "missing key '%s'", tagKey);
    if (ZRYAML_ValueTextGet(tag) == nullptr)
        return WrongType(reading, *tag, YAML_DATATYPE_SCALAR);
    for (uint32_t index = 0; index < plan.partCount; ++index) {
        if (strcmp(plan.field->pstAlternatives[index].pcText, tag->pcValue) != 0)
            continue;
        void *place = AlternativeOpen(plan, index, record, member);
        if (place == nullptr)
            return Starve(reading);
        const PlanField &part = *plan.parts[index];
        if (part.kind != YAML_KIND_RECORD)
            return PartRead(reading, part, map, place);
        return RecordFill(reading, *part.record, &map, place, tagKey);
    }
    return TellTag(reading, plan, *tag);
}

// The type of node that a kind is read from; _NONE for any.
uint32_t TypeWanted(const PlanField &plan) noexcept
{
    switch (plan.kind) {
    case YAML_KIND_RECORD:
    case YAML_KIND_MAP:
        return YAML_DATATYPE_MAP;
    case YAML_KIND_ARRAY:
    case YAML_KIND_TUPLE:
        return YAML_DATATYPE_SEQ;
    case YAML_KIND_OPTIONAL:
        return TypeWanted(*plan.parts[0]);
    case YAML_KIND_UNION:
    case YAML_KIND_CUSTOM:
        return YAML_DATATYPE_NONE;
    default:
        return YAML_DATATYPE_SCALAR;
    }
}

// Tries an alternative out. The number of its problems.
uint32_t Probe(YamlReading &reading, const PlanField &plan, uint32_t index, const YamlListNode &value, void *record,
               void *member) noexcept
{
    const uint32_t errors = reading.errors;
    const uint32_t code = reading.code;
    ++reading.probes;
    void *place = AlternativeOpen(plan, index, record, member);
    if (place == nullptr)
        (void)Starve(reading);
    else
        (void)PartRead(reading, *plan.parts[index], value, place);
    --reading.probes;
    const uint32_t found = reading.errors - errors;
    reading.errors = errors;
    reading.code = code;
    return found;
}

// Of scalars the first that fits, any text last; of anything else the only one.
struct Choice {
    uint32_t best = NoAlternative;
    uint32_t problems = UINT32_MAX;
    bool tied = false;
};

void Offer(Choice &choice, uint32_t index, uint32_t problems, bool scalar) noexcept
{
    if (problems == 0 && choice.problems == 0)
        choice.tied = choice.tied || !scalar;
    if (problems >= choice.problems)
        return;
    choice.best = index;
    choice.problems = problems;
}

bool AnyRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value, void *record,
             void *member) noexcept
{
    uint32_t candidates = 0;
    Choice choice;
    for (uint32_t index = 0; index < plan.partCount; ++index) {
        const uint32_t wanted = TypeWanted(*plan.parts[index]);
        if (wanted == value.uiDataType || wanted == YAML_DATATYPE_NONE) {
            ++candidates;
            choice.best = index;
        }
    }
    if (candidates == 0)
        return WrongType(reading, value, TypeWanted(*plan.parts[0]));
    if (candidates > 1) {
        if (reading.probes == ProbesDeepest)
            return Tell(reading, {.code = YAML_ERR_VALUE, .value = &value},
                        "alternatives lie more than %u deep within each other", ProbesDeepest);
        choice.best = NoAlternative;
        for (const bool texts : {false, true}) {
            for (uint32_t index = 0; index < plan.partCount && !reading.starved; ++index) {
                const PlanField &part = *plan.parts[index];
                const uint32_t wanted = TypeWanted(part);
                if ((part.kind == YAML_KIND_TEXT) != texts ||
                    (wanted != value.uiDataType && wanted != YAML_DATATYPE_NONE))
                    continue;
                Offer(choice, index, Probe(reading, plan, index, value, record, member),
                      value.uiDataType == YAML_DATATYPE_SCALAR);
            }
        }
        if (choice.tied)
            return Tell(reading, {.code = YAML_ERR_VALUE, .value = &value}, "the value fits more than one alternative");
    }
    if (reading.starved)
        return false;
    void *place = AlternativeOpen(plan, choice.best, record, member);
    return place != nullptr ? PartRead(reading, *plan.parts[choice.best], value, place) : Starve(reading);
}

} // namespace

bool zryaml::bind::UnionRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value, void *record,
                             void *member) noexcept
{
    return plan.field->bAnyFits != 0 ? AnyRead(reading, plan, value, record, member)
                                     : TaggedRead(reading, plan, value, record, member);
}
