// SPDX-License-Identifier: Apache-2.0
// Reads descriptions as far as variables need them: which keys there are, and what is a sequence, a map or a scalar.
#include "description.h"

using namespace zryaml;
using namespace zryaml::layers;

namespace zryaml::layers {

namespace {

constexpr const char *DefaultTagKey = "type";

Description::Kind KindOf(uint32_t kind) noexcept
{
    switch (kind) {
    case YAML_KIND_RECORD:
    case YAML_KIND_UNION:
        return Description::Kind::Record;
    case YAML_KIND_ARRAY:
    case YAML_KIND_TUPLE:
        return Description::Kind::Sequence;
    case YAML_KIND_MAP:
        return Description::Kind::Map;
    case YAML_KIND_CUSTOM:
        return Description::Kind::Unknown;
    default:
        return Description::Kind::Scalar;
    }
}

// The fields of a host's table may be larger than those that are known here.
const YamlField &FieldOf(const YamlRecord &record, uint32_t number) noexcept
{
    const auto *fields = reinterpret_cast<const char *>(record.pstFields);
    return *reinterpret_cast<const YamlField *>(fields + size_t{number} * record.uiFieldSize);
}

} // namespace

Description::Description(const YamlRecord *record) noexcept
    : m_kind(record != nullptr ? Kind::Record : Kind::Unknown), m_record(record)
{}

Description::Description(const YamlField &field) noexcept : m_kind(KindOf(field.uiKind)), m_field(&field)
{
    if (field.uiKind == YAML_KIND_OPTIONAL)
        *this = PartOf(field);
    else if (field.uiKind == YAML_KIND_RECORD)
        *this = Description(field.pstRecord);
    else if (field.uiKind == YAML_KIND_UNION && field.bAnyFits != 0)
        m_kind = Kind::Unknown; // no key chooses
}

Description Description::PartOf(const YamlField &field) noexcept
{
    if (field.pstRecord != nullptr)
        return Description(field.pstRecord);
    if (field.pstElement != nullptr)
        return Description(*field.pstElement);
    Description scalar;
    scalar.m_kind = Kind::Scalar;
    return scalar;
}

Description Description::Element(uint64_t index) const noexcept
{
    if (m_field == nullptr || (m_kind != Kind::Sequence && m_kind != Kind::Map))
        return {};
    if (m_field->uiKind != YAML_KIND_TUPLE)
        return PartOf(*m_field);
    return index < m_field->uiAlternatives ? Description(m_field->pstElement[index]) : Description();
}

Description Description::Below(std::string_view key) const noexcept
{
    for (uint32_t number = 0; const char *text = Key(number); ++number) {
        if (key == text)
            return Value(number);
    }
    return m_kind == Kind::Map ? Element(0) : Description();
}

Reads Description::HowRead() const noexcept
{
    if (m_kind == Kind::Unknown)
        return Reads::AsWritten;
    return m_kind == Kind::Scalar ? Reads::Scalar : Reads::Flow;
}

const YamlField *Description::Field(uint32_t number) const noexcept
{
    if (m_record != nullptr)
        return number < m_record->uiFields ? &FieldOf(*m_record, number) : nullptr;
    for (uint32_t at = 0; m_field != nullptr && at < m_field->uiAlternatives; ++at) {
        const YamlRecord *record = m_field->pstAlternatives[at].pstRecord;
        const uint32_t fields = record != nullptr ? record->uiFields : 0;
        if (number < fields)
            return &FieldOf(*record, number);
        number -= fields;
    }
    return nullptr;
}

const char *Description::Key(uint32_t number) const noexcept
{
    if (m_kind != Kind::Record)
        return nullptr;
    if (m_record == nullptr && number-- == 0)
        return m_field->pcTagKey != nullptr ? m_field->pcTagKey : DefaultTagKey;
    const YamlField *field = Field(number);
    return field != nullptr ? field->pcKey : nullptr;
}

Description Description::Value(uint32_t number) const noexcept
{
    const YamlField *field = m_record != nullptr ? Field(number) : number != 0 ? Field(number - 1) : nullptr;
    if (field != nullptr)
        return Description(*field);
    Description scalar;
    scalar.m_kind = Kind::Scalar;
    return scalar;
}

} // namespace zryaml::layers
