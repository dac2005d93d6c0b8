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
    YamlListNode node;
    NodePlace written; // where the file wrote what it is a copy of
};

[[nodiscard]] inline NodePlace WrittenPlaceOf(const YamlListNode &node) noexcept
{
    if ((node.uiState & NODE_COPY) == 0)
        return {node.uiLine, node.uiColumn};
    return reinterpret_cast<const CopiedNode &>(node).written;
}

[[nodiscard]] constexpr uint32_t StateGet(const YamlListNode &node, uint32_t mask, uint32_t shift) noexcept
{
    return (node.uiState & mask) >> shift;
}

constexpr void StateSet(YamlListNode &node, uint32_t mask, uint32_t shift, uint32_t number) noexcept
{
    node.uiState = (node.uiState & ~mask) | (number << shift & mask);
}

constexpr void ListInit(YamlList &head) noexcept
{
    head.next = head.prev = &head;
}

[[nodiscard]] constexpr bool ListIsEmpty(const YamlList &head) noexcept
{
    return head.next == &head;
}

constexpr void ListInsertAfter(YamlList &where, YamlList &made) noexcept
{
    made.next = where.next;
    made.prev = &where;
    where.next->prev = &made;
    where.next = &made;
}

constexpr void ListRemove(YamlList &link) noexcept
{
    link.prev->next = link.next;
    link.next->prev = link.prev;
}

enum class NodeLink : size_t { // the value is the link's offset in its record
    Child = offsetof(YamlListNode, stChildLink),
    Seq = offsetof(YamlListNode, stSeqLink),
    Alloc = offsetof(YamlListNode, stAllocLink),
};

[[nodiscard]] inline YamlListNode *NodeOf(const YamlList *link, NodeLink by) noexcept
{
    return reinterpret_cast<YamlListNode *>(reinterpret_cast<uintptr_t>(link) - static_cast<size_t>(by));
}

// The link rule: by which link the children of a node hang.
[[nodiscard]] constexpr NodeLink ChildLinkOf(const YamlListNode &father) noexcept
{
    const bool isSequence = father.uiNextLevelType == YAML_DATATYPE_SEQ || father.uiDataType == YAML_DATATYPE_SEQ;
    return isSequence ? NodeLink::Seq : NodeLink::Child;
}

[[nodiscard]] inline const YamlList &LinkOf(const YamlListNode &node, NodeLink by) noexcept
{
    return by == NodeLink::Seq ? node.stSeqLink : node.stChildLink;
}

[[nodiscard]] inline YamlList &LinkIn(const YamlListNode &father, YamlListNode &child) noexcept
{
    return ChildLinkOf(father) == NodeLink::Seq ? child.stSeqLink : child.stChildLink;
}

[[nodiscard]] constexpr bool IsNode(const YamlListNode &node) noexcept
{
    return node.uiMagic == YAML_NODE_MAGIC;
}

constexpr size_t MarkLengthMax = 127; // stands for all lengths from there on

// Length and last characters of a text, by which most keys of a map are told apart without a look at their texts. Never
// 0, which a key has that was made by hand; any other has its text.
[[nodiscard]] inline uint32_t TextMarkOf(std::string_view text) noexcept
{
    const size_t ulLength = text.size();
    uint32_t endChars = 0;
    if (ulLength >= sizeof(endChars))
        memcpy(&endChars, text.data() + ulLength - sizeof(endChars), sizeof(endChars));
    else
        for (const char byte : text)
            endChars = endChars << 8 | static_cast<uint32_t>(static_cast<unsigned char>(byte)) << 8;
    const auto length = static_cast<uint32_t>(ulLength < MarkLengthMax ? ulLength : MarkLengthMax);
    return length << 25 | 1U << 24 | endChars >> 8;
}

class WantedKey { // a text that a key is searched by
public:
    explicit WantedKey(std::string_view text) noexcept : m_text(text), m_mark(TextMarkOf(text)) {}
    [[nodiscard]] bool IsOf(const YamlListNode &key) const noexcept
    {
        if (key.uPlace.uiTextMark != m_mark)
            return key.uPlace.uiTextMark == 0 && key.pcValue != nullptr && m_text == key.pcValue;
        if (m_text.size() >= MarkLengthMax)
            return m_text == key.pcValue;
        return memcmp(key.pcValue, m_text.data(), m_text.size()) == 0; // the mark has told the length
    }

private:
    std::string_view m_text;
    uint32_t m_mark;
};

[[nodiscard]] constexpr bool HasChildren(const YamlListNode &node) noexcept
{
    return !ListIsEmpty(node.stChildList);
}

// The nodes of a list, first to last; ends at the head or at a record without the magic.
class NodeRange {
public:
    struct End {};
    class Iterator {
    public:
        Iterator(const YamlList *link, const YamlList *pstHead, NodeLink by) noexcept
            : m_link(link), m_head(pstHead), m_by(by)
        {}
        YamlListNode &operator*() const noexcept { return *NodeOf(m_link, m_by); }
        Iterator &operator++() noexcept
        {
            m_link = m_link->next;
            return *this;
        }
        bool operator==(End) const noexcept { return m_link == m_head || !IsNode(**this); }

    private:
        const YamlList *m_link;
        const YamlList *m_head;
        NodeLink m_by;
    };

    NodeRange(const YamlList &head, NodeLink by) noexcept : m_begin(head.next, &head, by) {}
    [[nodiscard]] Iterator begin() const noexcept { return m_begin; }
    [[nodiscard]] End end() const noexcept { return {}; }

private:
    Iterator m_begin;
};

[[nodiscard]] inline NodeRange Children(const YamlListNode &father) noexcept
{
    return {father.stChildList, ChildLinkOf(father)};
}

[[nodiscard]] inline YamlListNode *FirstChild(const YamlListNode &father) noexcept
{
    const NodeRange children = Children(father);
    return children.begin() == children.end() ? nullptr : &*children.begin();
}

// The first child fixes the type of its father's children.
inline void ChildTypeFix(YamlListNode &father, uint32_t dataType) noexcept
{
    if (father.uiNextLevelType == YAML_DATATYPE_NONE)
        father.uiNextLevelType = dataType;
}

// Gives the index of a map back, if it has one: before its keys change.
void KeyIndexDrop(YamlListNode &map) noexcept;

// Hangs a node below a father as its last child.
inline void ChildAppend(YamlListNode &father, YamlListNode &child) noexcept
{
    if ((father.uiState & NODE_INDEXED) != 0) [[unlikely]]
        KeyIndexDrop(father);
    child.pstFather = &father;
    ChildTypeFix(father, child.uiDataType);
    if (father.uiDataType == YAML_DATATYPE_SEQ)
        child.uPlace.uiNumber =
            HasChildren(father) ? NodeOf(father.stChildList.prev, NodeLink::Seq)->uPlace.uiNumber + 1 : 0;
    ListInsertAfter(*father.stChildList.prev, LinkIn(father, child));
}

} // namespace zryaml
