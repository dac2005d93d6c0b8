// SPDX-License-Identifier: Apache-2.0
// Walks the published links of the tree, without checks for a foreign record or for a key that a merge brought.
#include "plain_walk.h"

#include <cstring>

namespace zryaml::bench {

namespace {

// A record that a link is embedded in; the links below a list are others than those below a map.
const YamlListNode *NodeOf(const YamlList *pstLink, bool bSeq)
{
    const size_t ulOffset = bSeq ? offsetof(YamlListNode, stSeqLink) : offsetof(YamlListNode, stChildLink);
    return reinterpret_cast<const YamlListNode *>(reinterpret_cast<const char *>(pstLink) - ulOffset);
}

// The only child of a key, or of the root.
const YamlListNode *ValueOf(const YamlListNode *pstFather)
{
    return NodeOf(pstFather->stChildList.next, pstFather->uiNextLevelType == YAML_DATATYPE_SEQ);
}

const YamlListNode *KeyFind(const YamlListNode *pstMap, const char *pcName)
{
    const YamlList *pstHead = &pstMap->stChildList;
    for (const YamlList *pstLink = pstHead->next; pstLink != pstHead; pstLink = pstLink->next) {
        const YamlListNode *pstKey = NodeOf(pstLink, false);
        if (*pstKey->pcValue == *pcName && strcmp(pstKey->pcValue, pcName) == 0)
            return pstKey;
    }
    return nullptr;
}

const YamlListNode *ElementFind(const YamlListNode *pstSeq, uint32_t uiIndex)
{
    const YamlList *pstHead = &pstSeq->stChildList;
    for (const YamlList *pstLink = pstHead->next; pstLink != pstHead; pstLink = pstLink->next) {
        if (uiIndex-- == 0)
            return NodeOf(pstLink, true);
    }
    return nullptr;
}

} // namespace

std::array<PathStep, 8> PathSteps(uint32_t uiIndex)
{
    return {{{"plant", 0},
             {"halls", 0},
             {nullptr, uiIndex},
             {"north", 0},
             {"rack", 0},
             {"unit", 0},
             {"listen", 0},
             {"port", 0}}};
}

const char *PlainWalk(const YamlHandle *pstHandle, std::span<const PathStep> steps)
{
    const YamlListNode *pstValue = ValueOf(&pstHandle->stRoot);
    for (const PathStep &stStep : steps) {
        if (stStep.pcName == nullptr) {
            pstValue = ElementFind(pstValue, stStep.uiIndex);
        } else {
            const YamlListNode *pstKey = KeyFind(pstValue, stStep.pcName);
            pstValue = pstKey == nullptr ? nullptr : ValueOf(pstKey);
        }
        if (pstValue == nullptr)
            return nullptr;
    }
    return pstValue->pcValue;
}

} // namespace zryaml::bench
