// SPDX-License-Identifier: Apache-2.0
// The stack of open collections in a handle, by the types of the events that opened them.
#pragma once

#include <zr_yaml.h>

namespace zryaml::parse {

// The type of the innermost open collection, 0 if none is open.
[[nodiscard]] inline uint32_t OpenEventOf(const YamlHandle &handle) noexcept
{
    return handle.uiEventDepth == 0 ? 0 : handle.auiEventStack[handle.uiEventDepth - 1];
}

// Ignored when as many are open as there is room for.
inline void EventPush(YamlHandle &handle, uint32_t eventType) noexcept
{
    if (handle.uiEventDepth < YAML_EVENT_STACK_SIZE)
        handle.auiEventStack[handle.uiEventDepth++] = eventType;
}

// Ignored when none is open.
inline void EventPop(YamlHandle &handle) noexcept
{
    if (handle.uiEventDepth > 0)
        handle.auiEventStack[--handle.uiEventDepth] = 0;
}

} // namespace zryaml::parse
