// SPDX-License-Identifier: Apache-2.0
// The syntax of key paths: each call cuts one component (a name, a name with an index, "[index]" or "{name}") out of a
// writable copy of the path. A backslash escapes '.', '[', ']', '{' and '}' and nothing else.
#include "query_internal.h"

#include <array>
#include <cstdlib>
#include <cstring>

ZR_LogModule zryaml::query::YamlLogModule = {"YAML", 0x1900U};

namespace {

constexpr int32_t Rejected = -1;
constexpr uint32_t PlainDigits = 9; // any number of so many fits

#define PATH_REJECT(...) (YAML_LOG(YAML_LOG_ERROR, YAML_ERR_KEY, __VA_ARGS__), Rejected)

// The first such character that no backslash stands right before, within the component.
char *UnescapedFind(char *pcText, char cWanted) noexcept
{
    char *pcFound = strchr(pcText, cWanted);
    while (pcFound != nullptr && pcFound != pcText && pcFound[-1] == '\\')
        pcFound = strchr(pcFound + 1, cWanted);
    return pcFound;
}

// Whether a bracket at this place of a name belongs to no index and is not escaped either.
bool IsStrayBracket(const char *pcText, size_t ulAt) noexcept
{
    return (pcText[ulAt] == '[' || pcText[ulAt] == ']') && ulAt > 0 && pcText[ulAt - 1] != '\\';
}

// Copies a name without the backslashes that escape; the number of characters stored, or Rejected. A NUL ends what is
// stored in either case.
int32_t NameUnescape(const char *pcText, uint32_t uiNameSize, char *pcKeyName) noexcept
{
    uint32_t uiLength = 0;
    size_t ul = 0;
    for (; pcText[ul] != '\0' && !IsStrayBracket(pcText, ul); ++ul) {
        const bool bEscapes = pcText[ul] == '\\' && IsMetaChar(pcText[ul + 1]);
        if (!bEscapes && uiLength + 1 < uiNameSize)
            pcKeyName[uiLength++] = pcText[ul];
    }
    pcKeyName[uiLength] = '\0';
    if (pcText[ul] != '\0')
        return PATH_REJECT("The format of key is wrong. (Key=%s)", pcText);
    return static_cast<int32_t>(uiLength);
}

// A component of less than two characters: no escape and no index.
int32_t ShortNameCopy(const char *pcText, size_t ulLength, uint32_t uiNameSize, char *pcKeyName,
                      uint32_t *puiParsedLen) noexcept
{
    YAML_SECURE(strncpy_s(pcKeyName, uiNameSize, pcText, uiNameSize - 1));
    *puiParsedLen += static_cast<uint32_t>(ulLength) + 1;
    return static_cast<int32_t>(ulLength);
}

// Which characters end a name that is read where it stands.
constexpr std::array<bool, 256> g_abNameEnd = [] {
    std::array<bool, 256> abEnd = {};
    for (const char cChar : {'\0', '\\', '.', '[', ']', '{', '}'})
        abEnd[static_cast<unsigned char>(cChar)] = true;
    return abEnd;
}();

// Reads "[digits]" of a number that is small enough; where it ends, NULL if it is anything else.
const char *PlainIndexRead(const char *pcOpen, uint32_t &uiIndex) noexcept
{
    const char *pcDigits = pcOpen + 1;
    uint32_t uiDigits = 0;
    for (uiIndex = 0; uiDigits < PlainDigits && IsDigit(pcDigits[uiDigits]); ++uiDigits)
        uiIndex = uiIndex * 10 + static_cast<uint32_t>(pcDigits[uiDigits] - '0');
    return uiDigits > 0 && pcDigits[uiDigits] == ']' ? pcDigits + uiDigits + 1 : nullptr;
}

// Reads a component without escapes and braces; where it ends, NULL if it is anything else.
const char *PlainRead(const char *pcText, PathComponent &stComponent) noexcept
{
    const char *pcEnd = pcText;
    while (!g_abNameEnd[static_cast<unsigned char>(*pcEnd)])
        ++pcEnd;
    stComponent = {{pcText, static_cast<size_t>(pcEnd - pcText)}, YAML_INDEX_NONE};
    if (*pcEnd == '[')
        pcEnd = PlainIndexRead(pcEnd, stComponent.uiIndex);
    else if (pcEnd == pcText)
        return nullptr;
    return pcEnd != nullptr && (*pcEnd == '.' || *pcEnd == '[' || *pcEnd == '\0') ? pcEnd : nullptr;
}

} // namespace

