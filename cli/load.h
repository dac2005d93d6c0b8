// SPDX-License-Identifier: Apache-2.0
// Loading: one file, with what it probably does not mean if that is asked for.
#pragma once

#include "failure.h"

#include <zr_yaml.hpp>

namespace zryaml::cli {

// Loads a file by the options; throws a Failure. Adds warnings and notes of a success to the remarks.
[[nodiscard]] Document document_load(const Options &options, const std::string &file, std::vector<Diagnostic> &remarks);

} // namespace zryaml::cli
