// SPDX-License-Identifier: Apache-2.0
// Reports why libyaml could not read on, with its own words and marks (its marks count from 0, the log from 1).
#include "parse_internal.h"

#include <yaml.h>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

int Line(const yaml_mark_t &mark) noexcept
{
    return static_cast<int>(mark.line + 1);
}

int Column(const yaml_mark_t &mark) noexcept
{
    return static_cast<int>(mark.column + 1);
}

void ReaderErrorLog(const yaml_parser_t &parser) noexcept
{
    if (parser.problem_value != -1)
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_READER, "Reader error: %s: #%X at %zu.", parser.problem,
                 static_cast<unsigned>(parser.problem_value), parser.problem_offset);
    else
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_READER, "Reader error: %s at %zu.", parser.problem, parser.problem_offset);
}

// Scanner and parser errors differ in code and name only.
void SyntaxErrorLog(const yaml_parser_t &parser, uint32_t code, const char *who) noexcept
{
    const yaml_mark_t &problem = parser.problem_mark;
    const yaml_mark_t &context = parser.context_mark;
    if (parser.context != nullptr)
        YAML_LOG(YAML_LOG_ERROR, code, "%s error: %s at line %d, column %d\n%s at line %d, column %d.", who,
                 parser.context, Line(context), Column(context), parser.problem, Line(problem), Column(problem));
    else
        YAML_LOG(YAML_LOG_ERROR, code, "%s error: %s at line %d, column %d.", who, parser.problem, Line(problem),
                 Column(problem));
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
