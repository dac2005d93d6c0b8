// SPDX-License-Identifier: Apache-2.0
// What the files of this folder share.
#pragma once

#include "../debug_switch.h"
#include "../node_tree.h"
#include "../report.h"

#include <string_view>

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

// A component of a path that can be read where it stands.
struct PlainComponent {
    std::string_view svName; // empty: an index alone
    uint32_t uiIndex;        // YAML_INDEX_NONE: none
    const char *pcNext;      // the next component, or the end of the path
};
// Reads the component at the front of a path; false if it takes the rules of yaml_KeyParse.
[[nodiscard]] bool PlainComponentRead(const char *pcPath, PlainComponent &stComponent) noexcept;

} // namespace zryaml::query

using namespace zryaml;
using namespace zryaml::query;
