// SPDX-License-Identifier: Apache-2.0
// Anchor records: open until their collection ends, then finished and found by name; an alias names the anchor of its
// name that was finished last. The records of a name that must not be kept go with all the older ones.
//
// A record is on one of the two lists of its handle. The finished ones are also in the handle's index by name, which
// holds the one finished last; each leads to the one before it.
#include "node.h"
#include "parse_internal.h"
#include "text_index.h"

#include <cstring>
#include <new>
#include <utility>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

struct AnchorRecord : YamlAnchorNode {
    AnchorRecord *older; // the finished record of the same name before this one
};

const char *NameOf(const AnchorRecord &record) noexcept
{
    return record.pcAnchorName;
}

AnchorRecord &RecordOf(YamlList *link) noexcept
{
    return *reinterpret_cast<AnchorRecord *>(reinterpret_cast<uintptr_t>(link) -
                                             offsetof(YamlAnchorNode, stAnchorLink));
}

void RecordFree(AnchorRecord &record) noexcept
{
    ListRemove(record.stAnchorLink);
    if (record.pcAnchorName != nullptr)
        ZR_MemFree(record.pcAnchorName, yaml_MemHandleGet());
    ZR_MemFree(&record, yaml_MemHandleGet());
}

} // namespace

struct YamlAnchorIndex : TextIndex<AnchorRecord, NameOf> {
    uint32_t records = 0; // made so far, finished or open: there is room for all
};

namespace {

// Makes room for one more record, so that finishing it cannot fail.
[[nodiscard]] bool RoomMake(YamlHandle &handle) noexcept
{
    if (handle.pstAnchorIndex == nullptr) {
        void *index = ZR_MemAlloc(sizeof(YamlAnchorIndex), yaml_MemHandleGet());
        if (index == nullptr)
            return false;
        handle.pstAnchorIndex = ::new (index) YamlAnchorIndex;
    }
    return handle.pstAnchorIndex->Reserve(++handle.pstAnchorIndex->records);
}

void RecordFinish(YamlHandle &handle, AnchorRecord &record) noexcept
{
    ListInsertAfter(handle.stAnchorList, record.stAnchorLink);
    record.older = handle.pstAnchorIndex->Put(record, TextHash(record.pcAnchorName));
}

// The record on a node, searched from the front of a list: the one that is asked for was made last.
AnchorRecord *RecordOfNode(YamlList &head, const YamlListNode &node) noexcept
{
    for (YamlList *link = head.next; link != &head; link = link->next) {
        if (RecordOf(link).pstAnchoredNode == &node)
            return &RecordOf(link);
    }
    return nullptr;
}

} // namespace

namespace zryaml::parse {

YamlAnchorNode *AnchorCreate(YamlHandle &handle, const char *name) noexcept
{
    auto *record = static_cast<AnchorRecord *>(ZR_MemAlloc(sizeof(AnchorRecord), yaml_MemHandleGet()));
    if (record == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Allocate memory for anchor node failed.");
        return nullptr;
    }
    YAML_SECURE(memset_s(record, sizeof(*record), 0, sizeof(*record)));
    record->pcAnchorName = TextCopy(handle, false, name);
    if (record->pcAnchorName == nullptr) {
        ZR_MemFree(record, yaml_MemHandleGet());
        return nullptr;
    }
    record->older = nullptr;
    return record;
}

uint32_t AnchorAdd(YamlHandle &handle, const char *name, YamlListNode &node, uint32_t anchorType) noexcept
{
    YamlAnchorNode *anchor = AnchorCreate(handle, name);
    if (anchor == nullptr)
        return YAML_ERR_NOMEM;
    auto &record = static_cast<AnchorRecord &>(*anchor);
    ListInit(record.stAnchorLink);
    if (!RoomMake(handle)) {
        RecordFree(record);
        return YAML_FAIL(YAML_ERR_NOMEM, "Allocate memory for anchor node failed.");
    }
    record.pstAnchoredNode = &node;
    record.uiMagic = YAML_NODE_MAGIC;
    node.uiState |= NODE_ANCHORED;
    if (anchorType == YAML_DATATYPE_SCALAR)
        RecordFinish(handle, record);
    else
        ListInsertAfter(handle.stOpenAnchorList, record.stAnchorLink);
    return YAML_OK;
}

void AnchorFinish(YamlHandle &handle, const YamlListNode &node) noexcept
{
    AnchorRecord *record = RecordOfNode(handle.stOpenAnchorList, node);
    if (record == nullptr)
        return; // dropped together with a newer anchor of the same name
    ListRemove(record->stAnchorLink);
    RecordFinish(handle, *record);
}

YamlAnchorNode *AnchorFind(const YamlHandle &handle, const char *name) noexcept
{
    return handle.pstAnchorIndex == nullptr ? nullptr : handle.pstAnchorIndex->Find(name, TextHash(name));
}

void AnchorNameDrop(YamlHandle &handle, const char *name) noexcept
{
    YamlList &open = handle.stOpenAnchorList;
    for (YamlList *link = open.next; link != &open;) { // at most one for each open collection
        AnchorRecord &record = RecordOf(link);
        link = link->next;
        if (strcmp(record.pcAnchorName, name) == 0)
            RecordFree(record);
    }
    if (handle.pstAnchorIndex == nullptr)
        return;
    AnchorRecord *record = handle.pstAnchorIndex->Find(name, TextHash(name));
    handle.pstAnchorIndex->Remove(name);
    while (record != nullptr) // the name may be that of a record, so it is not used any more
        RecordFree(*std::exchange(record, record->older));
}

void AnchorOfNodeDrop(YamlHandle &handle, const YamlListNode &node) noexcept
{
    if ((node.uiState & NODE_ANCHORED) == 0)
        return;
    if (const AnchorRecord *record = RecordOfNode(handle.stAnchorList, node))
        AnchorNameDrop(handle, record->pcAnchorName);
}

void AnchorListRelease(YamlList &head) noexcept
{
    while (!ListIsEmpty(head) && RecordOf(head.next).uiMagic == YAML_NODE_MAGIC)
        RecordFree(RecordOf(head.next));
}

void AnchorsRelease(YamlHandle &handle) noexcept
{
    AnchorListRelease(handle.stAnchorList);
    AnchorListRelease(handle.stOpenAnchorList);
    if (handle.pstAnchorIndex == nullptr)
        return;
    handle.pstAnchorIndex->Release();
    ZR_MemFree(handle.pstAnchorIndex, yaml_MemHandleGet());
    handle.pstAnchorIndex = nullptr;
}

} // namespace zryaml::parse
