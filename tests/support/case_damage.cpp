// SPDX-License-Identifier: Apache-2.0
// Makes a node of the document such as no load makes it.
#include "case_file.h"
#include "case_operations.h"
#include "node_tree.h"

#include <sstream>

namespace {

using std::string;

const std::map<string, void (*)(YamlListNode &, uint32_t)> g_damages = {
    {"foreign", [](YamlListNode &st, uint32_t) { st.uiMagic = 0; }},
    {"marked", [](YamlListNode &st, uint32_t) { st.uiSameWithAnchor = 1; }},
    {"childless", [](YamlListNode &st, uint32_t) { zryaml::ListInit(st.stChildList); }},
    {"type", [](YamlListNode &st, uint32_t uiType) { st.uiDataType = uiType; }},
};

} // namespace

YamlListNode *NodeAt(YamlHandle &stHandle, const string &word)
{
    const size_t ulPath = word.find_last_not_of("^/>") + 1;
    string path = word.substr(0, ulPath);
    uint32_t uiIndexed = 0;
    YamlListNode *pstNode = path.empty()
                                ? zryaml::FirstChild(stHandle.stRoot)
                                : yaml_NodeFind(&stHandle, path.data(), static_cast<uint32_t>(ulPath + 1), &uiIndexed);
    for (const char cStep : word.substr(ulPath)) {
        Require(pstNode != nullptr, "there is no such node", word);
        const YamlListNode *pstFather = pstNode->pstFather;
        const zryaml::NodeLink eLink = pstFather != nullptr ? zryaml::ChildLinkOf(*pstFather) : zryaml::NodeLink::Child;
        pstNode = cStep == '^'   ? pstNode->pstFather
                  : cStep == '/' ? zryaml::FirstChild(*pstNode)
                                 : zryaml::NodeOf(zryaml::LinkOf(*pstNode, eLink).next, eLink);
    }
    Require(pstNode != nullptr, "there is no such node", word);
    return pstNode;
}

bool NodeDamage(YamlHandle &stHandle, const string &kindAndNode)
{
    std::istringstream words(kindAndNode);
    string kind, word;
    uint32_t uiNumber = 0;
    words >> kind >> word >> uiNumber;
    const auto itDamage = g_damages.find(kind);
    if (itDamage != g_damages.end())
        itDamage->second(*NodeAt(stHandle, word), uiNumber);
    return itDamage != g_damages.end();
}
