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
void ScalarTagSet(YamlListNode &node, const char *tag) noexcept;
// Remembers how the file wrote a scalar: libyaml's number of the style, and the tag, which may be NULL.
inline void ScalarFormSet(YamlListNode &node, uint32_t style, const char *tag) noexcept
{
    node.uiState |= style << NODE_STYLE_SHIFT & NODE_STYLE_MASK;
    if (tag != nullptr) [[unlikely]]
        ScalarTagSet(node, tag);
}

// Logs that a marked key has no merged one (alias.cpp).
[[nodiscard]] uint32_t MergedKeyMissing(const YamlListNode &key) noexcept;

// --- anchors (anchor.cpp) ---

// A record in no list, with a copy of the name. NULL if out of memory (logged).
[[nodiscard]] YamlAnchorNode *AnchorCreate(YamlHandle &handle, const char *name) noexcept;
// Records an anchor on a node; a collection's stays open until AnchorFinish. 12 if out of memory (logged).
[[nodiscard]] uint32_t AnchorAdd(YamlHandle &handle, const char *name, YamlListNode &node,
                                 uint32_t anchorType) noexcept;
// Finishes the anchor on a collection that ends.
void AnchorFinish(YamlHandle &handle, const YamlListNode &node) noexcept;
// The anchor of that name that was finished last, or NULL.
[[nodiscard]] YamlAnchorNode *AnchorFind(const YamlHandle &handle, const char *name) noexcept;
// Forgets every anchor of that name: a later alias of it is refused.
void AnchorNameDrop(YamlHandle &handle, const char *name) noexcept;
// Forgets the anchor on a node that is about to go, and the older ones of its name.
void AnchorOfNodeDrop(YamlHandle &handle, const YamlListNode &node) noexcept;
// Releases the records of one list, and all that a document has of them.
void AnchorListRelease(YamlList &head) noexcept;
void AnchorsRelease(YamlHandle &handle) noexcept;

// --- limits (limit_check.cpp) ---

// Refuses to go more collections below the open ones if that is too deep. 0 or 0x1900000B (logged).
[[nodiscard]] uint32_t DepthCheck(const YamlHandle &handle, uint32_t more) noexcept;
// Counts bytes of a node that the file itself wrote.
inline void OwnBytesAdd(YamlHandle &handle, uint64_t textBytes) noexcept
{
    handle.ulOwnBytes += sizeof(YamlListNode) + textBytes;
}
// Charges the visit of one node by an alias or a merge, with the bytes of the text that it copies. 0 or 12 (logged).
[[nodiscard]] uint32_t CopyCharge(YamlHandle &handle, uint64_t textBytes) noexcept;

} // namespace zryaml::parse
