// SPDX-License-Identifier: Apache-2.0
// The table of what libyaml's scanner and parser can say, and what its reader says. A row knows the usual mistakes
// behind a problem, and has a sentence for when it is none of them.
#include "load_explain.h"

#include "../report.h"
#include "syntax_cause.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <iterator>
#include <unistd.h>

namespace {

using namespace zryaml;
using namespace zryaml::parse;

struct Row { // holds for problems whose texts contain both of its own
    const char *context;
    const char *problem;
    CauseTell causes[4];
    enum { AtProblem, AtOpened } place = AtProblem;
    const char *sentence = nullptr; // NULL: a later row may know
    const char *hint = "";
};

constexpr const char *TwoVersions = "a file holds one document, which is one map or one sequence";
constexpr const char *TagForm = "write it like %TAG !e! tag:example.com,2000:";
constexpr const char *YamlForm = "write %YAML 1.1, or remove the line";

constexpr Row Rows[] = {
    {"", "", {ConflictTell, TemplateTell}},
    // Scalars
    {"quoted scalar", "end of stream", {OpenQuoteTell}},
    {"quoted scalar", "document indicator", {OpenQuoteTell}},
    {"quoted scalar",
     "",
     {TabTell, EscapeTell},
     Row::AtProblem,
     "this is no character that can be written with '\\'",
     ""},
    {"plain scalar", "unexpected ':'", {}, Row::AtProblem, "a space is missing after this ':'", "write ': '"},
    {"block scalar",
     "comment or line break",
     {},
     Row::AtOpened,
     "a block of text begins on the line below its '|' or '>'",
     "put the text below, indented; quote a text that begins with '|' or '>'"},
    {"block scalar",
     "equal to 0",
     {},
     Row::AtProblem,
     "a block of text cannot be indented by 0",
     "write 1 to 9, or leave the number out"},
    {"", "tab character", {TabTell}, Row::AtProblem, "a tab cannot stand here", "use spaces"},
    {"",
     "cannot start any token",
     {TabTell, SpecialStartTell},
     Row::AtProblem,
     "a text cannot begin like this",
     "put the text in quotes"},
    // Aliases, anchors, tags
    {"scanning an alias",
     "",
     {SpecialStartTell},
     Row::AtOpened,
     "an alias needs a name",
     "quote the text if it is none"},
    {"scanning an anchor",
     "",
     {SpecialStartTell},
     Row::AtOpened,
     "an anchor needs a name",
     "quote the text if it is none"},
    {"",
     "undefined tag handle",
     {},
     Row::AtProblem,
     "the handle of this tag is not declared",
     "declare it with %TAG, or quote the text if it is no tag"},
    // Keys
    {"simple key",
     "expected ':'",
     {LongKeyTell, NoKeyTell},
     Row::AtOpened,
     "this is neither 'key: value' nor '- element'",
     "a key needs ': ' behind it, and a line that continues a text must be indented"},
    {"", "mapping values are not allowed", {SecondColonTell, BelowTextTell}},
    {"",
     "mapping keys are not allowed",
     {},
     Row::AtProblem,
     "'?' begins a key, and none can stand here",
     "quote a text that begins with '? '"},
    {"",
     "block sequence entries are not allowed",
     {OpenBracketTell},
     Row::AtProblem,
     "an element of a sequence cannot stand here",
     "begin the sequence on a line of its own, or quote a text that begins with '- '"},
    // Collections
    {"parsing a flow",
     "expected ','",
     {AfterValueTell, OpenBracketTell, CommaTell},
     Row::AtProblem,
     "a ',' or a closing bracket is missing before this",
     ""},
    {"flow node", "node content", {OpenBracketTell, NoValueTell}, Row::AtProblem, "a value is missing here", ""},
    {"node", "node content", {StrayBracketTell, NoValueTell}, Row::AtProblem, "a value is missing here", ""},
    {"parsing a block",
     "did not find expected",
     {StrayBracketTell, IndentTell, AfterValueTell},
     Row::AtProblem,
     "this does not go on with what stands before it",
     "look at the indentation, and for a quote or bracket left open"},
    // Directives and documents
    {"",
     "<document start>",
     {MarkerTell, StrayBracketTell, NoKeyTell, AfterValueTell},
     Row::AtProblem,
     "the document ends before this",
     TwoVersions},
    {"", "incompatible YAML", {}, Row::AtProblem, "the file says that it is neither YAML 1.1 nor 1.2", YamlForm},
    {"", "duplicate %YAML", {}, Row::AtProblem, "there is a second %YAML directive", "remove one of them"},
    {"",
     "duplicate %TAG",
     {},
     Row::AtProblem,
     "the handle of this %TAG directive is declared twice",
     "remove one of them"},
    {"%YAML directive", "", {}, Row::AtOpened, "this %YAML directive has no version such as 1.1", YamlForm},
    {"%TAG directive", "", {}, Row::AtOpened, "a %TAG directive has a handle and a prefix", TagForm},
    {"tag directive", "", {}, Row::AtOpened, "a %TAG directive has a handle and a prefix", TagForm},
    {"scanning a directive", "line break", {}, Row::AtProblem, "the directive must end with its line", ""},
    {"scanning a directive",
     "",
     {},
     Row::AtOpened,
     "there is no such directive",
     "only %YAML and %TAG can begin a line with '%'; quote a text that begins with it"},
    {" a tag", "", {SpecialStartTell}, Row::AtOpened, "this is no valid tag", "quote the text if it is none"},
};

Place PlaceOf(const yaml_mark_t &mark) noexcept
{
    return {static_cast<uint32_t>(mark.line + 1), static_cast<uint32_t>(mark.column + 1)};
}

// What the problem is in: what libyaml names, else the collection that it was parsing.
Place OpenedOf(const yaml_parser_t &parser) noexcept
{
    const bool named = parser.context != nullptr && strstr(parser.context, "flow node") == nullptr;
    if (named || (parser.context == nullptr && parser.flow_level == 0))
        return named ? PlaceOf(parser.context_mark) : Place{};
    return parser.marks.top != parser.marks.start ? PlaceOf(parser.marks.top[-1]) : Place{};
}

bool RowTell(const Row &row, const Scene &scene) noexcept
{
    for (const CauseTell tell : row.causes) {
        if (tell != nullptr && tell(scene))
            return true;
    }
    if (row.sentence == nullptr)
        return false;
    const Place &place = row.place == Row::AtOpened ? scene.opened : scene.problem;
    ErrorPlaceAdd(place.line, place.column);
    ErrorSentence("%s", row.sentence);
    ErrorHintAdd("%s", row.hint);
    return true;
}

void SyntaxExplain(const yaml_parser_t &parser, const Source &source) noexcept
{
    const Scene scene(source, PlaceOf(parser.problem_mark), OpenedOf(parser));
    const char *context = parser.context != nullptr ? parser.context : "";
    for (const Row &row : Rows) {
        if (strstr(context, row.context) != nullptr && strstr(parser.problem, row.problem) != nullptr &&
            RowTell(row, scene))
            return;
    }
    ErrorPlaceAdd(scene.problem.line, scene.problem.column);
    ErrorSentence("%s", parser.problem);
}

// The reader is ahead of the scanner, so its place is counted from the bytes.
void ReaderExplain(const yaml_parser_t &parser, const Source &source) noexcept
{
    const bool control = strstr(parser.problem, "control characters") != nullptr;
    if (source.IsFolder()) {
        ErrorSentence("this is a folder, not a file");
        ErrorHintAdd("name a file in it");
        return;
    }
    if (strcmp(parser.problem, "input error") == 0) {
        ErrorSentence("the file cannot be read to its end");
        return;
    }
    OffsetExplain(source, parser.problem_offset);
    if (control) {
        ErrorSentence("the control character U+%04X cannot stand in a file",
                      static_cast<unsigned>(parser.problem_value));
        ErrorHintAdd(parser.problem_value == 0 ? "save the file as UTF-8"
                                               : "remove it, or write it as '\\x..' in double quotes");
    } else {
        ErrorSentence("these bytes are not a character of UTF-8 or UTF-16");
        ErrorHintAdd("save the file as UTF-8");
    }
}

} // namespace

