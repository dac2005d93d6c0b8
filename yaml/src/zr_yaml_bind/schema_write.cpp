// SPDX-License-Identifier: Apache-2.0
// The JSON Schema (draft-07) of a description, for editors. It is a little stricter than the reading: a text that looks
// like a number wants quotes, and a boolean is true or false.
#include "describe.h"

#include <cmath>
#include <cstring>

namespace {

using namespace zryaml;
using namespace zryaml::bind;

constexpr const char *DurationPattern = "^[+-]?([0-9]+(d|h|min|m|s|ms|us|ns))+$";
constexpr const char *BytesPattern = "^[0-9]+(\\\\.[0-9]+)?(B|[kKMGTPE]B|[KMGTPE]iB)?$"; // escaped for JSON

class SchemaWriter {
public:
    explicit SchemaWriter(TextOut &out) noexcept : out_(out) {}
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

    // An object begins with "{", its members each on a line of their own.
    void Open(char bracket) noexcept
    {
        out_.Put(bracket);
        indent_ += 2;
        first_ = true;
    }
    void Close(char bracket) noexcept
    {
        indent_ -= 2;
        if (!first_)
            Line();
        out_.Put(bracket);
        first_ = false;
    }
    void Line() noexcept
    {
        out_.Put('\n');
        for (uint32_t column = 0; column < indent_; ++column)
            out_.Put(' ');
    }
    void Next() noexcept
    {
        if (!first_)
            out_.Put(',');
        first_ = false;
        Line();
    }
    void Name(const char *name) noexcept
    {
        Next();
        String(name);
        out_.Put(std::string_view(": "));
    }
    void Member(const char *name, const char *text) noexcept
    {
        Name(name);
        String(text);
    }
    void Type(const char *name, bool nullable) noexcept
    {
        Name("type");
        out_.Format(nullable ? "[\"%s\", \"null\"]" : "\"%s\"", name);
    }
    void String(std::string_view text) noexcept;

    // Where in the schema the writer is, for references. What it returns goes back to PathLeave.
    uint32_t PathEnter(const char *name) noexcept;
    void PathLeave(uint32_t length) noexcept { path_[pathLength_ = length] = '\0'; }

