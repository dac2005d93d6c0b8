// SPDX-License-Identifier: Apache-2.0
// Nodes and texts that come to a document after its load: those of another document, scalars that no file wrote, and
// new texts of scalars.
#include "../document_load.h"
#include "../key_index.h"
#include "node.h"
#include "node_store.h"
#include "parse_internal.h"

using namespace zryaml;
using namespace zryaml::parse;

void zryaml::DocumentTakeOver(YamlHandle &handle, YamlHandle *other) noexcept
{
    YamlList &head = handle.stRoot.stAllocLink;
    YamlList &taken = other->stRoot.stAllocLink;
    if (!ListIsEmpty(taken)) {
        taken.prev->next = head.next;
        head.next->prev = taken.prev;
        head.next = taken.next;
        taken.next->prev = &head;
        ListInit(taken);
    }
    StoreTakeOver(handle, *other);
    KeyIndexesTakeOver(handle, *other);
    handle.uiOwnBlocks |= other->uiOwnBlocks;
    handle.ulOwnBytes += other->ulOwnBytes;
    handle.ulCopyCharge += other->ulCopyCharge;
    handle.uiMemSize += std::min(other->uiMemSize, UINT32_MAX - handle.uiMemSize);
    ZR_MemFree(other, yaml_MemHandleGet());
}

YamlListNode *zryaml::ScalarMake(YamlHandle &handle, std::string_view text) noexcept
{
    YamlListNode *scalar = ScalarCreate(handle, text);
    if (scalar != nullptr)
        OwnBytesAdd(handle, text.size() + 1);
    return scalar;
}

bool zryaml::TextReplace(YamlHandle &handle, YamlListNode &scalar, std::string_view text) noexcept
{
    char *old = scalar.pcValue;
    const uint32_t mark = scalar.uPlace.uiTextMark; // of an element this is its number
    if (!TextSet(handle, scalar, text)) {
        scalar.pcValue = old;
        scalar.uPlace.uiTextMark = mark;
        return false;
    }
    scalar.uPlace.uiTextMark = mark;
    if ((scalar.uiState & NODE_STORED) == 0)
        ZR_MemFree(old, yaml_MemHandleGet());
    return true;
}
