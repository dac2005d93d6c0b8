// SPDX-License-Identifier: Apache-2.0
// Writes through the buffer of stdout, which remembers that a write failed.
#include "output.h"
#include "failure.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace zryaml::cli {

namespace {

int g_iFirstError = 0; // errno of the first write that failed

} // namespace

void OutputText(std::string_view svText) noexcept
{
    errno = 0;
    if (fwrite(svText.data(), 1, svText.size(), stdout) != svText.size() && g_iFirstError == 0)
        g_iFirstError = errno;
}

void OutputItem(std::string_view svText, bool bNull) noexcept
{
    OutputText(svText);
    OutputText(bNull ? std::string_view("\0", 1) : "\n");
}

void OutputEnd()
{
    // A file system may report a full disk only when the file is closed.
    const bool bEarlier = ferror(stdout) != 0;
    if (fclose(stdout) == 0 && !bEarlier)
        return;
    Diagnostic stDiagnostic;
    stDiagnostic.stMessage = std::string("standard output: ") + strerror(g_iFirstError != 0 ? g_iFirstError : errno);
    throw Failure(Status::Misuse, std::move(stDiagnostic));
}

} // namespace zryaml::cli
