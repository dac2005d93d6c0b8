// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "plan.h"

namespace zryaml::bind {

// Each reads a value into its place. False after a problem, or without memory; what has been read so far stays there.

// The record is where a count or tag beside the member lies.
[[nodiscard]] bool ValueRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value, void *record,
                             void *member) noexcept;
// Of an element, or another part of a value, at its place.
[[nodiscard]] bool PartRead(YamlReading &reading, const PlanField &part, const YamlListNode &value,
                            void *place) noexcept;
// Of scalars: numbers and the like, enumerations, texts.
[[nodiscard]] bool ScalarRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value,
                              void *member) noexcept;
// The alternative that a key names, or the only one that fits.
[[nodiscard]] bool UnionRead(YamlReading &reading, const PlanField &plan, const YamlListNode &value, void *record,
                             void *member) noexcept;
// A map, or NULL for an empty one. The tag key, if there is one, has been read.
[[nodiscard]] bool RecordFill(YamlReading &reading, const PlanRecord &plan, const YamlListNode *map, void *record,
                              const char *tagKey) noexcept;
// Gives the fields of an absent record their defaults.
[[nodiscard]] bool RecordInitial(YamlReading &reading, const PlanRecord &plan, void *record) noexcept;

// The value is a map, not a scalar. Always false.
bool WrongType(YamlReading &reading, const YamlListNode &value, uint32_t wanted) noexcept;

// A value that counts as absent where a scalar cannot stand: "key:" and "key: ~".
[[nodiscard]] inline bool IsNull(const YamlListNode &value) noexcept
{
    if (value.uiDataType != YAML_DATATYPE_SCALAR || ZRYAML_ValueStyleGet(&value) > YAML_STYLE_PLAIN)
        return false;
    const char *text = value.pcValue;
    return (text[0] == '\0' || (text[0] == '~' && text[1] == '\0')) && ZRYAML_ValueTagGet(&value) != YAML_TAG_STR;
}

// The kinds for which such a value is absent.
[[nodiscard]] constexpr bool IsCollectionKind(uint32_t kind) noexcept
{
    return kind >= YAML_KIND_RECORD && kind != YAML_KIND_CUSTOM;
}

[[nodiscard]] inline void *MemberOf(const YamlField &field, void *record) noexcept
{
    return field.pfnMember != nullptr ? field.pfnMember(record) : static_cast<char *>(record) + field.uiOffset;
}

// Stores a count, or the number of an alternative, in a member of 1 to 8 bytes.
inline void CountStore(const YamlField &field, uint32_t count, void *record) noexcept
{
    if (field.uiCountWidth == 0)
        return;
    ScalarValue value = {};
    value.natural = count;
    ScalarStore({sizeof(YamlScalarType), YAML_KIND_UINT, field.uiCountWidth, 0, 0, 0}, value,
                static_cast<char *>(record) + field.uiCountOffset);
}

} // namespace zryaml::bind
