// SPDX-License-Identifier: Apache-2.0
// The tags by which a value of an upper layer says what becomes of the one below it.
#pragma once

#include "node_tree.h"

#include <string_view>

namespace zryaml {

enum class LayerTag : uint32_t { None, Append, Prepend, Replace, Unset };

constexpr std::string_view LayerTagNames[] = {"", "!append", "!prepend", "!replace", "!unset"};

// The tag as it was written, or the one that was probably meant by one that is unknown.
[[nodiscard]] constexpr LayerTag LayerTagMeant(const YamlListNode &value) noexcept
{
    return static_cast<LayerTag>(StateGet(value, NODE_LAYER_TAG_MASK, NODE_LAYER_TAG_SHIFT));
}

[[nodiscard]] constexpr LayerTag LayerTagOf(const YamlListNode &value) noexcept
{
    return (value.uiState & NODE_TAG_MISSPELT) != 0 ? LayerTag::None : LayerTagMeant(value);
}

constexpr void LayerTagSet(YamlListNode &value, LayerTag tag) noexcept
{
    value.uiState &= ~NODE_TAG_MISSPELT;
    StateSet(value, NODE_LAYER_TAG_MASK, NODE_LAYER_TAG_SHIFT, static_cast<uint32_t>(tag));
}

constexpr const char *MisspeltSentence = "this tag is unknown and ignored";

[[nodiscard]] constexpr const char *MisspeltHint(LayerTag meant) noexcept
{
    constexpr const char *hints[] = {"", "did you mean '!append'?", "did you mean '!prepend'?",
                                     "did you mean '!replace'?", "did you mean '!unset'?"};
    return hints[static_cast<uint32_t>(meant)];
}

[[nodiscard]] constexpr LayerTag LayerTagNamed(std::string_view name) noexcept
{
    for (uint32_t number = 1; number < std::size(LayerTagNames); ++number) {
        if (name == LayerTagNames[number])
            return static_cast<LayerTag>(number);
    }
    return LayerTag::None;
}

} // namespace zryaml
