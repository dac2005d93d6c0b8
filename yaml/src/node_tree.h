// SPDX-License-Identifier: Apache-2.0
// The shape of the tree: lists, the rule that tells by which link a child hangs, and the walk over children. No other
// code decides which link holds a child.
#pragma once

#include <cstring>
#include <string_view>

#include <zr_yaml.h>

namespace zryaml {

// Bits of YamlListNode::uiState.
constexpr uint32_t NODE_OPEN = 1U;     // a collection whose end event has not come
constexpr uint32_t NODE_ANCHORED = 2U; // an anchor in the file names the node
constexpr uint32_t NODE_READ = 4U;     // a key whose value, or something below it, has been handed out
constexpr uint32_t NODE_STORED = 8U;   // record and text lie in a block of the document, and go with it

constexpr void ListInit(YamlList &stHead) noexcept
{
    stHead.next = stHead.prev = &stHead;
}

[[nodiscard]] constexpr bool ListIsEmpty(const YamlList &stHead) noexcept
{
    return stHead.next == &stHead;
}

constexpr void ListInsertAfter(YamlList &stWhere, YamlList &stNew) noexcept
{
    stNew.next = stWhere.next;
    stNew.prev = &stWhere;
    stWhere.next->prev = &stNew;
    stWhere.next = &stNew;
}

constexpr void ListRemove(YamlList &stLink) noexcept
{
    stLink.prev->next = stLink.next;
    stLink.next->prev = stLink.prev;
}

enum class NodeLink : size_t { // the value is the link's offset in its record
    Child = offsetof(YamlListNode, stChildLink),
    Seq = offsetof(YamlListNode, stSeqLink),
    Alloc = offsetof(YamlListNode, stAllocLink),
};

[[nodiscard]] inline YamlListNode *NodeOf(const YamlList *pstLink, NodeLink eLink) noexcept
{
    return reinterpret_cast<YamlListNode *>(reinterpret_cast<uintptr_t>(pstLink) - static_cast<size_t>(eLink));
}

// The link rule: by which link the children of a node hang.
[[nodiscard]] constexpr NodeLink ChildLinkOf(const YamlListNode &stFather) noexcept
{
    const bool bSeq = stFather.uiNextLevelType == YAML_DATATYPE_SEQ || stFather.uiDataType == YAML_DATATYPE_SEQ;
    return bSeq ? NodeLink::Seq : NodeLink::Child;
}

[[nodiscard]] inline const YamlList &LinkOf(const YamlListNode &stNode, NodeLink eLink) noexcept
{
    return eLink == NodeLink::Seq ? stNode.stSeqLink : stNode.stChildLink;
}

[[nodiscard]] inline YamlList &LinkIn(const YamlListNode &stFather, YamlListNode &stChild) noexcept
{
    return ChildLinkOf(stFather) == NodeLink::Seq ? stChild.stSeqLink : stChild.stChildLink;
}

[[nodiscard]] constexpr bool IsNode(const YamlListNode &stNode) noexcept
{
    return stNode.uiMagic == YAML_NODE_MAGIC;
}

constexpr size_t MarkLengthMax = 127; // stands for all lengths from there on

// Length and last characters of a text, by which most keys of a map are told apart without a look at their texts. Never
// 0, which a key has that was made by hand; any other has its text.
[[nodiscard]] constexpr uint32_t TextMarkOf(std::string_view svText) noexcept
{
    const size_t ulLength = svText.size();
    uint32_t uiEnd = 0;
    for (size_t ul = ulLength < 3 ? 0 : ulLength - 3; ul < ulLength; ++ul)
        uiEnd = uiEnd << 8 | static_cast<unsigned char>(svText[ul]);
    const auto uiLength = static_cast<uint32_t>(ulLength < MarkLengthMax ? ulLength : MarkLengthMax);
    return uiLength << 25 | 1U << 24 | uiEnd;
}

class WantedKey { // a text that a key is searched by
public:
    explicit WantedKey(std::string_view svText) noexcept : m_svText(svText), m_uiMark(TextMarkOf(svText)) {}
    [[nodiscard]] bool IsOf(const YamlListNode &stKey) const noexcept
    {
        if (stKey.uPlace.uiTextMark != m_uiMark)
            return stKey.uPlace.uiTextMark == 0 && stKey.pcValue != nullptr && m_svText == stKey.pcValue;
        if (m_svText.size() >= MarkLengthMax)
            return m_svText == stKey.pcValue;
        return memcmp(stKey.pcValue, m_svText.data(), m_svText.size()) == 0; // the mark has told the length
    }

private:
    std::string_view m_svText;
    uint32_t m_uiMark;
};

[[nodiscard]] constexpr bool HasChildren(const YamlListNode &stNode) noexcept
{
    return !ListIsEmpty(stNode.stChildList);
}

// The nodes of a list, first to last; ends at the head or at a record without the magic.
class NodeRange {
public:
    struct End {};
    class Iterator {
    public:
        Iterator(const YamlList *pstLink, const YamlList *pstHead, NodeLink eLink) noexcept
            : m_pstLink(pstLink), m_pstHead(pstHead), m_eLink(eLink)
        {}
        YamlListNode &operator*() const noexcept { return *NodeOf(m_pstLink, m_eLink); }
        Iterator &operator++() noexcept
        {
            m_pstLink = m_pstLink->next;
            return *this;
        }
        bool operator==(End) const noexcept { return m_pstLink == m_pstHead || !IsNode(**this); }

    private:
        const YamlList *m_pstLink;
        const YamlList *m_pstHead;
        NodeLink m_eLink;
    };

    NodeRange(const YamlList &stHead, NodeLink eLink) noexcept : m_stBegin(stHead.next, &stHead, eLink) {}
    [[nodiscard]] Iterator begin() const noexcept { return m_stBegin; }
    [[nodiscard]] End end() const noexcept { return {}; }

private:
    Iterator m_stBegin;
};

[[nodiscard]] inline NodeRange Children(const YamlListNode &stFather) noexcept
{
    return {stFather.stChildList, ChildLinkOf(stFather)};
}

[[nodiscard]] inline YamlListNode *FirstChild(const YamlListNode &stFather) noexcept
{
    const NodeRange stChildren = Children(stFather);
    return stChildren.begin() == stChildren.end() ? nullptr : &*stChildren.begin();
}

} // namespace zryaml
