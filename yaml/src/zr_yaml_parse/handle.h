// SPDX-License-Identifier: Apache-2.0
// The document handle.
#pragma once

#include <zr_yaml.h>

namespace zryaml::parse {

// Makes an allocated record an empty document.
void HandleInit(YamlHandle &handle) noexcept;

} // namespace zryaml::parse
