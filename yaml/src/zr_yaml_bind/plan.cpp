// SPDX-License-Identifier: Apache-2.0
// Makes the plan of a description. Descriptions may hold themselves, so each record and each described element has one
// plan, which those that hold it share.
#include "plan.h"

#include <cstring>
#include <new>

namespace {

using namespace zryaml;
using namespace zryaml::bind;

struct ElementPlan { // of a field that another one names as its element
    const YamlField *field;
    PlanField plan;
    ElementPlan *next;
};

class Planner {
public:
    explicit Planner(YamlReading &reading) noexcept : reading_(reading) {}
    [[nodiscard]] PlanRecord *Record(const YamlRecord &record) noexcept;
    [[nodiscard]] PlanField *Element(const YamlField &field) noexcept;

private:
    [[nodiscard]] bool Fields(PlanRecord &plan) noexcept;
    [[nodiscard]] bool Field(PlanField &plan, const YamlField &field) noexcept;
    [[nodiscard]] bool Kind(PlanField &plan) noexcept;
    [[nodiscard]] bool Scalar(PlanField &plan) noexcept;
    [[nodiscard]] bool Limit(const PlanField &plan, const char *text, const char *name, bool &has,
                             ScalarValue &value) noexcept;
    [[nodiscard]] bool Names(PlanField &plan) noexcept;
    [[nodiscard]] bool Elements(PlanField &plan) noexcept;
    [[nodiscard]] bool Parts(PlanField &plan) noexcept;
    [[nodiscard]] bool PartsMake(PlanField &plan, uint32_t count) noexcept;
    [[nodiscard]] bool Nested(PlanField &plan, const YamlRecord *record) noexcept;

    // A mistake of the host, named by record and key.
    [[nodiscard]] bool Mistake(const PlanField &plan, const char *what, const char *detail = "") noexcept
    {
        const char *key = plan.field->pcKey;
        return Tell(reading_, {.code = YAML_ERR_PARAM}, "the description of %s is wrong: '%s'%s%s", name_,
                    key != nullptr ? key : "", what, detail);
    }
    template <class T> [[nodiscard]] T *Make(size_t count = 1) noexcept
    {
        // NOLINTNEXTLINE(bugprone-sizeof-expression): T may well be a pointer
        auto *memory = static_cast<T *>(reading_.scratch.Take(count * sizeof(T)));
        for (size_t index = 0; memory != nullptr && index < count; ++index)
            new (memory + index) T();
        if (memory == nullptr)
            (void)Starve(reading_);
        return memory;
    }

