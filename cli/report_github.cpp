// SPDX-License-Identifier: Apache-2.0
// Workflow commands of a hosted pipeline, which shows them beside the changed lines; on standard output, where it looks
// for them.
#include "output.h"
#include "report.h"
#include "text.h"

namespace zryaml::cli {

namespace {

// A text with those characters as %XX that would end it, or the property that it is.
std::string escaped(const std::string &text, std::string_view special)
{
    std::string out;
    for (const char character : valid_text(text)) {
        char code[4] = {character, '\0'};
        if (special.find(character) != std::string_view::npos)
            (void)snprintf(code, sizeof(code), "%%%02X", static_cast<unsigned char>(character));
        out += code;
    }
    return out;
}

class GithubReporter : public Reporter {
public:
    void report(const Diagnostic &diagnostic) override
    {
        std::string line =
            diagnostic.level == YAML_PROBLEM_NOTE ? "::notice " : std::string("::") + level_name(diagnostic) + ' ';
        if (!diagnostic.file.empty())
            line += "file=" + property(diagnostic.file) + ',';
        if (diagnostic.line != 0)
            line += "line=" + std::to_string(diagnostic.line) + ",col=" + std::to_string(diagnostic.column) + ',';
        line += std::string("title=") + rule_name(diagnostic) + "::" + data(sentence(diagnostic));
        if (!diagnostic.hint.empty())
            line += data("\n" + diagnostic.hint);
        output_item(line);
    }

private:
    static std::string data(const std::string &text) { return escaped(text, "%\r\n"); }
    static std::string property(const std::string &text) { return escaped(text, "%\r\n:,"); }
};

} // namespace

std::unique_ptr<Reporter> github_reporter()
{
    return std::make_unique<GithubReporter>();
}

} // namespace zryaml::cli
