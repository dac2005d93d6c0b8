// SPDX-License-Identifier: Apache-2.0
// The commands and options that there are.
#pragma once

#include "command.h"

#include <span>
#include <string_view>
#include <variant>

namespace zryaml::cli {

struct Option {
    using Target = std::variant<bool Options::*, int Options::*, std::string Options::*,
                                std::optional<std::string> Options::*, std::vector<std::string> Options::*>;
    std::string_view commands; // those that take it, divided by blanks; "*": all; "": all, and before them too
    const char *names;
    const char *values; // what its value is called, or its choices divided by '|'; "": it takes none
    Target target;      // a list takes the option again and again
    const char *help;
};

[[nodiscard]] std::span<const Command> commands() noexcept;
[[nodiscard]] std::span<const Option> options() noexcept;

// Whether an option is one of a command's own.
[[nodiscard]] bool takes(const Command &command, const Option &option) noexcept;

} // namespace zryaml::cli
