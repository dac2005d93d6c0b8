// SPDX-License-Identifier: Apache-2.0
// The check follows the links by itself, without the library's own walk, so that it does not share its faults.
#include "tree_check.h"

#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

void Require(bool bHolds, const char *pcWhat, std::string_view svDetail)
{
    if (!bHolds)
        throw std::logic_error(std::string(pcWhat).append(svDetail.empty() ? "" : ": ").append(svDetail));
}

void ScalarWrite(const char *pcText, std::string &text)
{
    text += '"';
    for (const char cChar : std::string_view(pcText != nullptr ? pcText : "")) {
        const auto ucChar = static_cast<unsigned char>(cChar);
        if (ucChar >= 0x20 && cChar != '"' && cChar != '\\')
            text += cChar;
        else
            text += {'\\', "0123456789abcdef"[ucChar / 16], "0123456789abcdef"[ucChar % 16]};
    }
    text += '"';
}

namespace {

using Nodes = std::vector<const YamlListNode *>;

bool IsEmpty(const YamlList &stHead)
{
    return stHead.next == &stHead && stHead.prev == &stHead;
}

// The nodes on a list, whose links lie at an offset in them.
Nodes NodesOn(const YamlList &stHead, size_t ulLink)
{
    Nodes nodes;
    for (const YamlList *pst = stHead.next; pst != &stHead; pst = pst->next) {
        Require(pst->next->prev == pst && pst->prev->next == pst, "a list is broken");
        nodes.push_back(reinterpret_cast<const YamlListNode *>(reinterpret_cast<const char *>(pst) - ulLink));
    }
    return nodes;
}

bool HoldsElements(const YamlListNode &stFather)
{
    return stFather.uiDataType == YAML_DATATYPE_SEQ || stFather.uiNextLevelType == YAML_DATATYPE_SEQ;
}

Nodes ChildrenOf(const YamlListNode &stFather)
{
    return NodesOn(stFather.stChildList,
                   HoldsElements(stFather) ? offsetof(YamlListNode, stSeqLink) : offsetof(YamlListNode, stChildLink));
}

class Checker {
public:
    explicit Checker(const YamlHandle &stHandle) : m_stRoot(stHandle.stRoot)
    {
        const Nodes nodes = NodesOn(m_stRoot.stAllocLink, offsetof(YamlListNode, stAllocLink));
        m_allocated.insert(nodes.begin(), nodes.end());
        Require(stHandle.uiEventDepth == 0 && stHandle.auiEventStack[0] == 0, "a collection is open");
        Require(IsEmpty(stHandle.stAnchorList) && IsEmpty(stHandle.stOpenAnchorList), "an anchor is left");
        Require(m_stRoot.pstFather == nullptr && m_stRoot.pcValue == nullptr, "the root has a father or a text");
        Require(IsEmpty(m_stRoot.stChildLink) && IsEmpty(m_stRoot.stSeqLink), "the root hangs somewhere");
        Require(m_stRoot.uiMagic == YAML_NODE_MAGIC, "the root is no node");
        ChildrenCheck(m_stRoot, 0);
    }

private:
    void ChildrenCheck(const YamlListNode &stFather, uint32_t uiDepth)
    {
        const Nodes children = ChildrenOf(stFather);
        std::set<std::string_view> keys;
        uint32_t uiNumber = 0;
        for (const YamlListNode *pst : children) {
            Require(m_allocated.count(pst) == 1 && pst->uiMagic == YAML_NODE_MAGIC,
                    "a child is no node of this document");
            Require(m_seen.insert(pst).second, "a node hangs in two places");
            Require(IsEmpty(HoldsElements(stFather) ? pst->stChildLink : pst->stSeqLink), "a node hangs by both links");
            Require(pst->pstFather == &stFather, "a child names another father");
            NodeCheck(*pst, uiDepth);
            if (stFather.uiDataType == YAML_DATATYPE_MAP && &stFather != &m_stRoot && pst->uiSameWithAnchor == 0)
                Require(keys.insert(pst->pcValue).second, "a map has two keys", pst->pcValue);
            Require(stFather.uiDataType != YAML_DATATYPE_SEQ || pst->uPlace.uiNumber == uiNumber++,
                    "an element has the wrong number");
        }
        const bool bOne = &stFather == &m_stRoot || stFather.uiDataType == YAML_DATATYPE_SCALAR;
        Require(!bOne || children.size() <= 1, "a key or the root has two children");
        const uint32_t uiType = children.empty() ? YAML_DATATYPE_NONE : children.front()->uiDataType;
        Require(stFather.uiSameWithAnchor != 0 || stFather.uiNextLevelType == uiType,
                "the first child has not fixed the type below its father");
    }

    void NodeCheck(const YamlListNode &stNode, uint32_t uiDepth)
    {
        const YamlListNode &stFather = *stNode.pstFather;
        const bool bKey = stFather.uiDataType == YAML_DATATYPE_MAP && &stFather != &m_stRoot;
        const bool bScalar = stNode.uiDataType == YAML_DATATYPE_SCALAR, bMarked = stNode.uiSameWithAnchor == 1;
        Require(stNode.uiDataType <= YAML_DATATYPE_SCALAR && bScalar == (stNode.pcValue != nullptr),
                "a node's type and text do not fit");
        Require(!bKey || bScalar, "a key is no scalar");
        Require(!bMarked || bKey, "what is no key is marked");
        if (bScalar)
            Require(IsEmpty(stNode.stChildList) != (bKey && !bMarked), "a key has no value, or something else has one");
        uiDepth += bScalar ? 0 : 1;
        Require(uiDepth <= YAML_EVENT_STACK_SIZE, "the tree is too deep");
        ChildrenCheck(stNode, uiDepth);
    }

    const YamlListNode &m_stRoot;
    std::set<const YamlListNode *> m_allocated, m_seen;
};

// A value, or a key with its value.
void NodeWrite(const YamlListNode &stNode, bool bKey, bool bFlags, std::string &text)
{
    const bool bScalar = stNode.uiDataType == YAML_DATATYPE_SCALAR, bSeq = stNode.uiDataType == YAML_DATATYPE_SEQ;
    const char *pcCopy = bFlags && stNode.uiFromAlias == 1 ? "*" : "", *pcSeparator = "";
    if (bScalar) {
        ScalarWrite(stNode.pcValue, text);
        text.append(pcCopy).append(!bKey ? "" : stNode.uiSameWithAnchor == 1 ? "!" : ":");
    }
    text += bScalar ? "" : bSeq ? "[" : "{";
    for (const YamlListNode *pstChild : ChildrenOf(stNode)) {
        if (pstChild->uiSameWithAnchor == 1 && !bFlags)
            continue;
        text += std::exchange(pcSeparator, ",");
        NodeWrite(*pstChild, !bScalar && !bSeq, bFlags, text);
    }
    if (!bScalar)
        text.append(bSeq ? "]" : "}").append(pcCopy);
}

} // namespace

std::string TreeCheck(const YamlHandle &stHandle)
{
    try {
        (void)Checker(stHandle);
        return "";
    } catch (const std::logic_error &stFault) {
        return stFault.what();
    }
}

std::string TreeText(const YamlHandle &stHandle, bool bFlags)
{
    std::string text;
    for (const YamlListNode *pstTop : ChildrenOf(stHandle.stRoot))
        NodeWrite(*pstTop, false, bFlags, text);
    return text;
}
