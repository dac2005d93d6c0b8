// SPDX-License-Identifier: Apache-2.0
// The environment variables that a layer takes for a description: one line for each scalar, with what it may be.
#include "describe.h"

#include <cstring>

namespace {

using namespace zryaml;
using namespace zryaml::bind;

constexpr size_t NameLongest = 1024;

class VariableWriter {
public:
    VariableWriter(TextOut &out, const char *prefix) noexcept : out_(out)
    {
        length_ = static_cast<size_t>(snprintf(name_, sizeof(name_), "%s", prefix));
        length_ = length_ < sizeof(name_) ? length_ : sizeof(name_) - 1;
        prefix_ = length_;
    }

    void Record(const YamlRecord *record, const OpenRecord *open) noexcept
    {
        if (record == nullptr || OpenFind(open, record) != nullptr)
            return;
        const OpenRecord here = {record, open, 0};
        const void *model = record->pfnModel != nullptr ? record->pfnModel() : nullptr;
        for (uint32_t index = 0; index < record->uiFields; ++index) {
            const YamlField &field = FieldAt(*record, index);
            const size_t before = length_;
            if (KeyAdd(field.pcKey))
                Value(field, field.pcDoc, model, &here);
            length_ = before;
        }
    }

private:
    // A key that variables cannot name is left out.
    bool KeyAdd(const char *key) noexcept
    {
        if (key == nullptr || *key == '\0' || strstr(key, "__") != nullptr)
            return false;
        char component[NameLongest];
        size_t size = 0;
        for (; *key != '\0' && size + 1 < sizeof(component); ++key) {
            const char lower = static_cast<char>(*key | 0x20);
            const bool letter = lower >= 'a' && lower <= 'z';
            const bool digit = *key >= '0' && *key <= '9';
            if (!letter && !digit && strchr("_-.", *key) == nullptr)
                return false;
            component[size++] = letter ? static_cast<char>(*key & ~0x20) : digit ? *key : '_';
        }
        component[size] = '\0';
        return ComponentAdd(component);
    }

    bool ComponentAdd(const char *component) noexcept
    {
        const char *separator = length_ > prefix_ ? "__" : "";
        const size_t size = strlen(separator) + strlen(component);
        if (length_ + size >= sizeof(name_))
            return false;
        (void)snprintf(name_ + length_, sizeof(name_) - length_, "%s%s", separator, component);
        length_ += size;
        return true;
    }

    void Below(const char *component, const YamlField &field, const OpenRecord *open) noexcept
    {
        const size_t before = length_;
        if (ComponentAdd(component))
            Value(field, nullptr, nullptr, open);
        length_ = before;
    }

    void Value(const YamlField &field, const char *doc, const void *model, const OpenRecord *open) noexcept
    {
        switch (field.uiKind) {
        case YAML_KIND_OPTIONAL:
            return Value(ElementOf(field), doc, nullptr, open);
        case YAML_KIND_RECORD:
            return Record(RecordOf(field), open);
        case YAML_KIND_ARRAY:
            return Below("0", ElementOf(field), open);
        case YAML_KIND_MAP:
            return Below("KEY", ElementOf(field), open);
        case YAML_KIND_TUPLE:
        case YAML_KIND_UNION:
            return Parts(field, open);
        default:
            return Scalar(field, doc, model);
        }
    }

    void Parts(const YamlField &field, const OpenRecord *open) noexcept
    {
        char number[16];
        if (field.uiKind == YAML_KIND_UNION && field.bAnyFits == 0)
            Tag(field);
        for (uint32_t index = 0; index < field.uiAlternatives; ++index) {
            (void)snprintf(number, sizeof(number), "%u", index);
            if (field.uiKind == YAML_KIND_TUPLE)
                Below(number, PartOf(field, index), open);
            else
                Value(PartOf(field, index), nullptr, nullptr, open);
        }
    }

    void Tag(const YamlField &field) noexcept
    {
        const size_t before = length_;
        if (KeyAdd(field.pcTagKey != nullptr ? field.pcTagKey : "type")) {
            out_.Put(std::string_view(name_, length_));
            for (uint32_t index = 0; index < field.uiAlternatives; ++index)
                out_.Format("%s%s", index == 0 ? "  # one of " : ", ", field.pstAlternatives[index].pcText);
            out_.Put('\n');
        }
        length_ = before;
    }

    void Scalar(const YamlField &field, const char *doc, const void *model) noexcept
    {
        char text[ScalarLongest];
        out_.Put(std::string_view(name_, length_));
        out_.Put(std::string_view("  # "));
        FactsPut(out_, field);
        if (InitialText(field, model, text))
            out_.Format(", default %s", text[0] != '\0' ? text : "''");
        if (field.bRequired != 0)
            out_.Put(std::string_view(", required"));
        if (doc != nullptr) {
            out_.Put(std::string_view(": "));
            for (; *doc != '\0'; ++doc)
                out_.Put(*doc == '\n' ? ' ' : *doc);
        }
        out_.Put('\n');
    }

    TextOut &out_;
    char name_[NameLongest];
    size_t length_;
    size_t prefix_;
};

} // namespace

uint32_t ZRYAML_RecordEnvironmentWrite(const YamlRecord *pstRecord, const char *pcPrefix, uint32_t uiBufSize,
                                       char *pcBuf)
{
    TextOut out(uiBufSize, pcBuf);
    VariableWriter(out, pcPrefix != nullptr ? pcPrefix : "").Record(pstRecord, nullptr);
    return out.End();
}
