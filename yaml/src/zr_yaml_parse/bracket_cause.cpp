// SPDX-License-Identifier: Apache-2.0
// Mistakes within and around brackets.
#include "cause_text.h"
#include "syntax_cause.h"

namespace {

using namespace zryaml::parse;

constexpr char ClosingOf(char bracket) noexcept
{
    return bracket == '[' ? ']' : '}';
}

} // namespace

namespace zryaml::parse {

bool StrayBracketTell(const Scene &scene) noexcept
{
    if (scene.At() != ']' && scene.At() != '}')
        return false;
    PlaceAdd(scene.problem);
    ErrorSentence("this '%c' closes no bracket", scene.At());
    ErrorHintAdd("remove it, or open the bracket");
    return true;
}

bool OpenBracketTell(const Scene &scene) noexcept
{
    const char bracket = scene.OpenedBracket(), at = scene.At();
    if (bracket == '\0')
        return false;
    if (at == ']' || at == '}') {
        PlaceAdd(scene.problem);
        ErrorSentence("this '%c' does not close the '%c' of line %u, column %u", at, bracket, scene.opened.line,
                      scene.opened.column);
        ErrorHintAdd("close it with '%c'", ClosingOf(bracket));
        return true;
    }
    const bool outdented = scene.line.Indent() == 0 || scene.line.Indent() <= scene.openedLine.Indent();
    if (scene.opened.line == scene.problem.line ? at != '\0' : !outdented)
        return false;
    PlaceAdd(scene.opened);
    ErrorSentence("the '%c' that opens here is not closed", bracket);
    if (scene.line.Indent() != 0 && scene.problem.line != scene.opened.line)
        ErrorHintAdd("a '%c' is missing before line %u", ClosingOf(bracket), scene.problem.line);
    else
        ErrorHintAdd("a '%c' is missing", ClosingOf(bracket));
    return true;
}

bool CommaTell(const Scene &scene) noexcept
{
    const char bracket = scene.OpenedBracket();
    PlaceAdd(scene.problem);
    if (scene.At() == ',') {
        ErrorSentence("a value is missing before this ','");
        ErrorHintAdd("remove the ',' or write a value");
    } else if (scene.At() == ':') {
        ErrorSentence("a second ':' stands in one element");
        ErrorHintAdd("is a ',' missing before the key, or at the end of the line before?");
    } else if (bracket != '\0') {
        ErrorSentence(bracket == '{' ? "a ',' or ':' is missing before this" : "a ',' is missing before this");
        ErrorHintAdd("the '%c' of line %u, column %u is still open here", bracket, scene.opened.line,
                     scene.opened.column);
    } else {
        return false; // it cannot be read again
    }
    return true;
}

bool NoValueTell(const Scene &scene) noexcept
{
    if (scene.At() == ',' && scene.OpenedBracket() != '\0')
        return CommaTell(scene);
    if (scene.At() == '\0' || scene.problem.column == 1)
        return false;
    PlaceAdd(scene.problem);
    ErrorSentence("a value cannot begin with '%c'", scene.At());
    QuoteHint(TextOf(scene.line.From(scene.problem.column)));
    return true;
}

} // namespace zryaml::parse
