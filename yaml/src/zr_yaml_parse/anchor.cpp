// SPDX-License-Identifier: Apache-2.0
// Anchor records: open until their collection ends, then finished and found by name; an alias names the anchor of its
// name that was finished last. The records of a name that must not be kept go with all the older ones.
//
// A record is on one of the two lists of its handle. The finished ones are also in the handle's index by name, which
// holds the one finished last; each leads to the one before it.
#include "parse_internal.h"
#include "text_index.h"

#include <utility>

namespace {

struct AnchorRecord : YamlAnchorNode {
    AnchorRecord *pstOlder; // the finished record of the same name before this one
};

const char *NameOf(const AnchorRecord &stRecord) noexcept
{
    return stRecord.pcAnchorName;
}

AnchorRecord &RecordOf(YamlList *pstLink) noexcept
{
    return *reinterpret_cast<AnchorRecord *>(reinterpret_cast<uintptr_t>(pstLink) -
                                             offsetof(YamlAnchorNode, stAnchorLink));
}

void RecordFree(AnchorRecord &stRecord) noexcept
{
    ListRemove(stRecord.stAnchorLink);
    if (stRecord.pcAnchorName != nullptr)
        ZR_MemFree(stRecord.pcAnchorName, yaml_MemHandleGet());
    ZR_MemFree(&stRecord, yaml_MemHandleGet());
}

} // namespace

struct YamlAnchorIndex : TextIndex<AnchorRecord, NameOf> {
    uint32_t uiRecords = 0; // recorded so far, finished or open: there is room for all
};

namespace {

// Makes room for one more record, so that finishing it cannot fail.
[[nodiscard]] bool RoomMake(YamlHandle &stHandle) noexcept
{
    if (stHandle.pstAnchorIndex == nullptr) {
        void *pIndex = ZR_MemAlloc(sizeof(YamlAnchorIndex), yaml_MemHandleGet());
        if (pIndex == nullptr)
            return false;
        stHandle.pstAnchorIndex = static_cast<YamlAnchorIndex *>(pIndex);
        *stHandle.pstAnchorIndex = {};
    }
    return stHandle.pstAnchorIndex->Reserve(++stHandle.pstAnchorIndex->uiRecords);
}

void RecordFinish(YamlHandle &stHandle, AnchorRecord &stRecord) noexcept
{
    ListInsertAfter(stHandle.stAnchorList, stRecord.stAnchorLink);
    stRecord.pstOlder = stHandle.pstAnchorIndex->Put(stRecord, TextHash(stRecord.pcAnchorName));
}

// The record on a node, searched from the front of a list: the one that is asked for was made last.
AnchorRecord *RecordOfNode(YamlList &stHead, const YamlListNode &stNode) noexcept
{
    for (YamlList *pstLink = stHead.next; pstLink != &stHead; pstLink = pstLink->next) {
        if (RecordOf(pstLink).pstAnchoredNode == &stNode)
            return &RecordOf(pstLink);
    }
    return nullptr;
}

} // namespace

void zryaml::parse::AnchorNameDrop(YamlHandle &stHandle, const char *pcName) noexcept
{
    YamlList &stOpen = stHandle.stOpenAnchorList;
    for (YamlList *pstLink = stOpen.next; pstLink != &stOpen;) { // at most one for each open collection
        AnchorRecord &stRecord = RecordOf(pstLink);
        pstLink = pstLink->next;
        if (strcmp(stRecord.pcAnchorName, pcName) == 0)
            RecordFree(stRecord);
    }
    if (stHandle.pstAnchorIndex == nullptr)
        return;
    AnchorRecord *pstRecord = stHandle.pstAnchorIndex->Find(pcName, TextHash(pcName));
    stHandle.pstAnchorIndex->Remove(pcName);
    while (pstRecord != nullptr) // the name may be that of a record, so it is not used any more
        RecordFree(*std::exchange(pstRecord, pstRecord->pstOlder));
}

