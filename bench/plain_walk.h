// SPDX-License-Identifier: Apache-2.0
// The least that a lookup can do: one pass over the siblings of each level, with names that are cut out already.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include <zr_yaml.h>

namespace zryaml::bench {

struct PathStep {
    const char *pcName; // nullptr: an element of a list
    uint32_t uiIndex;
};

// The steps of "plant.halls[%u].north.rack.unit.listen.port".
[[nodiscard]] std::array<PathStep, 8> PathSteps(uint32_t uiIndex);

// The text at the end of a path that is there; nullptr if it is not.
[[nodiscard]] const char *PlainWalk(const YamlHandle *pstHandle, std::span<const PathStep> steps);

} // namespace zryaml::bench