void zryaml::parse::OpenErrorExplain(const char *path, int openError) noexcept
{
    char folder[PATH_MAX];
    switch (openError) {
    case ENOENT:
        ErrorSentence("no such file");
        if (path[0] == '\0')
            ErrorHintAdd("the path is empty");
        else if (path[0] != '/' && getcwd(folder, sizeof(folder)) != nullptr)
            ErrorHintAdd("the path is taken from the folder '%s'", folder);
        break;
    case ENOTDIR:
        ErrorSentence("no such file");
        ErrorHintAdd("what the path goes through is a file, not a folder");
        break;
    case EACCES:
        ErrorSentence("the file may not be read");
        ErrorHintAdd("the user who runs the program needs the right to read it and to enter its folders");
        break;
    default:
        ErrorSentence("the file cannot be opened: %s", strerrordesc_np(openError));
    }
}

void zryaml::parse::ParseErrorExplain(const yaml_parser_t &parser, const Source &source) noexcept
{
    if (parser.error == YAML_READER_ERROR)
        ReaderExplain(parser, source);
    else if (parser.error == YAML_SCANNER_ERROR || parser.error == YAML_PARSER_ERROR)
        SyntaxExplain(parser, source);
}

void zryaml::parse::OffsetExplain(const Source &source, uint64_t offset) noexcept
{
    SourceReader reader(source, offset);
    PlaceCounter counter;
    for (char32_t next = reader.Next(); next != SourceReader::End; next = reader.Next())
        counter.Take(next);
    if (reader.At() == offset) // it could be read again
        ErrorPlaceAdd(counter.At().line, counter.At().column);
}

void zryaml::parse::RefusalExplain(const Source &source, const Place &place, bool isDocument) noexcept
{
    const Scene scene(source, place, {});
    if (!ConflictTell(scene) && !TemplateTell(scene) && isDocument)
        (void)NoKeyTell(scene);
}
