// SPDX-License-Identifier: Apache-2.0
// Loading a file.
#pragma once

#include "failure.h"

#include <zr_yaml.hpp>

namespace zryaml::cli {

// Loads a file; throws a Failure that tells unreadable from invalid.
[[nodiscard]] Document document_load(const std::string &file);

} // namespace zryaml::cli
