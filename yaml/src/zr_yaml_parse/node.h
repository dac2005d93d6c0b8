// SPDX-License-Identifier: Apache-2.0
// Node records: taken from the store or the pool, initialised, given a text, released. Every node is on its document's
// all-nodes list from its making to its release.
#pragma once

#include "../debug_switch.h"
#include "../node_tree.h"
#include "node_store.h"

#include <algorithm>
#include <string_view>

namespace zryaml::parse {

// --- memory that is counted while the debug switch is 1; the number stops at its largest value ---

inline void MemoryCount(YamlHandle &handle, uint64_t bytes) noexcept
{
    if (DebugSwitch() == 1)
        handle.uiMemSize += static_cast<uint32_t>(std::min<uint64_t>(bytes, UINT32_MAX - handle.uiMemSize));
}
inline void MemoryUncount(YamlHandle &handle, uint64_t bytes) noexcept
{
    if (DebugSwitch() == 1 && handle.uiMemSize != UINT32_MAX)
        handle.uiMemSize -= static_cast<uint32_t>(bytes);
}

// --- records ---

// Logging takes room on the stack and has it guarded, so where it hardly ever happens it is kept out of the way.
#define ZRYAML_RARE [[gnu::cold, gnu::noinline]]

ZRYAML_RARE void RefusalLog() noexcept;              // of a bounds-checked call; the caller carries on
ZRYAML_RARE void NodeClear(YamlListNode &) noexcept; // after such a refusal

// Makes a record an empty node.
inline void NodeInit(YamlListNode &node) noexcept
{
    if (memset_s(&node, sizeof(node), 0, sizeof(node)) != 0) [[unlikely]]
        NodeClear(node);
    node.uiMagic = YAML_NODE_MAGIC;
    ListInit(node.stChildLink);
    ListInit(node.stChildList);
    ListInit(node.stSeqLink);
    ListInit(node.stAllocLink);
    node.uiDataType = YAML_DATATYPE_NONE;
    node.uiNextLevelType = YAML_DATATYPE_NONE;
}

// Makes a record a node of the document, at the place of the event at hand. It is not counted yet.
inline void NodeEnter(YamlHandle &handle, YamlListNode &node) noexcept
{
    NodeInit(node);
    node.uiLine = handle.uiLine;
    node.uiColumn = handle.uiColumn;
    node.uiState = handle.uiNodeState;
    if (StoreIsOpen(handle)) [[likely]]
        node.uiState |= NODE_STORED;
    else
        handle.uiOwnBlocks = 1;
    ListInsertAfter(handle.stRoot.stAllocLink, node.stAllocLink);
}

// A node in no place of the tree yet. NULL if out of memory (logged).
[[nodiscard]] YamlListNode *NodeCreate(YamlHandle &handle) noexcept;
// One that knows where its source is written; nothing else of it is copied.
[[nodiscard]] YamlListNode *CopyCreate(YamlHandle &handle, const YamlListNode &source) noexcept;
// Takes a node out of all its lists and releases it; its children stay with the document. An index of the keys that it
// stands among is the caller's concern.
void NodeFree(YamlListNode &node) noexcept;
// Releases a record with all that it owns, without taking it out of any list.
void NodeRelease(YamlListNode &node) noexcept;

// --- texts ---

// A copy that is counted if asked to; NULL if out of memory (logged). A counted one belongs to a node.
[[nodiscard]] char *TextCopy(YamlHandle &handle, bool counted, std::string_view text) noexcept;
// Gives a scalar a copy of a text. False if out of memory (logged).
[[nodiscard]] bool TextSet(YamlHandle &handle, YamlListNode &node, std::string_view text) noexcept;
// A scalar where record and text have to be taken one by one.
[[nodiscard, gnu::cold]] YamlListNode *ScalarCreateSlowly(YamlHandle &handle, std::string_view text) noexcept;

// A scalar with a copy of a text, in no place of the tree yet. NULL if out of memory (logged).
[[nodiscard, gnu::always_inline]] inline YamlListNode *ScalarCreate(YamlHandle &handle, std::string_view text) noexcept
{
    auto &store = handle.stStore;
    if (text.size() >= store.ulFree) [[unlikely]] // so that the sum does not overflow
        return ScalarCreateSlowly(handle, text);
    const size_t size = sizeof(YamlListNode) + PieceSizeOf(text.size() + 1);
    if (size > store.ulFree) [[unlikely]]
        return ScalarCreateSlowly(handle, text);
    auto *scalar = reinterpret_cast<YamlListNode *>(store.pcFree);
    store.pcFree += size;
    store.ulFree -= size;
    StorePrefetch(store.pcFree);
    NodeEnter(handle, *scalar);
    char *copy = reinterpret_cast<char *>(scalar + 1);
    if (strncpy_s(copy, text.size() + 1, text.data(), text.size()) != 0) [[unlikely]]
        RefusalLog();
    MemoryCount(handle, sizeof(YamlListNode) + text.size() + 1);
    scalar->pcValue = copy;
    scalar->uPlace.uiTextMark = TextMarkOf(text);
    scalar->uiDataType = YAML_DATATYPE_SCALAR;
    return scalar;
}

} // namespace zryaml::parse
