// SPDX-License-Identifier: Apache-2.0
// Writes through the buffer of stdout, which remembers that a write failed.
#include "output.h"
#include "failure.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace zryaml::cli {

namespace {

int first_error = 0; // errno of the first write that failed
bool ended = false;

} // namespace

void output_text(std::string_view text) noexcept
{
    errno = 0;
    if (fwrite(text.data(), 1, text.size(), stdout) != text.size() && first_error == 0)
        first_error = errno;
}

void output_item(std::string_view text, bool null) noexcept
{
    output_text(text);
    output_text(null ? std::string_view("\0", 1) : "\n");
}

void output_flush() noexcept
{
    if (fflush(stdout) != 0 && first_error == 0)
        first_error = errno;
}

void output_end()
{
    // A file system may report a full disk only when the file is closed.
    ended = true;
    const bool earlier = ferror(stdout) != 0;
    if (fclose(stdout) == 0 && !earlier)
        return;
    Diagnostic diagnostic;
    diagnostic.message = std::string("standard output: ") + strerror(first_error != 0 ? first_error : errno);
    throw Failure(Status::misuse, std::move(diagnostic));
}

bool output_ended() noexcept
{
    return ended;
}

} // namespace zryaml::cli
