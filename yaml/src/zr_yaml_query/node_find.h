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
[[nodiscard]] uint32_t PathFormat(char (&path)[YAML_KEY_BUF_SIZE], const char *keyFormat, va_list arguments) noexcept
    __attribute__((format(printf, 2, 0)));

// Finds the node at a path; uiIndexed tells whether its last component selected an element.
[[nodiscard]] Found PathWalk(YamlHandle &handle, std::string_view path, uint32_t &indexed) noexcept;

} // namespace zryaml::query
