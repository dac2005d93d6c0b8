// SPDX-License-Identifier: Apache-2.0
// Which source a value was read from.
#pragma once

#include <zr_yaml.h>

namespace zryaml {

// Path or name of the source that a node's place lies in; "" if there is none. Belongs to the document.
[[nodiscard]] const char *SourceNameOf(const YamlListNode *node) noexcept;

} // namespace zryaml
