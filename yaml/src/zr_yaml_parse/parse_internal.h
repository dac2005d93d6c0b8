// SPDX-License-Identifier: Apache-2.0
// What the files of this folder share: node records, the key index, anchors, what copies cost.
#pragma once

#include "../debug_switch.h"
#include "../node_tree.h"
#include "../report.h"
#include "node_place.h"

#include <string_view>

namespace zryaml::parse {

extern ZR_LogModule YamlLogModule;

// --- node records (node.cpp) ---

// Gives a scalar a copy of a text. False if out of memory (logged).
[[nodiscard]] bool TextSet(YamlHandle &stHandle, YamlListNode &stNode, std::string_view svText) noexcept;
// A scalar with a text, in no place of the tree yet. NULL if out of memory (logged).
[[nodiscard]] YamlListNode *ScalarCreate(YamlHandle &stHandle, std::string_view svText) noexcept;
// Releases a record with all that it owns, without taking it out of any list.
void NodeRelease(YamlListNode &stNode) noexcept;

// --- keys of a map (map_key.cpp) ---

struct SameKeys { // the keys of one map that have a certain text
    YamlListNode *pstWritten = nullptr;
    YamlListNode *pstMerged = nullptr;
    uint64_t ulHash = 0; // of the text, where an index was asked for it
};
// Finds the keys of a map with a text, at the same cost however many keys it has. 12 if out of memory (logged).
[[nodiscard]] uint32_t KeysFind(YamlListNode &stMap, const char *pcText, SameKeys &stFound) noexcept;
// Hangs a key into a map, right after a key or, with a NULL one, as the first. ulHash is the one of KeysFind, or 0. 12
// if out of memory (logged).
[[nodiscard]] uint32_t KeyInsert(YamlListNode &stMap, YamlListNode *pstPrevious, YamlListNode &stKey,
                                 uint64_t ulHash) noexcept;
// Takes a key out of a map and releases it.
void KeyRemove(YamlListNode &stMap, YamlListNode &stKey) noexcept;
// Releases what served the insertion of keys, when a map ends.
void KeyIndexRelease(YamlListNode &stMap) noexcept;

// --- anchors (anchor.cpp) ---

// Forgets every anchor of that name: a later alias of it is refused.
void AnchorNameDrop(YamlHandle &stHandle, const char *pcName) noexcept;
// Forgets the anchor on a node that is about to go, and the older ones of its name.
void AnchorOfNodeDrop(YamlHandle &stHandle, const YamlListNode &stNode) noexcept;

// --- bounds (bounds.cpp) ---

// Refuses to go uiMore collections below the open ones if that is too deep. 0 or 0x1900000B (logged).
[[nodiscard]] uint32_t DepthCheck(const YamlHandle &stHandle, uint32_t uiMore) noexcept;
// Counts bytes of a node that the file itself wrote.
inline void OwnBytesAdd(YamlHandle &stHandle, uint64_t ulTextBytes) noexcept
{
    stHandle.ulOwnBytes += sizeof(YamlListNode) + ulTextBytes;
}
// Charges the visit of one node by an alias or a merge, with the bytes of the text that it copies. 0 or 12 (logged).
[[nodiscard]] uint32_t CopyCharge(YamlHandle &stHandle, uint64_t ulTextBytes) noexcept;

// --- copies (node_copy.cpp) ---

// Fills the copy of a collection with copies of what hangs below its source; the copy of a scalar stands alone.
[[nodiscard]] uint32_t ContentCopy(YamlHandle &stHandle, YamlListNode &stCopy, const YamlListNode &stSource) noexcept;

} // namespace zryaml::parse

using namespace zryaml;
using namespace zryaml::parse;
