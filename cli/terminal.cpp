// SPDX-License-Identifier: Apache-2.0
// Asks the system and the environment about the terminal.
#include "terminal.h"

#include <cstdlib>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace zryaml::cli {

namespace {

std::string_view Environment(const char *pcName) noexcept
{
    const char *pcValue = getenv(pcName);
    return pcValue != nullptr ? pcValue : "";
}

} // namespace

bool ErrorIsTerminal() noexcept
{
    return isatty(STDERR_FILENO) == 1;
}

bool ErrorMovesCursor() noexcept
{
    const std::string_view svTerm = Environment("TERM");
    return ErrorIsTerminal() && !svTerm.empty() && svTerm != "dumb";
}

bool ErrorHasColour() noexcept
{
    return ErrorMovesCursor() && Environment("NO_COLOR").empty();
}

size_t ErrorWidth() noexcept
{
    constexpr size_t Usual = 80;
    struct winsize stSize = {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &stSize) == 0 && stSize.ws_col > 0 ? stSize.ws_col : Usual;
}

} // namespace zryaml::cli
