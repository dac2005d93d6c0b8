// SPDX-License-Identifier: Apache-2.0
// Tags of layers: those that can mean nothing are told and taken away, and what is tagged !unset is dropped where there
// is nothing below it.
#include "layers_internal.h"

using namespace zryaml;
using namespace zryaml::layers;

namespace {

const char *NameOf(const YamlListNode &value) noexcept
{
    return LayerTagNames[static_cast<uint32_t>(LayerTagOf(value))].data();
}

bool IsJoin(LayerTag tag) noexcept
{
    return tag == LayerTag::Append || tag == LayerTag::Prepend;
}

// Whether a node is the value of a key.
bool HasKey(const YamlListNode &node) noexcept
{
    return node.pstFather->uiDataType == YAML_DATATYPE_SCALAR;
}

} // namespace

void zryaml::layers::TagCheck(Stack &stack, YamlListNode &node) noexcept
{
    if (LayerTagMeant(node) == LayerTag::None)
        return;
    Spot spot = SpotOf(node);
    if (LayerTagOf(node) == LayerTag::None) {
        spot.level = YAML_PROBLEM_WARNING;
        spot.hint = MisspeltHint(LayerTagMeant(node));
        Tell(stack, spot, MisspeltSentence);
        LayerTagSet(node, LayerTag::None); // told once
    } else if (!HasKey(node)) {
        spot.level = YAML_PROBLEM_WARNING;
        spot.hint = "these tags belong on the value of a key";
        Tell(stack, spot, "'%s' means nothing here", NameOf(node));
        LayerTagSet(node, LayerTag::None);
    } else if (IsJoin(LayerTagOf(node)) && node.uiDataType != YAML_DATATYPE_SEQ) {
        spot.hint = "write the elements as a sequence: [a, b]";
        Tell(stack, spot, "'%s' takes a sequence, but this is %s", NameOf(node), KindName(node));
        LayerTagSet(node, LayerTag::Replace); // told once
    }
}

void zryaml::layers::TagsSettle(Stack &stack, YamlListNode &node) noexcept
{
    TagCheck(stack, node);
    YamlListNode *next = nullptr;
    for (YamlListNode *child = FirstChild(node); child != nullptr; child = next) {
        next = NextChild(node, *child);
        const YamlListNode *value = node.uiDataType == YAML_DATATYPE_MAP ? FirstChild(*child) : nullptr;
        if (value == nullptr || LayerTagOf(*value) != LayerTag::Unset) {
            TagsSettle(stack, *child);
            continue;
        }
        if (next != nullptr && next == child->uPrivate.pstSameKey)
            next = NextChild(node, *next); // goes with this one
        KeyDrop(*child);
    }
}
