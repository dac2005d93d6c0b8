// SPDX-License-Identifier: Apache-2.0
// The debug switch as the library itself reads it: on every load and query, so without a call.
#pragma once

#include <zr_yaml.h>

namespace zryaml {

[[nodiscard]] inline uint32_t DebugSwitch() noexcept
{
    return __atomic_load_n(&g_bYamlDebugSwitch, __ATOMIC_RELAXED);
}

} // namespace zryaml
