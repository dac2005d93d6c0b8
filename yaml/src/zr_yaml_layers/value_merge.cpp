// SPDX-License-Identifier: Apache-2.0
// Puts one document over another: maps key by key, anything else as a whole. Nodes move, nothing is copied, and the
// work grows with the upper document alone.
#include "layers_internal.h"

#include "../key_index.h"

#include <cstring>

using namespace zryaml;
using namespace zryaml::layers;

namespace {

// Finds the keys of one map by those of another. Documents of one kind have their keys in one order, so the key that
// follows the last one found is looked at first.
class KeyFinder {
public:
    KeyFinder(Stack &stack, YamlListNode &map) noexcept
        : m_stack(stack), m_map(map), m_expected(Written(FirstChild(map)))
    {}

    [[nodiscard]] YamlListNode *Find(const YamlListNode &wanted) noexcept
    {
        YamlListNode *key = IsSame(m_expected, wanted) ? m_expected : Search(wanted);
        if (key != nullptr)
            m_expected = Written(NextChild(m_map, *key));
        return key;
    }

private:
    static bool IsSame(const YamlListNode *key, const YamlListNode &wanted) noexcept
    {
        return key != nullptr && key->uPlace.uiTextMark == wanted.uPlace.uiTextMark &&
               strcmp(key->pcValue, wanted.pcValue) == 0;
    }

    // The first key from one on that is not marked.
    YamlListNode *Written(YamlListNode *key) const noexcept
    {
        while (key != nullptr && key->uiSameWithAnchor == 1)
            key = NextChild(m_map, *key);
        return key;
    }

    YamlListNode *Search(const YamlListNode &wanted) noexcept
    {
        if (!HasKeyIndex(m_map) && IsLarge() && !KeyIndexBuild(m_map))
            Starve(m_stack);
        return m_stack.starved ? nullptr : KeyFind(m_map, wanted.pcValue);
    }

    [[nodiscard]] bool IsLarge() const noexcept
    {
        uint32_t count = 0;
        for (const YamlListNode *key = FirstChild(m_map); key != nullptr; key = NextChild(m_map, *key)) {
            if (++count == IndexFromKeys)
                return true;
        }
        return false;
    }

