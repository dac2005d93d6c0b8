// SPDX-License-Identifier: Apache-2.0
// The fast way of a lookup: it follows the caller's format where it stands, without a copy, and only ever answers
// success. Whatever is missing, malformed or merely odd is left to the ordinary lookup, which logs and explains.
#pragma once

#include "query_internal.h"

namespace zryaml::query {

// The node at a path, a key or an element, as uiIndexed tells; NULL if the ordinary lookup has to decide. What it finds
// both lookups by format and typed reads find.
[[nodiscard]] YamlListNode *QuickFind(YamlHandle &handle, const char *keyFormat, va_list arguments,
                                      uint32_t &indexed) noexcept;

} // namespace zryaml::query
