// SPDX-License-Identifier: Apache-2.0
// What the files of this folder share.
#pragma once

#include "../node_tree.h"
#include "../report.h"

namespace zryaml::query {

extern ZR_LogModule YamlLogModule;

// The characters that a backslash escapes in a key path.
[[nodiscard]] constexpr bool IsMetaChar(char cChar) noexcept
{
    return cChar == '.' || cChar == '[' || cChar == ']' || cChar == '{' || cChar == '}';
}

[[nodiscard]] constexpr bool IsDigit(char cChar) noexcept
{
    return cChar >= '0' && cChar <= '9';
}

} // namespace zryaml::query

using namespace zryaml;
using namespace zryaml::query;
