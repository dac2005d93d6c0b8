// SPDX-License-Identifier: Apache-2.0
// The syntax of patterns is that of key paths; how their components match is up to the stars in them.
#include "redact.h"

#include <algorithm>

namespace zryaml::cli {

namespace {

using std::string_view;
using Components = PathPattern::Components;

// Takes one component from a path, with its mark in front; empty if it is malformed.
std::string component_take(string_view &rest, bool first)
{
    if (rest.starts_with('[')) {
        const size_t end = rest.find(']');
        const std::string component(rest.substr(0, end));
        rest.remove_prefix(std::min(rest.size(), end == string_view::npos ? end : end + 1));
        return end == string_view::npos ? "" : component;
    }
    if (!first && !rest.starts_with('.'))
        return {};
    rest.remove_prefix(first ? 0 : 1);
    std::string component = ".";
    const bool braces = rest.starts_with('{');
    rest.remove_prefix(braces ? 1 : 0);
    const string_view ends = braces ? "}" : ".[";
    while (!rest.empty() && ends.find(rest.front()) == string_view::npos) {
        if (rest.size() > 1 && rest[0] == '\\' && string_view(".[]{}").find(rest[1]) != string_view::npos)
            rest.remove_prefix(1);
        component += rest.front();
        rest.remove_prefix(1);
    }
    const bool complete = braces ? rest.starts_with('}') : component.size() > 1;
    rest.remove_prefix(braces && complete ? 1 : 0);
    return complete ? component : "";
}

// The components of a path; none if it is malformed.
Components components_of(string_view path)
{
    Components components;
    for (string_view rest = path; !rest.empty();) {
        components.push_back(component_take(rest, components.empty()));
        if (components.back().empty())
            return {};
    }
    return components;
}

bool component_matches(string_view pattern, string_view component)
{
    if (pattern == ".*")
        return true;
    // The last star is tried with ever more characters.
    size_t star = string_view::npos;
    size_t retry = 0;
    size_t at = 0;
    size_t of = 0;
    while (of < component.size()) {
        if (at < pattern.size() && pattern[at] == '*') {
            star = at++;
            retry = of;
        } else if (at < pattern.size() && pattern[at] == component[of]) {
            ++at;
            ++of;
        } else if (star != string_view::npos) {
            at = star + 1;
            of = ++retry;
        } else {
            return false;
        }
    }
    return pattern.substr(at).find_first_not_of('*') == string_view::npos;
}

} // namespace

PathPattern::PathPattern(string_view text) : components_(components_of(text))
{
    if (!components_.empty())
        return;
    Diagnostic diagnostic;
    diagnostic.message = "--redact: '" + std::string(text) + "' is not a pattern of key paths";
    diagnostic.hint = "such as db.password, servers[*].token or **.secret";
    diagnostic.code = YAML_ERR_KEY;
    throw Failure(Status::misuse, std::move(diagnostic));
}

// Which parts of the path the pattern's beginning can stand for, one component of the pattern after the other.
bool PathPattern::matches(const Components &path) const
{
    std::vector<char> reached(path.size() + 1, 0);
    reached[0] = 1;
    for (const std::string &pattern : components_) {
        std::vector<char> next(path.size() + 1, 0);
        bool any = false;
        for (size_t at = 0; at <= path.size(); ++at) {
            any = any || reached[at] != 0;
            if (pattern == ".**")
                next[at] = any ? 1 : 0;
            else if (at > 0 && reached[at - 1] != 0)
                next[at] = component_matches(pattern, path[at - 1]) ? 1 : 0;
        }
        reached = std::move(next);
    }
    return reached.back() != 0;
}

bool PathPattern::matches(string_view path) const
{
    return matches(components_of(path));
}

void PathPattern::indices_widen()
{
    for (std::string &component : components_) {
        if (component.starts_with('['))
            component = "[*";
    }
}

std::vector<PathPattern> patterns_read(const std::vector<std::string> &texts)
{
    return {texts.begin(), texts.end()};
}

} // namespace zryaml::cli
