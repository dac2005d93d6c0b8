// SPDX-License-Identifier: Apache-2.0
// How a watch says what is wrong: in the log, in the error record of the thread and in the list of problems.
#include "watch_internal.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

using namespace zryaml;
using namespace zryaml::watch;

ZR_LogModule zryaml::watch::YamlLogModule = {"YAML", 0x1900U};

namespace {

uint32_t ProblemTell(YamlProblems **problems, uint32_t code, const char *source, const char *message) noexcept
{
    YAML_LOG(YAML_LOG_ERROR, code, "%s%s%s", source, source[0] != '\0' ? ": " : "", message);
    ErrorSentence("%s", message);
    ErrorFileAdd(source);
    YamlProblem problem = {};
    problem.uiCode = code;
    problem.pcSource = source;
    problem.pcMessage = message;
    problem.pcHint = "";
    (void)ZRYAML_ProblemReport(problems, &problem);
    return code;
}

} // namespace

uint32_t zryaml::watch::Tell(YamlProblems **problems, uint32_t code, const char *source, const char *format,
                             ...) noexcept
{
    char message[256];
    va_list arguments;
    va_start(arguments, format);
    (void)vsnprintf(message, sizeof(message), format, arguments);
    va_end(arguments);
    return ProblemTell(problems, code, source, message);
}

uint32_t zryaml::watch::TellSystem(YamlProblems **problems, uint32_t code, const char *source,
                                   const char *failed) noexcept
{
    char message[256];
    const char *reason = strerrordesc_np(errno);
    (void)snprintf(message, sizeof(message), "%s: %s", failed, reason != nullptr ? reason : "unknown error");
    return ProblemTell(problems, code, source, message);
}
