// SPDX-License-Identifier: Apache-2.0
// Loading: one file alone, or with what --over, --env and --set lay over it.
#pragma once

#include "failure.h"

#include <zr_yaml.hpp>
#include <zr_yaml_layers.h>

namespace zryaml::cli {

// The layers that a file and the options make; their texts belong to both.
[[nodiscard]] std::vector<YamlLayer> layers_of(const Options &options, const std::string &file);
[[nodiscard]] YamlLayerOptions layer_options_of(const Options &options) noexcept;
// The failure of a load.
[[nodiscard]] Failure load_failure(std::vector<Diagnostic> diagnostics);

// Loads a file by the options; throws a Failure. Adds warnings and notes of a success to the remarks.
[[nodiscard]] Document document_load(const Options &options, const std::string &file, std::vector<Diagnostic> &remarks);

} // namespace zryaml::cli
