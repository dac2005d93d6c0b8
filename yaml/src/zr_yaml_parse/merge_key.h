// SPDX-License-Identifier: Apache-2.0
// What a merge of a sequence copies.
#pragma once

#include "node_copy.h"

namespace zryaml::parse {

// Copies the first key of each map of a sequence with its value.
[[nodiscard]] uint32_t FirstKeysCopy(YamlHandle &handle, KeysPlace &place, const YamlListNode &sequence) noexcept;

} // namespace zryaml::parse
