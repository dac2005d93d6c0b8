// SPDX-License-Identifier: Apache-2.0
// Sets one value by the way to it, as variables and assignments do. What is missing on the way is made; an index may
// name the element behind the last one; a scalar with a text, or the wrong kind of collection, stands in the way.
#include "layers_internal.h"

#include <cstring>

using namespace zryaml;
using namespace zryaml::layers;

namespace {

// A place for a value: below the root, below a key, or in a sequence, where no value means behind the last.
struct Slot {
    YamlListNode *father;
    YamlListNode *value;
};

Spot SpotOfLast(const Stack &stack, const YamlListNode *value) noexcept
{
    return {SourceLast(stack).name, value};
}

// Hangs a new value into a slot, over what stands there.
void SlotFill(Stack &stack, Slot &slot, YamlListNode &value) noexcept
{
    if (slot.value == nullptr) {
        Hang(*slot.father, value);
        slot.value = &value;
        return;
    }
    ValueMerge(stack, *slot.value, value);
    if (value.pstFather == slot.father)
        slot.value = &value; // else it was merged into what stands there
}

// Makes a slot without a value, or with an empty one, a collection that the next step goes into.
bool CollectionMake(Stack &stack, Slot &slot, uint32_t type, uint32_t depth) noexcept
{
    const uint32_t limit = stack.document->stLimits.uiDepth;
    if (depth > limit) {
        Tell(stack, SpotOfLast(stack, nullptr), "the value would lie in more than %u collections", limit);
        return false;
    }
    if (slot.value != nullptr && !IsPlainEmpty(*slot.value))
        return true;
    YamlListNode *made = yaml_ListNodeAlloc(stack.document);
    if (made == nullptr)
        return Starve(stack), false;
    made->uiDataType = type;
    SlotFill(stack, slot, *made);
    return true;
}

bool KeyStep(Stack &stack, Slot &slot, std::string_view name) noexcept
{
    YamlListNode &map = *slot.value;
    if (map.uiDataType != YAML_DATATYPE_MAP) {
        Tell(stack, SpotOfLast(stack, &map), "%s stands in the way of the key '%.*s'", KindName(map),
             static_cast<int>(name.size()), name.data());
        return false;
    }
    YamlListNode *key = KeyFind(map, name);
    if (key == nullptr)
        key = KeyMake(stack, map, name);
    slot = {key, key != nullptr ? FirstChild(*key) : nullptr};
    return key != nullptr;
}

bool IndexStep(Stack &stack, Slot &slot, uint64_t index) noexcept
{
    YamlListNode &sequence = *slot.value;
    if (sequence.uiDataType != YAML_DATATYPE_SEQ) {
        Tell(stack, SpotOfLast(stack, &sequence), "%s has no element %llu", KindName(sequence),
             static_cast<unsigned long long>(index));
        return false;
    }
    slot = {&sequence, ElementAt(sequence, index)};
    const uint64_t count =
        HasChildren(sequence) ? NodeOf(sequence.stChildList.prev, NodeLink::Seq)->uPlace.uiNumber + uint64_t{1} : 0;
    if (index <= count)
        return true;
    Tell(stack, SpotOfLast(stack, &sequence), "the index %llu is beyond the end: the sequence has %llu element%s",
         static_cast<unsigned long long>(index), static_cast<unsigned long long>(count), count == 1 ? "" : "s");
    return false;
}

YamlListNode *ScalarOf(Stack &stack, std::string_view text) noexcept
{
    YamlListNode *scalar = ScalarMake(*stack.document, text);
    if (scalar == nullptr)
        return Starve(stack), nullptr;
    StateSet(*scalar, NODE_STYLE_MASK, NODE_STYLE_SHIFT, YAML_STYLE_PLAIN);
    return scalar;
}

// What flow YAML gives has no place: a variable has no lines.
void PlacesForget(const YamlHandle &flow) noexcept
{
    for (YamlListNode &node : NodeRange(flow.stRoot.stAllocLink, NodeLink::Alloc))
        node.uiLine = node.uiColumn = 0;
}

YamlListNode *FlowOf(Stack &stack, std::string_view text, uint32_t depth) noexcept
{
    const char *source = SourceLast(stack).name;
    const bool forms = (stack.options.uiFlags & YAML_LAYERS_MERGE_FORMS) != 0;
    YamlHandle *flow = DocumentOfText(text, source, {forms ? LOAD_MERGE_FORMS : 0, stack.document->uiNodeState, depth});
    if (flow == nullptr) {
        LoadFailureAdd(stack, source, "a text that begins with '[' or '{' is read as YAML");
        return nullptr;
    }
    PlacesForget(*flow);
    YamlListNode *top = FirstChild(flow->stRoot);
    Unhook(*top);
    DocumentTakeOver(*stack.document, flow);
    return top;
}

bool IsFlow(const Slot &slot, std::string_view text, Reads reads) noexcept
{
    const bool begins = text.starts_with('[') || text.starts_with('{');
    const bool scalarThere = slot.value != nullptr && slot.value->uiDataType == YAML_DATATYPE_SCALAR;
    return begins && (reads == Reads::Flow || (reads == Reads::AsWritten && !scalarThere));
}

// Two variables of one layer may not set the same value.
bool IsTaken(Stack &stack, const Slot &slot) noexcept
{
    const LayerSource &last = SourceLast(stack);
    for (const LayerSource &other : stack.document->pstLayering->sources) {
        if (slot.value == nullptr || other.value != slot.value || other.layer != last.layer)
            continue;
        Tell(stack, SpotOfLast(stack, slot.value), "the value is set by %s already", other.name);
        return true;
    }
    return false;
}

} // namespace

void zryaml::layers::ValueSet(Stack &stack, const Step *steps, uint32_t count, std::string_view text,
                              Reads reads) noexcept
{
    Slot slot = {&stack.document->stRoot, FirstChild(stack.document->stRoot)};
    for (uint32_t at = 0; at < count; ++at) {
        const bool isIndex = steps[at].isIndex;
        if (!CollectionMake(stack, slot, isIndex ? YAML_DATATYPE_SEQ : YAML_DATATYPE_MAP, at + 1))
            return;
        if (!(isIndex ? IndexStep(stack, slot, steps[at].index) : KeyStep(stack, slot, steps[at].key)))
            return;
    }
    if (IsTaken(stack, slot))
        return;
    YamlListNode *value = IsFlow(slot, text, reads) ? FlowOf(stack, text, count) : ScalarOf(stack, text);
    if (value == nullptr)
        return;
    SlotFill(stack, slot, *value);
    SourceLast(stack).value = slot.value;
}
