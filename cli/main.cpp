// SPDX-License-Identifier: Apache-2.0
// The zryaml command: reads the command line, runs what it asks for, and reports what ended it early.
#include "command_line.h"
#include "failure.h"
#include "output.h"
#include "redact.h"
#include "report.h"

#include <cstdio>
#include <new>
#include <zr_base.h>

namespace zryaml::cli {

namespace {

void redacted_write(const ZR_LogRecord *record, void * /*context*/)
{
    (void)fprintf(stderr, "%s 0x%08X %s:%u %s: %s\n", record->pcModule, record->uiCode, record->pcFile, record->uiLine,
                  record->pcFunction, record_redacted(record->pcText).c_str());
}

// Diagnostics tell what went wrong; log records are for those who ask for them.
void log_choose(const Options &options)
{
    if (!options.redact.empty())
        (void)ZR_LogSinkSet(redacted_write, nullptr);
    if (options.verbose == 0)
        ZR_LogLevelSet(ZR_LOG_NOTHING);
    else
        ZR_LogLevelSet(options.verbose > 1 ? ZR_LOG_NOTE : ZR_LOG_WARNING);
}

Status invocation_run(const Invocation &invocation)
{
    log_choose(invocation.options);
    Status status = Status::found;
    if (invocation.command != nullptr)
        status = invocation.command->run(invocation.options);
    else
        output_text(invocation.text);
    output_end();
    return status;
}

Status run(const std::vector<std::string> &arguments)
{
    Options options;
    try {
        const Invocation invocation = command_line_read(arguments);
        options = invocation.options;
        return invocation_run(invocation);
    } catch (const Failure &failure) {
        const std::unique_ptr<Reporter> reporter =
            output_ended() ? side_reporter_make(options) : reporter_make(options);
        for (const Diagnostic &diagnostic : failure.diagnostics())
            reporter->report(diagnostic);
        reporter->end();
        return failure.exit_status();
    }
}

} // namespace

} // namespace zryaml::cli

int main(int count, char **arguments)
{
    try {
        return static_cast<int>(zryaml::cli::run({arguments + (count > 0 ? 1 : 0), arguments + count}));
    } catch (const std::bad_alloc &) {
        (void)fputs("zryaml: error: out of memory\n", stderr);
    } catch (const std::exception &error) {
        (void)fprintf(stderr, "zryaml: error: %s\n", error.what());
    }
    return static_cast<int>(zryaml::cli::Status::misuse);
}
