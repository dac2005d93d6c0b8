// SPDX-License-Identifier: Apache-2.0
// What standard error is connected to.
#pragma once

#include <cstddef>

namespace zryaml::cli {

[[nodiscard]] bool ErrorIsTerminal() noexcept;

// Whether it understands more than plain lines: a terminal that is not called dumb.
[[nodiscard]] bool ErrorMovesCursor() noexcept;

// Whether texts on it are coloured: as above, and NO_COLOR is not set.
[[nodiscard]] bool ErrorHasColour() noexcept;

// Its width in cells; 80 if that is not known.
[[nodiscard]] size_t ErrorWidth() noexcept;

} // namespace zryaml::cli
