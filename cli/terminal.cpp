// SPDX-License-Identifier: Apache-2.0
// Asks the system and the environment about the terminal.
#include "terminal.h"

#include <cstdlib>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace zryaml::cli {

namespace {

std::string_view environment(const char *name) noexcept
{
    const char *value = getenv(name);
    return value != nullptr ? value : "";
}

} // namespace

bool error_is_terminal() noexcept
{
    return isatty(STDERR_FILENO) == 1;
}

bool error_moves_cursor() noexcept
{
    const std::string_view term = environment("TERM");
    return error_is_terminal() && !term.empty() && term != "dumb";
}

bool error_has_colour() noexcept
{
    return error_moves_cursor() && environment("NO_COLOR").empty();
}

size_t error_width() noexcept
{
    constexpr size_t usual = 80;
    struct winsize size = {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
}

} // namespace zryaml::cli