void zryaml::parse::AnchorOfNodeDrop(YamlHandle &stHandle, const YamlListNode &stNode) noexcept
{
    if ((stNode.uiState & NODE_ANCHORED) == 0)
        return;
    if (const AnchorRecord *pstRecord = RecordOfNode(stHandle.stAnchorList, stNode))
        AnchorNameDrop(stHandle, pstRecord->pcAnchorName);
}

YamlAnchorNode *yaml_AnchorNodeAlloc(YamlHandle *pstHandle, const char *pcName)
{
    auto *pstRecord = static_cast<AnchorRecord *>(ZR_MemAlloc(sizeof(AnchorRecord), yaml_MemHandleGet()));
    if (pstRecord == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Allocate memory for anchor node failed.");
        return nullptr;
    }
    YAML_SECURE(memset_s(pstRecord, sizeof(*pstRecord), 0, sizeof(*pstRecord)));
    pstRecord->pcAnchorName = yaml_ValueDup(pstHandle, 0, pcName);
    if (pstRecord->pcAnchorName == nullptr) {
        ZR_MemFree(pstRecord, yaml_MemHandleGet());
        return nullptr;
    }
    pstRecord->pstOlder = nullptr;
    return pstRecord;
}

uint32_t yaml_AnchorRecord(YamlHandle *pstHandle, const char *pcName, YamlListNode *pstNewNode, uint32_t uiAnchorType)
{
    if (pcName == nullptr)
        return YAML_OK;
    YamlAnchorNode *pstAnchor = yaml_AnchorNodeAlloc(pstHandle, pcName);
    if (pstAnchor == nullptr)
        return YAML_ERR_NOMEM;
    auto &stRecord = static_cast<AnchorRecord &>(*pstAnchor);
    ListInit(stRecord.stAnchorLink);
    if (!RoomMake(*pstHandle)) {
        RecordFree(stRecord);
        return YAML_FAIL(YAML_ERR_NOMEM, "Allocate memory for anchor node failed.");
    }
    stRecord.pstAnchoredNode = pstNewNode;
    stRecord.uiMagic = YAML_NODE_MAGIC;
    pstNewNode->uiState |= NODE_ANCHORED;
    if (uiAnchorType == YAML_DATATYPE_SCALAR)
        RecordFinish(*pstHandle, stRecord);
    else
        ListInsertAfter(pstHandle->stOpenAnchorList, stRecord.stAnchorLink);
    return YAML_OK;
}

void yaml_AnchorRecordEnd(YamlHandle *pstHandle, YamlListNode *pstNode)
{
    if ((pstNode->uiState & NODE_ANCHORED) == 0)
        return;
    AnchorRecord *pstRecord = RecordOfNode(pstHandle->stOpenAnchorList, *pstNode);
    if (pstRecord == nullptr)
        return; // forgotten meanwhile, with a younger anchor of its name
    ListRemove(pstRecord->stAnchorLink);
    RecordFinish(*pstHandle, *pstRecord);
}

YamlAnchorNode *yaml_AnchorObjFind(const YamlHandle *pstHandle, const char *pcName)
{
    return pstHandle->pstAnchorIndex == nullptr ? nullptr : pstHandle->pstAnchorIndex->Find(pcName, TextHash(pcName));
}

void yaml_AnchorNodesRelease(YamlList *pstHead)
{
    while (!ListIsEmpty(*pstHead) && RecordOf(pstHead->next).uiMagic == YAML_NODE_MAGIC)
        RecordFree(RecordOf(pstHead->next));
}

void yaml_AnchorListRealse(YamlHandle *pstHandle)
{
    yaml_AnchorNodesRelease(&pstHandle->stAnchorList);
    yaml_AnchorNodesRelease(&pstHandle->stOpenAnchorList);
    if (pstHandle->pstAnchorIndex == nullptr)
        return;
    pstHandle->pstAnchorIndex->Release();
    ZR_MemFree(pstHandle->pstAnchorIndex, yaml_MemHandleGet());
    pstHandle->pstAnchorIndex = nullptr;
}
