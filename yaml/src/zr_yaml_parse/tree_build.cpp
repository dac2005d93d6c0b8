// SPDX-License-Identifier: Apache-2.0
// From parse events to the tree: scalars, and the start and end of sequences and maps. What a start or a scalar makes
// hangs in the innermost open collection; an end returns to the collection that it closes.
#include "tree_builder.h"

#include "event_stack.h"
#include "map_key.h"
#include "node.h"
#include "parse_internal.h"

#include <utility>

namespace zryaml::parse {

struct CollectionKind { // how sequences and maps differ
    uint32_t dataType;
    uint32_t eventType;
    const char *asKey; // refusal of such a collection as a key
};
constexpr CollectionKind SequenceKind = {YAML_DATATYPE_SEQ, YAML_SEQUENCE_START_EVENT,
                                         "It does not support appearing a sequence event after map event."};
constexpr CollectionKind MapKind = {YAML_DATATYPE_MAP, YAML_MAPPING_START_EVENT,
                                    "It does not support continuous map events."};

namespace {

const char *TextOf(const yaml_char_t *text) noexcept
{
    return reinterpret_cast<const char *>(text);
}

YamlListNode *OpenCollection(const YamlHandle &handle, YamlListNode &current) noexcept
{
    switch (OpenEventOf(handle)) {
    case YAML_SEQUENCE_START_EVENT:
        return InnermostCollection(current, YAML_DATATYPE_SEQ);
    case YAML_MAPPING_START_EVENT:
        return InnermostCollection(current, YAML_DATATYPE_MAP);
    default:
        return nullptr;
    }
}

ZRYAML_RARE void MapMemoryLog() noexcept
{
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to allocate node for map node.");
}

YamlListNode *CollectionCreate(YamlHandle &handle, const CollectionKind &kind) noexcept
{
    YamlListNode *node = NodeCreate(handle);
    if (node != nullptr) {
        node->uiDataType = kind.dataType;
        OwnBytesAdd(handle, 0);
    } else if (&kind == &MapKind) {
        MapMemoryLog();
    }
    return node;
}

// Hangs the new value of a key that repeats a merged key under the merged one.
ZRYAML_RARE uint32_t MarkedKeyValueSet(YamlHandle &handle, const YamlListNode &key, YamlListNode &value,
                                       const char *anchor) noexcept
{
    YamlListNode *merged = MergedKeyOf(key);
    if (merged == nullptr)
        return YAML_FAIL(YAML_ERR_PARSE,
                         value.uiDataType == YAML_DATATYPE_SEQ
                             ? "Failed to process sequence start event: can not find node in anchor but the current "
                               "father node has been set as same node with anchor. (Scalar=%s)"
                             : "Failed to process map start event: can not find node in anchor but the current "
                               "father node has been set as same node with anchor. (Scalar=%s)",
                         key.pcValue);
    if (anchor != nullptr)
        AnchorNameDrop(handle, anchor); // it is not recorded, and an older one must not answer for it
    ValueReplace(*merged, value);
    return YAML_OK;
}

// Hangs a collection below the root, in a sequence or under a key.
void CollectionPlace(YamlListNode &node, YamlListNode *open, YamlListNode &current) noexcept
{
    const bool isElement = open != nullptr && open->uiDataType == YAML_DATATYPE_SEQ;
    if (isElement && node.uiDataType == YAML_DATATYPE_MAP)
        return ElementPlace(node, current);
    YamlListNode &father = isElement ? *open : current;
    ChildAppend(father, node);
    if (father.uiDataType == YAML_DATATYPE_NONE && node.uiDataType == YAML_DATATYPE_MAP)
        father.uiDataType = YAML_DATATYPE_MAP; // only the root
}

ZRYAML_RARE uint32_t KeyRefuse(const CollectionKind &kind) noexcept
{
    return YAML_FAIL(YAML_ERR_EVENT, "%s", kind.asKey);
}

ZRYAML_RARE uint32_t ScalarMemoryRefuse() noexcept
{
    return YAML_FAIL(YAML_ERR_NOMEM, "Failed to allocate memory for scalar node.");
}

ZRYAML_RARE uint32_t NulRefuse() noexcept
{
    return YAML_FAIL(YAML_ERR_EVENT, "The scalar holds a NUL character which is not supported.");
}

ZRYAML_RARE uint32_t ScalarAloneRefuse(uint32_t open) noexcept
{
    return YAML_FAIL(YAML_ERR_EVENT, "Unknown last event when add scalar data. (Event=%u)", open);
}

// Hangs the value of a key that overrides a merged one below the merged one.
ZRYAML_RARE uint32_t OverrideValue(const YamlListNode &key, YamlListNode &value) noexcept
{
    YamlListNode *merged = MergedKeyOf(key);
    if (merged == nullptr)
        return MergedKeyMissing(key);
    ValueReplace(*merged, value);
    return YAML_OK;
}

// The two steps that each scalar of a file takes, so without a call.

[[gnu::always_inline]] inline uint32_t InMapPlace(YamlListNode &scalar, YamlListNode &before, uint32_t &expected,
                                                  HeldKey *held) noexcept
{
    if (expected != ExpectValue) {
        expected = ExpectValue;
        return KeyPlace(scalar, before, held);
    }
    expected = ExpectKey;
    if (before.uiSameWithAnchor == 1) [[unlikely]]
        return OverrideValue(before, scalar);
    ChildAppend(before, scalar);
    return YAML_OK;
}

[[gnu::always_inline]] inline uint32_t ScalarPlace(TreeBuilder &builder, YamlListNode &scalar) noexcept
{
    YamlListNode &before = *std::exchange(builder.current, &scalar);
    scalar.pstFather = &before;
    scalar.uiDataType = YAML_DATATYPE_SCALAR;
    const uint32_t open = OpenEventOf(builder.handle);
    if (open == YAML_MAPPING_START_EVENT)
        return InMapPlace(scalar, before, builder.expected, builder.mayHold ? &builder.held : nullptr);
    if (open != YAML_SEQUENCE_START_EVENT)
        return ScalarAloneRefuse(open);
    ElementPlace(scalar, before);
    return YAML_OK;
}

} // namespace

void ElementPlace(YamlListNode &element, YamlListNode &current) noexcept
{
    YamlListNode *sequence = InnermostCollection(current, YAML_DATATYPE_SEQ);
    if (sequence != nullptr)
        ChildAppend(*sequence, element);
}

uint32_t ScalarPlaceInMap(YamlListNode &scalar, YamlListNode &before, uint32_t &expected, HeldKey *held) noexcept
{
    return InMapPlace(scalar, before, expected, held);
}

uint32_t TreeBuilder::PlaceScalar(YamlListNode &scalar) noexcept
{
    return ScalarPlace(*this, scalar);
}

uint32_t TreeBuilder::TakeScalar(const yaml_event_t &event) noexcept
{
    const auto &written = event.data.scalar;
    const std::string_view text(TextOf(written.value), written.length);
    // Nowhere but in double quotes an escape stands for a NUL, and libyaml refuses one that stands there itself.
    if (written.style == YAML_DOUBLE_QUOTED_SCALAR_STYLE && memchr(text.data(), '\0', text.size()) != nullptr)
        return NulRefuse();
    YamlListNode *scalar = ScalarCreate(handle, text);
    if (scalar == nullptr)
        return ScalarMemoryRefuse();
    ScalarFormSet(*scalar, written.style, TextOf(written.tag));
    YamlListNode *before = current;
    const uint32_t result = ScalarPlace(*this, *scalar);
    if (result != YAML_OK) {
        NodeFree(*scalar);
        current = before;
        return result;
    }
    OwnBytesAdd(handle, text.size() + 1);
    return written.anchor == nullptr ? YAML_OK
                                     : AnchorAdd(handle, TextOf(written.anchor), *scalar, YAML_DATATYPE_SCALAR);
}

uint32_t TreeBuilder::Open(const CollectionKind &kind, uint32_t eventBefore, const yaml_char_t *anchorText) noexcept
{
    const char *anchor = TextOf(anchorText);
    YamlListNode *open = OpenCollection(handle, *current);
    const bool isInMap = open != nullptr && open->uiDataType == YAML_DATATYPE_MAP;
    if (eventBefore == YAML_MAPPING_START_EVENT || (isInMap && !ValueExpected(*open, *current)))
        return KeyRefuse(kind);
    uint32_t result = DepthCheck(handle, 1);
    if (result != YAML_OK)
        return result;
    YamlListNode *node = CollectionCreate(handle, kind);
    if (node == nullptr)
        return YAML_ERR_NOMEM;
    const bool isMarked = current->uiSameWithAnchor == 1;
    if (isMarked)
        result = MarkedKeyValueSet(handle, *current, *node, anchor);
    else
        CollectionPlace(*node, open, *current);
    if (result != YAML_OK) {
        NodeFree(*node);
        return result;
    }
    node->uiState |= NODE_OPEN;
    if (kind.dataType == YAML_DATATYPE_MAP)
        KeysBegin(*node);
    current = node;
    EventPush(handle, kind.eventType);
    return isMarked || anchor == nullptr ? YAML_OK : AnchorAdd(handle, anchor, *node, kind.dataType);
}

void TreeBuilder::Close(uint32_t dataType) noexcept
{
    EventPop(handle);
    YamlListNode *closed = InnermostCollection(*current, dataType);
    if (closed == nullptr)
        return;
    closed->uiState &= ~NODE_OPEN;
    if ((closed->uiState & NODE_GROWING) != 0)
        KeysEnd(*closed);
    if ((closed->uiState & NODE_ANCHORED) != 0)
        AnchorFinish(handle, *closed);
    current = closed;
}

} // namespace zryaml::parse
