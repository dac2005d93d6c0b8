// SPDX-License-Identifier: Apache-2.0
// Reports why libyaml could not read on, with its own words and marks (its marks count from 0, the log from 1).
#include "parse_internal.h"

#include <yaml.h>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

int Line(const yaml_mark_t &stMark) noexcept
{
    return static_cast<int>(stMark.line + 1);
}

int Column(const yaml_mark_t &stMark) noexcept
{
    return static_cast<int>(stMark.column + 1);
}

void ReaderErrorLog(const yaml_parser_t &stParser) noexcept
{
    if (stParser.problem_value != -1)
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_READER, "Reader error: %s: #%X at %zu.", stParser.problem,
                 static_cast<unsigned>(stParser.problem_value), stParser.problem_offset);
    else
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_READER, "Reader error: %s at %zu.", stParser.problem,
                 stParser.problem_offset);
}

// Scanner and parser errors differ in code and name only.
void SyntaxErrorLog(const yaml_parser_t &stParser, uint32_t uiCode, const char *pcWho) noexcept
{
    const yaml_mark_t &stProblem = stParser.problem_mark;
    const yaml_mark_t &stContext = stParser.context_mark;
    if (stParser.context != nullptr)
        YAML_LOG(YAML_LOG_ERROR, uiCode, "%s error: %s at line %d, column %d\n%s at line %d, column %d.", pcWho,
                 stParser.context, Line(stContext), Column(stContext), stParser.problem, Line(stProblem),
                 Column(stProblem));
    else
        YAML_LOG(YAML_LOG_ERROR, uiCode, "%s error: %s at line %d, column %d.", pcWho, stParser.problem,
                 Line(stProblem), Column(stProblem));
}

} // namespace

void yaml_ParseErrProcess(const yaml_parser_t *pstParser)
{
    switch (pstParser->error) {
    case YAML_MEMORY_ERROR:
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "There is not enough memory for parsing.");
        break;
    case YAML_READER_ERROR:
        ReaderErrorLog(*pstParser);
        break;
    case YAML_SCANNER_ERROR:
        SyntaxErrorLog(*pstParser, YAML_ERR_SCANNER, "Scanner");
        break;
    case YAML_PARSER_ERROR:
        SyntaxErrorLog(*pstParser, YAML_ERR_PARSE, "Parser");
        break;
    default:
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "There is an internal error in libYAML.");
        break;
    }
}
