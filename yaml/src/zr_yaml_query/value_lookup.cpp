// SPDX-License-Identifier: Apache-2.0
// Follows steps and paths down from a value, and explains a step that leads nowhere. Nothing is logged or marked.
#include "../value_lookup.h"
#include "../text_cut.h"
#include "../value_source.h"
#include "value_entry.h"

#include <zr_yaml_problem.h>

using namespace zryaml;
using namespace zryaml::query;

namespace zryaml {
namespace {

constexpr size_t KeyShown = 60; // bytes of a key in a sentence

struct KeyName {
    explicit KeyName(std::string_view key) noexcept
    {
        const size_t length = key.size() < KeyShown + 4 ? key.size() : KeyShown + 4;
        for (size_t at = 0; at < length; ++at)
            text[at] = key[at] != '\0' ? key[at] : '?';
        if (length < key.size())
            CutMark(text, sizeof(text));
    }
    char text[KeyShown + 4 + 1] = {};
};

bool IsEmptyScalar(const YamlListNode &value) noexcept
{
    return value.uiDataType == YAML_DATATYPE_SCALAR && (value.pcValue == nullptr || *value.pcValue == '\0');
}

// The code of a step that does not fit the kind of a value.
uint32_t MissCode(const YamlListNode *from) noexcept
{
    return from == nullptr || IsEmptyScalar(*from) ? YAML_ERR_NOT_FOUND : YAML_ERR_NODE_TYPE;
}

// Says that a value has nothing below it; false if it may have.
bool LeafExplain(const YamlListNode *from) noexcept
{
    if (from == nullptr)
        ErrorSentence("the document is empty");
    else if (IsEmptyScalar(*from))
        ErrorSentence("%s is empty, nothing is below it", ValueName(from).text);
    else if (from->uiDataType == YAML_DATATYPE_SCALAR)
        ErrorSentence("%s is a scalar, nothing is below it", ValueName(from).text);
    else
        return false;
    return true;
}

void PlaceAdd(const YamlListNode *value) noexcept
{
    if (value == nullptr)
        return;
    ErrorPlaceAdd(value->uiLine, value->uiColumn);
    ErrorFileAdd(SourceNameOf(value));
}

} // namespace

uint32_t KeyTake(const YamlListNode *from, std::string_view key, const YamlListNode *&to) noexcept
{
    if (ZRYAML_ValueTypeGet(from) != YAML_DATATYPE_MAP)
        return MissCode(from);
    const YamlListNode *found = KeyFind(*from, key);
    const YamlListNode *value = found != nullptr ? FirstChild(*found) : nullptr;
    if (value == nullptr)
        return YAML_ERR_NOT_FOUND;
    to = value;
    return YAML_OK;
}

uint32_t IndexTake(const YamlListNode *from, uint64_t index, const YamlListNode *&to) noexcept
{
    if (ZRYAML_ValueTypeGet(from) != YAML_DATATYPE_SEQ)
        return MissCode(from);
    const YamlListNode *found = index < UINT32_MAX ? EntryAt(from, static_cast<uint32_t>(index)) : nullptr;
    if (found == nullptr)
        return YAML_ERR_NOT_FOUND;
    to = found;
    return YAML_OK;
}

PathEnd PathFollow(const YamlListNode *from, std::string_view path) noexcept
{
    PathEnd end = {YAML_OK, from, PathFault::None, {}};
    PathReader reader(path);
    PathStep step;
    char name[YAML_KEY_BUF_SIZE];
    while (reader.Next(step)) {
        if (end.code != YAML_OK)
            continue; // for a fault further on
        const bool escaped = !step.isIndex && step.text.find('\\') != step.text.npos;
        const std::string_view key =
            escaped ? std::string_view(name, NameUnescape(step.text, name, sizeof(name))) : step.text;
        end.code = step.isIndex ? IndexTake(end.value, step.index, end.value) : KeyTake(end.value, key, end.value);
        end.step = step;
    }
    end.fault = reader.Fault();
    if (end.fault != PathFault::None)
        end.code = PathFaultCode(end.fault);
    return end;
}

void KeyMissExplain(const YamlListNode *from, std::string_view key) noexcept
{
    PlaceAdd(from);
    if (LeafExplain(from))
        return;
    const ValueName where(from);
    if (from->uiDataType == YAML_DATATYPE_MAP) {
        ErrorSentence("no key '%s' in %s", KeyName(key).text, where.text);
        if (const char *near = ZRYAML_NearestKeyGet(from, KeyName(key).text))
            ErrorHintAdd("did you mean '%s'?", near);
        return;
    }
    ErrorSentence("%s is a sequence and has no key '%s'", where.text, KeyName(key).text);
    ErrorHintAdd("an element comes first, as in %s[0]", where.top ? "" : where.text);
}

void IndexMissExplain(const YamlListNode *from, uint64_t index) noexcept
{
    PlaceAdd(from);
    if (LeafExplain(from))
        return;
    const ValueName where(from);
    const auto number = static_cast<unsigned long long>(index);
    const uint32_t count = ZRYAML_ChildCountGet(from);
    if (from->uiDataType == YAML_DATATYPE_MAP)
        ErrorSentence("%s is a map and has no element [%llu]", where.text, number);
    else if (count == 0)
        ErrorSentence("%s has no elements, there is no [%llu]", where.text, number);
    else
        ErrorSentence("%s has %u element%s, there is no [%llu]", where.text, count, count == 1 ? "" : "s", number);
}

void PathFaultExplain(PathFault fault) noexcept
{
    ErrorSentence("the key path is malformed: %s", PathFaultText(fault));
}

void PathEndExplain(const PathEnd &end) noexcept
{
    if (end.fault != PathFault::None)
        return PathFaultExplain(end.fault);
    if (end.step.isIndex)
        return IndexMissExplain(end.value, end.step.index);
    char name[YAML_KEY_BUF_SIZE];
    const size_t length = NameUnescape(end.step.text, name, sizeof(name));
    KeyMissExplain(end.value, {name, length});
}

void KindExplain(const YamlListNode &value, const char *wanted) noexcept
{
    PlaceAdd(&value);
    ErrorSentence("%s is %s, not %s", ValueName(&value).text, KindName(value.uiDataType), wanted);
}

ValueName::ValueName(const YamlListNode *value) noexcept
{
    const size_t length = ZRYAML_ValuePathGet(value, sizeof(text), text);
    top = length == 0;
    if (top)
        memcpy(text, "the document", sizeof("the document"));
    else if (length >= sizeof(text))
        CutMark(text, sizeof(text));
}

const char *KindName(uint32_t type) noexcept
{
    constexpr const char *names[] = {"a sequence", "a map", "a scalar", "nothing"}; // by YAML_DATATYPE_*
    return names[type < YAML_DATATYPE_NONE ? type : YAML_DATATYPE_NONE];
}

} // namespace zryaml
