// SPDX-License-Identifier: Apache-2.0
// Mistakes of whole lines: what a line lacks or has too much, and where it begins.
#include "cause_text.h"
#include "syntax_cause.h"

namespace {

using namespace zryaml;
using namespace zryaml::parse;

// The offset of a ':' outside quotes with no blank behind it where one was probably meant; None if there is none.
size_t TightColon(std::string_view line) noexcept
{
    const size_t colon = std::string_view(line.data(), std::min(line.find_first_of("#'\""), line.size())).find(':');
    const bool tight = colon != None && colon > 0 && colon + 1 < line.size() && !IsBlank(line[colon + 1]);
    return tight && line[colon + 1] != '/' ? colon : None;
}

bool TightColonTell(const LineText &line) noexcept
{
    const size_t colon = TightColon(line.View());
    if (colon == None)
        return false;
    PlaceAdd({line.number, line.ColumnOf(colon)});
    ErrorSentence("a space is missing after this ':'");
    const std::string_view key = Trimmed({line.View().data(), colon});
    const std::string_view value = TextOf({line.View().data() + colon + 1, line.length - colon - 1});
    ErrorHintAdd("write '%.*s: %.*s'", Size(key), key.data(), Size(value), value.data());
    return true;
}

} // namespace

namespace zryaml::parse {

using namespace std::literals;

bool ConflictTell(const Scene &scene) noexcept
{
    if (scene.conflict.line == 0)
        return false;
    PlaceAdd(scene.conflict);
    ErrorSentence("a merge conflict is left in the file");
    ErrorHintAdd("keep one of its two versions, and remove the lines with <<<<<<<, ======= and >>>>>>>");
    return true;
}

bool TemplateTell(const Scene &scene) noexcept
{
    const std::string_view line = scene.line.View();
    const size_t open = std::min(line.find("{{"), line.find("{%"));
    const bool before = open < scene.line.Before(scene.problem.column + 1).size();
    if (!before || line.find_first_of("'\"") < open || line.find(line[open + 1] == '{' ? "}}" : "%}", open) == None)
        return false;
    PlaceAdd({scene.problem.line, scene.line.ColumnOf(open)});
    if (line[open + 1] == '{') {
        ErrorSentence("a value that begins with '{{' needs quotes");
        QuoteHint(TextOf({line.data() + open, line.size() - open}));
    } else {
        ErrorSentence("the '{%%' of a template cannot stand in a YAML file");
        ErrorHintAdd("fill in the template before the file is loaded");
    }
    return true;
}

bool NoKeyTell(const Scene &scene) noexcept
{
    const LineText &line = scene.opened.line != 0 ? scene.openedLine : scene.line;
    const std::string_view text = Trimmed(line.View());
    const Place start = {line.number, line.Indent()};
    if (StartsWith(text, "//") || StartsWith(text, "/*") || StartsWith(text, ";")) {
        PlaceAdd(start);
        ErrorSentence("this is not a comment in YAML");
        ErrorHintAdd("a comment begins with '#'");
    } else if (text.size() > 1 && text[0] == '-' && " -0123456789"sv.find(text[1]) == None) {
        PlaceAdd(start);
        ErrorSentence("a space is missing after this '-'");
        ErrorHintAdd("write '- %.*s'", Size(text) - 1, text.data() + 1);
    } else if (TightColonTell(line)) {
        ;
    } else if (const size_t equal = text.find('='); equal != None && text.find(": ") == None) {
        const std::string_view key = Trimmed({text.data(), equal});
        if (key.empty() || key.find(' ') != None)
            return false;
        const std::string_view value = Trimmed({text.data() + equal + 1, text.size() - equal - 1});
        PlaceAdd(start);
        ErrorSentence("'=' does not separate a key from its value");
        ErrorHintAdd("write '%.*s: %.*s'", Size(key), key.data(), Size(value), value.data());
    } else {
        return false;
    }
    return true;
}

bool LongKeyTell(const Scene &scene) noexcept
{
    if (scene.opened.line != scene.problem.line)
        return false;
    PlaceAdd(scene.opened);
    ErrorSentence("the key has more than 1024 characters");
    ErrorHintAdd("write '? ' before it, and ': ' with its value on the next line");
    return true;
}

bool SecondColonTell(const Scene &scene) noexcept
{
    const std::string_view before = scene.line.Before(scene.problem.column);
    if (scene.line.whole && before.find(": ") == None && before.find(":\t") == None)
        return false;
    PlaceAdd(scene.problem);
    ErrorSentence("a second ':' stands in the value of a key");
    const std::string_view value = ValueOf(scene.line);
    if (scene.line.whole && value.find_first_of("\"'") == None)
        QuoteHint(value);
    else
        ErrorHintAdd("put the value in quotes, or the inner key on a line of its own");
    return true;
}

bool BelowTextTell(const Scene &scene) noexcept
{
    const std::string_view above = Trimmed(scene.above.View());
    if (!StartsWith(above, "-") && TightColonTell(scene.above))
        return true;
    PlaceAdd(scene.problem);
    ErrorSentence("a key cannot stand below the text of the line before");
    if (TightColon(scene.above.View()) != None)
        ErrorHintAdd("put a space after the ':' of the line before if that is a key, else indent this line less");
    else if (above.find(": ") != None)
        ErrorHintAdd("begin it in column %u like the key before it", scene.above.ContentColumn());
    else
        ErrorHintAdd("end the line before with ':' if that is a key, else indent this line less");
    return true;
}

bool TabTell(const Scene &scene) noexcept
{
    if (scene.At() != '\t')
        return false;
    const bool indents = Trimmed(scene.line.Before(scene.problem.column)).empty();
    PlaceAdd(scene.problem);
    ErrorSentence(indents ? "a tab cannot indent a line" : "a tab cannot stand here");
    ErrorHintAdd(indents ? "indent with spaces" : "use spaces");
    return true;
}

bool IndentTell(const Scene &scene) noexcept
{
    if (!scene.IsFirstOnLine() || scene.above.length == 0)
        return false;
    const std::string_view text = scene.line.From(scene.problem.column);
    const bool element = text == "-" || StartsWith(text, "- ");
    const uint32_t above = scene.above.ContentColumn(), outer = scene.opened.column;
    if (scene.problem.column != outer || element || StartsWith(scene.openedLine.From(outer), "-"))
        PlaceAdd(scene.problem);
    if (scene.problem.column == outer && element) {
        ErrorSentence("an element of a sequence stands among the keys of a map");
        ErrorHintAdd("give the sequence a key of its own, and put the '-' below it");
    } else if (scene.problem.column == outer && !StartsWith(scene.openedLine.From(outer), "-")) {
        return false; // but a key, whatever it is
    } else if (scene.problem.column == outer) {
        ErrorSentence("a key stands among the elements of a sequence");
        ErrorHintAdd("begin it with '- ', or in column %u if it goes on with the line before", above);
    } else {
        ErrorSentence("this line begins in a column that fits none of the lines before");
        if (above != outer)
            ErrorHintAdd("begin it in column %u to go on with the line before, or in column %u with line %u", above,
                         outer, scene.opened.line);
        else
            ErrorHintAdd("begin it in column %u", outer);
    }
    return true;
}

bool MarkerTell(const Scene &scene) noexcept
{
    if (!scene.directives || scene.above.View().find_first_of("%#") != 0)
        return false;
    PlaceAdd(scene.problem);
    ErrorSentence("a line '---' is missing behind the directives");
    ErrorHintAdd("write '---' on a line of its own before this one");
    return true;
}

} // namespace zryaml::parse
