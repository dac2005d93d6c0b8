// SPDX-License-Identifier: Apache-2.0
// The keyed hash of texts.
#pragma once

#include <cstdint>
#include <string_view>

namespace zryaml::parse {

[[nodiscard]] uint32_t TextHash(std::string_view text) noexcept;

} // namespace zryaml::parse
