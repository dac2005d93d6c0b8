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

struct PathComponent {
    std::string_view svName; // empty: an index alone
    uint32_t uiIndex;        // YAML_INDEX_NONE: none
};
// Reads the component of a path that begins at the parsed length, and adds to it. A plain one stays where it is; any
// other goes to the name buffer by yaml_KeyParse. False if it is rejected (logged).
[[nodiscard]] bool ComponentRead(char *pcKeyPath, char (&acName)[YAML_KEY_BUF_SIZE], uint32_t &uiParsedLen,
                                 PathComponent &stComponent) noexcept;

} // namespace zryaml::query

using namespace zryaml;
using namespace zryaml::query;
