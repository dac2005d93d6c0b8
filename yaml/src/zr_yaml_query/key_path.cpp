// SPDX-License-Identifier: Apache-2.0
// The operations that cut one component out of a writable path, and what the log says of a path that lookups by format
// refuse. Only the tokenizer knows what a path means (path_scan.cpp).
#include "query_internal.h"

#include <cstdlib>
#include <cstring>
#include <iterator>

using namespace zryaml;
using namespace zryaml::query;

ZR_LogModule zryaml::query::YamlLogModule = {"YAML", 0x1900U};

namespace {

constexpr int32_t Rejected = -1;

// The part of a component that a record shows.
enum class Part : uint8_t {
    None,
    Text,    // all of it
    Name,    // without its index
    Bracket, // from the '[' on
    Digits,  // from behind the '[' on
    Head,    // the '[' and the digits
};

// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): in the order in which a row is read
struct Refusal {
    PathPlace place;
    PathFault fault;
    uint32_t uiCode;
    const char *pcRecord;
    const char *label; // of the part
    Part part;
};

constexpr Refusal g_refusal[] = {
    {PathPlace::Name, PathFault::IndexOpen, YAML_ERR_INDEX, "The current key does not contains ']' for pair.", "Key",
     Part::Text},
    {PathPlace::Name, PathFault::IndexEscaped, YAML_ERR_INDEX, "The current key contains '\\]' between '[' and ']'.",
     "Key", Part::Text},
    {PathPlace::Name, PathFault::IndexText, YAML_ERR_INDEX, "The index contains any not digital character.", "Index",
     Part::Digits},
    {PathPlace::Name, PathFault::IndexEmpty, YAML_ERR_INDEX, "The index for sequence is wrong.", "Index",
     Part::Bracket},
    {PathPlace::Name, PathFault::IndexLarge, YAML_ERR_INDEX, "The index for sequence is wrong.", "Index",
     Part::Bracket},
    {PathPlace::Name, PathFault::Bracket, YAML_ERR_KEY, "The format of key is wrong.", "Key", Part::Name},
    {PathPlace::Name, PathFault::IndexTail, YAML_ERR_KEY, "There is any other character after ']'.", "", Part::None},

    {PathPlace::Index, PathFault::IndexOpen, YAML_ERR_KEY, "The key only contains a '[', but without ']'.", "",
     Part::None},
    {PathPlace::Index, PathFault::IndexEscaped, YAML_ERR_KEY, "The key only contains a '[', but without ']'.", "",
     Part::None},
    {PathPlace::Index, PathFault::IndexText, YAML_ERR_INDEX, "The index contains any not digital character.", "Index",
     Part::Digits},
    {PathPlace::Index, PathFault::IndexEmpty, YAML_ERR_INDEX, "The index contains any not digital character.", "Index",
     Part::Digits},
    {PathPlace::Index, PathFault::IndexLarge, YAML_ERR_KEY, "Failed to get sequence index.", "String", Part::Digits},
    {PathPlace::Index, PathFault::IndexTail, YAML_ERR_KEY, "There are any other character after ']' except '.' or '['.",
     "", Part::None},

    {PathPlace::Front, PathFault::IndexOpen, YAML_ERR_KEY, "Can not find ']' to pair with '['.", "Key", Part::Bracket},
    {PathPlace::Front, PathFault::IndexText, YAML_ERR_KEY,
     "The key doesn't contain any digital character between '[' and ']'.", "", Part::None},
    {PathPlace::Front, PathFault::IndexEmpty, YAML_ERR_KEY, "Failed to get legal sequence index from '[' and ']'.", "",
     Part::None},
    {PathPlace::Front, PathFault::IndexLarge, YAML_ERR_KEY, "Failed to get sequence index from key.", "Key",
     Part::Head},
    {PathPlace::Front, PathFault::IndexTail, YAML_ERR_KEY, "The format of input key is wrong.", "Key", Part::Digits},
};

std::string_view PartOf(const PathComponent &component, Part part) noexcept
{
    const char *end = component.text.data() + component.text.size();
    const char *digits = component.digits.data();
    switch (part) {
    case Part::Text:
        return component.text;
    case Part::Name:
        return component.name;
    case Part::Bracket:
        return {digits - 1, static_cast<size_t>(end - digits + 1)};
    case Part::Digits:
        return {digits, static_cast<size_t>(end - digits)};
    case Part::Head:
        return {digits - 1, component.digits.size() + 1};
    default:
        return {};
    }
}

uint32_t RefusalLog(const Refusal &refusal, const PathComponent &component) noexcept
{
    if (refusal.part == Part::None)
        return YAML_FAIL(refusal.uiCode, "%s", refusal.pcRecord);
    const std::string_view partText = PartOf(component, refusal.part);
    return YAML_FAIL(refusal.uiCode, "%s (%s=%.*s)", refusal.pcRecord, refusal.label, static_cast<int>(partText.size()),
                     partText.data());
}

// Whether the index was read to its ']', whatever may be wrong beside it.
bool IsIndexRead(const PathComponent &component) noexcept
{
    const PathFault fault = component.fault;
    return component.HasIndex() &&
           (fault == PathFault::None || fault == PathFault::Bracket || fault == PathFault::IndexTail);
}

PathFault FaultOf(const PathComponent &component, PathPlace place) noexcept
{
    // Behind a name the largest number means that there is no index.
    const uint64_t indexMax = place == PathPlace::Name ? YAML_INDEX_NONE - 1 : uint32_t{INT32_MAX};
    if (IsIndexRead(component) && component.index > indexMax)
        return PathFault::IndexLarge;
    if (place != PathPlace::Front)
        return component.fault;
    const bool areDigitsToEnd = component.digits.size() == component.text.size();
    if (component.fault == PathFault::IndexEscaped || (component.fault == PathFault::IndexOpen && !areDigitsToEnd))
        return PathFault::IndexText;
    return component.fault;
}

// Stores what an operation has cut out of a path at pcText, and returns its length, or Rejected (logged).
int32_t ComponentGive(const PathComponent &component, char *pcText, uint32_t nameSize, char *keyName,
                      uint32_t *puiParsedLen, uint32_t *puiIndex) noexcept
{
    const PathFault fault = FaultOf(component, PathPlace::Name);
    size_t length = 0;
    if (component.text.size() < 2) {
        char text[2] = {component.text.empty() ? '\0' : component.text[0], '\0'};
        YAML_SECURE(strncpy_s(keyName, nameSize, text, nameSize - 1));
        length = component.text.size();
    } else if (fault == PathFault::None || fault == PathFault::Bracket || fault == PathFault::IndexTail) {
        const std::string_view kept(component.name.data(), StrayBracketFind(component.name));
        length = NameUnescape(kept, keyName, nameSize - 1);
        keyName[length] = '\0';
    }
    if (IsIndexRead(component) && fault != PathFault::IndexLarge) {
        *puiIndex = static_cast<uint32_t>(component.index);
        memset(pcText + component.name.size(), '\0', component.digits.size() + 2); // the name ends there
    }
    if (PathRefuse(component, PathPlace::Name) != YAML_OK)
        return Rejected;
    *puiParsedLen += static_cast<uint32_t>(component.used);
    return static_cast<int32_t>(length);
}

} // namespace

