// SPDX-License-Identifier: Apache-2.0
// What the formats have in common.
#include "report.h"
#include "redact.h"

#include <algorithm>

namespace zryaml::cli {

namespace {

class HidingReporter : public Reporter { // hands on what --redact leaves
public:
    HidingReporter(std::unique_ptr<Reporter> reporter, const Options &options)
        : reporter_(std::move(reporter)), patterns_(patterns_read(options.redact))
    {}
    void report(const Diagnostic &diagnostic) override { reporter_->report(redacted(diagnostic, patterns_)); }
    void end() override { reporter_->end(); }

private:
    std::unique_ptr<Reporter> reporter_;
    std::vector<PathPattern> patterns_;
};

std::unique_ptr<Reporter> format_reporter(const std::string &format, const Options &options)
{
    if (format == "github")
        return github_reporter();
    if (format == "sarif")
        return sarif_reporter();
    return format == "json" ? json_reporter() : text_reporter(options);
}

std::unique_ptr<Reporter> reporter_for(const std::string &format, const Options &options)
{
    std::unique_ptr<Reporter> reporter = format_reporter(format, options);
    if (options.redact.empty())
        return reporter;
    return std::make_unique<HidingReporter>(std::move(reporter), options);
}

} // namespace

std::unique_ptr<Reporter> reporter_make(const Options &options)
{
    return reporter_for(options.diagnostics, options);
}

std::unique_ptr<Reporter> side_reporter_make(const Options &options)
{
    return reporter_for(options.diagnostics == "json" ? "json" : "text", options);
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
