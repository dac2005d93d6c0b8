// SPDX-License-Identifier: Apache-2.0
// One SARIF 2.1.0 document on standard output, for tools that collect results. The rules are the codes' names.
#include "json_writer.h"
#include "output.h"
#include "report.h"

#include <algorithm>

namespace zryaml::cli {

namespace {

// A file name as a URI: a relative one stays relative.
std::string uri_of(const std::string &file)
{
    std::string uri = file.starts_with('/') ? "file://" : "";
    for (const char character : file) {
        char code[4] = {character, '\0'};
        const bool plain = std::string_view("/-._~").find(character) != std::string_view::npos ||
                           (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
                           (character >= 'a' && character <= 'z');
        if (!plain)
            (void)snprintf(code, sizeof(code), "%%%02X", static_cast<unsigned char>(character));
        uri += code;
    }
    return uri;
}

class SarifReporter : public Reporter {
public:
    void report(const Diagnostic &diagnostic) override { results_.push_back(diagnostic); }

    void end() override
    {
        json_.StartObject();
        json_.put("$schema", "https://json.schemastore.org/sarif-2.1.0.json");
        json_.put("version", "2.1.0");
        json_.Key("runs");
        json_.StartArray();
        json_.StartObject();
        tool_put();
        json_.put("columnKind", "unicodeCodePoints");
        json_.Key("results");
        json_.StartArray();
        for (const Diagnostic &result : results_)
            result_put(result);
        json_.EndArray();
        json_.EndObject();
        json_.EndArray();
        json_.EndObject();
        output_item(json_.text());
    }

private:
    void tool_put()
    {
        std::vector<std::string_view> rules;
        for (const Diagnostic &result : results_)
            rules.emplace_back(rule_name(result));
        std::ranges::sort(rules);
        rules.erase(std::unique(rules.begin(), rules.end()), rules.end());
        json_.Key("tool");
        json_.StartObject();
        json_.Key("driver");
        json_.StartObject();
        json_.put("name", "zryaml");
        json_.put("version", ZRYAML_COMMAND_VERSION);
        json_.Key("rules");
        json_.StartArray();
        for (const std::string_view rule : rules) {
            json_.StartObject();
            json_.put("id", rule);
            json_.EndObject();
        }
        json_.EndArray();
        json_.EndObject();
        json_.EndObject();
    }

    void message_put(const std::string &text)
    {
        json_.Key("message");
        json_.StartObject();
        json_.put("text", text);
        json_.EndObject();
    }

    void place_put(const std::string &file, uint32_t line, uint32_t column)
    {
        json_.Key("physicalLocation");
        json_.StartObject();
        json_.Key("artifactLocation");
        json_.StartObject();
        json_.put("uri", uri_of(file));
        json_.EndObject();
        if (line != 0) {
            json_.Key("region");
            json_.StartObject();
            json_.put("startLine", line);
            json_.put("startColumn", column);
            json_.EndObject();
        }
        json_.EndObject();
    }

    void result_put(const Diagnostic &result)
    {
        json_.StartObject();
        json_.put("ruleId", rule_name(result));
        json_.put("level", level_name(result));
        message_put(sentence(result) + (result.hint.empty() ? "" : " (" + result.hint + ')'));
        if (!result.file.empty()) {
            json_.Key("locations");
            json_.StartArray();
            json_.StartObject();
            place_put(result.file, result.line, result.column);
            json_.EndObject();
            json_.EndArray();
        }
        if (result.first_line != 0) {
            json_.Key("relatedLocations");
            json_.StartArray();
            json_.StartObject();
            place_put(result.file, result.first_line, result.first_column);
            message_put(first_sentence(result));
            json_.EndObject();
            json_.EndArray();
        }
        json_.EndObject();
    }

    std::vector<Diagnostic> results_;
    JsonText json_;
};

} // namespace

std::unique_ptr<Reporter> sarif_reporter()
{
    return std::make_unique<SarifReporter>();
}

} // namespace zryaml::cli
