// SPDX-License-Identifier: Apache-2.0
// The JSON Schema (draft-07) of a description, for editors. It is a little stricter than the reading: a text that looks
// like a number wants quotes, and a boolean is true or false.
#include "json_out.h"

#include <cmath>
#include <cstring>

namespace {

using namespace zryaml;
using namespace zryaml::bind;

constexpr const char *DurationPattern = "^[+-]?([0-9]+(d|h|min|m|s|ms|us|ns))+$";
constexpr const char *BytesPattern = "^[0-9]+(\\.[0-9]+)?(B|[kKMGTPE]B|[KMGTPE]iB)?$";

class SchemaWriter {
public:
    explicit SchemaWriter(TextOut &out) noexcept : json_(out) {}
    void Document(const YamlRecord &record) noexcept;

private:
    void Record(const YamlRecord &record, bool nullable, const OpenRecord *open, const char *tagKey,
                const char *tag) noexcept;
    void Field(const YamlField &field, const void *model, bool nullable, const OpenRecord *open) noexcept;
    void Properties(const YamlRecord &record, const OpenRecord *here, const char *tagKey, const char *tag) noexcept;
    void Required(const YamlRecord &record, const char *tagKey) noexcept;
    void Scalar(const YamlField &field, bool nullable) noexcept;
    void Limits(const YamlField &field) noexcept;
    void Initial(const YamlField &field, const void *model) noexcept;
    void Elements(const YamlField &field, bool nullable, const OpenRecord *open) noexcept;
    void Parts(const YamlField &field, bool nullable, const OpenRecord *open) noexcept;
    void RecordOrReference(const YamlRecord *record, bool nullable, const OpenRecord *open) noexcept;

    void Type(const char *name, bool nullable) noexcept;

