// SPDX-License-Identifier: Apache-2.0
// Values of all kinds: optional ones, sequences and maps, and those that a function of the host reads.
#include "value_read.h"

#include <cstring>

namespace {

using namespace zryaml;
using namespace zryaml::bind;

const char *TypeName(uint32_t type) noexcept
{
    return type == YAML_DATATYPE_SEQ ? "sequence" : type == YAML_DATATYPE_MAP ? "map" : "scalar";
}

const YamlStorage *StorageOf(const PlanField &plan) noexcept
{
    return plan.field->pstStorage;
}

// Whether a sequence or map has as many children as the field allows.
bool CountFits(YamlReading &reading, const YamlListNode &value, uint32_t count, uint32_t least,
               uint32_t greatest) noexcept
{
    const char *kind = TypeName(value.uiDataType);
    const char *noun = value.uiDataType == YAML_DATATYPE_MAP ? "key" : "element";
    const char *plural = count == 1 ? "" : "s";
    const Finding finding = {.code = YAML_ERR_RANGE, .value = &value};
    if (greatest != 0 && least == greatest && count != least)
        return Tell(reading, finding, "the %s has %u %s%s, not %u", kind, count, noun, plural, least);
    if (count < least)
        return Tell(reading, finding, "the %s has %u %s%s, at least %u must be there", kind, count, noun, plural,
                    least);
    if (greatest != 0 && count > greatest)
        return Tell(reading, finding, "the %s has %u %s%s, at most %u may be there", kind, count, noun, plural,
                    greatest);
    return true;
}

bool CountFits(YamlReading &reading, const PlanField &plan, const YamlListNode &value, uint32_t count) noexcept
{
    return CountFits(reading, value, count, plan.field->uiMinCount, plan.field->uiMaxCount);
}

// Memory for the elements, which the member then points to.
char *ElementsMake(YamlReading &reading, const YamlField &field, uint32_t count, void *member) noexcept
{
    if (field.pstStorage != nullptr) {
        void *first = field.pstStorage->pfnOpen(member, count);
        if (first == nullptr && count != 0)
            (void)Starve(reading);
        return static_cast<char *>(first);
    }
    void *first = count != 0 ? Keep(reading, size_t{count} * field.uiElementWidth) : nullptr;
    memcpy(member, &first, sizeof(first));
    return static_cast<char *>(first);
}

bool ArrayRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value, void *record,
               void *member) noexcept
{
    if (value.uiDataType != YAML_DATATYPE_SEQ)
        return WrongType(reading, value, YAML_DATATYPE_SEQ);
    const uint32_t count = ZRYAML_ChildCountGet(&value);
    bool fits = CountFits(reading, plan, value, count);
    char *element = fits ? ElementsMake(reading, *plan.field, count, member) : nullptr;
    CountStore(*plan.field, count, record);
    for (const YamlListNode &child : Children(value)) {
        if (element == nullptr)
            break;
        fits = PartRead(reading, *plan.parts[0], child, element) && fits;
        if (reading.starved)
            return false;
        element += plan.field->uiElementWidth;
    }
    return fits && !reading.starved;
}

bool MapRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value, void *record,
             void *member) noexcept
{
    if (value.uiDataType != YAML_DATATYPE_MAP)
        return WrongType(reading, value, YAML_DATATYPE_MAP);
    const uint32_t count = ZRYAML_ChildCountGet(&value);
    bool fits = CountFits(reading, plan, value, count);
    if (!fits)
        return false;
    const YamlStorage *storage = StorageOf(plan);
    char *pair = ElementsMake(reading, *plan.field, storage != nullptr ? 0 : count, member);
    CountStore(*plan.field, count, record);
    for (const YamlListNode &key : Children(value)) {
        const YamlListNode *below = key.uiSameWithAnchor == 1 ? nullptr : FirstChild(key);
        if (below == nullptr)
            continue;
        if (storage == nullptr && pair == nullptr)
            return false;
        void *place = storage != nullptr ? storage->pfnAdd(member, key.pcValue) : pair + sizeof(key.pcValue);
        if (place == nullptr)
            return Starve(reading);
        if (storage == nullptr) {
            memcpy(pair, &key.pcValue, sizeof(key.pcValue));
            pair += plan.field->uiElementWidth;
        }
        fits = PartRead(reading, *plan.parts[0], *below, place) && fits;
        if (reading.starved)
            return false;
    }
    return fits && !reading.starved;
}

