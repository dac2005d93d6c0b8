// SPDX-License-Identifier: Apache-2.0
// The sample of a description: every key with its documents. What has a default or is required stands as it would be
// read; all else is commented out, as an example.
#include "describe.h"
#include "value_read.h"

#include <cstring>

namespace {

using namespace zryaml;
using namespace zryaml::bind;

// Whether a text may stand as it is, whatever reads it.
bool IsPlain(std::string_view text) noexcept
{
    for (const char *word : {"true", "false", "null", "yes", "no", "on", "off", "y", "n"}) {
        if (text.size() == strlen(word) && strncasecmp(text.data(), word, text.size()) == 0)
            return false;
    }
    bool plain = !text.empty();
    for (size_t index = 0; index < text.size(); ++index) {
        const auto character = static_cast<unsigned char>(text[index]);
        const bool letter = (character | 0x20) >= 'a' && (character | 0x20) <= 'z';
        const bool other = strchr("0123456789_-./", text[index]) != nullptr;
        plain = plain && (letter || text[index] == '/' || (index != 0 && other));
    }
    return plain;
}

void TextPut(TextOut &out, const char *text) noexcept
{
    if (IsPlain(text))
        return out.Put(std::string_view(text));
    bool control = false;
    for (const char *at = text; *at != '\0'; ++at)
        control = control || static_cast<unsigned char>(*at) < 0x20 || *at == 0x7F;
    out.Put(control ? '"' : '\'');
    for (; *text != '\0'; ++text) {
        const auto character = static_cast<unsigned char>(*text);
        if (character < 0x20 || character == 0x7F)
            out.Format("\\x%02X", character);
        else if (control && (*text == '"' || *text == '\\'))
            out.Format("\\%c", *text);
        else
            out.Format(*text == '\'' && !control ? "''" : "%c", *text);
    }
    out.Put(control ? '"' : '\'');
}

class SampleWriter {
public:
    explicit SampleWriter(TextOut &out) noexcept : out_(out) {}
    void Record(const YamlRecord &record, const OpenRecord *open, const char *tagKey, const char *tag) noexcept;
    void Comment(const char *text) noexcept;

private:
    void Field(const YamlField &field, const void *model, const OpenRecord *open) noexcept;
    void Facts(const YamlField &field) noexcept;
    // What stands behind "key:" or "-".
    void Value(const YamlField &field, const void *model, const OpenRecord *open) noexcept;
    void Scalar(const YamlField &field, const void *model) noexcept;
    void Elements(const YamlField &field, const OpenRecord *open) noexcept;
    void Pairs(const YamlField &field, const OpenRecord *open) noexcept;
    void Union(const YamlField &field, const OpenRecord *open) noexcept;
    void Below(const YamlRecord *record, const OpenRecord *open, const char *tagKey, const char *tag) noexcept;

    // Begins a line: within a comment, behind its '#'.
    void Begin() noexcept
    {
        for (uint32_t column = 0; column <= indent_; column += 2) {
            if (commented_ && column == commentIndent_)
                out_.Put(std::string_view("# "));
            if (column < indent_)
                out_.Put(std::string_view("  "));
        }
    }

