// SPDX-License-Identifier: Apache-2.0
// A table of what libyaml says, with a function each that knows the usual mistake behind it.
#include "load_explain.h"
#include "parse_internal.h"
#include "source_reader.h"

#include <algorithm>
#include <cstring>
#include <sys/stat.h>

namespace {

struct Place { // 1-based
    uint32_t uiLine, uiColumn;
};

Place PlaceOf(const yaml_mark_t &stMark) noexcept
{
    return {static_cast<uint32_t>(stMark.line + 1), static_cast<uint32_t>(stMark.column + 1)};
}

void PlaceAdd(const Place &stPlace) noexcept
{
    ErrorPlaceAdd(stPlace.uiLine, stPlace.uiColumn);
}

// Counts lines and columns as libyaml does, for UTF-8.
class PlaceCounter {
public:
    void Take(int iByte) noexcept
    {
        const bool bNewline = iByte == '\n';
        const bool bNel = m_iLast == 0xC2 && iByte == 0x85;
        const bool bSeparator = m_iBeforeLast == 0xE2 && m_iLast == 0x80 && (iByte == 0xA8 || iByte == 0xA9);
        if (iByte == '\r' || (bNewline && m_iLast != '\r') || bNel || bSeparator) {
            m_stPlace = {m_stPlace.uiLine + 1, 1};
        } else if (!bNewline && (static_cast<unsigned>(iByte) & 0xC0U) != 0x80U) {
            m_stLastChar = m_stPlace;
            ++m_stPlace.uiColumn;
        }
        m_iBeforeLast = m_iLast;
        m_iLast = iByte;
    }
    [[nodiscard]] Place At() const noexcept { return m_stPlace; }
    // The place of the last character that has begun.
    [[nodiscard]] Place LastChar() const noexcept { return m_stLastChar; }

private:
    Place m_stPlace = {1, 1};
    Place m_stLastChar = {1, 1};
    int m_iLast = 0;
    int m_iBeforeLast = 0;
};

struct LineText { // the beginning of one line
    char acText[512];
    [[nodiscard]] std::string_view View() const noexcept { return acText; }
};

LineText LineRead(const Source &stSource, uint32_t uiLine) noexcept
{
    LineText stLine = {};
    size_t ulLength = 0;
    SourceReader stReader(stSource);
    PlaceCounter stCounter;
    for (int iByte = stReader.Next(); iByte != EOF && stCounter.At().uiLine <= uiLine; iByte = stReader.Next()) {
        const bool bWanted = stCounter.At().uiLine == uiLine && iByte != '\r' && iByte != '\n';
        if (bWanted && ulLength + 1 < sizeof(stLine.acText))
            stLine.acText[ulLength++] = static_cast<char>(iByte);
        stCounter.Take(iByte);
    }
    return stLine;
}

constexpr bool IsCharStart(char cByte) noexcept
{
    return (static_cast<unsigned char>(cByte) & 0xC0U) != 0x80U;
}

// The first characters of a text; substr could throw, and the library has nothing to throw with.
std::string_view First(std::string_view svText, size_t ulBytes) noexcept
{
    return {svText.data(), std::min(ulBytes, svText.size())};
}

// The rest of a line from a column on, which counts characters from 1.
std::string_view TextFrom(std::string_view svLine, uint32_t uiColumn) noexcept
{
    size_t ulAt = 0;
    for (; ulAt < svLine.size(); ++ulAt) {
        if (IsCharStart(svLine[ulAt]) && --uiColumn == 0)
            break;
    }
    svLine.remove_prefix(ulAt);
    return svLine;
}

uint32_t ColumnOf(std::string_view svLine, size_t ulAt) noexcept
{
    return static_cast<uint32_t>(std::ranges::count_if(First(svLine, ulAt + 1), IsCharStart));
}

// The column of a ':' outside quotes with no space behind it, where one was probably meant; 0 if there is none.
uint32_t TightColon(std::string_view svLine) noexcept
{
    const size_t ulColon = First(svLine, svLine.find_first_of("#'\"")).find(':');
    if (ulColon == std::string_view::npos || ulColon == 0 || ulColon + 1 == svLine.size())
        return 0;
    const char cNext = svLine[ulColon + 1];
    return cNext == ' ' || cNext == '\t' || cNext == '/' ? 0 : ColumnOf(svLine, ulColon);
}

bool TightColonExplain(const Source &stSource, uint32_t uiLine) noexcept
{
    const uint32_t uiColon = uiLine == 0 ? 0 : TightColon(LineRead(stSource, uiLine).View());
    if (uiColon == 0)
        return false;
    ErrorPlaceAdd(uiLine, uiColon);
    ErrorHintAdd("a space is missing after this ':'");
    return true;
}

void BadCharExplain(const yaml_parser_t &stParser, const Source &stSource) noexcept
{
    const Place stPlace = PlaceOf(stParser.problem_mark);
    const LineText stLine = LineRead(stSource, stPlace.uiLine);
    const std::string_view svRest = TextFrom(stLine.View(), stPlace.uiColumn);
    PlaceAdd(stPlace);
    if (svRest.starts_with('\t'))
        ErrorHintAdd("a tab cannot stand here: indent with spaces");
    else if (!svRest.empty())
        ErrorHintAdd("a text that begins with '%c' must be quoted", svRest.front());
}

void TabExplain(const yaml_parser_t &stParser, const Source &) noexcept
{
    PlaceAdd(PlaceOf(stParser.problem_mark));
    ErrorHintAdd("a tab cannot stand here: indent with spaces");
}

void QuoteExplain(const yaml_parser_t &stParser, const Source &) noexcept
{
    PlaceAdd(PlaceOf(stParser.context_mark));
    ErrorHintAdd("the quote that is opened here is not closed");
}

void SimpleKeyExplain(const yaml_parser_t &stParser, const Source &stSource) noexcept
{
    const Place stPlace = PlaceOf(stParser.context_mark);
    if (TightColonExplain(stSource, stPlace.uiLine))
        return;
    PlaceAdd(stPlace);
    ErrorHintAdd("this is neither 'key: value' nor '- item'");
}

void SecondValueExplain(const yaml_parser_t &stParser, const Source &stSource) noexcept
{
    const Place stPlace = PlaceOf(stParser.problem_mark);
    const LineText stLine = LineRead(stSource, stPlace.uiLine);
    const std::string_view svRest = TextFrom(stLine.View(), stPlace.uiColumn);
    const std::string_view svBefore = First(stLine.View(), stLine.View().size() - svRest.size());
    const bool bSeen = stLine.View().size() + 1 < sizeof(stLine.acText);
    const bool bSecond = !bSeen || svBefore.find(": ") != svBefore.npos || svBefore.find(":\t") != svBefore.npos;
    if (!bSecond && TightColonExplain(stSource, stPlace.uiLine - 1))
        return;
    PlaceAdd(stPlace);
    if (bSecond)
        ErrorHintAdd("a second ': ' in one value: quote the value, or put the inner key on its own line");
    else
        ErrorHintAdd("no key can stand below a text: look at the indentation, and whether a ':' is missing before");
}

void NodeExplain(const yaml_parser_t &stParser, const Source &) noexcept
{
    PlaceAdd(PlaceOf(stParser.problem_mark));
    ErrorHintAdd("no value can begin here: is there a ',' or bracket too many, or a bracket that is not closed?");
}

void FlowExplain(const yaml_parser_t &stParser, const Source &) noexcept
{
    const Place stOpened = PlaceOf(stParser.context_mark);
    const Place stProblem = PlaceOf(stParser.problem_mark);
    PlaceAdd(stOpened.uiLine == stProblem.uiLine ? stProblem : stOpened);
    ErrorHintAdd("the bracket opened at line %u, column %u is not closed, or a ',' is missing", stOpened.uiLine,
                 stOpened.uiColumn);
}

void BlockExplain(const yaml_parser_t &stParser, const Source &) noexcept
{
    const Place stOpened = PlaceOf(stParser.context_mark);
    PlaceAdd(PlaceOf(stParser.problem_mark));
    ErrorHintAdd("this does not line up with what begins at line %u, column %u: look at the indentation, and in front "
                 "of it for a quote or bracket",
                 stOpened.uiLine, stOpened.uiColumn);
}

struct Explanation { // an entry explains a problem whose texts contain both of its own
    const char *pcContext;
    const char *pcProblem;
    void (*pfnExplain)(const yaml_parser_t &, const Source &);
};
constexpr Explanation g_astExplanation[] = {
    {"", "cannot start any token", BadCharExplain},
    {"", "tab character", TabExplain},
    {"while scanning a quoted scalar", "found unexpected", QuoteExplain},
    {"while scanning a simple key", "could not find expected ':'", SimpleKeyExplain},
    {"", "mapping values are not allowed", SecondValueExplain},
    {" node", "did not find expected", NodeExplain},
    {"while parsing a flow", "did not find expected", FlowExplain},
    {"while parsing a block", "did not find expected", BlockExplain},
};

void SyntaxExplain(const yaml_parser_t &stParser, const Source &stSource) noexcept
{
    const char *pcContext = stParser.context != nullptr ? stParser.context : "";
    for (const Explanation &stEntry : g_astExplanation) {
        if (strstr(pcContext, stEntry.pcContext) != nullptr && strstr(stParser.problem, stEntry.pcProblem) != nullptr)
            return stEntry.pfnExplain(stParser, stSource);
    }
    PlaceAdd(PlaceOf(stParser.problem_mark));
}

// The reader is ahead of the scanner, so its place is counted from the bytes.
void ReaderExplain(const yaml_parser_t &stParser, const Source &stSource) noexcept
{
    struct stat stStatus = {};
    if (stSource.pstFile != nullptr && fstat(fileno(stSource.pstFile), &stStatus) == 0 && S_ISDIR(stStatus.st_mode))
        return ErrorHintAdd("this is a folder, not a file");
    if (strcmp(stParser.problem, "input error") == 0)
        return ErrorHintAdd("the file cannot be read to its end");
    SourceReader stReader(stSource);
    PlaceCounter stCounter;
    int iByte = 0;
    for (; stReader.At() < stParser.problem_offset && iByte != EOF; stCounter.Take(iByte))
        iByte = stReader.Next();
    const bool bInsideChar =
        strstr(stParser.problem, "trailing") != nullptr || strncmp(stParser.problem, "expected low", 12) == 0;
    if (iByte != EOF) // it could be read again
        PlaceAdd(bInsideChar ? stCounter.LastChar() : stCounter.At());
    if (strstr(stParser.problem, "control characters") != nullptr)
        ErrorHintAdd("a control character cannot stand here");
    else
        ErrorHintAdd("these bytes are no character: save the file as UTF-8");
}

} // namespace

void zryaml::parse::ParseErrorExplain(const yaml_parser_t &stParser, const Source &stSource) noexcept
{
    if (stParser.error == YAML_READER_ERROR)
        ReaderExplain(stParser, stSource);
    else if (stParser.error == YAML_SCANNER_ERROR || stParser.error == YAML_PARSER_ERROR)
        SyntaxExplain(stParser, stSource);
}
