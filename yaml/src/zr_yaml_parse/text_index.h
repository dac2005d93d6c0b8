// SPDX-License-Identifier: Apache-2.0
// Finds records by their text at a cost that does not grow with their number: a hash table with open addressing and
// linear probing. The hash is keyed with a secret of the process, so that no file can be written whose texts collide.
// Where a text is searched and then put in, the caller brings its hash along.
//
// A slot has 8 bytes: 32 bits of the hash and the number of the record. The first bits of the hash pick the slot, so
// the records of a slot go to two neighbours when the table doubles, and growing is one pass from front to back.
//
// Invariants: 1. the slots are a power of two, or none; 2. at most three quarters of them are used; 3. between a
// record's own slot and the one it is in, no slot is free.
#pragma once

#include "pool_array.h"
#include "text_hash.h"

#include <bit>

#include <string_view>

namespace zryaml::parse {

template <typename Record, const char *(*TextOf)(const Record &)> class TextIndex {
public:
    [[nodiscard]] Record *Find(std::string_view text, uint32_t hash) const noexcept
    {
        if (m_slots.Capacity() == 0)
            return nullptr;
        const uint32_t number = m_slots[SlotOf(hash, text)].number;
        return number != 0 ? m_records[number - 1] : nullptr;
    }

    // Whether a search is likely to wait for memory.
    [[nodiscard]] bool IsLarge() const noexcept { return m_slots.Capacity() > LargeSlots; }
    // Fetches what a search will look at.
    void Prefetch(uint32_t hash) const noexcept { __builtin_prefetch(&m_slots[Home(hash)], 1); }

    // Makes room for so many records in all; false if out of memory, and then nothing has changed.
    [[nodiscard]] bool Reserve(uint32_t count) noexcept
    {
        const uint32_t numbers = m_numbers - m_used + count; // those of records that went are not given again
        return (count <= m_room && numbers <= m_records.Capacity()) || RoomMake(count, numbers);
    }

    // Finds the record with a text or, where there is none, stores one that has it and for which there must be room.
    Record *FindOrPut(std::string_view text, Record &record, uint32_t hash) noexcept
    {
        Slot &slot = m_slots[SlotOf(hash, text)];
        if (slot.number != 0)
            return m_records[slot.number - 1];
        m_records[m_numbers] = &record;
        slot = {hash, ++m_numbers};
        ++m_used;
        return nullptr;
    }

    // Stores a record, for which there must be room; returns the one with the same text that it takes the place of.
    Record *Put(Record &record, uint32_t hash) noexcept
    {
        const std::string_view text = TextOf(record);
        Record *same = FindOrPut(text, record, hash);
        if (same != nullptr)
            m_records[m_slots[SlotOf(hash, text)].number - 1] = &record;
        return same;
    }

    void Remove(std::string_view text) noexcept
    {
        if (m_slots.Capacity() == 0)
            return;
        uint32_t hole = SlotOf(TextHash(text), text);
        if (m_slots[hole].number == 0)
            return;
        --m_used;
        // Records that only the removed one kept from the hole move up, so that no search ends too early.
        for (uint32_t next = Next(hole); m_slots[next].number != 0; next = Next(next)) {
            const uint32_t distance = (next - Home(m_slots[next].hash)) & Mask();
            if (distance >= ((next - hole) & Mask())) {
                m_slots[hole] = m_slots[next];
                hole = next;
            }
        }
        m_slots[hole] = {};
    }

    [[nodiscard]] uint32_t Count() const noexcept { return m_used; }

    void Release() noexcept
    {
        m_slots.Release();
        m_records.Release();
        m_room = m_used = m_numbers = 0;
    }

private:
    struct Slot {
        uint32_t hash;
        uint32_t number; // of the record, from 1; 0: free
    };
    static constexpr uint32_t SlotsMin = 64, LargeSlots = 4096;
    static constexpr uint64_t SlotsMax = uint64_t{1} << 31;

    [[nodiscard]] uint32_t Mask() const noexcept { return m_slots.Capacity() - 1; }
    [[nodiscard]] uint32_t Home(uint32_t hash) const noexcept { return hash >> m_shift; }
    [[nodiscard]] uint32_t Next(uint32_t slot) const noexcept { return (slot + 1) & Mask(); }

    // The slot that holds the text, or the free one where it would go.
    [[nodiscard]] uint32_t SlotOf(uint32_t hash, std::string_view text) const noexcept
    {
        for (uint32_t at = Home(hash);; at = Next(at)) {
            const Slot &slot = m_slots[at];
            if (slot.number == 0 || (slot.hash == hash && text == TextOf(*m_records[slot.number - 1])))
                return at;
        }
    }

    [[nodiscard]] bool RoomMake(uint32_t count, uint32_t numbers) noexcept
    {
        const uint32_t more = m_records.IsWhole() ? 0 : numbers / 8; // beyond, a part at a time
        if (numbers > m_records.Capacity() && !m_records.Reserve(numbers + more))
            return false;
        uint64_t slots = m_slots.Capacity() == 0 ? SlotsMin : m_slots.Capacity();
        while (slots / 4 * 3 < count)
            slots *= 2;
        return slots == m_slots.Capacity() || (slots <= SlotsMax && Grow(static_cast<uint32_t>(slots)));
    }

    [[nodiscard]] bool Grow(uint32_t slots) noexcept
    {
        PoolArray<Slot> grown;
        if (!grown.Reserve(slots)) {
            grown.Release();
            return false;
        }
        const auto shift = static_cast<uint32_t>(32 - std::countr_zero(slots));
        const uint32_t old = m_slots.Capacity();
        for (uint32_t from = 0; from < old; ++from) {
            const Slot slot = m_slots[from];
            if (slot.number == 0)
                continue;
            uint32_t to = slot.hash >> shift;
            while (grown[to].number != 0)
                to = (to + 1) & (slots - 1);
            grown[to] = slot;
        }
        m_slots.Take(grown);
        m_shift = shift;
        m_room = slots / 4 * 3;
        return true;
    }

    PoolArray<Slot> m_slots;
    PoolArray<Record *> m_records;
    uint32_t m_shift = 0;   // 32 less the bits that a slot's number has
    uint32_t m_room = 0;    // slots that may be used
    uint32_t m_used = 0;    // slots that are
    uint32_t m_numbers = 0; // given so far
};

} // namespace zryaml::parse
