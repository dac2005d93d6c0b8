// SPDX-License-Identifier: Apache-2.0
#include "failure.h"

namespace zryaml::cli {

Diagnostic diagnostic_of(const Error &error)
{
    const bool lookup =
        error.code == YAML_ERR_NOT_FOUND || error.code == YAML_ERR_NODE_TYPE || error.code == YAML_ERR_NOT_SCALAR;
    return {lookup,     YAML_PROBLEM_ERROR, error.code, error.file,   error.message,    error.hint,
            error.path, error.record,       error.line, error.column, error.first_line, error.first_column};
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
