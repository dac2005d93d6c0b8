// SPDX-License-Identifier: Apache-2.0
// Parts of texts. string_view's own substr, which starts_with uses too, could throw, and the library has nothing to
// throw with.
#pragma once

#include <string_view>

namespace zryaml {

// The first characters, as many of them as there are.
[[nodiscard]] constexpr std::string_view First(std::string_view text, size_t count) noexcept
{
    return {text.data(), count < text.size() ? count : text.size()};
}

// What follows the first characters.
[[nodiscard]] constexpr std::string_view Behind(std::string_view text, size_t count) noexcept
{
    text.remove_prefix(count < text.size() ? count : text.size());
    return text;
}

[[nodiscard]] constexpr bool Begins(std::string_view text, std::string_view prefix) noexcept
{
    return First(text, prefix.size()) == prefix;
}

} // namespace zryaml
