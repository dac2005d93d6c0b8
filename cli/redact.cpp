// SPDX-License-Identifier: Apache-2.0
// Hides rather too much than too little.
#include "redact.h"

#include <algorithm>
#include <unordered_map>
#include <zr_yaml_layers.h>

namespace zryaml::cli {

namespace {

template <class Visit> void each_value(const Value &value, Visit visit)
{
    visit(value);
    for (const Value &child : value)
        each_value(child, visit);
}

// A text with *** in the place of each quoted piece.
std::string quotes_hidden(const std::string &text)
{
    std::string hidden;
    for (size_t at = 0; at < text.size(); ++at) {
        hidden += text[at];
        const bool quote = text[at] == '\'' || text[at] == '"';
        const size_t end = quote ? text.rfind(text[at]) : at;
        if (end > at) {
            hidden.append(Redactor::mark).append(1, text[end]);
            at = end;
        }
    }
    return hidden;
}

// Where something was interpolated from a hidden value: diagnostics know values by their paths alone.
std::unordered_set<std::string> &paths_of_referring()
{
    static std::unordered_set<std::string> paths;
    return paths;
}

} // namespace

Redactor::Redactor(const std::vector<std::string> &patterns, const Value &root)
{
    if (patterns.empty() || !root.exists())
        return;
    PathPattern::Components path;
    matching_hide(patterns_read(patterns), root, path);
    referring_hide(root);
}

void Redactor::matching_hide(const std::vector<PathPattern> &patterns, const Value &value,
                             PathPattern::Components &path)
{
    for (const PathPattern &pattern : patterns) {
        if (pattern.matches(path))
            hidden_.insert(value.node());
    }
    path.emplace_back();
    size_t index = 0;
    for (const Value &element : value) {
        if (value.is_map())
            break;
        path.back() = '[' + std::to_string(index++);
        matching_hide(patterns, element, path);
    }
    for (const auto &[key, below] : value.items()) {
        path.back() = '.' + std::string(key);
        matching_hide(patterns, below, path);
    }
    path.pop_back();
}

// Follows interpolations from the hidden values to all that took a text from them.
void Redactor::referring_hide(const Value &root)
{
    std::unordered_multimap<const YamlListNode *, const YamlListNode *> referring;
    each_value(root, [&](const Value &value) {
        for (uint32_t number = 0; const YamlListNode *from = ZRYAML_ReferenceGet(value.node(), number); ++number)
            referring.emplace(from, value.node());
    });
    std::vector<const YamlListNode *> todo(hidden_.begin(), hidden_.end());
    while (!todo.empty()) {
        const auto [begin, end] = referring.equal_range(todo.back());
        todo.pop_back();
        for (auto referrer = begin; referrer != end; ++referrer) {
            if (!hidden_.insert(referrer->second).second)
                continue;
            todo.push_back(referrer->second);
            paths_of_referring().insert(Value(referrer->second).path());
        }
    }
}

std::string record_redacted(std::string_view record)
{
    std::string begin(record.substr(0, record.find_first_of("'\"=:")));
    return begin.size() == record.size() ? begin : begin.append(1, record[begin.size()]).append(Redactor::mark);
}

Diagnostic redacted(Diagnostic diagnostic, const std::vector<PathPattern> &patterns)
{
    diagnostic.record = record_redacted(diagnostic.record);
    const bool fits = std::ranges::any_of(
        patterns, [&](const PathPattern &pattern) { return pattern.matches(std::string_view(diagnostic.path)); });
    if (!diagnostic.path.empty() && (fits || paths_of_referring().contains(diagnostic.path))) {
        diagnostic.message = "the value is wrong; --redact hides it";
        diagnostic.names_value = false;
        diagnostic.hint.clear();
    }
    if (diagnostic.path.empty()) {
        diagnostic.message = quotes_hidden(diagnostic.message);
        diagnostic.hint = quotes_hidden(diagnostic.hint);
    }
    return diagnostic;
}

} // namespace zryaml::cli
