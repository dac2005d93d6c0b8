// SPDX-License-Identifier: Apache-2.0
// Hides rather too much than too little.
#include "redact.h"

namespace zryaml::cli {

namespace {

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

} // namespace

Redactor::Redactor(const std::vector<std::string> &patterns, const Value &root)
{
    if (patterns.empty() || !root.exists())
        return;
    PathPattern::Components path;
    matching_hide(patterns_read(patterns), root, path);
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

Diagnostic redacted(Diagnostic diagnostic, const std::vector<PathPattern> &patterns)
{
    diagnostic.record.clear();
    for (const PathPattern &pattern : patterns) {
        if (!diagnostic.path.empty() && pattern.matches(diagnostic.path)) {
            diagnostic.message = "the value is wrong; --redact hides it";
            diagnostic.names_value = false;
            diagnostic.hint.clear();
        }
    }
    if (diagnostic.path.empty()) {
        diagnostic.message = quotes_hidden(diagnostic.message);
        diagnostic.hint = quotes_hidden(diagnostic.hint);
    }
    return diagnostic;
}

} // namespace zryaml::cli
