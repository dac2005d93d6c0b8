// SPDX-License-Identifier: Apache-2.0
// UTF-8 texts character by character, and texts made fit to be shown on one line of a terminal.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zryaml::cli {

struct Character {
    std::optional<char32_t> stCode; // none: a byte that is no UTF-8
    std::string_view svBytes;
};

// The first character of a text that is not empty.
[[nodiscard]] Character CharacterFirst(std::string_view svText);

// Whether a character would do more than show itself: control characters, line separators, direction overrides, bytes
// that are no UTF-8.
[[nodiscard]] bool IsHidden(const Character &stCharacter);

// The escape that stands for a hidden character, such as \n, \x1b or \u202e.
[[nodiscard]] std::string EscapeOf(const Character &stCharacter);

// A text with its hidden characters escaped.
[[nodiscard]] std::string VisibleText(std::string_view svText);

// A text with U+FFFD in the place of each byte that is no UTF-8.
[[nodiscard]] std::string ValidText(std::string_view svText);

// Cells that a character takes on a terminal.
[[nodiscard]] size_t WidthOf(const Character &stCharacter);

} // namespace zryaml::cli
