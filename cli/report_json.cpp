// SPDX-License-Identifier: Apache-2.0
// JSON objects on standard error, one a line.
#include "json_writer.h"
#include "report.h"

#include <cstdio>

namespace zryaml::cli {

namespace {

class JsonReporter : public Reporter {
public:
    void report(const Diagnostic &diagnostic) override
    {
        JsonText json;
        json.StartObject();
        json.put("level", level_name(diagnostic));
        json.put("code", diagnostic.code);
        json.put("name", ZRYAML_CodeNameGet(diagnostic.code));
        json.put("message", diagnostic.message);
        json.put("hint", diagnostic.hint);
        json.put("file", diagnostic.file.empty() ? "zryaml" : diagnostic.file);
        json.put("line", diagnostic.line);
        json.put("column", diagnostic.column);
        json.put("first_line", diagnostic.first_line);
        json.put("first_column", diagnostic.first_column);
        json.put("path", diagnostic.path);
        json.put("record", diagnostic.record);
        json.EndObject();
        const std::string line = std::string(json.text()) + '\n';
        (void)fwrite(line.data(), 1, line.size(), stderr); // there is no other place to tell of a failure
    }
};

} // namespace

std::unique_ptr<Reporter> json_reporter()
{
    return std::make_unique<JsonReporter>();
}

} // namespace zryaml::cli