    Stack &m_stack;
    YamlListNode &m_map;
    YamlListNode *m_expected;
};

// An element, or the top of a document, moves to where nothing was.
void ValueMove(Stack &stack, YamlListNode &father, YamlListNode &node) noexcept
{
    Unhook(node);
    Hang(father, node);
    if (stack.tagged)
        TagsSettle(stack, node);
}

void KeyMove(Stack &stack, YamlListNode &map, YamlListNode &key) noexcept
{
    Unhook(key);
    KeyHang(stack, map, key);
    if (stack.tagged)
        TagsSettle(stack, key);
}

void ValueReplace(Stack &stack, YamlListNode &below, YamlListNode &value) noexcept
{
    YamlListNode &father = *below.pstFather;
    Unhook(value);
    if (father.uiDataType == YAML_DATATYPE_SEQ) {
        value.pstFather = &father;
        value.uPlace.uiNumber = below.uPlace.uiNumber;
        ListInsertAfter(below.stSeqLink, value.stSeqLink);
        Unhook(below);
    } else {
        Unhook(below);
        Hang(father, value);
    }
    if (stack.tagged)
        TagsSettle(stack, value);
    ShadowAdd(stack, value, below);
}

void ElementsMove(Stack &stack, YamlListNode &sequence, YamlListNode &upper) noexcept
{
    while (YamlListNode *element = FirstChild(upper))
        ValueMove(stack, sequence, *element);
}

// Joins two sequences; the one with the tag is used up.
void SequenceJoin(Stack &stack, YamlListNode &below, YamlListNode &upper, LayerTag tag) noexcept
{
    if (tag == LayerTag::Append)
        return ElementsMove(stack, below, upper);
    if (stack.tagged)
        TagsSettle(stack, upper);
    while (HasChildren(upper)) {
        YamlListNode &last = *NodeOf(upper.stChildList.prev, NodeLink::Seq);
        Unhook(last);
        last.pstFather = &below;
        ListInsertAfter(below.stChildList, last.stSeqLink);
        below.uiNextLevelType = last.uiDataType;
    }
    uint32_t number = 0;
    for (YamlListNode &element : Children(below))
        element.uPlace.uiNumber = number++;
}

void TaggedMerge(Stack &stack, YamlListNode &below, YamlListNode &value, LayerTag tag) noexcept
{
    if (tag == LayerTag::Replace || IsPlainEmpty(below))
        return ValueReplace(stack, below, value);
    if (below.uiDataType == YAML_DATATYPE_SEQ)
        return SequenceJoin(stack, below, value, tag);
    Tell(stack, SpotOf(value), "'!%s' joins sequences, but this is %s in %s, line %u",
         tag == LayerTag::Append ? "append" : "prepend", KindName(below), SourceNameOf(&below), below.uiLine);
}

void KeyMerge(Stack &stack, YamlListNode &map, YamlListNode *below, YamlListNode &key) noexcept
{
    YamlListNode *value = FirstChild(key);
    if (value == nullptr)
        return;
    if (stack.tagged) {
        TagCheck(stack, key);
        TagCheck(stack, *value);
    }
    const bool unset = LayerTagOf(*value) == LayerTag::Unset;
    if (below == nullptr && !unset)
        return KeyMove(stack, map, key);
    if (below != nullptr && unset)
        return KeyDrop(*below);
    if (below != nullptr)
        ValueMerge(stack, *FirstChild(*below), *value);
}

// Marked keys hang in the map of the merged key that they go with.
void MarkedKeysMove(Stack &stack, YamlListNode &map, YamlListNode &upper) noexcept
{
    YamlListNode *next = nullptr;
    for (YamlListNode *key = FirstChild(upper); key != nullptr; key = next) {
        next = NextChild(upper, *key);
        const YamlListNode *merged = key->uiSameWithAnchor == 1 ? key->uPrivate.pstSameKey : nullptr;
        if (merged == nullptr || merged->pstFather != &map)
            continue;
        Unhook(*key);
        KeyHang(stack, map, *key);
    }
}

void MapMerge(Stack &stack, YamlListNode &below, YamlListNode &upper) noexcept
{
    KeyIndexDrop(upper); // its keys leave
    KeyFinder finder(stack, below);
    bool marked = false;
    YamlListNode *next = nullptr;
    for (YamlListNode *key = FirstChild(upper); key != nullptr && !stack.starved; key = next) {
        next = NextChild(upper, *key);
        if (key->uiSameWithAnchor == 1)
            marked = true;
        else
            KeyMerge(stack, below, finder.Find(*key), *key);
    }
    if (marked)
        MarkedKeysMove(stack, below, upper);
}

} // namespace

void zryaml::layers::ValueMerge(Stack &stack, YamlListNode &below, YamlListNode &value) noexcept
{
    const LayerTag tag = LayerTagOf(value);
    if (tag != LayerTag::None)
        return TaggedMerge(stack, below, value, tag);
    if (below.uiDataType == YAML_DATATYPE_MAP && value.uiDataType == YAML_DATATYPE_MAP)
        return MapMerge(stack, below, value);
    if (below.uiDataType != YAML_DATATYPE_SCALAR && IsPlainEmpty(value))
        return; // nothing was written
    ValueReplace(stack, below, value);
}

void zryaml::layers::DocumentMerge(Stack &stack, YamlHandle *upper) noexcept
{
    stack.tagged = (upper->uiLoadFlags & LOAD_TAGS_SEEN) != 0;
    YamlListNode *top = FirstChild(upper->stRoot);
    YamlListNode *below = FirstChild(stack.document->stRoot);
    if (top != nullptr && stack.tagged)
        TagCheck(stack, *top);
    if (top != nullptr && below != nullptr)
        ValueMerge(stack, *below, *top);
    else if (top != nullptr)
        ValueMove(stack, stack.document->stRoot, *top);
    stack.tagged = false;
    DocumentTakeOver(*stack.document, upper);
}
