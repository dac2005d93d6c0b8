// SPDX-License-Identifier: Apache-2.0
// Loads documents, finds values in them, and turns the library's error record into a Failure with its exit status.
#include "document.h"
#include "source.h"

#include <algorithm>
#include <array>

namespace zryaml::cli {

namespace {

Diagnostic DiagnosticOf(const YamlErrorInfo &stInfo, const std::string &stFile)
{
    return {stFile,        stInfo.pcMessage, stInfo.pcHint,      stInfo.pcKeyPath,    stInfo.uiCode,
            stInfo.uiLine, stInfo.uiColumn,  stInfo.uiFirstLine, stInfo.uiFirstColumn};
}

// Codes of a load that never came to judge the text, if no place in it is known.
constexpr std::array g_auiUnreadable = {YAML_ERR_NOMEM, YAML_ERR_PARAM,  YAML_ERR_POOL,
                                        YAML_ERR_OPEN,  YAML_ERR_READER, YAML_ERR_PARSER_INIT};

Failure LoadFailure(const std::string &stFile)
{
    const YamlErrorInfo &stInfo = *ZRYAML_LastErrorGet();
    const bool bUnreadable = stInfo.uiLine == 0 && std::ranges::count(g_auiUnreadable, stInfo.uiCode) > 0;
    return {bUnreadable ? Status::Misuse : Status::Missing, DiagnosticOf(stInfo, stFile)};
}

YamlHandle *Load(const std::string &stFile)
{
    if (stFile != g_pcInputArgument)
        return ZRYAML_FileLoad(stFile.c_str());
    const std::string &stText = InputText();
    return ZRYAML_TextLoad(stText.data(), stText.size(), g_pcInputName);
}

// The one index error that speaks of the document, not of the path: a key is looked up in a sequence.
constexpr std::string_view g_svNoIndex = "The array index has not been specified.";

// A path without its last step; empty if it has but one.
std::string PathAbove(const std::string &stPath)
{
    for (size_t ulAt = stPath.size(); ulAt-- > 1;) {
        if ((stPath[ulAt] == '.' || stPath[ulAt] == '[') && stPath[ulAt - 1] != '\\')
            return stPath.substr(0, ulAt);
    }
    return {};
}

// Gives a diagnostic about a missing value the place of the nearest value above it.
void PlaceAdd(YamlHandle &stHandle, Diagnostic &stDiagnostic)
{
    const YamlListNode *pstAbove = nullptr;
    std::string stPath = PathAbove(stDiagnostic.stPath);
    for (; pstAbove == nullptr && !stPath.empty(); stPath = PathAbove(stPath))
        pstAbove = ZRYAML_PathFind(&stHandle, stPath.c_str());
    if (pstAbove == nullptr)
        pstAbove = ZRYAML_RootGet(&stHandle);
    ZRYAML_ValuePositionGet(pstAbove, &stDiagnostic.uiLine, &stDiagnostic.uiColumn);
}

Failure FindFailure(YamlHandle &stHandle, const std::string &stFile)
{
    const YamlErrorInfo &stInfo = *ZRYAML_LastErrorGet();
    const bool bMalformed = stInfo.uiCode == YAML_ERR_KEY || stInfo.uiCode == YAML_ERR_BUF ||
                            (stInfo.uiCode == YAML_ERR_INDEX && stInfo.pcMessage != g_svNoIndex);
    const bool bAbsent = stInfo.uiCode == YAML_ERR_NOT_FOUND || stInfo.uiCode == YAML_ERR_EMPTY;
    Diagnostic stDiagnostic = DiagnosticOf(stInfo, stFile);
    if (!bMalformed && stDiagnostic.uiLine == 0)
        PlaceAdd(stHandle, stDiagnostic);
    return {bMalformed ? Status::Misuse : Status::Missing, std::move(stDiagnostic), bAbsent};
}

Diagnostic OwnDiagnostic(const std::string &stFile, const std::optional<std::string> &stPath, std::string stMessage)
{
    Diagnostic stDiagnostic;
    stDiagnostic.stFile = stFile;
    stDiagnostic.stMessage = std::move(stMessage);
    stDiagnostic.stPath = stPath.value_or("");
    stDiagnostic.uiCode = YAML_ERR_NOT_FOUND;
    return stDiagnostic;
}

} // namespace

Document::Document(const std::string &stFile) : m_stFile(stFile), m_pstHandle(Load(stFile))
{
    if (m_pstHandle == nullptr)
        throw LoadFailure(stFile);
}

const YamlListNode &Document::Find(const std::optional<std::string> &stPath) const
{
    const YamlListNode *pstTop = Top();
    if (stPath == "")
        throw Failure(Status::Misuse, OwnDiagnostic(m_stFile, stPath, "the key path is empty"));
    if (pstTop == nullptr)
        throw Failure(Status::Missing, OwnDiagnostic(m_stFile, stPath, "the document is empty"), true);
    if (!stPath)
        return *pstTop;
    // The library's code would take this for a malformed path.
    if (ZRYAML_ValueTypeGet(pstTop) == YAML_DATATYPE_SEQ && !stPath->empty() && stPath->front() != '[') {
        Diagnostic stDiagnostic = OwnDiagnostic(m_stFile, stPath, "the document is a sequence, which has no keys");
        stDiagnostic.stHint = "the path must begin with an index, such as [0]";
        throw Failure(Status::Missing, std::move(stDiagnostic), true);
    }
    const YamlListNode *pstValue = ZRYAML_PathFind(m_pstHandle.get(), stPath->c_str());
    if (pstValue == nullptr)
        throw FindFailure(*m_pstHandle, m_stFile);
    return *pstValue;
}

Failure Document::Unfit(const YamlListNode &stValue, uint32_t uiCode, std::string stMessage) const
{
    Diagnostic stDiagnostic = OwnDiagnostic(m_stFile, PathOf(stValue), std::move(stMessage));
    stDiagnostic.uiCode = uiCode;
    ZRYAML_ValuePositionGet(&stValue, &stDiagnostic.uiLine, &stDiagnostic.uiColumn);
    return {Status::Missing, std::move(stDiagnostic)};
}

const char *TypeName(uint32_t uiType) noexcept
{
    static constexpr std::array g_apcName = {"sequence", "map", "scalar", "none"}; // by YAML_DATATYPE_*
    return g_apcName[std::min<size_t>(uiType, YAML_DATATYPE_NONE)];
}

std::string PathOf(const YamlListNode &stValue)
{
    char cNone = '\0';
    const uint32_t uiLength = ZRYAML_ValuePathGet(&stValue, sizeof(cNone), &cNone);
    std::string stPath(size_t{uiLength} + 1, '\0');
    (void)ZRYAML_ValuePathGet(&stValue, uiLength + 1, stPath.data());
    stPath.pop_back();
    return stPath;
}

std::string ChildPath(std::string_view svPath, const YamlChild &stChild)
{
    std::string stPath(svPath);
    if (stChild.pcKey == nullptr)
        return stPath + '[' + std::to_string(stChild.uiIndex) + ']';
    if (!stPath.empty())
        stPath += '.';
    const std::string_view svKey = stChild.pcKey;
    if (svKey.empty())
        stPath += "{}"; // the only form of an empty name that may end a path
    for (const char cChar : svKey) {
        if (std::string_view(".[]{}").find(cChar) != std::string_view::npos)
            stPath += '\\';
        stPath += cChar;
    }
    return stPath;
}

} // namespace zryaml::cli
