// SPDX-License-Identifier: Apache-2.0
// How a difference between two documents is printed.
#pragma once

#include "redact.h"

#include <zr_yaml_layers.h>

namespace zryaml::cli {

// "+ path: text", "- path: text" or "~ path: old -> new", without what the redactor of each document hides.
[[nodiscard]] std::string change_line(const Redactor &old_redactor, const Redactor &new_redactor,
                                      const YamlChange &change);

} // namespace zryaml::cli
