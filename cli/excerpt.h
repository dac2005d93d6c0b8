// SPDX-License-Identifier: Apache-2.0
// The source line of a diagnostic as a terminal shows it, with the cell under which the caret goes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zryaml::cli {

struct Excerpt {
    std::string stText; // the line, or the part of it around the column, in at most ulWidth cells
    size_t ulCaret = 0; // cells before the caret
};

// Tabs become spaces up to the next eighth cell, hidden characters escapes. The column is 1-based, in characters; one
// behind the end of the line is taken for its end.
[[nodiscard]] Excerpt ExcerptMake(std::string_view svLine, uint32_t uiColumn, size_t ulWidth);

} // namespace zryaml::cli