    JsonOut json_;
    JsonPointer path_;
};

void SchemaWriter::Type(const char *name, bool nullable) noexcept
{
    json_.Name("type");
    if (!nullable)
        return json_.String(name);
    json_.Raw("[");
    json_.String(name);
    json_.Raw(", \"null\"]");
}

void SchemaWriter::Document(const YamlRecord &record) noexcept
{
    json_.Open('{');
    json_.Member("$schema", "http://json-schema.org/draft-07/schema#");
    Record(record, false, nullptr, nullptr, nullptr);
    json_.Close('}');
    json_.Raw("\n");
}

// The members of the schema of a record; the braces are the caller's.
void SchemaWriter::Record(const YamlRecord &record, bool nullable, const OpenRecord *open, const char *tagKey,
                          const char *tag) noexcept
{
    const OpenRecord here = {&record, open, path_.Length()};
    Type("object", nullable);
    if (record.pcDoc != nullptr)
        json_.Member("description", record.pcDoc);
    Properties(record, &here, tagKey, tag);
    Required(record, tagKey);
    if (record.bIgnoreUnknown != 0)
        return;
    json_.Name("patternProperties");
    json_.Raw("{\"^x-\": {}}");
    json_.Name("additionalProperties");
    json_.Raw("false");
}

void SchemaWriter::Properties(const YamlRecord &record, const OpenRecord *here, const char *tagKey,
                              const char *tag) noexcept
{
    const void *model = record.pfnModel != nullptr ? record.pfnModel() : nullptr;
    json_.Name("properties");
    const uint32_t before = path_.Enter("properties");
    json_.Open('{');
    if (tagKey != nullptr) {
        json_.Name(tagKey);
        json_.Open('{');
        json_.Member("const", tag);
        json_.Close('}');
    }
    for (uint32_t index = 0; index < record.uiFields; ++index) {
        const YamlField &field = FieldAt(record, index);
        for (const char *key : {field.pcKey, field.pcOldKey}) {
            if (key == nullptr || (tagKey != nullptr && strcmp(key, tagKey) == 0))
                continue;
            json_.Name(key);
            const uint32_t outer = path_.Enter(key);
            json_.Open('{');
            Field(field, model, field.bRequired == 0, here);
            json_.Close('}');
            path_.Leave(outer);
        }
    }
    json_.Close('}');
    path_.Leave(before);
}

// A key that may have its old name cannot be asked for.
void SchemaWriter::Required(const YamlRecord &record, const char *tagKey) noexcept
{
    bool any = tagKey != nullptr;
    for (uint32_t index = 0; index < record.uiFields; ++index)
        any = any || (FieldAt(record, index).bRequired != 0 && FieldAt(record, index).pcOldKey == nullptr);
    if (!any)
        return;
    json_.Name("required");
    json_.Open('[');
    if (tagKey != nullptr) {
        json_.Next();
        json_.String(tagKey);
    }
    for (uint32_t index = 0; index < record.uiFields; ++index) {
        const YamlField &field = FieldAt(record, index);
        if (field.bRequired == 0 || field.pcOldKey != nullptr ||
            (tagKey != nullptr && strcmp(field.pcKey, tagKey) == 0))
            continue;
        json_.Next();
        json_.String(field.pcKey);
    }
    json_.Close(']');
}

void SchemaWriter::Field(const YamlField &field, const void *model, bool nullable, const OpenRecord *open) noexcept
{
    if (field.pcDoc != nullptr)
        json_.Member("description", field.pcDoc);
    switch (field.uiKind) {
    case YAML_KIND_OPTIONAL:
        return Field(ElementOf(field), nullptr, true, open);
    case YAML_KIND_RECORD:
        return RecordOrReference(RecordOf(field), nullable, open);
    case YAML_KIND_ARRAY:
    case YAML_KIND_MAP:
        return Elements(field, nullable, open);
    case YAML_KIND_TUPLE:
    case YAML_KIND_UNION:
        return Parts(field, nullable, open);
    case YAML_KIND_CUSTOM:
        return;
    default:
        // Only an optional scalar may be null: one without a key has its default.
        Scalar(field, field.pcKey == nullptr && nullable);
        return Initial(field, model);
    }
}

void SchemaWriter::RecordOrReference(const YamlRecord *record, bool nullable, const OpenRecord *open) noexcept
{
    if (record == nullptr)
        return;
    const OpenRecord *same = OpenFind(open, record);
    if (same == nullptr)
        return Record(*record, nullable, open, nullptr, nullptr);
    json_.Name("$ref");
    json_.String(path_.Head(same->mark));
}

void SchemaWriter::Scalar(const YamlField &field, bool nullable) noexcept
{
    switch (field.uiKind) {
    case YAML_KIND_INT:
    case YAML_KIND_UINT:
        Type("integer", nullable);
        return Limits(field);
    case YAML_KIND_DOUBLE:
        Type("number", nullable);
        return Limits(field);
    case YAML_KIND_BOOL:
        return Type("boolean", nullable);
    case YAML_KIND_DURATION:
        Type("string", nullable);
        return json_.Member("pattern", DurationPattern);
    case YAML_KIND_BYTES:
        json_.Name("type");
        json_.Raw(nullable ? "[\"integer\", \"string\", \"null\"]" : "[\"integer\", \"string\"]");
        return json_.Member("pattern", BytesPattern);
    case YAML_KIND_ENUM:
        json_.Name("enum");
        json_.Open('[');
        for (uint32_t index = 0; index < field.uiNames; ++index) {
            json_.Next();
            json_.String(field.pstNames[index].pcText);
        }
        if (nullable) {
            json_.Next();
            json_.Raw("null");
        }
        return json_.Close(']');
    default:
        return Type("string", nullable);
    }
}

// The limits of the description, else those of the type.
void SchemaWriter::Limits(const YamlField &field) noexcept
{
    const YamlScalarType type = ScalarTypeOf(field, field.uiKind, field.uiWidth);
    const bool sign = field.uiKind == YAML_KIND_INT;
    const uint32_t unused = 64 - type.uiWidth * 8;
    for (const bool least : {true, false}) {
        const char *written = least ? field.pcMin : field.pcMax;
        ScalarValue value = {};
        char text[64];
        if (written != nullptr) {
            if (ScalarParse(type, written, value) != Fit::Yes ||
                (type.uiKind == YAML_KIND_DOUBLE && !std::isfinite(value.number)))
                continue;
        } else if (type.uiKind == YAML_KIND_DOUBLE || (type.uiWidth == 8 && (sign || !least))) {
            continue;
        } else if (sign) {
            value.whole = least ? INT64_MIN >> unused : INT64_MAX >> unused;
        } else {
            value.natural = least ? 0 : UINT64_MAX >> unused;
        }
        char place[8];
        ScalarStore(type, value, place);
        (void)ZRYAML_ScalarWrite(&type, place, sizeof(text), text);
        json_.Name(least ? "minimum" : "maximum");
        json_.Raw(text);
    }
}

void SchemaWriter::Initial(const YamlField &field, const void *model) noexcept
{
    char text[ScalarLongest];
    if (field.bRequired != 0 || !InitialText(field, model, text))
        return;
    const YamlScalarType type = ScalarTypeOf(field, field.uiKind, field.uiWidth);
    ScalarValue value = {};
    const bool number = field.uiKind <= YAML_KIND_BOOL;
    if (number && (ScalarParse(type, text, value) != Fit::Yes ||
                   (type.uiKind == YAML_KIND_DOUBLE && !std::isfinite(value.number))))
        return;
    json_.Name("default");
    if (!number)
        return json_.String(text);
    char place[8];
    ScalarStore(type, value, place);
    (void)ZRYAML_ScalarWrite(&type, place, sizeof(text), text);
    json_.Raw(text);
}

void SchemaWriter::Elements(const YamlField &field, bool nullable, const OpenRecord *open) noexcept
{
    const bool map = field.uiKind == YAML_KIND_MAP;
    Type(map ? "object" : "array", nullable);
    const char *name = map ? "additionalProperties" : "items";
    json_.Name(name);
    const uint32_t outer = path_.Enter(name);
    json_.Open('{');
    const YamlField element = ElementOf(field);
    Field(element, nullptr, !IsScalarField(element), open);
    json_.Close('}');
    path_.Leave(outer);
    if (field.uiMinCount != 0) {
        json_.Name(map ? "minProperties" : "minItems");
        json_.Number(field.uiMinCount);
    }
    if (field.uiMaxCount != 0) {
        json_.Name(map ? "maxProperties" : "maxItems");
        json_.Number(field.uiMaxCount);
    }
}

void SchemaWriter::Parts(const YamlField &field, bool nullable, const OpenRecord *open) noexcept
{
    const bool tuple = field.uiKind == YAML_KIND_TUPLE;
    const char *tagKey = field.pcTagKey != nullptr ? field.pcTagKey : "type";
    const char *name = tuple ? "items" : "anyOf";
    if (tuple)
        Type("array", nullable);
    json_.Name(name);
    const uint32_t outer = path_.Enter(name);
    json_.Open('[');
    for (uint32_t index = 0; index < field.uiAlternatives; ++index) {
        const YamlField part = PartOf(field, index);
        char number[16];
        (void)snprintf(number, sizeof(number), "%u", index);
        json_.Next();
        const uint32_t list = path_.Enter(number);
        json_.Open('{');
        const YamlRecord *record = part.uiKind == YAML_KIND_RECORD ? RecordOf(part) : nullptr;
        if (!tuple && field.bAnyFits == 0 && record != nullptr && OpenFind(open, record) == nullptr)
            Record(*record, false, open, tagKey, field.pstAlternatives[index].pcText);
        else
            Field(part, nullptr, tuple && !IsScalarField(part), open);
        json_.Close('}');
        path_.Leave(list);
    }
    if (nullable && !tuple) {
        json_.Next();
        json_.Raw("{\"type\": \"null\"}");
    }
    json_.Close(']');
    path_.Leave(outer);
    if (tuple) {
        json_.Name("minItems");
        json_.Number(field.uiAlternatives);
        json_.Name("maxItems");
        json_.Number(field.uiAlternatives);
    }
}

} // namespace

uint32_t ZRYAML_RecordSchemaWrite(const YamlRecord *pstRecord, uint32_t uiBufSize, char *pcBuf)
{
    TextOut out(uiBufSize, pcBuf);
    if (pstRecord != nullptr)
        SchemaWriter(out).Document(*pstRecord);
    return out.End();
}
