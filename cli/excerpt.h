// SPDX-License-Identifier: Apache-2.0
// A source line as a terminal shows it, with the cell under which the caret goes.
#pragma once

#include "source_window.h"

namespace zryaml::cli {

struct Excerpt {
    std::string text; // the line, or the part of it around the place, in at most the width asked for
    size_t caret = 0; // cells before the caret
};

// Tabs become spaces up to the next eighth cell, hidden characters escapes.
[[nodiscard]] Excerpt excerpt_make(const SourceWindow &window, size_t width);

} // namespace zryaml::cli
