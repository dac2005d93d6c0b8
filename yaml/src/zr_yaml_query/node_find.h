// SPDX-License-Identifier: Apache-2.0
// Lookups by format: how their paths are made and followed.
#pragma once

#include "query_internal.h"

namespace zryaml::query {

struct Found {
    YamlListNode *pstNode; // NULL: not found,
    uint32_t uiCode;       // for the reason that the log names first; YAML_ERR_NOT_FOUND if it names none
};

// Formats a key path; a code (logged) if it is empty, too long or cannot be formatted. The path is then as much of it
// as there is, or the format.
[[nodiscard]] uint32_t PathFormat(char (&acPath)[YAML_KEY_BUF_SIZE], const char *pcKeyFormat, va_list stArgs) noexcept
    __attribute__((format(printf, 2, 0)));

// Finds the node at a path; uiIndexed tells whether its last component selected an element.
[[nodiscard]] Found PathWalk(YamlHandle &stHandle, std::string_view svPath, uint32_t &uiIndexed) noexcept;

} // namespace zryaml::query
