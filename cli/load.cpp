// SPDX-License-Identifier: Apache-2.0
// No exit status hangs on the wording of a message: codes and places decide.
#include "load.h"
#include "input.h"

#include <algorithm>
#include <array>

namespace zryaml::cli {

namespace {

// Codes of a load that never came to judge the text, if no place in it is known.
constexpr std::array unreadable_codes = {YAML_ERR_NOMEM, YAML_ERR_PARAM,  YAML_ERR_POOL,
                                         YAML_ERR_OPEN,  YAML_ERR_READER, YAML_ERR_PARSER_INIT};

bool is_unreadable(const Diagnostic &diagnostic)
{
    return diagnostic.line == 0 && std::ranges::count(unreadable_codes, diagnostic.code) > 0;
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

} // namespace

Document document_load(const Options &options, const std::string &file, std::vector<Diagnostic> &remarks)
{
    return options.review ? reviewed_load(file, remarks) : alone_load(file);
}

} // namespace zryaml::cli
