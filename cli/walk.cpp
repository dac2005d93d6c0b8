// SPDX-License-Identifier: Apache-2.0
// Keeps one entry per open collection, of which the library allows 512.
#include "walk.h"

#include <vector>

namespace zryaml::cli {

void ValueWalk(const YamlListNode &stTop, Visitor &stVisitor)
{
    struct Open {
        const YamlListNode *pstValue;
        YamlChild stChild; // the last child that was visited
    };
    std::vector<Open> astOpen;
    const auto Visit = [&](const YamlChild &stChild) {
        stVisitor.Begin(stChild);
        if (stChild.uiType == YAML_DATATYPE_MAP || stChild.uiType == YAML_DATATYPE_SEQ)
            astOpen.push_back({stChild.pstValue, {}});
    };
    Visit({nullptr, &stTop, ZRYAML_ValueTypeGet(&stTop), 0, nullptr});
    while (!astOpen.empty()) {
        Open &stOpen = astOpen.back();
        if (ZRYAML_ChildNextGet(stOpen.pstValue, &stOpen.stChild) == YAML_OK) {
            const YamlChild stChild = stOpen.stChild; // a copy: the stack may move
            Visit(stChild);
        } else {
            stVisitor.End(ZRYAML_ValueTypeGet(stOpen.pstValue));
            astOpen.pop_back();
        }
    }
}

} // namespace zryaml::cli
