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
constexpr uint32_t NODE_GROWING =
    1U << 30; // a map that is being filled: what serves the search of its keys grows with it
constexpr uint32_t NODE_INDEXED = 1U << 31; // a map that has an index of its keys
// The rest of them are small numbers: how the scalar was written (YAML_STYLE_*), its core tag (YAML_TAG_*), and the
// layer that the node came from, 0 being the document's own.
constexpr uint32_t NODE_STYLE_SHIFT = 4U, NODE_STYLE_MASK = 7U << NODE_STYLE_SHIFT;
constexpr uint32_t NODE_TAG_SHIFT = 7U, NODE_TAG_MASK = 7U << NODE_TAG_SHIFT;
constexpr uint32_t NODE_LAYER_SHIFT = 10U, NODE_LAYER_MASK = 1023U << NODE_LAYER_SHIFT;
constexpr uint32_t NODE_LAYER_TAG_SHIFT = 20U, NODE_LAYER_TAG_MASK = 7U << NODE_LAYER_TAG_SHIFT; // layer_tag.h
constexpr uint32_t NODE_SHADOWS = 1U << 23;      // a value that layers put in the place of another one
constexpr uint32_t NODE_EXPANDING = 1U << 24;    // a scalar whose references are being replaced
constexpr uint32_t NODE_EXPANDED = 1U << 25;     // a scalar whose references have been replaced
constexpr uint32_t NODE_TAG_MISSPELT = 1U << 26; // the tag of layers is the one that was probably meant
constexpr uint32_t NODE_COPY = 1U << 27;         // a node that is the begin of a CopiedNode
// A copy has these of its source.
constexpr uint32_t NODE_COPIED =
    NODE_STYLE_MASK | NODE_TAG_MASK | NODE_LAYER_MASK | NODE_LAYER_TAG_MASK | NODE_TAG_MISSPELT;

struct NodePlace {
    uint32_t uiLine, uiColumn;
};

// What is made for an alias or a merge. Its own place is that of the alias.
struct CopiedNode {
    YamlListNode stNode;
    NodePlace stWritten; // where the file wrote what it is a copy of
};

[[nodiscard]] inline NodePlace WrittenPlaceOf(const YamlListNode &stNode) noexcept
{
    if ((stNode.uiState & NODE_COPY) == 0)
        return {stNode.uiLine, stNode.uiColumn};
    return reinterpret_cast<const CopiedNode &>(stNode).stWritten;
}

[[nodiscard]] constexpr uint32_t StateGet(const YamlListNode &stNode, uint32_t uiMask, uint32_t uiShift) noexcept
{
    return (stNode.uiState & uiMask) >> uiShift;
}

constexpr void StateSet(YamlListNode &stNode, uint32_t uiMask, uint32_t uiShift, uint32_t uiNumber) noexcept
{
    stNode.uiState = (stNode.uiState & ~uiMask) | (uiNumber << uiShift & uiMask);
}

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
[[nodiscard]] inline uint32_t TextMarkOf(std::string_view svText) noexcept
{
    const size_t ulLength = svText.size();
    uint32_t uiEnd = 0;
    if (ulLength >= sizeof(uiEnd))
        memcpy(&uiEnd, svText.data() + ulLength - sizeof(uiEnd), sizeof(uiEnd));
    else
        for (const char cChar : svText)
            uiEnd = uiEnd << 8 | static_cast<uint32_t>(static_cast<unsigned char>(cChar)) << 8;
    const auto uiLength = static_cast<uint32_t>(ulLength < MarkLengthMax ? ulLength : MarkLengthMax);
    return uiLength << 25 | 1U << 24 | uiEnd >> 8;
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

// The first child fixes the type of its father's children.
inline void ChildTypeFix(YamlListNode &stFather, uint32_t uiDataType) noexcept
{
    if (stFather.uiNextLevelType == YAML_DATATYPE_NONE)
        stFather.uiNextLevelType = uiDataType;
}

// Gives the index of a map back, if it has one: before its keys change.
void KeyIndexDrop(YamlListNode &map) noexcept;

// Hangs a node below a father as its last child.
inline void ChildAppend(YamlListNode &stFather, YamlListNode &stChild) noexcept
{
    if ((stFather.uiState & NODE_INDEXED) != 0) [[unlikely]]
        KeyIndexDrop(stFather);
    stChild.pstFather = &stFather;
    ChildTypeFix(stFather, stChild.uiDataType);
    if (stFather.uiDataType == YAML_DATATYPE_SEQ)
        stChild.uPlace.uiNumber =
            HasChildren(stFather) ? NodeOf(stFather.stChildList.prev, NodeLink::Seq)->uPlace.uiNumber + 1 : 0;
    ListInsertAfter(*stFather.stChildList.prev, LinkIn(stFather, stChild));
}

} // namespace zryaml
