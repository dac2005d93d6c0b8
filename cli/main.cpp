// SPDX-License-Identifier: Apache-2.0
// The zryaml command: reads the command line, runs what it asks for, and reports what ended it early.
#include "diagnostics.h"
#include "options.h"
#include "output.h"

#include <clocale>
#include <cstdio>
#include <new>
#include <zr_base.h>

namespace zryaml::cli {

namespace {

// Diagnostics tell what went wrong; log records are for those who ask for them.
void LogLevelChoose(int iVerbose)
{
    if (iVerbose == 0)
        ZR_LogLevelSet(ZR_LOG_NOTHING);
    else if (iVerbose > 1)
        ZR_LogLevelSet(ZR_LOG_NOTE);
    else
        ZR_LogLevelSet(ZR_LOG_WARNING);
}

Status InvocationRun(const Invocation &stInvocation)
{
    LogLevelChoose(stInvocation.stOptions.iVerbose);
    Status eStatus = Status::Found;
    if (stInvocation.pfnRun != nullptr)
        eStatus = stInvocation.pfnRun(stInvocation.stOptions);
    else
        OutputText(stInvocation.stText);
    OutputEnd();
    return eStatus;
}

Status Run(const std::vector<std::string> &astArgument)
{
    DiagnosticsFormat eFormat = DiagnosticsFormat::Text;
    try {
        const Invocation stInvocation = CommandLineRead(astArgument);
        eFormat = stInvocation.stOptions.eDiagnostics;
        return InvocationRun(stInvocation);
    } catch (const Failure &stFailure) {
        Reporter(eFormat).Report(stFailure.What());
        return stFailure.ExitStatus();
    }
}

} // namespace

} // namespace zryaml::cli

int main(int iCount, char **ppcArgument)
{
    // Only for the widths of characters; everything else is the same in every locale.
    (void)setlocale(LC_CTYPE, "C.UTF-8");
    try {
        return static_cast<int>(zryaml::cli::Run({ppcArgument + (iCount > 0 ? 1 : 0), ppcArgument + iCount}));
    } catch (const std::bad_alloc &) {
        (void)fputs("zryaml: error: out of memory\n", stderr);
    } catch (const std::exception &stError) {
        (void)fprintf(stderr, "zryaml: error: %s\n", stError.what());
    }
    return static_cast<int>(zryaml::cli::Status::Misuse);
}
