// SPDX-License-Identifier: Apache-2.0
// "file:line:column: error: message" on standard error, then notes in the same shape, which editors can jump to. A
// terminal also gets the source line with a caret under the place. Nothing of a document or a file name reaches the
// terminal as a control character.
#include "excerpt.h"
#include "excerpt_mask.h"
#include "report.h"
#include "terminal.h"
#include "text.h"

#include <algorithm>
#include <cstdio>

namespace zryaml::cli {

namespace {

struct Place {
    uint32_t line, column;
};

// Escape sequences of a terminal; all empty where there is no colour.
struct Palette {
    const char *place = "", *error = "", *warning = "", *note = "", *caret = "", *end = "";
};
constexpr Palette colours = {"\033[1m", "\033[1;31m", "\033[1;35m", "\033[1;36m", "\033[1;32m", "\033[0m"};

void lines_write(const std::string &lines)
{
    (void)fwrite(lines.data(), 1, lines.size(), stderr); // there is no other place to tell of a failure
}

// The source line and the caret below it.
std::string excerpt_lines(const SourceWindow &window, const Place &place, const Palette &palette)
{
    const std::string number = ' ' + std::to_string(place.line);
    const size_t margin = number.size() + 4; // " | ", and a cell that the cursor may stand in
    const size_t width = error_width();
    const Excerpt excerpt = excerpt_make(window, width - std::min(width, margin));
    return number + " | " + excerpt.text + '\n' + std::string(number.size(), ' ') + " | " +
           std::string(excerpt.caret, ' ') + palette.caret + '^' + palette.end + '\n';
}

class TextReporter : public Reporter {
public:
    explicit TextReporter(const Options &options)
    {
        if (!options.redact.empty())
            mask_.emplace(options);
    }

    void report(const Diagnostic &diagnostic) override
    {
        const Place place = {diagnostic.line, diagnostic.column};
        const Place first = {diagnostic.first_line, diagnostic.first_column};
        message(diagnostic.file, place, level_name(diagnostic), level_colour(diagnostic), sentence(diagnostic));
        excerpt(diagnostic.file, place);
        if (!diagnostic.hint.empty())
            note(diagnostic.file, place, diagnostic.hint);
        if (first.line == 0)
            return;
        note(diagnostic.file, first, first_sentence(diagnostic));
        excerpt(diagnostic.file, first);
    }

private:
    void message(const std::string &file, const Place &place, const std::string &level, const char *colour,
                 const std::string &text) const
    {
        std::string line = palette_.place + (file.empty() ? "zryaml" : visible_text(file)) + ':';
        if (place.line != 0)
            line += std::to_string(place.line) + ':' + std::to_string(place.column) + ':';
        line += palette_.end;
        line += ' ';
        line += colour + level + ':' + palette_.end + ' ';
        lines_write(line + visible_text(text) + '\n');
    }
    void note(const std::string &file, const Place &place, const std::string &text) const
    {
        message(file, place, "note", palette_.note, text);
    }
    // None if the source cannot be read again, or memory is short.
    void excerpt(const std::string &file, const Place &place)
    try {
        if (place.line == 0 || !error_is_terminal())
            return;
        const std::optional<SourceWindow> window =
            mask_ ? mask_->window(file, place.line, place.column) : source_window(file, place.line, place.column);
        if (window)
            lines_write(excerpt_lines(*window, place, palette_));
    } catch (const std::exception &) {
        return;
    }
    [[nodiscard]] const char *level_colour(const Diagnostic &diagnostic) const
    {
        if (diagnostic.level == YAML_PROBLEM_ERROR)
            return palette_.error;
        return diagnostic.level == YAML_PROBLEM_WARNING ? palette_.warning : palette_.note;
    }

    std::optional<ExcerptMask> mask_;
    Palette palette_ = error_has_colour() ? colours : Palette();
};

} // namespace

std::unique_ptr<Reporter> text_reporter(const Options &options)
{
    return std::make_unique<TextReporter>(options);
}

} // namespace zryaml::cli
