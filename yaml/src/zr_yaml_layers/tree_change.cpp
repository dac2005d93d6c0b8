// SPDX-License-Identifier: Apache-2.0
// Nodes that move between documents, and new ones: every child hangs under its own father by the link for it, and the
// type below a father is that of its first child.
#include "../document_load.h"
#include "../key_index.h"
#include "layers_internal.h"

using namespace zryaml;
using namespace zryaml::layers;

YamlListNode *zryaml::layers::NextChild(const YamlListNode &father, const YamlListNode &child) noexcept
{
    const NodeLink link = ChildLinkOf(father);
    const YamlList *next = LinkOf(child, link).next;
    return next == &father.stChildList ? nullptr : NodeOf(next, link);
}

void zryaml::layers::Unhook(YamlListNode &node) noexcept
{
    if (node.pstFather == nullptr)
        return;
    YamlListNode &father = *node.pstFather;
    KeyIndexForget(father, node);
    YamlList &link = LinkIn(father, node);
    ListRemove(link);
    ListInit(link);
    node.pstFather = nullptr;
    const YamlListNode *first = FirstChild(father);
    father.uiNextLevelType = first != nullptr ? first->uiDataType : YAML_DATATYPE_NONE;
}

void zryaml::layers::Hang(YamlListNode &father, YamlListNode &node) noexcept
{
    if (father.pstFather == nullptr) // the root
        father.uiDataType = node.uiDataType == YAML_DATATYPE_MAP ? YAML_DATATYPE_MAP : YAML_DATATYPE_NONE;
    ChildAppend(father, node);
}

void zryaml::layers::KeyHang(Stack &stack, YamlListNode &map, YamlListNode &key) noexcept
{
    if (!KeyIndexAdd(map, key))
        return Starve(stack);
    key.pstFather = &map;
    ChildTypeFix(map, YAML_DATATYPE_SCALAR);
    ListInsertAfter(*map.stChildList.prev, key.stChildLink); // without ChildAppend, which drops the index
}

YamlListNode *zryaml::layers::KeyMake(Stack &stack, YamlListNode &map, std::string_view text) noexcept
{
    YamlListNode *key = ScalarMake(*stack.document, text);
    if (key == nullptr) {
        Starve(stack);
        return nullptr;
    }
    KeyHang(stack, map, *key);
    return key;
}

YamlListNode *zryaml::layers::KeyFind(const YamlListNode &map, std::string_view text) noexcept
{
    if (HasKeyIndex(map))
        return KeyIndexFind(map, text);
    const WantedKey wanted(text);
    for (YamlListNode &key : Children(map)) {
        if (wanted.IsOf(key) && key.uiSameWithAnchor != 1)
            return &key;
    }
    return nullptr;
}

YamlListNode *zryaml::layers::ElementAt(const YamlListNode &sequence, uint64_t index) noexcept
{
    if (!HasChildren(sequence))
        return nullptr;
    YamlListNode *last = NodeOf(sequence.stChildList.prev, NodeLink::Seq);
    if (index > last->uPlace.uiNumber)
        return nullptr;
    const bool fromEnd = ElementSteps(*last, index) != index;
    YamlListNode *element = fromEnd ? last : NodeOf(sequence.stChildList.next, NodeLink::Seq);
    while (element->uPlace.uiNumber != index)
        element = NodeOf(fromEnd ? element->stSeqLink.prev : element->stSeqLink.next, NodeLink::Seq);
    return element;
}

void zryaml::layers::KeyDrop(YamlListNode &key) noexcept
{
    if (YamlListNode *marked = key.uPrivate.pstSameKey) // hidden, and of no use without this one
        Unhook(*marked);
    Unhook(key);
}

const char *zryaml::layers::KindName(const YamlListNode &value) noexcept
{
    constexpr const char *names[] = {"a sequence", "a map", "a scalar"}; // by data type
    return names[value.uiDataType];
}

bool zryaml::layers::IsPlainEmpty(const YamlListNode &value) noexcept
{
    return value.uiDataType == YAML_DATATYPE_SCALAR && value.pcValue[0] == '\0' &&
           StateGet(value, NODE_STYLE_MASK, NODE_STYLE_SHIFT) == YAML_STYLE_PLAIN &&
           StateGet(value, NODE_TAG_MASK, NODE_TAG_SHIFT) == YAML_TAG_NONE;
}
