// SPDX-License-Identifier: Apache-2.0
// What the files of this folder share.
#pragma once

#include "../debug_switch.h"
#include "../node_tree.h"
#include "../report.h"

namespace zryaml::debug {

extern ZR_LogModule YamlLogModule;

} // namespace zryaml::debug