bool zryaml::query::ComponentRead(char *pcKeyPath, char (&acName)[YAML_KEY_BUF_SIZE], uint32_t &uiParsedLen,
                                  PathComponent &stComponent) noexcept
{
    char *pcText = pcKeyPath + uiParsedLen;
    if (const char *pcEnd = PlainRead(pcText, stComponent)) {
        uiParsedLen += static_cast<uint32_t>(pcEnd - pcText) + (*pcEnd == '[' ? 0 : 1); // the separator, or the end
        return true;
    }
    acName[0] = '\0'; // a copy that is refused leaves it so
    stComponent.uiIndex = YAML_INDEX_NONE;
    if (yaml_KeyParse(pcText, sizeof(acName), acName, &uiParsedLen, &stComponent.uiIndex) < 0)
        return false;
    stComponent.svName = acName;
    return true;
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

int32_t yaml_KeyParseForSeq(char *pcKeyPath, [[maybe_unused]] uint32_t uiNameSize, char *pcKeyName,
                            uint32_t *puiParsedLen, uint32_t *puiIndex)
{
    const char *pcEnd = strchr(pcKeyPath, ']');
    if (pcEnd == nullptr || (pcEnd != pcKeyPath && pcEnd[-1] == '\\'))
        return PATH_REJECT("The key only contains a '[', but without ']'.");
    const auto uiDigits = static_cast<uint32_t>(pcEnd - pcKeyPath);
    if (uiDigits == 0) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_INDEX, "The index contains any not digital character. (Index=%s)", pcKeyPath);
        return Rejected;
    }
    if (yaml_IsDigitalString(pcKeyPath, uiDigits) == 0)
        return Rejected;
    uint32_t uiIndex = 0;
    if (yaml_IndexGet(pcKeyPath, &uiIndex) != YAML_OK)
        return PATH_REJECT("Failed to get sequence index. (String=%s)", pcKeyPath);

    pcKeyName[0] = '\0';
    *puiIndex = uiIndex;
    const uint32_t uiUsed = uiDigits + 1;
    if (pcEnd[1] != '.' && pcEnd[1] != '[' && pcEnd[1] != '\0')
        return PATH_REJECT("There are any other character after ']' except '.' or '['.");
    *puiParsedLen += pcEnd[1] == '[' ? uiUsed : uiUsed + 1;
    return static_cast<int32_t>(uiUsed);
}

int32_t yaml_KeyStringGet(char *pcKeyPath, char cEnd, uint32_t uiNameSize, char *pcKeyName, uint32_t *puiParsedLen,
                          uint32_t *puiIndex)
{
    char *pcEnd = UnescapedFind(pcKeyPath, cEnd);
    if (pcEnd == nullptr)
        return yaml_MetaChrProcess(pcKeyPath, uiNameSize, pcKeyName, puiParsedLen, puiIndex);
    const uint32_t uiBehindEnd = *puiParsedLen + static_cast<uint32_t>(pcEnd - pcKeyPath) + 1;
    *pcEnd = '\0';
    const int32_t iResult = yaml_MetaChrProcess(pcKeyPath, uiNameSize, pcKeyName, puiParsedLen, puiIndex);
    *pcEnd = cEnd;
    const bool bBraceClosed = cEnd == '}' && iResult >= 0 && *puiParsedLen == uiBehindEnd;
    if (bBraceClosed && (pcEnd[1] == '.' || pcEnd[1] == '\0'))
        ++*puiParsedLen; // the separator after '}', or the end of the path
    return iResult;
}

int32_t yaml_MetaChrProcess(char *pcKeyText, uint32_t uiNameSize, char *pcKeyName, uint32_t *puiParsedLen,
                            uint32_t *puiIndex)
{
    const size_t ulLength = strlen(pcKeyText);
    if (ulLength < 2)
        return ShortNameCopy(pcKeyText, ulLength, uiNameSize, pcKeyName, puiParsedLen);
    uint32_t uiIndexLen = 0;
    if (yaml_ArrayIndexGet(pcKeyText, &uiIndexLen, puiIndex) != YAML_OK)
        return Rejected;
    const size_t ulNameLength = uiIndexLen == 0 ? ulLength : strlen(pcKeyText);
    const int32_t iResult = NameUnescape(pcKeyText, uiNameSize, pcKeyName);
    if (iResult < 0)
        return iResult;
    const size_t ulUsed = ulNameLength + uiIndexLen;
    switch (pcKeyText[ulUsed]) {
    case '.':
    case '\0':
        *puiParsedLen += static_cast<uint32_t>(ulUsed) + 1;
        return iResult;
    case '[':
        *puiParsedLen += static_cast<uint32_t>(ulUsed);
        return iResult;
    default:
        return PATH_REJECT("There is any other character after ']'.");
    }
}

uint32_t yaml_ArrayIndexGet(char *pcKeyText, uint32_t *puiIndexLen, uint32_t *puiIndex)
{
    char *pcOpen = UnescapedFind(pcKeyText, '[');
    if (pcOpen == nullptr)
        return YAML_OK;
    char *pcClose = strchr(pcOpen, ']');
    if (pcClose == nullptr)
        return YAML_FAIL(YAML_ERR_INDEX, "The current key does not contains ']' for pair. (Key=%s)", pcKeyText);
    if (pcClose[-1] == '\\')
        return YAML_FAIL(YAML_ERR_INDEX, "The current key contains '\\]' between '[' and ']'. (Key=%s)", pcKeyText);
    if (yaml_IsDigitalString(pcOpen + 1, static_cast<uint32_t>(pcClose - pcOpen - 1)) == 0)
        return YAML_ERR_INDEX;

    uint32_t uiIndex = 0;
    *pcClose = '\0';
    const int iRead = sscanf_s(pcOpen, "[%u]", &uiIndex);
    if (iRead != 1 || uiIndex == YAML_INDEX_NONE) { // the largest number stands for no index
        *pcClose = ']';
        return YAML_FAIL(YAML_ERR_INDEX, "The index for sequence is wrong. (Index=%s)", pcOpen);
    }
    *puiIndex = uiIndex;
    *puiIndexLen += static_cast<uint32_t>(pcClose - pcOpen) + 1;
    memset(pcOpen, '\0', static_cast<size_t>(pcClose - pcOpen));
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
