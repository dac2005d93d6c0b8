// SPDX-License-Identifier: Apache-2.0
// The copies themselves. Each node visited is charged, each collection entered is tested for its depth.
#include "node_copy.h"

#include "map_key.h"
#include "node.h"
#include "parse_internal.h"

#include <cstring>

namespace zryaml::parse {

namespace {

struct CopyLevel { // one more collection entered by a copy, as long as it lives
    explicit CopyLevel(YamlHandle &handle) noexcept : m_handle(handle) { ++m_handle.uiCopyDepth; }
    ~CopyLevel() { --m_handle.uiCopyDepth; }
    CopyLevel(const CopyLevel &) = delete;
    CopyLevel &operator=(const CopyLevel &) = delete;

private:
    YamlHandle &m_handle;
};

// The keys of a fresh copy, which differ as those of their source do. A map with an index is copied into one.
uint32_t MapCopy(YamlHandle &handle, YamlListNode &copy, const YamlListNode &source) noexcept
{
    KeysPlace place = {&copy, nullptr, false};
    const bool isIndexed = HasKeyIndex(source);
    if (isIndexed)
        KeysBegin(copy);
    const uint32_t result = KeysCopy(handle, place, source);
    if (isIndexed)
        KeysEnd(copy);
    return result;
}

} // namespace

YamlListNode *NodeCopy(YamlHandle &handle, const YamlListNode &source) noexcept
{
    const bool hasText = source.pcValue != nullptr;
    const std::string_view text = hasText ? source.pcValue : "";
    if (CopyCharge(handle, hasText ? text.size() + 1 : 0) != YAML_OK)
        return nullptr;
    YamlListNode *copy = CopyCreate(handle, source);
    if (copy == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to allocate memory to dup node.");
        return nullptr;
    }
    if (hasText && !TextSet(handle, *copy, text)) {
        NodeFree(*copy);
        return nullptr;
    }
    copy->uiFromAlias = 1;
    copy->uiState |= source.uiState & NODE_COPIED;
    copy->uiDataType = source.uiDataType;
    copy->uiNextLevelType = source.uiNextLevelType;
    return copy;
}

YamlListNode *ChildCopy(YamlHandle &handle, YamlListNode &father, const YamlListNode &source) noexcept
{
    YamlListNode *copy = NodeCopy(handle, source);
    if (copy != nullptr)
        ChildAppend(father, *copy);
    return copy;
}

uint32_t ContentCopy(YamlHandle &handle, YamlListNode &copy, const YamlListNode &source) noexcept
{
    if (source.uiDataType == YAML_DATATYPE_SCALAR) {
        copy.uiNextLevelType = YAML_DATATYPE_NONE; // an anchored key's value is not part of the anchor
        return YAML_OK;
    }
    const CopyLevel level(handle);
    const uint32_t result = DepthCheck(handle, handle.uiCopyDepth);
    if (result != YAML_OK)
        return result;
    return source.uiDataType == YAML_DATATYPE_MAP ? MapCopy(handle, copy, source)
                                                  : ElementsCopy(handle, copy, nullptr, source);
}

uint32_t ValueCopy(YamlHandle &handle, YamlListNode &copiedKey, const YamlListNode &sourceKey) noexcept
{
    YamlListNode *father = &copiedKey;
    const YamlListNode *source = &sourceKey;
    do { // a value that has one itself is a scalar, which only a tree made by hand has
        if (source->uiNextLevelType > YAML_DATATYPE_SCALAR)
            return YAML_FAIL(YAML_ERR_PARAM, "There is a unknown data type when copy anchor node. (DataType=%u)",
                             source->uiNextLevelType);
        source = FirstChild(*source);
        if (source == nullptr)
            return YAML_OK;
        father = ChildCopy(handle, *father, *source);
        if (father == nullptr)
            return YAML_ERR_NOMEM;
    } while (source->uiDataType == YAML_DATATYPE_SCALAR && HasChildren(*source));
    return ContentCopy(handle, *father, *source);
}

uint32_t KeyCopy(YamlHandle &handle, KeysPlace &place, const YamlListNode &sourceKey, YamlListNode *&copy) noexcept
{
    SameKeys same;
    const bool isMarked = sourceKey.uiSameWithAnchor == 1; // the merged key of its text is copied in its stead
    copy = nullptr;
    if (place.test && !isMarked)
        same = KeysFind(*place.map, sourceKey.pcValue);
    if (isMarked || same.Any()) {
        YAML_NOTE(YAML_ERR_SAME, "There is a same scalar in previous key list. (Scalar=%s)", sourceKey.pcValue);
        return CopyCharge(handle, strlen(sourceKey.pcValue) + 1);
    }
    YamlListNode *key = NodeCopy(handle, sourceKey);
    if (key == nullptr)
        return YAML_ERR_NOMEM;
    const uint32_t result = KeyInsert(*place.map, place.previous, *key, same.hash);
    if (result == YAML_OK)
        copy = place.previous = key;
    return result;
}

uint32_t KeysCopy(YamlHandle &handle, KeysPlace &place, const YamlListNode &source) noexcept
{
    for (const YamlListNode &key : Children(source)) {
        YamlListNode *copy = nullptr;
        uint32_t result = KeyCopy(handle, place, key, copy);
        if (copy != nullptr && !HasChildren(key) && place.map->uiDataType == YAML_DATATYPE_MAP)
            return YAML_FAIL(YAML_ERR_PARSE, "Can not merge a single scalar in sequence anchor to map. (Scalar=%s)",
                             key.pcValue);
        if (copy != nullptr)
            result = ValueCopy(handle, *copy, key);
        if (result != YAML_OK)
            return result;
    }
    return YAML_OK;
}

uint32_t ElementsCopy(YamlHandle &handle, YamlListNode &sequence, YamlListNode *previous,
                      const YamlListNode &source) noexcept
{
    for (const YamlListNode &element : Children(source)) {
        YamlListNode *copy = NodeCopy(handle, element);
        if (copy == nullptr)
            return YAML_ERR_NOMEM;
        if (previous == nullptr) {
            ChildAppend(sequence, *copy);
        } else {
            ChildInsertAfter(*previous, *copy);
            previous = copy;
        }
        if (ContentCopy(handle, *copy, element) != YAML_OK)
            return YAML_ERR_NOMEM;
    }
    if (previous != nullptr)
        ElementsNumber(sequence);
    return YAML_OK;
}

} // namespace zryaml::parse
