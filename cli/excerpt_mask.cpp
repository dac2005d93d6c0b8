// SPDX-License-Identifier: Apache-2.0
#include "excerpt_mask.h"

#include <algorithm>
#include <zr_base.h>

namespace zryaml::cli {

namespace {

constexpr std::string_view blanks = " \t";

// What is shown of a hidden part of a line: what can only stand between values, and *** for the rest.
std::string part_masked(std::string_view part, bool begins_line, bool ends_line)
{
    const size_t begin = std::min(part.find_first_not_of(blanks), part.size());
    const bool dashes = begins_line && !ends_line && part.find_first_not_of(" -") == std::string_view::npos;
    if (dashes || begin == part.size())
        return std::string(part);
    const bool comma = !ends_line && part.size() - begin > 2 && part.ends_with(", ");
    return std::string(part.substr(0, begin)).append(Redactor::mark).append(comma ? ", " : "");
}

bool begins_character(char byte) noexcept
{
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

} // namespace

ExcerptMask::ExcerptMask(const Options &options)
    : patterns_(patterns_read(options.redact)), expand_(options.expand), merge_forms_(options.merge_forms)
{
    for (PathPattern &pattern : patterns_)
        pattern.indices_widen();
}

std::optional<SourceWindow> ExcerptMask::window(const std::string &file, uint32_t line, uint32_t column)
{
    const Source &from = source(file);
    std::optional<SourceWindow> shown;
    if (!from.marks.empty())
        shown = text_window(from.text, line, column);
    if (!shown)
        return shown;
    const SourceWindow whole = *shown;
    shown->text.clear();
    uint32_t at_column = whole.column - 1;
    for (size_t begin = 0, end = 0; begin < whole.text.size(); begin = end) {
        const bool hidden = is_hidden(from, line, at_column + 1);
        do
            at_column += begins_character(whole.text[end++]) ? 1U : 0U;
        while (end < whole.text.size() &&
               (!begins_character(whole.text[end]) || is_hidden(from, line, at_column + 1) == hidden));
        const std::string_view part = std::string_view(whole.text).substr(begin, end - begin);
        if (whole.place >= begin && whole.place <= end)
            shown->place = shown->text.size() + (hidden ? 0 : whole.place - begin);
        if (hidden)
            shown->text += part_masked(part, begin == 0 && !whole.cut_before, end == whole.text.size());
        else
            shown->text += part;
    }
    return shown;
}

const ExcerptMask::Source &ExcerptMask::source(const std::string &file)
{
    const auto [found, is_new] = sources_.try_emplace(file);
    Source &made = found->second;
    std::optional<std::string> text = is_new ? source_text(file) : std::nullopt;
    if (!text)
        return made;
    made.text = std::move(*text);
    const uint32_t level = ZR_LogLevelGet();
    ZR_LogLevelSet(ZR_LOG_NOTHING); // what is wrong with it has been told
    const Result<Document> document = Document::parse(made.text, file);
    ZR_LogLevelSet(level);
    if (!document)
        return made;
    PathPattern::Components path;
    value_mark(made, document->root(), path);
    std::ranges::sort(made.marks); // of those at one place, such as the copies of an alias, a hidden one last
    return made;
}

void ExcerptMask::value_mark(Source &source, const Value &value, PathPattern::Components &path) const
{
    if (!value.exists())
        return;
    source.marks.push_back({value.line(), value.column(), hides(value, path)});
    entries_mark(source, value, path);
}

void ExcerptMask::entries_mark(Source &source, const Value &value, PathPattern::Components &path) const
{
    for (const Value &element : value) {
        if (value.is_map())
            break;
        path.emplace_back("[0");
        value_mark(source, element, path);
        path.pop_back();
    }
    for (const auto &[key, below] : value.items()) {
        const YamlListNode &node = *below.node()->pstFather;
        source.marks.push_back({node.uiLine, node.uiColumn, false});
        const bool merges = merge_forms_ && key == "<<"; // what is below may become keys of this map
        if (!merges)
            path.push_back('.' + std::string(key));
        if (merges && below.is_sequence()) {
            for (const Value &merged : below)
                value_mark(source, merged, path);
        } else {
            value_mark(source, below, path);
        }
        if (!merges)
            path.pop_back();
    }
}

// Whether a value's text is hidden, or may become one that is.
bool ExcerptMask::hides(const Value &value, const PathPattern::Components &path) const
{
    if (!value.is_scalar())
        return false;
    if (expand_ && value.text().value_or("").find("${") != std::string_view::npos)
        return true;
    return std::ranges::any_of(patterns_, [&](const PathPattern &pattern) { return pattern.matches(path); });
}

bool ExcerptMask::is_hidden(const Source &source, uint32_t line, uint32_t column)
{
    const auto behind = std::ranges::upper_bound(source.marks, Mark{line, column, true});
    return behind != source.marks.begin() && std::prev(behind)->hidden;
}

} // namespace zryaml::cli