    YamlReading &reading_;
    PlanRecord *records_ = nullptr;
    ElementPlan *elements_ = nullptr;
    const char *name_ = ""; // of the record at hand
};

PlanRecord *Planner::Record(const YamlRecord &record) noexcept
{
    for (PlanRecord *known = records_; known != nullptr; known = known->next) {
        if (known->record == &record)
            return known;
    }
    auto *plan = Make<PlanRecord>();
    if (plan == nullptr)
        return nullptr;
    plan->record = &record;
    plan->next = records_;
    records_ = plan;
    const char *outer = name_;
    name_ = record.pcName != nullptr ? record.pcName : "";
    const bool fits = Fields(*plan);
    name_ = outer;
    return fits ? plan : nullptr;
}

bool Planner::Fields(PlanRecord &plan) noexcept
{
    const YamlRecord &record = *plan.record;
    if (record.uiSize < sizeof(YamlRecord) || record.uiFieldSize < sizeof(YamlField) ||
        record.uiFields > YAML_FIELD_MAX || (record.pstFields == nullptr && record.uiFields != 0))
        return Tell(reading_, {.code = YAML_ERR_PARAM}, "the description of %s is wrong: it is not made by YAML_RECORD",
                    name_);
    plan.count = record.uiFields;
    plan.fields = Make<PlanField>(record.uiFields);
    if (plan.fields == nullptr)
        return false;
    for (uint32_t index = 0; index < plan.count; ++index) {
        PlanField &field = plan.fields[index];
        if (!Field(field, FieldAt(record, index)))
            return false;
        const char *key = field.field->pcKey;
        if (key == nullptr)
            return Mistake(field, " has no key");
        field.key = WantedKey(key);
        for (uint32_t other = 0; other < index; ++other) {
            if (strcmp(plan.fields[other].field->pcKey, key) == 0)
                return Mistake(field, " is described twice");
        }
        if (field.field->pcOldKey != nullptr)
            field.oldKey = WantedKey(field.field->pcOldKey);
        plan.required = plan.required || field.field->bRequired != 0;
    }
    return true;
}

bool Planner::Field(PlanField &plan, const YamlField &field) noexcept
{
    plan.field = &field;
    plan.kind = field.uiKind;
    plan.width = field.uiWidth;
    if (!Kind(plan))
        return false;
    const bool limited = IsScalarKind(plan.kind) || (plan.partCount == 1 && IsScalarKind(plan.parts[0]->kind));
    if (!limited && (field.pcMin != nullptr || field.pcMax != nullptr))
        return Mistake(plan, " has limits, but is no number, duration or size");
    const bool simple = IsScalarKind(plan.kind) || plan.kind == YAML_KIND_TEXT || plan.kind == YAML_KIND_ENUM;
    if (!simple && field.pcDefault != nullptr)
        return Mistake(plan, " has a default, but is no scalar");
    return true;
}

bool Planner::Kind(PlanField &plan) noexcept
{
    const YamlField &field = *plan.field;
    switch (plan.kind) {
    case YAML_KIND_TEXT:
        return true;
    case YAML_KIND_ENUM:
        return Names(plan);
    case YAML_KIND_RECORD:
        return Nested(plan, RecordOf(field));
    case YAML_KIND_OPTIONAL:
    case YAML_KIND_ARRAY:
    case YAML_KIND_MAP:
        return Elements(plan);
    case YAML_KIND_UNION:
    case YAML_KIND_TUPLE:
        return Parts(plan);
    case YAML_KIND_CUSTOM:
        return field.pfnConvert != nullptr || Mistake(plan, " has no .pfnConvert");
    default:
        return IsScalarKind(plan.kind) ? Scalar(plan) : Mistake(plan, " is of no known kind");
    }
}

bool Planner::Scalar(PlanField &plan) noexcept
{
    const YamlField &field = *plan.field;
    plan.scalar = ScalarTypeOf(field, plan.kind, plan.width);
    const bool own = IsScalarKind(field.uiKind); // else the default is not that of this element
    return Limit(plan, field.pcMin, ".pcMin ", plan.hasLeast, plan.least) &&
           Limit(plan, field.pcMax, ".pcMax ", plan.hasGreatest, plan.greatest) &&
           Limit(plan, own ? field.pcDefault : nullptr, ".pcDefault ", plan.hasInitial, plan.initial);
}

bool Planner::Limit(const PlanField &plan, const char *text, const char *name, bool &has, ScalarValue &value) noexcept
{
    has = text != nullptr;
    const Fit fit = ScalarParse(plan.scalar, has ? text : "", value);
    if (fit == Fit::NoSuchType)
        return Mistake(plan, " is of a type that cannot be read",
                       plan.kind == YAML_KIND_DURATION ? ": its unit is finer than nanoseconds" : "");
    if (!has)
        return true;
    char sentence[SentenceSize];
    (void)snprintf(sentence, sizeof(sentence), ": %s", name);
    const size_t length = strlen(sentence);
    (void)ZRYAML_ScalarExplain(&plan.scalar, text, static_cast<uint32_t>(sizeof(sentence) - length), sentence + length);
    if (fit != Fit::Yes)
        return Mistake(plan, sentence);
    const bool outside = (plan.hasLeast && ScalarIsLess(plan.scalar, value, plan.least)) ||
                         (plan.hasGreatest && ScalarIsLess(plan.scalar, plan.greatest, value));
    return !outside || Mistake(plan, sentence, "is outside of its limits");
}

bool Planner::Names(PlanField &plan) noexcept
{
    const YamlField &field = *plan.field;
    plan.scalar = ScalarTypeOf(field, YAML_KIND_ENUM, plan.width);
    if (field.pstNames == nullptr || field.uiNames == 0)
        return Mistake(plan, " has no names: YAML_NAMES gives them");
    const char *initial = field.uiKind == YAML_KIND_ENUM ? field.pcDefault : nullptr;
    for (uint32_t index = 0; initial != nullptr && index < field.uiNames; ++index) {
        if (strcmp(field.pstNames[index].pcText, initial) != 0)
            continue;
        plan.hasInitial = true;
        plan.initial.whole = field.pstNames[index].lValue;
        return true;
    }
    return initial == nullptr || Mistake(plan, " has a default that is none of its names: ", initial);
}

bool Planner::Nested(PlanField &plan, const YamlRecord *record) noexcept
{
    if (record == nullptr)
        return Mistake(plan, " has no .pstRecord");
    plan.record = Record(*record);
    if (plan.record == nullptr)
        return false;
    const bool fits = record->uiRecordSize == plan.width || plan.field->uiKind == YAML_KIND_UNION;
    return fits || Mistake(plan, " is of another size than the record that describes it, ", record->pcName);
}

bool Planner::PartsMake(PlanField &plan, uint32_t count) noexcept
{
    plan.parts = Make<PlanField *>(count);
    plan.partCount = plan.parts != nullptr ? count : 0;
    return plan.parts != nullptr;
}

// Whether what describes an element, as a member of a record, has its place in each of the elements.
bool LiesWithin(const YamlField &element, const YamlField &field) noexcept
{
    const uint64_t width = field.uiValueWidth != 0 ? field.uiValueWidth : field.uiElementWidth;
    return field.pstStorage != nullptr || element.pfnMember != nullptr ||
           (uint64_t{element.uiOffset} + element.uiWidth <= width &&
            uint64_t{element.uiCountOffset} + element.uiCountWidth <= width);
}

bool Planner::Elements(PlanField &plan) noexcept
{
    const YamlField &field = *plan.field;
    if (!PartsMake(plan, 1))
        return false;
    plan.parts[0] = field.pstElement != nullptr ? Element(*field.pstElement) : Make<PlanField>();
    if (plan.parts[0] == nullptr)
        return false;
    PlanField &part = *plan.parts[0];
    if (field.pstElement != nullptr && !LiesWithin(*field.pstElement, field))
        return Mistake(plan, " has a .pstElement that lies outside of its elements");
    if (field.pstElement != nullptr)
        return field.pstStorage != nullptr || plan.kind != YAML_KIND_OPTIONAL || part.kind != YAML_KIND_OPTIONAL ||
               Mistake(plan, " is an optional of an optional");
    part.field = &field;
    part.kind = IsOptionalText(field) ? YAML_KIND_TEXT : ElementKindOf(field);
    part.width = field.uiValueWidth != 0 ? field.uiValueWidth : field.uiElementWidth;
    const bool plain = IsScalarKind(part.kind) || part.kind == YAML_KIND_TEXT || part.kind == YAML_KIND_ENUM;
    if (!plain && part.kind != YAML_KIND_RECORD)
        return Mistake(plan, " has no .pstElement");
    return Kind(part);
}

// The alternatives of a union, or the parts of a tuple.
bool Planner::Parts(PlanField &plan) noexcept
{
    const YamlField &field = *plan.field;
    if (field.uiAlternatives == 0 || field.pstAlternatives == nullptr)
        return Mistake(plan, " has no alternatives: YAML_ALTERNATIVES gives them");
    if (!PartsMake(plan, field.uiAlternatives))
        return false;
    for (uint32_t index = 0; index < plan.partCount; ++index) {
        const YamlAlternative &alternative = field.pstAlternatives[index];
        plan.parts[index] = alternative.pstElement != nullptr ? Element(*alternative.pstElement) : Make<PlanField>();
        if (plan.parts[index] == nullptr)
            return false;
        if (alternative.pstElement != nullptr)
            continue;
        PlanField &part = *plan.parts[index];
        part.field = &field;
        part.kind = YAML_KIND_RECORD;
        part.width = plan.width;
        if (!Nested(part, alternative.pstRecord))
            return false;
        if (field.pstStorage == nullptr && alternative.pstRecord->uiRecordSize > plan.width)
            return Mistake(plan, " is too small for its alternative ", alternative.pstRecord->pcName);
    }
    return true;
}

PlanField *Planner::Element(const YamlField &field) noexcept
{
    for (ElementPlan *known = elements_; known != nullptr; known = known->next) {
        if (known->field == &field)
            return &known->plan;
    }
    auto *element = Make<ElementPlan>();
    if (element == nullptr)
        return nullptr;
    element->field = &field;
    element->plan.described = true;
    element->next = elements_;
    elements_ = element;
    return Field(element->plan, field) ? &element->plan : nullptr;
}

} // namespace

PlanRecord *zryaml::bind::PlanMake(YamlReading &reading, const YamlRecord &record) noexcept
{
    return Planner(reading).Record(record);
}

PlanField *zryaml::bind::PlanMake(YamlReading &reading, const YamlField &field) noexcept
{
    return Planner(reading).Element(field);
}