uint32_t zryaml::query::PathRefuse(const PathComponent &component, PathPlace place, bool hasTail) noexcept
{
    const PathFault fault = FaultOf(component, place);
    if (fault == PathFault::None || (fault == PathFault::IndexTail && !hasTail))
        return YAML_OK;
    const Refusal *refusal = g_refusal;
    while (refusal->place != place || refusal->fault != fault)
        ++refusal;
    return RefusalLog(*refusal, component);
}

int32_t yaml_KeyParse(char *pcKeyPath, uint32_t uiNameSize, char *pcKeyName, uint32_t *puiParsedLen, uint32_t *puiIndex)
{
    switch (*pcKeyPath) {
    case '[':
        ++*puiParsedLen;
        return yaml_KeyParseForSeq(pcKeyPath + 1, uiNameSize, pcKeyName, puiParsedLen, puiIndex);
    case '{':
        ++*puiParsedLen;
        return yaml_KeyStringGet(pcKeyPath + 1, '}', uiNameSize, pcKeyName, puiParsedLen, puiIndex);
    default:
        return yaml_KeyStringGet(pcKeyPath, '.', uiNameSize, pcKeyName, puiParsedLen, puiIndex);
    }
}

// NOLINTNEXTLINE(readability-non-const-parameter): as published
int32_t yaml_KeyParseForSeq(char *pcKeyPath, [[maybe_unused]] uint32_t uiNameSize, char *pcKeyName,
                            uint32_t *puiParsedLen, uint32_t *puiIndex)
{
    const PathComponent component = IndexScan(pcKeyPath);
    if (IsIndexRead(component) && FaultOf(component, PathPlace::Index) != PathFault::IndexLarge) {
        pcKeyName[0] = '\0';
        *puiIndex = static_cast<uint32_t>(component.index);
    }
    if (PathRefuse(component, PathPlace::Index) != YAML_OK)
        return Rejected;
    *puiParsedLen += static_cast<uint32_t>(component.used);
    return static_cast<int32_t>(component.digits.size() + 1);
}

int32_t yaml_KeyStringGet(char *pcKeyPath, char cEnd, uint32_t uiNameSize, char *pcKeyName, uint32_t *puiParsedLen,
                          uint32_t *puiIndex)
{
    return ComponentGive(NameScan(pcKeyPath, cEnd), pcKeyPath, uiNameSize, pcKeyName, puiParsedLen, puiIndex);
}

int32_t yaml_MetaChrProcess(char *pcKeyText, uint32_t uiNameSize, char *pcKeyName, uint32_t *puiParsedLen,
                            uint32_t *puiIndex)
{
    return ComponentGive(TextScan(pcKeyText), pcKeyText, uiNameSize, pcKeyName, puiParsedLen, puiIndex);
}

uint32_t yaml_ArrayIndexGet(char *pcKeyText, uint32_t *puiIndexLen, uint32_t *puiIndex)
{
    const PathComponent component = IndexSplit(pcKeyText);
    const uint32_t uiCode = PathRefuse(component, PathPlace::Name);
    if (uiCode != YAML_OK || !component.HasIndex())
        return uiCode;
    const size_t ulLength = component.digits.size() + 2;
    *puiIndex = static_cast<uint32_t>(component.index);
    *puiIndexLen += static_cast<uint32_t>(ulLength);
    memset(pcKeyText + component.name.size(), '\0', ulLength);
    return YAML_OK;
}

uint32_t yaml_IsDigitalString(const char *pcStr, uint32_t uiLen)
{
    for (uint32_t ui = 0; ui < uiLen; ++ui) {
        if (!IsDigit(pcStr[ui])) {
            YAML_LOG(YAML_LOG_ERROR, YAML_ERR_INDEX, "The index contains any not digital character. (Index=%s)", pcStr);
            return 0;
        }
    }
    return 1;
}

uint32_t yaml_IndexGet(const char *pcStr, uint32_t *puiIndex)
{
    const long index = strtol(pcStr, nullptr, 10); // LONG_MAX when it does not fit
    if (index > INT32_MAX)
        return YAML_ERR_PARAM;
    *puiIndex = static_cast<uint32_t>(index);
    return YAML_OK;
}
