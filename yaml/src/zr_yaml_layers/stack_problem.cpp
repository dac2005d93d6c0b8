// SPDX-License-Identifier: Apache-2.0
// How a layered load says what is wrong: all problems in one list, each in the log too, and in the end the first error
// in the record of the thread.
#include "layers_internal.h"

#include "../text_cut.h"

#include <cstdio>

using namespace zryaml;
using namespace zryaml::layers;

ZR_LogModule zryaml::layers::YamlLogModule = {"YAML", 0x1900U};

namespace {

constexpr size_t MessageSize = 1024;

void ProblemAdd(Stack &stack, const YamlProblem &problem) noexcept
{
    if (problem.uiLevel == YAML_PROBLEM_ERROR)
        stack.refused = true;
    if (ZRYAML_ProblemReport(&stack.problems, &problem) == YAML_ERR_NOMEM)
        stack.starved = true;
}

} // namespace

void zryaml::layers::Tell(Stack &stack, const Spot &spot, const char *format, ...) noexcept
{
    char message[MessageSize], path[YAML_KEY_BUF_SIZE];
    va_list arguments;
    va_start(arguments, format);
    if (vsnprintf(message, sizeof(message), format, arguments) >= static_cast<int>(sizeof(message)))
        CutMark(message, sizeof(message));
    va_end(arguments);
    if (ZRYAML_ValuePathGet(spot.value, sizeof(path), path) >= sizeof(path))
        CutMark(path, sizeof(path));

    YamlProblem problem = {};
    problem.uiLevel = spot.level;
    problem.uiCode = spot.code;
    problem.uiLine = spot.place != nullptr ? spot.place->uiLine : 0;
    problem.uiColumn = spot.place != nullptr ? spot.place->uiColumn : 0;
    ZRYAML_ValueWrittenGet(spot.place, &problem.uiFirstLine, &problem.uiFirstColumn);
    problem.pcSource = spot.source;
    problem.pcPath = path;
    problem.pcMessage = message;
    problem.pcHint = spot.hint;
    if (spot.level == YAML_PROBLEM_ERROR)
        YAML_LOG_ONLY(YAML_LOG_ERROR, spot.code, "%s: %s%s%s", spot.source, path, path[0] != '\0' ? ": " : "", message);
    ProblemAdd(stack, problem);
}

void zryaml::layers::LoadFailureAdd(Stack &stack, const char *source, const char *hint) noexcept
{
    const YamlErrorInfo &error = *ZRYAML_LastErrorGet();
    if (ErrorIsShortMemory())
        return Starve(stack);
    const bool hinted = error.pcHint[0] != '\0';
    ProblemAdd(stack, {YAML_PROBLEM_ERROR, error.uiCode, error.uiLine, error.uiColumn, error.uiFirstLine,
                       error.uiFirstColumn, source, "", error.pcMessage, hinted ? error.pcHint : hint});
}

void zryaml::layers::Starve(Stack &stack) noexcept
{
    if (stack.starved)
        return;
    stack.starved = true;
    YamlProblem problem = {};
    problem.uiCode = YAML_ERR_NOMEM;
    problem.pcMessage = "out of memory";
    ProblemAdd(stack, problem);
    YAML_LOG_ONLY(YAML_LOG_ERROR, YAML_ERR_NOMEM, "out of memory");
}

void zryaml::layers::ErrorRecordSet(const YamlProblems *problems) noexcept
{
    ErrorClear();
    const YamlProblem *problem = nullptr;
    uint32_t index = 0;
    do
        problem = ZRYAML_ProblemGet(problems, index++);
    while (problem != nullptr && problem->uiLevel != YAML_PROBLEM_ERROR);
    if (problem == nullptr)
        return ErrorNote(YAML_ERR_NOMEM, "out of memory");
    ErrorNote(problem->uiCode, "%s", problem->pcMessage);
    ErrorPlaceAdd(problem->uiLine, problem->uiColumn);
    ErrorFirstPlaceAdd(problem->uiFirstLine, problem->uiFirstColumn);
    ErrorHintAdd("%s", problem->pcHint);
    ErrorFileAdd(problem->pcSource);
    ErrorKeyPathAdd(problem->pcPath);
}