    TextOut &out_;
    uint32_t indent_ = 0;
    bool commented_ = false;
    uint32_t commentIndent_ = 0;
};

void SampleWriter::Comment(const char *text) noexcept
{
    if (text == nullptr)
        return;
    Begin();
    out_.Put(std::string_view("# "));
    for (; *text != '\0'; ++text) {
        out_.Put(*text);
        if (*text == '\n') {
            Begin();
            out_.Put(std::string_view("# "));
        }
    }
    out_.Put('\n');
}

void SampleWriter::Facts(const YamlField &field) noexcept
{
    Begin();
    out_.Put(std::string_view("# "));
    if (IsScalarField(field)) {
        FactsPut(out_, field.uiKind == YAML_KIND_OPTIONAL ? ElementOf(field) : field);
    } else {
        const bool map = field.uiKind == YAML_KIND_MAP;
        const bool sequence = field.uiKind == YAML_KIND_ARRAY || field.uiKind == YAML_KIND_TUPLE;
        out_.Put(std::string_view(sequence ? "sequence" : field.uiKind == YAML_KIND_CUSTOM ? "value" : "map"));
        if (map || field.uiKind == YAML_KIND_ARRAY) {
            const YamlField element = ElementOf(field);
            if (IsScalarField(element)) {
                out_.Put(std::string_view(", each: "));
                FactsPut(out_, element);
            }
        }
        if (field.uiMinCount != 0)
            out_.Format(", at least %u", field.uiMinCount);
        if (field.uiMaxCount != 0)
            out_.Format(", at most %u", field.uiMaxCount);
    }
    out_.Put(std::string_view(field.bRequired != 0 ? ", required\n" : "\n"));
}

void SampleWriter::Field(const YamlField &field, const void *model, const OpenRecord *open) noexcept
{
    char text[ScalarLongest];
    Comment(field.pcDoc);
    Facts(field);
    const bool scalar = IsScalarField(field) && field.uiKind != YAML_KIND_OPTIONAL;
    const bool stands = field.bRequired != 0 || field.uiKind == YAML_KIND_RECORD || field.uiMinCount != 0 ||
                        (scalar && InitialText(field, model, text));
    const bool begins = !stands && !commented_;
    if (begins) {
        commented_ = true;
        commentIndent_ = indent_;
    }
    Begin();
    TextPut(out_, field.pcKey);
    out_.Put(':');
    Value(field, model, open);
    if (begins)
        commented_ = false;
}

void SampleWriter::Value(const YamlField &field, const void *model, const OpenRecord *open) noexcept
{
    switch (field.uiKind) {
    case YAML_KIND_OPTIONAL:
        return Value(ElementOf(field), nullptr, open);
    case YAML_KIND_RECORD:
        return Below(RecordOf(field), open, nullptr, nullptr);
    case YAML_KIND_ARRAY:
    case YAML_KIND_TUPLE:
        return Elements(field, open);
    case YAML_KIND_MAP:
        return Pairs(field, open);
    case YAML_KIND_UNION:
        return Union(field, open);
    case YAML_KIND_CUSTOM:
        return out_.Put(std::string_view("\n"));
    default:
        return Scalar(field, model);
    }
}

void SampleWriter::Scalar(const YamlField &field, const void *model) noexcept
{
    char text[ScalarLongest];
    if (!InitialText(field, model, text))
        FirstText(field, text);
    out_.Put(' ');
    if (field.uiKind == YAML_KIND_TEXT || field.uiKind == YAML_KIND_ENUM)
        TextPut(out_, text);
    else
        out_.Put(std::string_view(text));
    out_.Put('\n');
}

void SampleWriter::Elements(const YamlField &field, const OpenRecord *open) noexcept
{
    const bool tuple = field.uiKind == YAML_KIND_TUPLE;
    const YamlField element = tuple ? field : ElementOf(field);
    if (!tuple && element.uiKind == YAML_KIND_RECORD && OpenFind(open, RecordOf(element)) != nullptr)
        return out_.Put(std::string_view(" []\n"));
    out_.Put('\n');
    indent_ += 2;
    const uint32_t count = tuple ? field.uiAlternatives : field.uiMinCount > 1 ? field.uiMinCount : 1;
    for (uint32_t index = 0; index < count; ++index) {
        Begin();
        out_.Put('-');
        Value(tuple ? PartOf(field, index) : element, nullptr, open);
    }
    indent_ -= 2;
}

void SampleWriter::Pairs(const YamlField &field, const OpenRecord *open) noexcept
{
    out_.Put('\n');
    indent_ += 2;
    for (uint32_t index = 0; index == 0 || index < field.uiMinCount; ++index) {
        Begin();
        out_.Format("key%u:", index + 1);
        Value(ElementOf(field), nullptr, open);
    }
    indent_ -= 2;
}

void SampleWriter::Union(const YamlField &field, const OpenRecord *open) noexcept
{
    if (field.uiAlternatives == 0)
        return out_.Put('\n');
    const YamlField part = PartOf(field, 0);
    if (field.bAnyFits != 0 || part.uiKind != YAML_KIND_RECORD)
        return Value(part, nullptr, open);
    const char *tagKey = field.pcTagKey != nullptr ? field.pcTagKey : "type";
    Below(RecordOf(part), open, tagKey, field.pstAlternatives[0].pcText);
}

void SampleWriter::Below(const YamlRecord *record, const OpenRecord *open, const char *tagKey, const char *tag) noexcept
{
    if (record == nullptr || OpenFind(open, record) != nullptr)
        return out_.Put(std::string_view(" ~\n"));
    out_.Put('\n');
    indent_ += 2;
    Record(*record, open, tagKey, tag);
    indent_ -= 2;
}

void SampleWriter::Record(const YamlRecord &record, const OpenRecord *open, const char *tagKey,
                          const char *tag) noexcept
{
    const OpenRecord here = {&record, open, 0};
    const void *model = record.pfnModel != nullptr ? record.pfnModel() : nullptr;
    if (tagKey != nullptr) {
        Begin();
        TextPut(out_, tagKey);
        out_.Put(std::string_view(": "));
        TextPut(out_, tag);
        out_.Put('\n');
    }
    for (uint32_t index = 0; index < record.uiFields; ++index)
        Field(FieldAt(record, index), model, &here);
}

} // namespace

uint32_t ZRYAML_RecordSampleWrite(const YamlRecord *pstRecord, uint32_t uiBufSize, char *pcBuf)
{
    TextOut out(uiBufSize, pcBuf);
    SampleWriter writer(out);
    if (pstRecord != nullptr) {
        writer.Comment(pstRecord->pcDoc);
        writer.Record(*pstRecord, nullptr, nullptr, nullptr);
    }
    return out.End();
}
