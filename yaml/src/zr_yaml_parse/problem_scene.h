// SPDX-License-Identifier: Apache-2.0
// What stands around the place of a mistake: the lines that tell what a person meant there.
#pragma once

#include "source_reader.h"

#include <string_view>

namespace zryaml::parse {

// What starts_with tells, without a way to throw.
[[nodiscard]] constexpr bool StartsWith(std::string_view text, std::string_view start) noexcept
{
    return text.size() >= start.size() && std::string_view(text.data(), start.size()) == start;
}

struct LineText { // the beginning of a line, as UTF-8
    uint32_t number = 0;
    bool whole = true;
    size_t length = 0;
    char bytes[512] = {};

    void Begin(uint32_t line) noexcept;
    void Add(char32_t character) noexcept;
    [[nodiscard]] std::string_view View() const noexcept { return {bytes, length}; }
    // What stands before a column and from it on.
    [[nodiscard]] std::string_view Before(uint32_t column) const noexcept;
    [[nodiscard]] std::string_view From(uint32_t column) const noexcept;
    [[nodiscard]] uint32_t ColumnOf(size_t at) const noexcept;
    // The column of the first character that is no blank, also behind the '-' of elements; 0 if there is none.
    [[nodiscard]] uint32_t Indent() const noexcept;
    [[nodiscard]] uint32_t ContentColumn() const noexcept;
};

struct Scene {
    Place problem, opened; // opened: what the problem is in began there; line 0 if nothing did
    LineText line;         // of the problem
    LineText above;        // the last line above that is not blank
    LineText openedLine;   // of what was opened
    Place conflict;        // a line that a merge left, near the problem
    Place singleQuote;     // the last ones above the problem's line
    Place doubleQuote;
    bool directives = false; // a line above begins with '%'

    // All lines are empty if the source cannot be read twice.
    Scene(const Source &source, const Place &problem, const Place &opened) noexcept;

    // Whether nothing stands before the problem on its line.
    [[nodiscard]] bool IsFirstOnLine() const noexcept { return line.Indent() == problem.column; }
    // What stands at the problem, '\0' at the end of a line.
    [[nodiscard]] char At() const noexcept;
    // The bracket that was opened, '\0' if it was something else.
    [[nodiscard]] char OpenedBracket() const noexcept;

private:
    void LineTake(const LineText &ended) noexcept;
};

} // namespace zryaml::parse
