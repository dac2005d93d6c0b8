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

} // namespace

Document document_load(const std::string &file)
{
    Result<Document> document =
        file == input_argument ? Document::parse(input_text(), input_name) : Document::load(file);
    if (document)
        return std::move(document).value();
    Diagnostic diagnostic = diagnostic_of(document.error());
    throw Failure(is_unreadable(diagnostic) ? Status::misuse : Status::missing, std::move(diagnostic));
}

} // namespace zryaml::cli
