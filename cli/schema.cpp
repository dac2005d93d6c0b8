// SPDX-License-Identifier: Apache-2.0
#include "schema.h"
#include "modeline.h"

namespace zryaml::cli {

Schemas::Schemas(const Options &options) : options_(options)
{
    if (options.schema)
        (void)load(*options.schema);
}

const YamlSchema &Schemas::load(const std::string &place)
{
    auto &schema = schemas_[place];
    YamlProblems *problems = nullptr;
    if (schema == nullptr)
        schema.reset(ZRYAML_SchemaLoad(place.c_str(), &problems));
    std::vector<Diagnostic> diagnostics = diagnostics_take(problems);
    if (schema == nullptr)
        throw Failure(Status::misuse, std::move(diagnostics));
    return *schema;
}

std::vector<Diagnostic> Schemas::check(const OpenDocument &open, const std::string &file)
{
    std::optional<std::string> place = options_.schema;
    if (!place && !options_.no_modeline)
        place = modeline_schema(file);
    if (!place)
        return {};
    if (!options_.schema && is_url(*place)) {
        Diagnostic note;
        note.level = YAML_PROBLEM_NOTE;
        note.code = YAML_ERR_SCHEMA;
        note.file = open.document().name();
        note.line = note.column = 1;
        note.message = "the schema is not checked: nothing is fetched from " + *place;
        note.hint = "name a copy of it by --schema";
        return {note};
    }
    YamlProblems *problems = nullptr;
    // The root stands for an empty document too.
    (void)ZRYAML_SchemaCheck(&load(*place), &open.document().handle()->stRoot, &problems);
    return diagnostics_take(problems);
}

} // namespace zryaml::cli
