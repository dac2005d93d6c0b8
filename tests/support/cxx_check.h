// SPDX-License-Identifier: Apache-2.0
// What holds for every document, path and value of the C++ face. Each throws, as Require does, if it doesn't.
#pragma once

#include "tree_check.h"

#include <zr_yaml.hpp>

#include <algorithm>

inline void ErrorCheck(const zryaml::Error &stError)
{
    Require(stError.code != YAML_OK && !stError.message.empty(), "an error without a code or a message");
    Require(std::ranges::none_of(stError.what(), [](char c) { return c >= 0 && c < ' '; }), "an error breaks its line");
}

// A value that a narrow type holds is the same in a wide type; a default stands for nothing that is there.
template <class Narrow, class Wide> void ReadCheck(const zryaml::Value &stValue)
{
    const zryaml::Result<Narrow> stNarrow = stValue.get<Narrow>(), stElse = stValue.get_or(Narrow{7});
    const bool bAbsent = !stValue.exists() && !stNarrow.has_value() && stNarrow.error().is_absent();
    Require(stElse.has_value() == (stNarrow.has_value() || bAbsent), "a default for what is wrong", stValue.path());
    if (!stNarrow.has_value())
        return ErrorCheck(stNarrow.error());
    const zryaml::Result<Wide> stWide = stValue.get<Wide>();
    Require(stWide.has_value() && *stWide == static_cast<Wide>(*stNarrow), "a narrow read differs from the wide one");
}

inline void ValueCheck(const zryaml::Value &stValue)
{
    ReadCheck<short, long long>(stValue);
    ReadCheck<uint16_t, uint64_t>(stValue);
    ReadCheck<std::chrono::duration<int32_t>, std::chrono::milliseconds>(stValue);
}

// Checks a value and all below it, up to a number, and that each is found by its path, its number and its key. Gives
// each text with its path.
inline std::string TextsRead(const zryaml::Value &stRoot, const zryaml::Value &stValue, int32_t &iRest)
{
    const std::string path = stValue.path();
    Require(stRoot.at(path).node() == stValue.node(), "a value is not found by its path", path);
    Require(stValue.empty() == (stValue.size() == 0), "an empty value has children", path);
    ValueCheck(stValue);
    std::string texts = stValue.text() ? path + '=' + std::string(*stValue.text()) + '\n' : "";
    uint32_t uiIndex = 0;
    auto itItem = stValue.items().begin();
    for (const zryaml::Value &stChild : stValue) {
        if (--iRest < 0)
            return texts;
        const auto [svKey, stSame] = stValue.is_map() ? *itItem++ : zryaml::Item{"", stValue[uiIndex++]};
        const bool bByKey = !stValue.is_map() || stValue.at("{}", svKey).node() == stChild.node();
        Require(stSame.node() == stChild.node() && bByKey, "a child differs", path);
        if (stChild.is_scalar() || !svKey.ends_with('\\')) // below such a key, nothing has a path
            texts += TextsRead(stRoot, stChild, iRest);
    }
    Require(itItem == stValue.items().end(), "more items than children", path);
    return texts;
}
