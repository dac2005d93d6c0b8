// SPDX-License-Identifier: Apache-2.0
#include "failure.h"

namespace zryaml::cli {

namespace {

Diagnostic diagnostic_of(const YamlProblem &problem)
{
    return {false,
            problem.uiLevel,
            problem.uiCode,
            problem.pcSource,
            problem.pcMessage,
            problem.pcHint,
            problem.pcPath,
            "",
            problem.uiLine,
            problem.uiColumn,
            problem.uiFirstLine,
            problem.uiFirstColumn};
}

} // namespace

Diagnostic diagnostic_of(const Error &error)
{
    const bool lookup =
        error.code == YAML_ERR_NOT_FOUND || error.code == YAML_ERR_NODE_TYPE || error.code == YAML_ERR_NOT_SCALAR;
    return {lookup,     YAML_PROBLEM_ERROR, error.code, error.file,   error.message,    error.hint,
            error.path, error.record,       error.line, error.column, error.first_line, error.first_column};
}

std::vector<Diagnostic> diagnostics_take(YamlProblems *problems)
{
    std::vector<Diagnostic> diagnostics;
    for (uint32_t number = 0; const YamlProblem *problem = ZRYAML_ProblemGet(problems, number); ++number)
        diagnostics.push_back(diagnostic_of(*problem));
    ZRYAML_ProblemsFree(problems);
    return diagnostics;
}

bool is_malformed(const Error &error) noexcept
{
    return error.code == YAML_ERR_KEY || error.code == YAML_ERR_INDEX;
}

Failure failure_of(const Error &error)
{
    return {is_malformed(error) ? Status::misuse : Status::missing, diagnostic_of(error)};
}

} // namespace zryaml::cli
