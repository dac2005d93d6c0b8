// SPDX-License-Identifier: Apache-2.0
// Loading layers for others that put something else in the place of some of them.
#pragma once

#include <zr_yaml_layers.h>

namespace zryaml {

// Whether layers and options are such; else says what is wrong.
[[nodiscard]] bool LayersCheck(const YamlLayer *layers, uint32_t count, const YamlLayerOptions *options,
                               YamlProblems **problems) noexcept;

// As ZRYAML_LayersLoad, but origins call layer i by the number numbers[i].
[[nodiscard]] YamlHandle *LayersLoadAs(const YamlLayer *layers, const uint32_t *numbers, uint32_t count,
                                       const YamlLayerOptions *options, YamlProblems **problems) noexcept;

} // namespace zryaml
