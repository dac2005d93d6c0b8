// SPDX-License-Identifier: Apache-2.0
// One pass over the source, up to the end of the problem's line.
#include "problem_scene.h"

#include <algorithm>

namespace {

constexpr std::string_view Blanks = " \t";

constexpr bool IsCharacterStart(char byte) noexcept
{
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

// Where a column begins, the line's length if it is not so long.
size_t OffsetOf(std::string_view line, uint32_t column) noexcept
{
    for (size_t at = 0; at < line.size(); ++at) {
        if (IsCharacterStart(line[at]) && --column == 0)
            return at;
    }
    return line.size();
}

// Whether version control has left a line: seven of one character, alone or before a blank.
bool IsConflict(std::string_view line) noexcept
{
    constexpr size_t Length = 7;
    if (line.size() < Length || (line.size() > Length && line[Length] != ' '))
        return false;
    const char mark = line.front();
    return (mark == '<' || mark == '=' || mark == '>' || mark == '|') &&
           std::all_of(line.begin(), line.begin() + Length, [mark](char byte) { return byte == mark; });
}

} // namespace

namespace zryaml::parse {

void LineText::Begin(uint32_t line) noexcept
{
    number = line;
    whole = true;
    length = 0;
}

void LineText::Add(char32_t character) noexcept
{
    constexpr unsigned char leads[] = {0, 0, 0xC0, 0xE0, 0xF0}; // by the number of bytes
    const size_t size = character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
    whole = whole && length + size <= sizeof(bytes);
    if (!whole)
        return;
    for (size_t at = size - 1; at > 0; --at, character >>= 6)
        bytes[length + at] = static_cast<char>(0x80 | (character & 0x3F));
    bytes[length] = static_cast<char>(leads[size] | character);
    length += size;
}

std::string_view LineText::Before(uint32_t column) const noexcept
{
    return {bytes, OffsetOf(View(), column)};
}

std::string_view LineText::From(uint32_t column) const noexcept
{
    const size_t at = OffsetOf(View(), column);
    return {bytes + at, length - at};
}

uint32_t LineText::ColumnOf(size_t at) const noexcept
{
    return static_cast<uint32_t>(std::count_if(bytes, bytes + std::min(at + 1, length), IsCharacterStart));
}

uint32_t LineText::Indent() const noexcept
{
    const size_t first = View().find_first_not_of(Blanks);
    return first == std::string_view::npos ? 0 : ColumnOf(first);
}

uint32_t LineText::ContentColumn() const noexcept
{
    size_t at = View().find_first_not_of(Blanks);
    while (at < length && bytes[at] == '-' && at + 1 < length && bytes[at + 1] == ' ')
        at = View().find_first_not_of(Blanks, at + 1);
    return at < length ? ColumnOf(at) : 0;
}

Scene::Scene(const Source &source, const Place &problemPlace, const Place &openedPlace) noexcept
    : problem(problemPlace), opened(openedPlace)
{
    SourceReader reader(source);
    PlaceCounter counter;
    LineText current;
    current.Begin(1);
    for (char32_t next = reader.Next(); next != SourceReader::End; next = reader.Next()) {
        const Place at = counter.At();
        counter.Take(next);
        if (!IsLineBreak(next)) {
            current.Add(next);
            if (at.line < problem.line && next == '\'')
                singleQuote = at;
            if (at.line < problem.line && next == '"')
                doubleQuote = at;
        } else if (counter.At().line > current.number) {
            LineTake(current);
            current.Begin(counter.At().line);
            if (current.number > problem.line)
                return;
        }
    }
    LineTake(current);
}

void Scene::LineTake(const LineText &ended) noexcept
{
    if (ended.number == problem.line)
        line = ended;
    else if (ended.Indent() != 0)
        above = ended;
    if (ended.number == opened.line)
        openedLine = ended;
    directives = directives || (ended.number < problem.line && StartsWith(ended.View(), "%"));
    const bool near = ended.number + 1 >= problem.line || (opened.line != 0 && ended.number >= opened.line);
    if (near && conflict.line == 0 && IsConflict(ended.View()))
        conflict = {ended.number, 1};
}

char Scene::At() const noexcept
{
    const std::string_view rest = line.From(problem.column);
    return rest.empty() ? '\0' : rest.front();
}

char Scene::OpenedBracket() const noexcept
{
    const std::string_view rest = openedLine.From(opened.column);
    return StartsWith(rest, "[") || StartsWith(rest, "{") ? rest.front() : '\0';
}

} // namespace zryaml::parse
