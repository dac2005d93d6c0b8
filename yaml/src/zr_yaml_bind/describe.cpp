// SPDX-License-Identifier: Apache-2.0
// Fields of a description in words and as texts.
#include "describe.h"

#include "value_read.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
// Formats were checked where they were written.
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

namespace {

using namespace zryaml;
using namespace zryaml::bind;

YamlScalarType TypeOf(const YamlField &field) noexcept
{
    return ScalarTypeOf(field, field.uiKind, field.uiWidth);
}

bool LimitsHold(const YamlField &field, const YamlScalarType &type, ScalarValue value) noexcept
{
    ScalarValue limit = {};
    if (field.pcMin != nullptr && ScalarParse(type, field.pcMin, limit) == Fit::Yes && ScalarIsLess(type, value, limit))
        return false;
    return field.pcMax == nullptr || ScalarParse(type, field.pcMax, limit) != Fit::Yes ||
           !ScalarIsLess(type, limit, value);
}

bool TextFits(const YamlField &field, const char *text) noexcept
{
    if (!IsScalarKind(field.uiKind))
        return true;
    ScalarValue value = {};
    return ScalarParse(TypeOf(field), text, value) == Fit::Yes && LimitsHold(field, TypeOf(field), value);
}

// What the model holds.
bool ModelText(const YamlField &field, const void *member, char (&text)[ScalarLongest]) noexcept
{
    if (field.uiKind == YAML_KIND_TEXT) {
        const YamlStorage *storage = field.pstStorage;
        if (storage == nullptr || storage->pfnTextGet == nullptr)
            return false;
        return snprintf(text, sizeof(text), "%s", storage->pfnTextGet(member)) < static_cast<int>(sizeof(text));
    }
    const YamlScalarType type = TypeOf(field);
    if (field.uiKind != YAML_KIND_ENUM)
        return ZRYAML_ScalarWrite(&type, member, sizeof(text), text) < sizeof(text) && TextFits(field, text);
    const int64_t held = ScalarLoad(type, member).whole;
    for (uint32_t index = 0; index < field.uiNames; ++index) {
        if (field.pstNames[index].lValue == held)
            return snprintf(text, sizeof(text), "%s", field.pstNames[index].pcText) >= 0;
    }
    return false;
}

const char *KindName(const YamlField &field) noexcept
{
    switch (field.uiKind) {
    case YAML_KIND_INT:
    case YAML_KIND_UINT:
        return "integer";
    case YAML_KIND_DOUBLE:
        return "number";
    case YAML_KIND_BOOL:
        return "true or false";
    case YAML_KIND_DURATION:
        return "duration such as 10s";
    case YAML_KIND_BYTES:
        return "size such as 64KiB";
    case YAML_KIND_TEXT:
        return "text";
    default:
        return "value";
    }
}

} // namespace

void zryaml::bind::TextOut::Format(const char *format, ...) noexcept
{
    char text[ScalarLongest];
    va_list arguments;
    va_start(arguments, format);
    (void)vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    Put(std::string_view(text));
}

const OpenRecord *zryaml::bind::OpenFind(const OpenRecord *open, const YamlRecord *record) noexcept
{
    while (open != nullptr && open->record != record)
        open = open->outer;
    return open;
}

YamlField zryaml::bind::ElementOf(const YamlField &field) noexcept
{
    if (field.pstElement != nullptr)
        return *field.pstElement;
    YamlField element = field;
    element.uiKind = IsOptionalText(field) ? YAML_KIND_TEXT : ElementKindOf(field);
    element.uiWidth = field.uiValueWidth != 0 ? field.uiValueWidth : field.uiElementWidth;
    element.pcKey = element.pcDefault = element.pcDoc = element.pcOldKey = nullptr;
    element.bRequired = element.uiMinCount = element.uiMaxCount = 0;
    element.uiElement = 0;
    element.pfnMember = nullptr;
    return element;
}

YamlField zryaml::bind::PartOf(const YamlField &field, uint32_t index) noexcept
{
    const YamlAlternative &alternative = field.pstAlternatives[index];
    if (alternative.pstElement != nullptr)
        return *alternative.pstElement;
    YamlField part = {};
    part.uiKind = YAML_KIND_RECORD;
    part.pstRecord = alternative.pstRecord;
    return part;
}

bool zryaml::bind::InitialText(const YamlField &field, const void *model, char (&text)[ScalarLongest]) noexcept
{
    if (field.pcDefault != nullptr)
        return snprintf(text, sizeof(text), "%s", field.pcDefault) < static_cast<int>(sizeof(text));
    return model != nullptr && ModelText(field, MemberOf(field, const_cast<void *>(model)), text);
}

void zryaml::bind::FirstText(const YamlField &field, char (&text)[ScalarLongest]) noexcept
{
    const char *first = "";
    if (field.uiKind == YAML_KIND_BOOL)
        first = "false";
    else if (field.uiKind == YAML_KIND_ENUM && field.uiNames != 0)
        first = field.pstNames[0].pcText;
    else if (IsScalarKind(field.uiKind)) {
        first = field.uiKind == YAML_KIND_DURATION ? "0s" : "0";
        if (!TextFits(field, first))
            first = field.pcMin != nullptr ? field.pcMin : field.pcMax != nullptr ? field.pcMax : first;
    }
    (void)snprintf(text, sizeof(text), "%s", first);
}

void zryaml::bind::FactsPut(TextOut &out, const YamlField &field) noexcept
{
    if (field.uiKind == YAML_KIND_ENUM) {
        for (uint32_t index = 0; index < field.uiNames; ++index)
            out.Format("%s%s", index == 0 ? "one of " : ", ", field.pstNames[index].pcText);
        return;
    }
    out.Put(KindName(field));
    if (!IsScalarKind(field.uiKind) || (field.pcMin == nullptr && field.pcMax == nullptr))
        return;
    if (field.pcMin == nullptr)
        out.Format(", at most %s", field.pcMax);
    else if (field.pcMax == nullptr)
        out.Format(", at least %s", field.pcMin);
    else
        out.Format(", %s to %s", field.pcMin, field.pcMax);
}

bool zryaml::bind::IsScalarField(const YamlField &field) noexcept
{
    if (field.uiKind == YAML_KIND_OPTIONAL)
        return IsScalarField(ElementOf(field));
    return IsScalarKind(field.uiKind) || field.uiKind == YAML_KIND_TEXT || field.uiKind == YAML_KIND_ENUM;
}
