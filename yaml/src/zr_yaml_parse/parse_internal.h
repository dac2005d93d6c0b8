// SPDX-License-Identifier: Apache-2.0
// What the files of this folder share: anchors, bounds, the log.
#pragma once

#include "../debug_switch.h"
#include "../node_tree.h"
#include "../report.h"
#include "node_place.h"

#include <string_view>

namespace zryaml::parse {

extern ZR_LogModule YamlLogModule;

// Remembers a tag of the file if it is a core tag (scalar_form.cpp).
void ScalarTagSet(YamlListNode &stNode, const char *pcTag) noexcept;
// Remembers how the file wrote a scalar: libyaml's number of the style, and the tag, which may be NULL.
inline void ScalarFormSet(YamlListNode &stNode, uint32_t uiStyle, const char *pcTag) noexcept
{
    stNode.uiState |= uiStyle << NODE_STYLE_SHIFT & NODE_STYLE_MASK;
    if (pcTag != nullptr) [[unlikely]]
        ScalarTagSet(stNode, pcTag);
}

// Logs that a marked key has no merged one (alias.cpp).
[[nodiscard]] uint32_t MergedKeyMissing(const YamlListNode &stKey) noexcept;

// --- anchors (anchor.cpp) ---

// A record in no list, with a copy of the name. NULL if out of memory (logged).
[[nodiscard]] YamlAnchorNode *AnchorCreate(YamlHandle &stHandle, const char *pcName) noexcept;
// Records an anchor on a node; a collection's stays open until AnchorFinish. 12 if out of memory (logged).
[[nodiscard]] uint32_t AnchorAdd(YamlHandle &stHandle, const char *pcName, YamlListNode &stNode,
                                 uint32_t uiAnchorType) noexcept;
// Finishes the anchor on a collection that ends.
void AnchorFinish(YamlHandle &stHandle, const YamlListNode &stNode) noexcept;
// The anchor of that name that was finished last, or NULL.
[[nodiscard]] YamlAnchorNode *AnchorFind(const YamlHandle &stHandle, const char *pcName) noexcept;
// Forgets every anchor of that name: a later alias of it is refused.
void AnchorNameDrop(YamlHandle &stHandle, const char *pcName) noexcept;
// Forgets the anchor on a node that is about to go, and the older ones of its name.
void AnchorOfNodeDrop(YamlHandle &stHandle, const YamlListNode &stNode) noexcept;
// Releases the records of one list, and all that a document has of them.
void AnchorListRelease(YamlList &stHead) noexcept;
void AnchorsRelease(YamlHandle &stHandle) noexcept;

// --- limits (limit_check.cpp) ---

// Refuses to go uiMore collections below the open ones if that is too deep. 0 or 0x1900000B (logged).
[[nodiscard]] uint32_t DepthCheck(const YamlHandle &stHandle, uint32_t uiMore) noexcept;
// Counts bytes of a node that the file itself wrote.
inline void OwnBytesAdd(YamlHandle &stHandle, uint64_t ulTextBytes) noexcept
{
    stHandle.ulOwnBytes += sizeof(YamlListNode) + ulTextBytes;
}
// Charges the visit of one node by an alias or a merge, with the bytes of the text that it copies. 0 or 12 (logged).
[[nodiscard]] uint32_t CopyCharge(YamlHandle &stHandle, uint64_t ulTextBytes) noexcept;

} // namespace zryaml::parse
