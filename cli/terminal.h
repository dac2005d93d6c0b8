// SPDX-License-Identifier: Apache-2.0
// What standard error is connected to.
#pragma once

#include <cstddef>

namespace zryaml::cli {

[[nodiscard]] bool error_is_terminal() noexcept;

// Whether it understands more than plain lines: a terminal that is not called dumb.
[[nodiscard]] bool error_moves_cursor() noexcept;

// Whether texts on it are coloured: as above, and NO_COLOR is not set.
[[nodiscard]] bool error_has_colour() noexcept;

// Its width in cells; 80 if that is not known.
[[nodiscard]] size_t error_width() noexcept;

} // namespace zryaml::cli