    TextOut &out_;
    uint32_t indent_ = 0;
    bool first_ = true;
    char path_[1024] = "#";
    uint32_t pathLength_ = 1;
};

void SchemaWriter::String(std::string_view text) noexcept
{
    out_.Put('"');
    for (const char character : text) {
        if (static_cast<unsigned char>(character) < 0x20)
            out_.Format("\\u%04x", static_cast<unsigned>(character));
        else if (character == '"' || character == '\\')
            out_.Format("\\%c", character);
        else
            out_.Put(character);
    }
    out_.Put('"');
}

// A path that is too long is cut, and no reference leads there.
uint32_t SchemaWriter::PathEnter(const char *name) noexcept
{
    const uint32_t before = pathLength_;
    char part[8] = "/";
    for (;;) {
        const auto size = static_cast<uint32_t>(strlen(part));
        if (pathLength_ + size < sizeof(path_)) {
            memcpy(path_ + pathLength_, part, size + 1);
            pathLength_ += size;
        }
        if (*name == '\0')
            return before;
        const auto character = static_cast<unsigned char>(*name++);
        const bool letter = (character | 0x20U) >= 'a' && (character | 0x20U) <= 'z';
        const bool plain = letter || (character >= '0' && character <= '9') || strchr("-_.", character) != nullptr;
        if (character == '~' || character == '/')
            (void)snprintf(part, sizeof(part), "~%c", character == '~' ? '0' : '1');
        else
            (void)snprintf(part, sizeof(part), plain ? "%c" : "%%%02X", character);
    }
}

void SchemaWriter::Document(const YamlRecord &record) noexcept
{
    Open('{');
    Member("$schema", "http://json-schema.org/draft-07/schema#");
    Record(record, false, nullptr, nullptr, nullptr);
    Close('}');
    out_.Put('\n');
}

// The members of the schema of a record; the braces are the caller's.
void SchemaWriter::Record(const YamlRecord &record, bool nullable, const OpenRecord *open, const char *tagKey,
                          const char *tag) noexcept
{
    const OpenRecord here = {&record, open, pathLength_};
    Type("object", nullable);
    if (record.pcDoc != nullptr)
        Member("description", record.pcDoc);
    Properties(record, &here, tagKey, tag);
    Required(record, tagKey);
    if (record.bIgnoreUnknown != 0)
        return;
    Name("patternProperties");
    out_.Put(std::string_view("{\"^x-\": {}}"));
    Name("additionalProperties");
    out_.Put(std::string_view("false"));
}

void SchemaWriter::Properties(const YamlRecord &record, const OpenRecord *here, const char *tagKey,
                              const char *tag) noexcept
{
    const void *model = record.pfnModel != nullptr ? record.pfnModel() : nullptr;
    Name("properties");
    const uint32_t before = PathEnter("properties");
    Open('{');
    if (tagKey != nullptr) {
        Name(tagKey);
        Open('{');
        Member("const", tag);
        Close('}');
    }
    for (uint32_t index = 0; index < record.uiFields; ++index) {
        const YamlField &field = FieldAt(record, index);
        for (const char *key : {field.pcKey, field.pcOldKey}) {
            if (key == nullptr || (tagKey != nullptr && strcmp(key, tagKey) == 0))
                continue;
            Name(key);
            const uint32_t outer = PathEnter(key);
            Open('{');
            Field(field, model, field.bRequired == 0, here);
            Close('}');
            PathLeave(outer);
        }
    }
    Close('}');
    PathLeave(before);
}

// A key that may have its old name cannot be asked for.
void SchemaWriter::Required(const YamlRecord &record, const char *tagKey) noexcept
{
    bool any = tagKey != nullptr;
    for (uint32_t index = 0; index < record.uiFields; ++index)
        any = any || (FieldAt(record, index).bRequired != 0 && FieldAt(record, index).pcOldKey == nullptr);
    if (!any)
        return;
    Name("required");
    Open('[');
    if (tagKey != nullptr) {
        Next();
        String(tagKey);
    }
    for (uint32_t index = 0; index < record.uiFields; ++index) {
        const YamlField &field = FieldAt(record, index);
        if (field.bRequired == 0 || field.pcOldKey != nullptr ||
            (tagKey != nullptr && strcmp(field.pcKey, tagKey) == 0))
            continue;
        Next();
        String(field.pcKey);
    }
    Close(']');
}

void SchemaWriter::Field(const YamlField &field, const void *model, bool nullable, const OpenRecord *open) noexcept
{
    if (field.pcDoc != nullptr)
        Member("description", field.pcDoc);
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
    Name("$ref");
    out_.Put('"');
    out_.Put(std::string_view(path_, same->mark));
    out_.Put('"');
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
        return Member("pattern", DurationPattern);
    case YAML_KIND_BYTES:
        Name("type");
        out_.Put(std::string_view(nullable ? "[\"integer\", \"string\", \"null\"]" : "[\"integer\", \"string\"]"));
        Name("pattern");
        out_.Format("\"%s\"", BytesPattern);
        return;
    case YAML_KIND_ENUM:
        Name("enum");
        Open('[');
        for (uint32_t index = 0; index < field.uiNames; ++index) {
            Next();
            String(field.pstNames[index].pcText);
        }
        if (nullable) {
            Next();
            out_.Put(std::string_view("null"));
        }
        return Close(']');
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
        Name(least ? "minimum" : "maximum");
        out_.Put(std::string_view(text));
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
    Name("default");
    if (!number)
        return String(text);
    char place[8];
    ScalarStore(type, value, place);
    (void)ZRYAML_ScalarWrite(&type, place, sizeof(text), text);
    out_.Put(std::string_view(text));
}

void SchemaWriter::Elements(const YamlField &field, bool nullable, const OpenRecord *open) noexcept
{
    const bool map = field.uiKind == YAML_KIND_MAP;
    Type(map ? "object" : "array", nullable);
    const char *name = map ? "additionalProperties" : "items";
    Name(name);
    const uint32_t outer = PathEnter(name);
    Open('{');
    const YamlField element = ElementOf(field);
    Field(element, nullptr, !IsScalarField(element), open);
    Close('}');
    PathLeave(outer);
    if (field.uiMinCount != 0) {
        Name(map ? "minProperties" : "minItems");
        out_.Format("%u", field.uiMinCount);
    }
    if (field.uiMaxCount != 0) {
        Name(map ? "maxProperties" : "maxItems");
        out_.Format("%u", field.uiMaxCount);
    }
}

void SchemaWriter::Parts(const YamlField &field, bool nullable, const OpenRecord *open) noexcept
{
    const bool tuple = field.uiKind == YAML_KIND_TUPLE;
    const char *tagKey = field.pcTagKey != nullptr ? field.pcTagKey : "type";
    const char *name = tuple ? "items" : "anyOf";
    if (tuple)
        Type("array", nullable);
    Name(name);
    const uint32_t outer = PathEnter(name);
    Open('[');
    for (uint32_t index = 0; index < field.uiAlternatives; ++index) {
        const YamlField part = PartOf(field, index);
        char number[16];
        (void)snprintf(number, sizeof(number), "%u", index);
        Next();
        const uint32_t list = PathEnter(number);
        Open('{');
        const YamlRecord *record = part.uiKind == YAML_KIND_RECORD ? RecordOf(part) : nullptr;
        if (!tuple && field.bAnyFits == 0 && record != nullptr && OpenFind(open, record) == nullptr)
            Record(*record, false, open, tagKey, field.pstAlternatives[index].pcText);
        else
            Field(part, nullptr, tuple && !IsScalarField(part), open);
        Close('}');
        PathLeave(list);
    }
    if (nullable && !tuple) {
        Next();
        out_.Put(std::string_view("{\"type\": \"null\"}"));
    }
    Close(']');
    PathLeave(outer);
    if (tuple) {
        Name("minItems");
        out_.Format("%u", field.uiAlternatives);
        Name("maxItems");
        out_.Format("%u", field.uiAlternatives);
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
