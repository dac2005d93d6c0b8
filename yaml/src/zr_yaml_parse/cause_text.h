// SPDX-License-Identifier: Apache-2.0
// What the causes of mistakes need to look at texts, and to show how one is mended.
#pragma once

#include "../error_record.h"
#include "problem_scene.h"

#include <algorithm>

namespace zryaml::parse {

constexpr size_t None = std::string_view::npos;

inline void PlaceAdd(const Place &place) noexcept
{
    ErrorPlaceAdd(place.line, place.column);
}

[[nodiscard]] constexpr int Size(std::string_view text) noexcept // for "%.*s"
{
    return static_cast<int>(text.size());
}

[[nodiscard]] constexpr bool IsBlank(char byte) noexcept
{
    return byte == ' ' || byte == '\t';
}

[[nodiscard]] inline std::string_view Trimmed(std::string_view text) noexcept
{
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

// What a person probably meant as one text: up to the end of the line, or a comment.
[[nodiscard]] inline std::string_view TextOf(std::string_view rest) noexcept
{
    return Trimmed({rest.data(), std::min(rest.find(" #"), rest.size())});
}

// The value of the line's first key or element, or the whole line.
[[nodiscard]] inline std::string_view ValueOf(const LineText &line) noexcept
{
    std::string_view value = line.From(line.ContentColumn());
    const size_t colon = std::min(value.find(": "), value.find(":\t"));
    if (colon != None)
        value.remove_prefix(colon + 1);
    return TextOf(value);
}

// Hints at how a text is quoted.
inline void QuoteHint(std::string_view text) noexcept
{
    constexpr size_t Most = 60; // a longer one would hide the rest of the hint
    if (text.empty() || text.size() > Most)
        ErrorHintAdd("put the text in quotes");
    else if (text.find('\'') == None)
        ErrorHintAdd("quote the text: '%.*s'", Size(text), text.data());
    else if (text.find_first_of("\"\\") == None)
        ErrorHintAdd("quote the text: \"%.*s\"", Size(text), text.data());
    else
        ErrorHintAdd("put the text in single quotes, and write '' for each single quote in it");
}

} // namespace zryaml::parse
