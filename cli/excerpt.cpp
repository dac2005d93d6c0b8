// SPDX-License-Identifier: Apache-2.0
// Lays a line out in cells and cuts it around the caret if it is too wide.
#include "excerpt.h"
#include "text.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace zryaml::cli {

namespace {

constexpr size_t tab_width = 8;
constexpr std::string_view cut_mark = "..."; // stands for what was cut

struct Piece { // one character as it is shown
    std::string text;
    size_t cell; // where it begins
    size_t width;
};

Piece piece_of(const Character &character, size_t cell)
{
    if (character.bytes == "\t") {
        const size_t spaces = tab_width - cell % tab_width;
        return {std::string(spaces, ' '), cell, spaces};
    }
    std::string text = is_hidden(character) ? escape_of(character) : std::string(character.bytes);
    const size_t width = is_hidden(character) ? text.size() : width_of(character);
    return {std::move(text), cell, width};
}

struct Layout {
    std::vector<Piece> pieces;
    size_t caret = 0;
    size_t width = 0;
};

Layout layout_make(const SourceWindow &window)
{
    Layout layout;
    std::string_view rest = window.text;
    while (!rest.empty()) {
        if (window.text.size() - rest.size() <= window.place)
            layout.caret = layout.width;
        const Character character = character_first(rest);
        layout.pieces.push_back(piece_of(character, layout.width));
        layout.width += layout.pieces.back().width;
        rest.remove_prefix(character.bytes.size());
    }
    if (window.place == window.text.size())
        layout.caret = layout.width;
    return layout;
}

// The pieces that lie wholly in a range of cells.
Excerpt pieces_join(const Layout &layout, size_t begin, size_t end)
{
    Excerpt excerpt;
    size_t first = end;
    for (const Piece &piece : layout.pieces) {
        if (piece.cell < begin || piece.cell + piece.width > end)
            continue;
        first = std::min(first, piece.cell);
        excerpt.text += piece.text;
    }
    excerpt.caret = layout.caret - std::min(first, layout.caret);
    return excerpt;
}

} // namespace

Excerpt excerpt_make(const SourceWindow &window, size_t width)
{
    const Layout layout = layout_make(window);
    if (layout.width <= width && !window.cut_before && !window.cut_after)
        return pieces_join(layout, 0, layout.width);
    const size_t room = std::min(layout.width, width - std::min(width, 2 * cut_mark.size()));
    const size_t begin = std::min(layout.caret - std::min(layout.caret, room / 2), layout.width - room);
    Excerpt excerpt = pieces_join(layout, begin, begin + room);
    if (begin > 0 || window.cut_before) {
        excerpt.text.insert(0, cut_mark);
        excerpt.caret += cut_mark.size();
    }
    if (begin + room < layout.width || window.cut_after)
        excerpt.text += cut_mark;
    return excerpt;
}

} // namespace zryaml::cli
