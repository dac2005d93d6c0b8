// SPDX-License-Identifier: Apache-2.0
// What the formats have in common.
#include "report.h"

#include <algorithm>

namespace zryaml::cli {

namespace {

std::unique_ptr<Reporter> reporter_for(const std::string &format)
{
    return format == "json" ? json_reporter() : text_reporter();
}

} // namespace

std::unique_ptr<Reporter> reporter_make(const Options &options)
{
    return reporter_for(options.diagnostics);
}

std::unique_ptr<Reporter> side_reporter_make(const Options &options)
{
    return reporter_for(options.diagnostics == "json" ? "json" : "text");
}

const char *level_name(const Diagnostic &diagnostic) noexcept
{
    static constexpr const char *names[] = {"error", "warning", "note"};
    return names[std::min(diagnostic.level, YAML_PROBLEM_NOTE)];
}

const char *rule_name(const Diagnostic &diagnostic) noexcept
{
    const char *name = ZRYAML_CodeNameGet(diagnostic.code);
    return name[0] != '\0' ? name : "YAML_ERR_PARAM";
}

std::string sentence(const Diagnostic &diagnostic)
{
    return diagnostic.path.empty() || diagnostic.names_value ? diagnostic.message
                                                             : diagnostic.path + ": " + diagnostic.message;
}

const char *first_sentence(const Diagnostic &diagnostic) noexcept
{
    return diagnostic.code == YAML_ERR_SAME ? "the first one is here" : "it is written here";
}

} // namespace zryaml::cli
