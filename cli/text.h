// SPDX-License-Identifier: Apache-2.0
// UTF-8 texts character by character, and texts made fit to be shown on one line of a terminal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zryaml::cli {

struct Character {
    std::int32_t code; // negative: a byte that is no UTF-8
    std::string_view bytes;
};

// The first character of a text that is not empty.
[[nodiscard]] Character character_first(std::string_view text) noexcept;

// Whether a character would do more than show itself, or nothing at all: control characters, line separators,
// characters that turn the direction of text, others without any width, bytes that are no UTF-8.
[[nodiscard]] bool is_hidden(const Character &character) noexcept;

// The escape that stands for a hidden character, such as \n, \x1b or \u202e.
[[nodiscard]] std::string escape_of(const Character &character);

// A text with its hidden characters escaped.
[[nodiscard]] std::string visible_text(std::string_view text);

// A text with U+FFFD in the place of each byte that is no UTF-8.
[[nodiscard]] std::string valid_text(std::string_view text);

// Cells that a character takes on a terminal.
[[nodiscard]] size_t width_of(const Character &character) noexcept;

} // namespace zryaml::cli
