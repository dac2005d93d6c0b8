// SPDX-License-Identifier: Apache-2.0
// "file:line:col: error: message", then notes in the same shape. A terminal also gets the source line with a caret
// under the place. Nothing of a document or a file name reaches the terminal as a control character.
#include "diagnostics.h"
#include "excerpt.h"
#include "source.h"
#include "terminal.h"
#include "text.h"

#include <algorithm>
#include <cstdio>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace zryaml::cli {

namespace {

struct Place {
    uint32_t uiLine, uiColumn;
};

// Escape sequences of a terminal; all empty where there is no colour.
struct Palette {
    const char *pcPlace = "", *pcError = "", *pcNote = "", *pcCaret = "", *pcEnd = "";
};
constexpr Palette g_stColours = {"\033[1m", "\033[1;31m", "\033[1;36m", "\033[1;32m", "\033[0m"};

std::string NameOf(const Diagnostic &stDiagnostic)
{
    if (stDiagnostic.stFile.empty())
        return "zryaml";
    return stDiagnostic.stFile == g_pcInputArgument ? g_pcInputName : stDiagnostic.stFile;
}

class TextReport { // the lines of one diagnostic
public:
    explicit TextReport(const Diagnostic &stDiagnostic)
        : m_stDiagnostic(stDiagnostic), m_stPalette(ErrorHasColour() ? g_stColours : Palette())
    {}

    void Message(const Place &stPlace, bool bError, const std::string &stMessage)
    {
        m_stLines += m_stPalette.pcPlace + VisibleText(NameOf(m_stDiagnostic)) + ':';
        if (stPlace.uiLine != 0)
            m_stLines += std::to_string(stPlace.uiLine) + ':' + std::to_string(stPlace.uiColumn) + ':';
        m_stLines += std::string(m_stPalette.pcEnd) + ' ' + (bError ? m_stPalette.pcError : m_stPalette.pcNote) +
                     (bError ? "error:" : "note:") + m_stPalette.pcEnd + ' ' + VisibleText(stMessage) + '\n';
    }

    void SourceShow(const Place &stPlace)
    {
        if (stPlace.uiLine == 0 || !ErrorIsTerminal())
            return;
        const std::optional<std::string> stLine = SourceLine(m_stDiagnostic.stFile, stPlace.uiLine);
        if (!stLine)
            return;
        const std::string stNumber = ' ' + std::to_string(stPlace.uiLine);
        const size_t ulMargin = stNumber.size() + 4; // " | ", and a cell that the cursor may stand in
        const size_t ulWidth = ErrorWidth();
        const Excerpt stExcerpt = ExcerptMake(*stLine, stPlace.uiColumn, ulWidth - std::min(ulWidth, ulMargin));
        m_stLines += stNumber + " | " + stExcerpt.stText + '\n' + std::string(stNumber.size(), ' ') + " | " +
                     std::string(stExcerpt.ulCaret, ' ') + m_stPalette.pcCaret + '^' + m_stPalette.pcEnd + '\n';
    }

    [[nodiscard]] const std::string &Lines() const noexcept { return m_stLines; }

private:
    const Diagnostic &m_stDiagnostic;
    Palette m_stPalette;
    std::string m_stLines;
};

// The library's messages have more than one line where the parser tells of a context.
std::string LinesJoin(std::string stMessage)
{
    for (size_t ulAt = 0; (ulAt = stMessage.find('\n', ulAt)) != std::string::npos; ++ulAt)
        stMessage.replace(ulAt, 1, ", ");
    return stMessage;
}

std::string TextMake(const Diagnostic &stDiagnostic)
{
    const Place stPlace = {stDiagnostic.uiLine, stDiagnostic.uiColumn};
    const Place stFirst = {stDiagnostic.uiFirstLine, stDiagnostic.uiFirstColumn};
    TextReport stReport(stDiagnostic);
    const std::string stAbout = stDiagnostic.stPath.empty() ? "" : stDiagnostic.stPath + ": ";
    stReport.Message(stPlace, true, stAbout + LinesJoin(stDiagnostic.stMessage));
    stReport.SourceShow(stPlace);
    if (!stDiagnostic.stHint.empty())
        stReport.Message(stPlace, false, stDiagnostic.stHint);
    if (stFirst.uiLine != 0) {
        stReport.Message(stFirst, false, "the first one is here");
        stReport.SourceShow(stFirst);
    }
    return stReport.Lines();
}

std::string JsonMake(const Diagnostic &stDiagnostic)
{
    rapidjson::StringBuffer stBuffer;
    rapidjson::Writer<rapidjson::StringBuffer> stWriter(stBuffer);
    const auto TextPut = [&](const char *pcKey, const std::string &stText) {
        stWriter.Key(pcKey);
        stWriter.String(ValidText(stText).c_str());
    };
    const auto NumberPut = [&](const char *pcKey, uint32_t uiNumber) {
        stWriter.Key(pcKey);
        stWriter.Uint(uiNumber);
    };
    stWriter.StartObject();
    NumberPut("code", stDiagnostic.uiCode);
    TextPut("message", stDiagnostic.stMessage);
    TextPut("hint", stDiagnostic.stHint);
    TextPut("file", NameOf(stDiagnostic));
    NumberPut("line", stDiagnostic.uiLine);
    NumberPut("column", stDiagnostic.uiColumn);
    NumberPut("first_line", stDiagnostic.uiFirstLine);
    NumberPut("first_column", stDiagnostic.uiFirstColumn);
    TextPut("path", stDiagnostic.stPath);
    stWriter.EndObject();
    return std::string(stBuffer.GetString(), stBuffer.GetSize()) + '\n';
}

} // namespace

void Reporter::Report(const Diagnostic &stDiagnostic) const
{
    const std::string stText = m_eFormat == DiagnosticsFormat::Json ? JsonMake(stDiagnostic) : TextMake(stDiagnostic);
    (void)fwrite(stText.data(), 1, stText.size(), stderr); // there is no other place to tell of a failure
}

} // namespace zryaml::cli
