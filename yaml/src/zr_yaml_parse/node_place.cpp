// SPDX-License-Identifier: Apache-2.0
// The rarer steps of placing nodes.
#include "parse_internal.h"

using namespace zryaml;
using namespace zryaml::parse;

void zryaml::parse::ElementsNumber(const YamlListNode &stSeq) noexcept
{
    uint32_t uiNumber = 0;
    for (YamlListNode &stElement : Children(stSeq))
        stElement.uPlace.uiNumber = uiNumber++;
}

void zryaml::parse::ChildrenDetach(YamlListNode &stFather) noexcept
{
    while (YamlListNode *pstChild = FirstChild(stFather)) {
        YamlList &stLink = LinkIn(stFather, *pstChild);
        ListRemove(stLink);
        ListInit(stLink);
        pstChild->pstFather = nullptr;
    }
}

YamlListNode *zryaml::parse::UnmarkedCollection(YamlListNode &stCurrNode, uint32_t uiDataType) noexcept
{
    YamlListNode *pstFather = stCurrNode.pstFather;
    if (stCurrNode.uiDataType == uiDataType && !HasChildren(stCurrNode))
        return &stCurrNode;
    if (pstFather != nullptr && pstFather->uiDataType == uiDataType)
        return pstFather; // from an element or a key
    if (uiDataType == YAML_DATATYPE_SEQ)
        return stCurrNode.uiDataType == YAML_DATATYPE_SEQ ? &stCurrNode : nullptr;
    return pstFather != nullptr ? pstFather->pstFather : nullptr; // from the value of a key
}
