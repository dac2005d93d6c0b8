// SPDX-License-Identifier: Apache-2.0
// Mistakes with quotes, and texts that need some.
#include "cause_text.h"
#include "syntax_cause.h"

namespace {

using namespace zryaml::parse;

// How often a quote stands in a text; one behind a backslash does not count.
size_t QuoteCount(std::string_view text, char quote) noexcept
{
    size_t count = 0;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\\' && quote == '"')
            ++at;
        else
            count += text[at] == quote ? 1U : 0U;
    }
    return count;
}

} // namespace

namespace zryaml::parse {

using namespace std::literals;

bool SpecialStartTell(const Scene &scene) noexcept
{
    const Place &start = scene.opened.line != 0 ? scene.opened : scene.problem;
    const LineText &line = scene.opened.line != 0 ? scene.openedLine : scene.line;
    std::string_view text = TextOf(line.From(start.column));
    const bool inBrackets = line.Before(start.column).find_first_of("[{") != None;
    text =
        Trimmed({text.data(), std::min({text.find(": "), inBrackets ? text.find_first_of(",]}") : None, text.size()})});
    if (text.empty())
        return false; // it cannot be read again
    const char first = text.front();
    PlaceAdd(start);
    if (first == '*' || first == '&' || first == '!')
        ErrorSentence("'%c' begins %s, but what follows is not a name", first,
                      first == '*'   ? "an alias"
                      : first == '&' ? "an anchor"
                                     : "a tag");
    else
        ErrorSentence("a text cannot begin with '%c'", first);
    QuoteHint(text);
    return true;
}

bool EscapeTell(const Scene &scene) noexcept
{
    const std::string_view before = scene.line.Before(scene.problem.column);
    const size_t slash = scene.At() == '\\' ? before.size() : before.rfind('\\');
    if (slash == None || slash + 1 >= scene.line.length)
        return false;
    const char escape = scene.line.bytes[slash + 1];
    PlaceAdd({scene.problem.line, scene.line.ColumnOf(slash)});
    if (slash == before.size())
        ErrorSentence("'\\%c' means nothing in double quotes", escape);
    else
        ErrorSentence("'\\%c' must be followed by the %d hexadecimal digits of a character", escape,
                      escape == 'x'   ? 2
                      : escape == 'u' ? 4
                                      : 8);
    ErrorHintAdd("write '\\\\' for a backslash, or put the text in single quotes");
    return true;
}

bool OpenQuoteTell(const Scene &scene) noexcept
{
    const std::string_view rest = scene.openedLine.From(scene.opened.column);
    PlaceAdd(scene.opened);
    ErrorSentence("the quote that opens here is not closed");
    if (rest.empty())
        ErrorHintAdd("close it where the text ends");
    else
        ErrorHintAdd("close it where the text ends; a text that begins with %c goes in %s quotes", rest.front(),
                     rest.front() == '"' ? "single" : "double");
    return true;
}

bool AfterValueTell(const Scene &scene) noexcept
{
    const std::string_view before = scene.line.Before(scene.problem.column), value = Trimmed(before);
    const char end = value.empty() ? '\0' : value.back();
    const bool quote = end == '\'' || end == '"', tight = !before.empty() && !IsBlank(before.back());
    const Place &opening = end == '"' ? scene.doubleQuote : scene.singleQuote;
    if (value.empty() || (scene.OpenedBracket() != '\0' && !(quote && tight && scene.At() != ':')))
        return false;
    if (quote && QuoteCount(value, end) % 2 == 1 && opening.line != 0) {
        PlaceAdd(opening);
        ErrorSentence("this quote is closed only in line %u", scene.problem.line);
        ErrorHintAdd("close it where the text ends");
        return true;
    }
    PlaceAdd(scene.problem);
    if (scene.At() == ',') {
        ErrorSentence("a ',' follows a value that is not in brackets");
        ErrorHintAdd("remove the ','");
    } else if (quote) {
        ErrorSentence("text follows the closing quote");
        if (!tight)
            ErrorHintAdd("put all of the text in quotes, or none of it");
        else if (end == '\'')
            ErrorHintAdd("write '' for a single quote within single quotes, or put the text in double quotes");
        else
            ErrorHintAdd("write \\\" for a double quote within double quotes, or put the text in single quotes");
    } else {
        const std::string_view whole = ValueOf(scene.line);
        ErrorSentence("nothing more can follow this value");
        if (!whole.empty() && "[{*&!"sv.find(whole.front()) != None)
            QuoteHint(whole);
        else
            ErrorHintAdd("is a quote, a ',' or a line break missing before it?");
    }
    return true;
}

} // namespace zryaml::parse
