// SPDX-License-Identifier: Apache-2.0
// What differs between two documents, one difference at a time. The walk keeps where it is in the caller's record: the
// pair of collections that is compared, the entries of each at hand, and the scalar within a value that only one has.
#include "layers_internal.h"

#include "../record_size.h"

#include <cstring>

using namespace zryaml;
using namespace zryaml::layers;

namespace {

const YamlListNode *Shown(const YamlListNode *father, const YamlListNode *entry) noexcept
{
    while (entry != nullptr && entry->uiSameWithAnchor == 1)
        entry = NextChild(*father, *entry);
    return entry;
}

const YamlListNode *EntryFirst(const YamlListNode &collection) noexcept
{
    return Shown(&collection, FirstChild(collection));
}

const YamlListNode *EntryNext(const YamlListNode &entry) noexcept
{
    return Shown(entry.pstFather, NextChild(*entry.pstFather, entry));
}

// An entry of a map is a key, which leads to its value; an entry of a sequence is the value itself.
const YamlListNode *ValueOf(const YamlListNode *entry) noexcept
{
    const bool isKey = entry != nullptr && entry->pstFather->uiDataType == YAML_DATATYPE_MAP;
    return isKey ? FirstChild(*entry) : entry;
}

// The entry that a value belongs to; NULL at the top.
const YamlListNode *EntryOf(const YamlListNode &value) noexcept
{
    const YamlListNode *father = value.pstFather;
    if (father->pstFather == nullptr)
        return nullptr;
    return father->uiDataType == YAML_DATATYPE_SEQ ? &value : father;
}

// A scalar, or a collection that is empty.
const YamlListNode *LeafFirst(const YamlListNode *value) noexcept
{
    while (value->uiDataType != YAML_DATATYPE_SCALAR && EntryFirst(*value) != nullptr)
        value = ValueOf(EntryFirst(*value));
    return value;
}

const YamlListNode *LeafNext(const YamlListNode *top, const YamlListNode *leaf) noexcept
{
    for (const YamlListNode *value = leaf; value != top; value = EntryOf(*value)->pstFather) {
        if (const YamlListNode *next = EntryNext(*EntryOf(*value)))
            return LeafFirst(ValueOf(next));
    }
    return nullptr;
}

enum class Phase : uintptr_t { Start, FrameStart, Done, OldLeaves, NewLeaves, End };

struct Walk { // what a YamlChange keeps
    Phase phase;
    const YamlListNode *oldFrame, *newFrame; // the pair of collections
    const YamlListNode *oldEntry, *newEntry; // of them, at hand
    const YamlListNode *leaf;                // last given of a value that only one side has
};
static_assert(sizeof(Walk) <= sizeof(YamlChange::apvPrivate));

class ChangeWalk {
public:
    ChangeWalk(YamlChange &change, const YamlHandle *old, const YamlHandle *current) noexcept
        : m_change(change), m_oldTop(ZRYAML_RootGet(old)), m_newTop(ZRYAML_RootGet(current))
    {
        memcpy(&m_walk, change.apvPrivate, sizeof(m_walk));
    }
    ~ChangeWalk() { memcpy(m_change.apvPrivate, &m_walk, sizeof(m_walk)); }
    ChangeWalk(const ChangeWalk &) = delete;
    ChangeWalk &operator=(const ChangeWalk &) = delete;

    uint32_t Next() noexcept
    {
        while (m_walk.phase != Phase::End) {
            if (Step())
                return YAML_OK;
        }
        return YAML_ERR_ITER_END;
    }

private:
    // True with a change.
    bool Step() noexcept
    {
        switch (m_walk.phase) {
        case Phase::Start:
            return Enter();
        case Phase::OldLeaves:
            return LeavesGo(Old(), YAML_CHANGE_REMOVED, New() != nullptr ? Phase::NewLeaves : Phase::Done);
        case Phase::NewLeaves:
            return LeavesGo(New(), YAML_CHANGE_ADDED, Phase::Done);
        default:
            return Advance() && Enter();
        }
    }

    [[nodiscard]] const YamlListNode *Old() const noexcept
    {
        return m_walk.newFrame == nullptr ? m_oldTop : ValueOf(m_walk.oldEntry);
    }
    [[nodiscard]] const YamlListNode *New() const noexcept
    {
        return m_walk.newFrame == nullptr ? m_newTop : ValueOf(m_walk.newEntry);
    }

    bool Give(uint32_t kind, const YamlListNode *old, const YamlListNode *current) noexcept
    {
        m_change.uiKind = kind;
        m_change.pstOld = old;
        m_change.pstNew = current;
        return true;
    }

    // Compares the values at hand.
    bool Enter() noexcept
    {
        const YamlListNode *old = Old(), *current = New();
        m_walk.phase = Phase::Done;
        m_walk.leaf = nullptr;
        if (old == nullptr || current == nullptr || old->uiDataType != current->uiDataType) {
            if (old != nullptr || current != nullptr)
                m_walk.phase = old != nullptr ? Phase::OldLeaves : Phase::NewLeaves;
            return false;
        }
        if (old->uiDataType == YAML_DATATYPE_SCALAR)
            return strcmp(old->pcValue, current->pcValue) != 0 && Give(YAML_CHANGE_CHANGED, old, current);
        m_walk = {Phase::FrameStart, old, current, nullptr, nullptr, nullptr};
        return false;
    }

