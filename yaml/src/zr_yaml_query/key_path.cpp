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
    PathPlace ePlace;
    PathFault eFault;
    uint32_t uiCode;
    const char *pcRecord;
    const char *pcLabel; // of the part
    Part ePart;
};

constexpr Refusal g_astRefusal[] = {
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

std::string_view PartOf(const PathComponent &stComponent, Part ePart) noexcept
{
    const char *pcEnd = stComponent.text.data() + stComponent.text.size();
    const char *pcDigits = stComponent.digits.data();
    switch (ePart) {
    case Part::Text:
        return stComponent.text;
    case Part::Name:
        return stComponent.name;
    case Part::Bracket:
        return {pcDigits - 1, static_cast<size_t>(pcEnd - pcDigits + 1)};
    case Part::Digits:
        return {pcDigits, static_cast<size_t>(pcEnd - pcDigits)};
    case Part::Head:
        return {pcDigits - 1, stComponent.digits.size() + 1};
    default:
        return {};
    }
}

uint32_t RefusalLog(const Refusal &stRefusal, const PathComponent &stComponent) noexcept
{
    if (stRefusal.ePart == Part::None)
        return YAML_FAIL(stRefusal.uiCode, "%s", stRefusal.pcRecord);
    const std::string_view svPart = PartOf(stComponent, stRefusal.ePart);
    return YAML_FAIL(stRefusal.uiCode, "%s (%s=%.*s)", stRefusal.pcRecord, stRefusal.pcLabel,
                     static_cast<int>(svPart.size()), svPart.data());
}

// Whether the index was read to its ']', whatever may be wrong beside it.
bool IsIndexRead(const PathComponent &stComponent) noexcept
{
    const PathFault eFault = stComponent.fault;
    return stComponent.HasIndex() &&
           (eFault == PathFault::None || eFault == PathFault::Bracket || eFault == PathFault::IndexTail);
}

PathFault FaultOf(const PathComponent &stComponent, PathPlace ePlace) noexcept
{
    // Behind a name the largest number means that there is no index.
    const uint64_t ulIndexMax = ePlace == PathPlace::Name ? YAML_INDEX_NONE - 1 : uint32_t{INT32_MAX};
    if (IsIndexRead(stComponent) && stComponent.index > ulIndexMax)
        return PathFault::IndexLarge;
    if (ePlace != PathPlace::Front)
        return stComponent.fault;
    const bool bDigitsToEnd = stComponent.digits.size() == stComponent.text.size();
    if (stComponent.fault == PathFault::IndexEscaped || (stComponent.fault == PathFault::IndexOpen && !bDigitsToEnd))
        return PathFault::IndexText;
    return stComponent.fault;
}

// Stores what an operation has cut out of a path at pcText, and returns its length, or Rejected (logged).
int32_t ComponentGive(const PathComponent &stComponent, char *pcText, uint32_t uiNameSize, char *pcKeyName,
                      uint32_t *puiParsedLen, uint32_t *puiIndex) noexcept
{
    const PathFault eFault = FaultOf(stComponent, PathPlace::Name);
    size_t ulLength = 0;
    if (stComponent.text.size() < 2) {
        char acText[2] = {stComponent.text.empty() ? '\0' : stComponent.text[0], '\0'};
        YAML_SECURE(strncpy_s(pcKeyName, uiNameSize, acText, uiNameSize - 1));
        ulLength = stComponent.text.size();
    } else if (eFault == PathFault::None || eFault == PathFault::Bracket || eFault == PathFault::IndexTail) {
        const std::string_view svKept(stComponent.name.data(), StrayBracketFind(stComponent.name));
        ulLength = NameUnescape(svKept, pcKeyName, uiNameSize - 1);
        pcKeyName[ulLength] = '\0';
    }
    if (IsIndexRead(stComponent) && eFault != PathFault::IndexLarge) {
        *puiIndex = static_cast<uint32_t>(stComponent.index);
        memset(pcText + stComponent.name.size(), '\0', stComponent.digits.size() + 2); // the name ends there
    }
    if (PathRefuse(stComponent, PathPlace::Name) != YAML_OK)
        return Rejected;
    *puiParsedLen += static_cast<uint32_t>(stComponent.used);
    return static_cast<int32_t>(ulLength);
}

} // namespace

uint32_t zryaml::query::PathRefuse(const PathComponent &stComponent, PathPlace ePlace, bool bTail) noexcept
{
    const PathFault eFault = FaultOf(stComponent, ePlace);
    if (eFault == PathFault::None || (eFault == PathFault::IndexTail && !bTail))
        return YAML_OK;
    const Refusal *pstRefusal = g_astRefusal;
    while (pstRefusal->ePlace != ePlace || pstRefusal->eFault != eFault)
        ++pstRefusal;
    return RefusalLog(*pstRefusal, stComponent);
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
    const PathComponent stComponent = IndexScan(pcKeyPath);
    if (IsIndexRead(stComponent) && FaultOf(stComponent, PathPlace::Index) != PathFault::IndexLarge) {
        pcKeyName[0] = '\0';
        *puiIndex = static_cast<uint32_t>(stComponent.index);
    }
    if (PathRefuse(stComponent, PathPlace::Index) != YAML_OK)
        return Rejected;
    *puiParsedLen += static_cast<uint32_t>(stComponent.used);
    return static_cast<int32_t>(stComponent.digits.size() + 1);
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
    const PathComponent stComponent = IndexSplit(pcKeyText);
    const uint32_t uiCode = PathRefuse(stComponent, PathPlace::Name);
    if (uiCode != YAML_OK || !stComponent.HasIndex())
        return uiCode;
    const size_t ulLength = stComponent.digits.size() + 2;
    *puiIndex = static_cast<uint32_t>(stComponent.index);
    *puiIndexLen += static_cast<uint32_t>(ulLength);
    memset(pcKeyText + stComponent.name.size(), '\0', ulLength);
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
    const long lIndex = strtol(pcStr, nullptr, 10); // LONG_MAX when it does not fit
    if (lIndex > INT32_MAX)
        return YAML_ERR_PARAM;
    *puiIndex = static_cast<uint32_t>(lIndex);
    return YAML_OK;
}
