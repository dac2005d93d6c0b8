// SPDX-License-Identifier: Apache-2.0
// The syntax of references in texts: "${name}", "${name:-text}", "${name:?sentence}".
#pragma once

#include <string_view>

namespace zryaml::layers {

enum class Otherwise : char { Nothing = 0, Text = '-', Sentence = '?' };

struct Reference {
    std::string_view written; // all of it; no data: it never ends
    std::string_view name;    // of the variable, or the key path
    std::string_view tail;    // behind ":-" or ":?"
    Otherwise otherwise;      // what the tail is
    bool isVariable;
};

// Reads the reference that a text begins with, its "${".
[[nodiscard]] Reference ReferenceRead(std::string_view text) noexcept;

} // namespace zryaml::layers
