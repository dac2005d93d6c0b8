// SPDX-License-Identifier: Apache-2.0
#include "modeline.h"
#include "input.h"
#include "source_window.h"

#include <filesystem>
#include <string_view>

namespace zryaml::cli {

namespace {

using std::string_view;

void blanks_skip(string_view &text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
}

bool take(string_view &text, string_view word)
{
    blanks_skip(text);
    const bool found = text.starts_with(word);
    text.remove_prefix(found ? word.size() : 0);
    return found;
}

} // namespace

std::optional<std::string> modeline_schema(const std::string &file)
{
    const std::optional<SourceWindow> first = source_window(file == input_argument ? input_name : file, 1, 1);
    string_view rest = first ? string_view(first->text) : "";
    if (!rest.starts_with('#') || !take(rest = rest.substr(1), "yaml-language-server") || !take(rest, ":") ||
        !take(rest, "$schema="))
        return std::nullopt;
    const string_view place = rest.substr(0, rest.find_first_of(" \t"));
    if (place.empty() || is_url(std::string(place)))
        return place.empty() ? std::nullopt : std::optional<std::string>(place);
    const std::filesystem::path folder = file == input_argument ? "" : std::filesystem::path(file).parent_path();
    return (folder / place).string();
}

bool is_url(const std::string &place)
{
    return place.find("://") != std::string::npos;
}

} // namespace zryaml::cli
