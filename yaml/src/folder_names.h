// SPDX-License-Identifier: Apache-2.0
// Which files of a folder are documents, and their order; for scandir.
#pragma once

#include <cstring>
#include <dirent.h>
#include <string_view>

namespace zryaml {

[[nodiscard]] inline bool IsDocumentName(std::string_view name) noexcept
{
    return !name.starts_with('.') && (name.ends_with(".yaml") || name.ends_with(".yml"));
}

inline int IsDocumentName(const struct dirent *entry) noexcept
{
    return IsDocumentName(std::string_view(entry->d_name)) ? 1 : 0;
}

inline int InByteOrder(const struct dirent **one, const struct dirent **other) noexcept
{
    return strcmp((*one)->d_name, (*other)->d_name);
}

} // namespace zryaml
