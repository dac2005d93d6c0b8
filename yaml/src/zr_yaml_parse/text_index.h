// SPDX-License-Identifier: Apache-2.0
// Finds records by their text at a cost that does not grow with their number: a hash table with open addressing and
// linear probing in one block of the pool. The hash is keyed with a secret of the process, so that no file can be
// written whose texts collide.
//
// Where a text is searched and then put in, the caller brings its hash along.
//
// Invariants: 1. the capacity is a power of two, or 0 without a block; 2. at most half of the slots are used; 3.
// between a record's own slot and the one it is in, no slot is free.
#pragma once

#include "../report.h"

#include <cstring>

namespace zryaml::parse {

[[nodiscard]] uint64_t TextHash(const char *pcText) noexcept; // text_hash.cpp

template <typename Record, const char *(*TextOf)(const Record &)> class TextIndex {
public:
    [[nodiscard]] Record *Find(const char *pcText, uint64_t ulHash) const noexcept
    {
        return m_uiCapacity == 0 ? nullptr : m_pstSlots[SlotOf(ulHash, pcText)].pstRecord;
    }

    // Makes room for so many records in all; false if out of memory, and then nothing has changed.
    [[nodiscard]] bool Reserve(uint32_t uiCount) noexcept
    {
        uint64_t ulCapacity = m_uiCapacity == 0 ? 64 : m_uiCapacity;
        while (ulCapacity / 2 < uiCount)
            ulCapacity *= 2;
        return ulCapacity == m_uiCapacity || Grow(ulCapacity);
    }

    // Stores a record, for which there must be room; returns the one with the same text that it takes the place of.
    Record *Put(Record &stRecord, uint64_t ulHash) noexcept
    {
        Slot &stSlot = m_pstSlots[SlotOf(ulHash, TextOf(stRecord))];
        Record *pstOld = stSlot.pstRecord;
        m_uiUsed += pstOld == nullptr ? 1 : 0;
        stSlot = {ulHash, &stRecord};
        return pstOld;
    }

    void Remove(const char *pcText) noexcept
    {
        if (m_uiCapacity == 0)
            return;
        uint32_t uiHole = SlotOf(TextHash(pcText), pcText);
        if (m_pstSlots[uiHole].pstRecord == nullptr)
            return;
        --m_uiUsed;
        // Records that only the removed one kept from the hole move up, so that no search ends too early.
        for (uint32_t uiNext = Next(uiHole); m_pstSlots[uiNext].pstRecord != nullptr; uiNext = Next(uiNext)) {
            const uint32_t uiDistance = (uiNext - Home(m_pstSlots[uiNext].ulHash)) & (m_uiCapacity - 1);
            if (uiDistance >= ((uiNext - uiHole) & (m_uiCapacity - 1))) {
                m_pstSlots[uiHole] = m_pstSlots[uiNext];
                uiHole = uiNext;
            }
        }
        m_pstSlots[uiHole] = {};
    }

    [[nodiscard]] uint32_t Count() const noexcept { return m_uiUsed; }

    void Release() noexcept
    {
        if (m_pstSlots != nullptr)
            ZR_MemFree(m_pstSlots, yaml_MemHandleGet());
        *this = {};
    }

private:
    struct Slot {
        uint64_t ulHash;
        Record *pstRecord;
    };

    [[nodiscard]] uint32_t Home(uint64_t ulHash) const noexcept
    {
        return static_cast<uint32_t>(ulHash) & (m_uiCapacity - 1);
    }
    [[nodiscard]] uint32_t Next(uint32_t uiSlot) const noexcept { return (uiSlot + 1) & (m_uiCapacity - 1); }

    // The slot that holds the text, or the free one where it would go.
    [[nodiscard]] uint32_t SlotOf(uint64_t ulHash, const char *pcText) const noexcept
    {
        uint32_t uiSlot = Home(ulHash);
        while (m_pstSlots[uiSlot].pstRecord != nullptr &&
               (m_pstSlots[uiSlot].ulHash != ulHash || strcmp(TextOf(*m_pstSlots[uiSlot].pstRecord), pcText) != 0))
            uiSlot = Next(uiSlot);
        return uiSlot;
    }

    [[nodiscard]] bool Grow(uint64_t ulCapacity) noexcept
    {
        const uint64_t ulBytes = ulCapacity * sizeof(Slot);
        const bool bSized = ulBytes <= UINT32_MAX;
        void *pSlots = bSized ? ZR_MemAlloc(static_cast<uint32_t>(ulBytes), yaml_MemHandleGet()) : nullptr;
        auto *pstSlots = static_cast<Slot *>(pSlots);
        if (pstSlots == nullptr)
            return false;
        memset(static_cast<void *>(pstSlots), 0, ulBytes);

        TextIndex stOld = *this;
        m_pstSlots = pstSlots;
        m_uiCapacity = static_cast<uint32_t>(ulCapacity);
        for (uint32_t ui = 0; ui < stOld.m_uiCapacity; ++ui) {
            if (stOld.m_pstSlots[ui].pstRecord != nullptr)
                m_pstSlots[FreeSlot(stOld.m_pstSlots[ui].ulHash)] = stOld.m_pstSlots[ui];
        }
        stOld.Release();
        return true;
    }

    [[nodiscard]] uint32_t FreeSlot(uint64_t ulHash) const noexcept
    {
        uint32_t uiSlot = Home(ulHash);
        while (m_pstSlots[uiSlot].pstRecord != nullptr)
            uiSlot = Next(uiSlot);
        return uiSlot;
    }

    Slot *m_pstSlots = nullptr;
    uint32_t m_uiCapacity = 0;
    uint32_t m_uiUsed = 0;
};

} // namespace zryaml::parse
