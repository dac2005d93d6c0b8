// SPDX-License-Identifier: Apache-2.0
// No exit status hangs on the wording of a message: codes and places decide.
#include "load.h"
#include "input.h"

#include <algorithm>
#include <array>

namespace zryaml::cli {

namespace {

constexpr const char *assignment_option = "--set";

// Codes of a load that never came to judge the text, if no place in it is known.
constexpr std::array unreadable_codes = {YAML_ERR_NOMEM, YAML_ERR_PARAM,  YAML_ERR_POOL,
                                         YAML_ERR_OPEN,  YAML_ERR_READER, YAML_ERR_PARSER_INIT};

bool is_unreadable(const Diagnostic &diagnostic)
{
    return diagnostic.line == 0 && std::ranges::count(unreadable_codes, diagnostic.code) > 0;
}

// Whether it is about an assignment, whose source begins with the option's name: a mistake on the command line.
bool is_assigned(const Diagnostic &diagnostic)
{
    return diagnostic.line == 0 && diagnostic.file.starts_with(assignment_option);
}

Document alone_load(const std::string &file)
{
    Result<Document> document =
        file == input_argument ? Document::parse(input_text(), input_name) : Document::load(file);
    if (document)
        return std::move(document).value();
    Diagnostic diagnostic = diagnostic_of(document.error());
    throw Failure(is_unreadable(diagnostic) ? Status::misuse : Status::missing, std::move(diagnostic));
}

// As alone_load, with what the document probably does not mean.
Document reviewed_load(const std::string &file, std::vector<Diagnostic> &remarks)
{
    const bool input = file == input_argument;
    YamlProblems *problems = nullptr;
    YamlHandle *handle = input ? ZRYAML_TextReview(input_text().data(), input_text().size(), input_name, &problems)
                               : ZRYAML_FileReview(file.c_str(), &problems);
    std::vector<Diagnostic> diagnostics = diagnostics_take(problems);
    if (handle == nullptr) {
        diagnostics.front().record = ZRYAML_LastErrorGet()->pcRecord;
        const bool unreadable = is_unreadable(diagnostics.front());
        throw Failure(unreadable ? Status::misuse : Status::missing, std::move(diagnostics));
    }
    std::ranges::move(diagnostics, std::back_inserter(remarks));
    return Document::adopt(handle);
}

YamlLayer file_layer(const std::string &file)
{
    if (file == input_argument)
        return {YAML_LAYER_TEXT, 0, input_name, input_text().data(), input_text().size(), nullptr};
    return {YAML_LAYER_FILE, 0, file.c_str(), nullptr, 0, nullptr};
}

Document layered_load(const Options &options, const std::string &file, std::vector<Diagnostic> &remarks)
{
    const std::vector<YamlLayer> layers = layers_of(options, file);
    const YamlLayerOptions layer_options = layer_options_of(options);
    YamlProblems *problems = nullptr;
    YamlHandle *handle =
        ZRYAML_LayersLoad(layers.data(), static_cast<uint32_t>(layers.size()), &layer_options, &problems);
    std::vector<Diagnostic> diagnostics = diagnostics_take(problems);
    if (handle == nullptr)
        throw load_failure(std::move(diagnostics));
    std::ranges::move(diagnostics, std::back_inserter(remarks));
    return Document::adopt(handle);
}

} // namespace

// Files first, then the environment, then assignments, wherever they were written.
std::vector<YamlLayer> layers_of(const Options &options, const std::string &file)
{
    std::vector<YamlLayer> layers = {file_layer(file)};
    for (const std::string &over : options.over)
        layers.push_back(file_layer(over));
    for (const std::string &prefix : options.environment)
        layers.push_back({YAML_LAYER_ENVIRONMENT, 0, prefix.c_str(), nullptr, 0, nullptr});
    for (const std::string &assignment : options.assignments)
        layers.push_back({YAML_LAYER_ASSIGNMENT, 0, assignment_option, assignment.c_str(), 0, nullptr});
    return layers;
}

YamlLayerOptions layer_options_of(const Options &options) noexcept
{
    YamlLayerOptions layer_options = YAML_LAYER_OPTIONS_INIT;
    layer_options.uiFlags =
        (options.expand ? YAML_LAYERS_EXPAND : 0) | (options.merge_forms ? YAML_LAYERS_MERGE_FORMS : 0);
    return layer_options;
}

Failure load_failure(std::vector<Diagnostic> diagnostics)
{
    const bool misuse =
        std::ranges::any_of(diagnostics, is_unreadable) || std::ranges::any_of(diagnostics, is_assigned);
    return {misuse ? Status::misuse : Status::missing, std::move(diagnostics)};
}

Document document_load(const Options &options, const std::string &file, std::vector<Diagnostic> &remarks)
{
    const bool alone = options.over.empty() && options.environment.empty() && options.assignments.empty() &&
                       !options.expand && !options.merge_forms;
    if (!alone)
        return layered_load(options, file, remarks);
    return options.review ? reviewed_load(file, remarks) : alone_load(file);
}

} // namespace zryaml::cli
