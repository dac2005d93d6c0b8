// SPDX-License-Identifier: Apache-2.0
// Which keys have been read: while the debug switch is on, lookups, iterators and walks mark what they hand out, by one
// bit in the key that is set without a lock.
#pragma once

#include "query_internal.h"

namespace zryaml::query {

[[nodiscard]] bool IsKey(const YamlListNode &node) noexcept;
[[nodiscard]] bool IsRead(const YamlListNode &key) noexcept;

void ReadMarkAlways(const YamlListNode &node) noexcept;
// Marks the key whose value a node is, or that it is, and all keys above as read, while the debug switch is on.
inline void ReadMark(const YamlListNode &node) noexcept
{
    if (DebugSwitch() != 0)
        ReadMarkAlways(node);
}

} // namespace zryaml::query
