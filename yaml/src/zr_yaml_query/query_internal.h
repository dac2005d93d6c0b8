// SPDX-License-Identifier: Apache-2.0
// What the files of this folder share.
#pragma once

#include "../debug_switch.h"
#include "../key_path.h"
#include "../node_tree.h"
#include "../report.h"

namespace zryaml::query {

extern ZR_LogModule YamlLogModule;

// Where a component of a path stands; the log has words of its own for each.
enum class PathPlace : uint8_t {
    Name,  // a name, maybe in braces, maybe with an index
    Index, // an index alone
    Front, // an index at the front of a path into a document that is a sequence
};
// Logs and returns what a lookup by format refuses in a component; YAML_OK if nothing. What stands behind
// an index may be left for later.
[[nodiscard]] uint32_t PathRefuse(const PathComponent &component, PathPlace place, bool hasTail = true) noexcept;

} // namespace zryaml::query
