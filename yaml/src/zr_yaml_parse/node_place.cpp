// SPDX-License-Identifier: Apache-2.0
// The rarer steps of placing nodes.
#include "parse_internal.h"

using namespace zryaml;
using namespace zryaml::parse;

void zryaml::parse::ElementsNumber(const YamlListNode &seq) noexcept
{
    uint32_t number = 0;
    for (YamlListNode &element : Children(seq))
        element.uPlace.uiNumber = number++;
}

void zryaml::parse::ChildrenDetach(YamlListNode &father) noexcept
{
    while (YamlListNode *child = FirstChild(father)) {
        YamlList &link = LinkIn(father, *child);
        ListRemove(link);
        ListInit(link);
        child->pstFather = nullptr;
    }
}

YamlListNode *zryaml::parse::UnmarkedCollection(YamlListNode &currNode, uint32_t dataType) noexcept
{
    YamlListNode *father = currNode.pstFather;
    if (currNode.uiDataType == dataType && !HasChildren(currNode))
        return &currNode;
    if (father != nullptr && father->uiDataType == dataType)
        return father; // from an element or a key
    if (dataType == YAML_DATATYPE_SEQ)
        return currNode.uiDataType == YAML_DATATYPE_SEQ ? &currNode : nullptr;
    return father != nullptr ? father->pstFather : nullptr; // from the value of a key
}