bool TupleRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value, void *member) noexcept
{
    if (value.uiDataType != YAML_DATATYPE_SEQ)
        return WrongType(reading, value, YAML_DATATYPE_SEQ);
    bool fits = CountFits(reading, value, ZRYAML_ChildCountGet(&value), plan.partCount, plan.partCount);
    uint32_t index = 0;
    for (const YamlListNode &child : Children(value)) {
        if (index == plan.partCount || reading.starved)
            break;
        const PlanField &part = *plan.parts[index];
        fits = PartRead(reading, part, child, StorageOf(plan)->pfnOpen(member, index++)) && fits;
    }
    return fits;
}

bool OptionalRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value, void *member) noexcept
{
    if (IsNull(value))
        return true;
    if (IsOptionalText(*plan.field))
        return ScalarRead(reading, *plan.parts[0], value, member);
    const YamlStorage *storage = StorageOf(plan);
    void *place = storage != nullptr ? storage->pfnOpen(member, 0) : Keep(reading, plan.field->uiElementWidth);
    if (place == nullptr)
        return Starve(reading);
    if (storage == nullptr)
        memcpy(member, &place, sizeof(place));
    return PartRead(reading, *plan.parts[0], value, place);
}

bool CustomRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value, void *member) noexcept
{
    const uint32_t errors = reading.errors;
    const uint32_t code = plan.field->pfnConvert(&reading, &value, member, plan.field->pvContext);
    if (code == YAML_ERR_NOMEM)
        return Starve(reading);
    if (code == YAML_OK || reading.errors != errors)
        return reading.errors == errors && !reading.starved;
    return Tell(reading, {.code = code, .value = &value}, "the value is not accepted");
}

} // namespace

bool zryaml::bind::WrongType(YamlReading &reading, const YamlListNode &value, uint32_t wanted) noexcept
{
    const uint32_t code = wanted == YAML_DATATYPE_SCALAR ? YAML_ERR_NOT_SCALAR : YAML_ERR_NODE_TYPE;
    return Tell(reading, {.code = code, .value = &value}, "the value is a %s, not a %s", TypeName(value.uiDataType),
                TypeName(wanted));
}

bool zryaml::bind::PartRead(YamlReading &reading, const PlanField &part, const YamlListNode &value,
                            void *place) noexcept
{
    return ValueRead(reading, part, value, place, part.described ? MemberOf(*part.field, place) : place);
}

bool zryaml::bind::ValueRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value, void *record,
                             void *member) noexcept
{
    switch (plan.kind) {
    case YAML_KIND_RECORD:
        if (IsNull(value))
            return RecordInitial(reading, *plan.record, member);
        if (value.uiDataType != YAML_DATATYPE_MAP)
            return WrongType(reading, value, YAML_DATATYPE_MAP);
        return RecordFill(reading, *plan.record, &value, member, nullptr);
    case YAML_KIND_OPTIONAL:
        return OptionalRead(reading, plan, value, member);
    case YAML_KIND_ARRAY:
        return IsNull(value) || ArrayRead(reading, plan, value, record, member);
    case YAML_KIND_MAP:
        return IsNull(value) || MapRead(reading, plan, value, record, member);
    case YAML_KIND_TUPLE:
        return IsNull(value) || TupleRead(reading, plan, value, member);
    case YAML_KIND_UNION:
        return IsNull(value) || UnionRead(reading, plan, value, record, member);
    case YAML_KIND_CUSTOM:
        return CustomRead(reading, plan, value, member);
    default:
        return ScalarRead(reading, plan, value, member);
    }
}
