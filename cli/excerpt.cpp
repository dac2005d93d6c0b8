// SPDX-License-Identifier: Apache-2.0
// Lays a line out in cells and cuts it around the caret if it is too wide.
#include "excerpt.h"
#include "text.h"

#include <algorithm>
#include <vector>

namespace zryaml::cli {

namespace {

constexpr size_t TabWidth = 8;
constexpr std::string_view g_svCut = "..."; // stands for what was cut

struct Piece { // one character as it is shown
    std::string stText;
    size_t ulCell; // where it begins
    size_t ulWidth;
};

Piece PieceOf(const Character &stCharacter, size_t ulCell)
{
    if (stCharacter.stCode == U'\t') {
        const size_t ulSpaces = TabWidth - ulCell % TabWidth;
        return {std::string(ulSpaces, ' '), ulCell, ulSpaces};
    }
    if (IsHidden(stCharacter)) {
        std::string stEscape = EscapeOf(stCharacter);
        const size_t ulLength = stEscape.size();
        return {std::move(stEscape), ulCell, ulLength};
    }
    return {std::string(stCharacter.svBytes), ulCell, WidthOf(stCharacter)};
}

struct Layout {
    std::vector<Piece> astPiece;
    size_t ulCaret = 0;
    size_t ulWidth = 0;
};

// Like the library, counts every byte that does not continue a character as a column.
Layout LayoutMake(std::string_view svLine, uint32_t uiColumn)
{
    Layout stLayout;
    uint32_t uiAt = 0;
    bool bReached = false;
    while (!svLine.empty()) {
        const Character stCharacter = CharacterFirst(svLine);
        if ((static_cast<unsigned char>(svLine.front()) & 0xC0U) != 0x80U)
            ++uiAt;
        if (uiAt == uiColumn && !bReached) {
            stLayout.ulCaret = stLayout.ulWidth;
            bReached = true;
        }
        stLayout.astPiece.push_back(PieceOf(stCharacter, stLayout.ulWidth));
        stLayout.ulWidth += stLayout.astPiece.back().ulWidth;
        svLine.remove_prefix(stCharacter.svBytes.size());
    }
    if (!bReached)
        stLayout.ulCaret = stLayout.ulWidth;
    return stLayout;
}

// The pieces that lie wholly in a range of cells.
Excerpt PiecesJoin(const Layout &stLayout, size_t ulBegin, size_t ulEnd)
{
    Excerpt stExcerpt;
    size_t ulFirst = ulEnd;
    for (const Piece &stPiece : stLayout.astPiece) {
        if (stPiece.ulCell < ulBegin || stPiece.ulCell + stPiece.ulWidth > ulEnd)
            continue;
        ulFirst = std::min(ulFirst, stPiece.ulCell);
        stExcerpt.stText += stPiece.stText;
    }
    stExcerpt.ulCaret = stLayout.ulCaret - std::min(ulFirst, stLayout.ulCaret);
    return stExcerpt;
}

} // namespace

Excerpt ExcerptMake(std::string_view svLine, uint32_t uiColumn, size_t ulWidth)
{
    const Layout stLayout = LayoutMake(svLine, uiColumn);
    if (stLayout.ulWidth <= ulWidth)
        return PiecesJoin(stLayout, 0, stLayout.ulWidth);
    const size_t ulRoom = ulWidth - std::min(ulWidth, 2 * g_svCut.size());
    const size_t ulBegin =
        std::min(stLayout.ulCaret - std::min(stLayout.ulCaret, ulRoom / 2), stLayout.ulWidth - ulRoom);
    const size_t ulEnd = ulBegin + ulRoom;
    Excerpt stExcerpt = PiecesJoin(stLayout, ulBegin, ulEnd);
    if (ulBegin > 0) {
        stExcerpt.stText.insert(0, g_svCut);
        stExcerpt.ulCaret += g_svCut.size();
    }
    if (ulEnd < stLayout.ulWidth)
        stExcerpt.stText += g_svCut;
    return stExcerpt;
}

} // namespace zryaml::cli
