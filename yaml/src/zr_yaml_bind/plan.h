// SPDX-License-Identifier: Apache-2.0
// A description made ready for one reading: checked once, with defaults and limits as numbers, and with keys that are
// quick to compare. A mistake of the host is found here, whatever the document holds.
#pragma once

#include "../node_tree.h"
#include "../scalar_text.h"
#include "reading.h"

namespace zryaml::bind {

struct PlanRecord;

struct PlanField {
    const YamlField *field = nullptr;
    uint32_t kind = 0;
    uint32_t width = 0;      // of the value
    YamlScalarType scalar{}; // of numbers, booleans, durations, sizes and enumerations
    bool described = false;  // an element with a field of its own, whose place is within the element
    bool hasLeast = false;
    bool hasGreatest = false;
    bool hasInitial = false; // a default of the description
    ScalarValue least{};
    ScalarValue greatest{};
    ScalarValue initial{};
    WantedKey key{std::string_view()};
    WantedKey oldKey{std::string_view()};
    PlanRecord *record = nullptr; // of a record
    PlanField **parts = nullptr;  // one for the elements, or one for each alternative or part
    uint32_t partCount = 0;
};

struct PlanRecord {
    const YamlRecord *record = nullptr;
    PlanField *fields = nullptr;
    uint32_t count = 0;
    bool required = false; // one of the fields is
    PlanRecord *next = nullptr;
};

// The plan of a record and of all that it holds; NULL after a mistake of the host (told) or without memory.
[[nodiscard]] PlanRecord *PlanMake(YamlReading &reading, const YamlRecord &record) noexcept;

// As above, of one field that stands alone.
[[nodiscard]] PlanField *PlanMake(YamlReading &reading, const YamlField &field) noexcept;

[[nodiscard]] constexpr bool IsScalarKind(uint32_t kind) noexcept
{
    return kind >= YAML_KIND_INT && kind <= YAML_KIND_BYTES;
}

// Field number index of a record, whatever size its fields have.
[[nodiscard]] inline const YamlField &FieldAt(const YamlRecord &record, uint32_t index) noexcept
{
    const auto *bytes = reinterpret_cast<const char *>(record.pstFields);
    return *reinterpret_cast<const YamlField *>(bytes + size_t{index} * record.uiFieldSize);
}

[[nodiscard]] inline const YamlRecord *RecordOf(const YamlField &field) noexcept
{
    return field.pfnRecord != nullptr ? field.pfnRecord() : field.pstRecord;
}

// The kind of the elements, or of what an optional holds.
[[nodiscard]] constexpr uint32_t ElementKindOf(const YamlField &field) noexcept
{
    if (field.uiElement != 0)
        return field.uiElement;
    if (field.pstNames != nullptr)
        return YAML_KIND_ENUM;
    return field.uiMemberKind;
}

// The member itself is the optional text, NULL where it is absent.
[[nodiscard]] constexpr bool IsOptionalText(const YamlField &field) noexcept
{
    return field.uiKind == YAML_KIND_OPTIONAL && field.pstStorage == nullptr && field.uiMemberKind == YAML_KIND_TEXT &&
           field.uiElementWidth == 1;
}

[[nodiscard]] constexpr YamlScalarType ScalarTypeOf(const YamlField &field, uint32_t kind, uint32_t width) noexcept
{
    return {sizeof(YamlScalarType), kind == YAML_KIND_ENUM ? YAML_KIND_INT : kind, width, field.bUnsigned, field.ulTick,
            field.ulTickParts};
}

} // namespace zryaml::bind
