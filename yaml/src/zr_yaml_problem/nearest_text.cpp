// SPDX-License-Identifier: Apache-2.0
// The distance is the number of insertions, deletions, changes and swaps of neighbours (optimal string alignment), in
// bytes and without regard to the case of ASCII letters.
#include "../nearest_text.h"
#include "../node_tree.h"

#include <zr_yaml_problem.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr size_t LongestText = 64;   // longer names are not compared
constexpr uint32_t WidestMap = 1000; // keys, so that a failed lookup in a huge map stays cheap

constexpr char Lower(char letter) noexcept
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

uint32_t Distance(std::string_view left, std::string_view right) noexcept
{
    uint32_t rows[3][LongestText + 1]; // the one at hand and the two before it
    for (size_t column = 0; column <= right.size(); ++column)
        rows[0][column] = static_cast<uint32_t>(column);
    for (size_t row = 1; row <= left.size(); ++row) {
        uint32_t *now = rows[row % 3];
        const uint32_t *before = rows[(row + 2) % 3];
        const uint32_t *twoBefore = rows[(row + 1) % 3];
        now[0] = static_cast<uint32_t>(row);
        for (size_t column = 1; column <= right.size(); ++column) {
            const char here = Lower(left[row - 1]), there = Lower(right[column - 1]);
            now[column] = std::min({before[column] + 1, now[column - 1] + 1, before[column - 1] + (here != there)});
            const bool swapped = row > 1 && column > 1 && here != there && here == Lower(right[column - 2]) &&
                                 there == Lower(left[row - 2]);
            if (swapped)
                now[column] = std::min(now[column], twoBefore[column - 2] + 1);
        }
    }
    return rows[left.size() % 3][right.size()];
}

// What counts as near: a third of the text, three at most.
uint32_t NearLimit(std::string_view text) noexcept
{
    return static_cast<uint32_t>(std::min<size_t>((text.size() + 1) / 3, 3));
}

} // namespace

zryaml::NearestText::NearestText(std::string_view text) noexcept : text_(text), distance_(NearLimit(text) + 1) {}

void zryaml::NearestText::Offer(std::string_view name) noexcept
{
    const size_t longer = std::max(name.size(), text_.size());
    const size_t difference = longer - std::min(name.size(), text_.size());
    if (longer > LongestText || name.empty() || difference > distance_ || difference > NearLimit(text_))
        return;
    const uint32_t distance = Distance(text_, name);
    if (distance < distance_) {
        distance_ = distance;
        best_ = name.data();
        tied_ = false;
    } else if (distance == distance_ && best_ != nullptr && name != best_) {
        tied_ = true;
    }
}

const char *ZRYAML_NearestTextGet(const char *pcText, const char *const *apcNames, uint32_t uiCount)
{
    if (pcText == nullptr || apcNames == nullptr)
        return nullptr;
    zryaml::NearestText nearest(pcText);
    for (uint32_t number = 0; number < uiCount; ++number)
        nearest.Offer(apcNames[number]);
    return nearest.Best();
}

const char *ZRYAML_NearestKeyGet(const YamlListNode *pstMap, const char *pcText)
{
    if (pstMap == nullptr || pstMap->uiDataType != YAML_DATATYPE_MAP || pcText == nullptr)
        return nullptr;
    zryaml::NearestText nearest(pcText);
    uint32_t count = 0;
    for (const YamlListNode &key : zryaml::Children(*pstMap)) {
        if (++count > WidestMap)
            return nullptr;
        if (key.uiSameWithAnchor == 0)
            nearest.Offer(key.pcValue);
    }
    return nearest.Best();
}