    bool LeavesGo(const YamlListNode *top, uint32_t kind, Phase after) noexcept
    {
        m_walk.leaf = m_walk.leaf == nullptr ? LeafFirst(top) : LeafNext(top, m_walk.leaf);
        if (m_walk.leaf == nullptr) {
            m_walk.phase = after;
            return false;
        }
        return kind == YAML_CHANGE_REMOVED ? Give(kind, m_walk.leaf, nullptr) : Give(kind, nullptr, m_walk.leaf);
    }

    // Goes to the next entries of the pair of collections, or back to the pair around it. False if there are none.
    bool Advance() noexcept
    {
        if (m_walk.newFrame == nullptr) {
            m_walk.phase = Phase::End;
            return false;
        }
        if (m_walk.newFrame->uiDataType == YAML_DATATYPE_SEQ)
            SequenceAdvance();
        else
            MapAdvance();
        if (m_walk.oldEntry != nullptr || m_walk.newEntry != nullptr)
            return true;
        FrameLeave();
        return false;
    }

    void FrameLeave() noexcept
    {
        m_walk.oldEntry = EntryOf(*m_walk.oldFrame);
        m_walk.newEntry = EntryOf(*m_walk.newFrame);
        const bool top = m_walk.newEntry == nullptr;
        m_walk.oldFrame = top ? nullptr : m_walk.oldEntry->pstFather;
        m_walk.newFrame = top ? nullptr : m_walk.newEntry->pstFather;
        m_walk.phase = top ? Phase::End : Phase::Done;
    }

    void SequenceAdvance() noexcept
    {
        const bool start = m_walk.phase == Phase::FrameStart;
        const auto next = [start](const YamlListNode *frame, const YamlListNode *entry) {
            return start ? FirstChild(*frame) : entry != nullptr ? EntryNext(*entry) : nullptr;
        };
        m_walk.oldEntry = next(m_walk.oldFrame, m_walk.oldEntry);
        m_walk.newEntry = next(m_walk.newFrame, m_walk.newEntry);
    }

    // Behind each key come those that followed it in the old map and are no more; then the next of the new one.
    void MapAdvance() noexcept
    {
        const bool start = m_walk.phase == Phase::FrameStart;
        const YamlListNode *old = m_walk.oldEntry;
        const YamlListNode *oldNext = start ? EntryFirst(*m_walk.oldFrame) : old != nullptr ? EntryNext(*old) : nullptr;
        // One of the two entries is always there.
        const YamlListNode *newNext = start ? EntryFirst(*m_walk.newFrame)
                                      : m_walk.newEntry != nullptr
                                          ? EntryNext(*m_walk.newEntry)
                                          : NewBehindRun(*old); // NOLINT(clang-analyzer-core.NonNullParamChecker)
        if (oldNext != nullptr && Counterpart(*oldNext, *m_walk.newFrame, newNext) == nullptr) {
            m_walk.oldEntry = oldNext;
            m_walk.newEntry = nullptr;
            return;
        }
        m_walk.newEntry = newNext;
        m_walk.oldEntry = newNext != nullptr ? Counterpart(*newNext, *m_walk.oldFrame, oldNext) : nullptr;
    }

    // The key of the new map that follows a run of keys that are no more.
    [[nodiscard]] const YamlListNode *NewBehindRun(const YamlListNode &removed) const noexcept
    {
        const YamlList *head = &m_walk.oldFrame->stChildList;
        for (const YamlList *link = removed.stChildLink.prev; link != head; link = link->prev) {
            const YamlListNode &key = *NodeOf(link, NodeLink::Child);
            if (key.uiSameWithAnchor == 1)
                continue;
            if (const YamlListNode *kept = Counterpart(key, *m_walk.newFrame, nullptr))
                return EntryNext(*kept);
        }
        return EntryFirst(*m_walk.newFrame);
    }

    // The key of the other map with the same text; the one that is expected is looked at first.
    static const YamlListNode *Counterpart(const YamlListNode &key, const YamlListNode &map,
                                           const YamlListNode *expected) noexcept
    {
        const bool same = expected != nullptr && strcmp(expected->pcValue, key.pcValue) == 0;
        return same ? expected : KeyFind(map, key.pcValue);
    }

    YamlChange &m_change;
    const YamlListNode *m_oldTop, *m_newTop;
    Walk m_walk;
};

} // namespace

uint32_t ZRYAML_ChangeNext(YamlHandle *pstOld, YamlHandle *pstNew, YamlChange *pstChange)
{
    if (pstChange == nullptr || !RecordFits(*pstChange))
        return YAML_ERR_PARAM;
    return ChangeWalk(*pstChange, pstOld, pstNew).Next();
}
