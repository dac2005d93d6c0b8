// SPDX-License-Identifier: Apache-2.0
// An array that grows without moving what it holds: in parts of the one size that the pool keeps for the next taker, so
// that the index of a large map touches memory which is there already. A short array is one smaller block, which moves.
//
// Invariants: 1. up to PerPart elements lie in one part; beyond, all parts are whole; 2. m_parts leads to the parts,
// and is m_first itself while there is one.
#pragma once

#include "../report.h"

#include <cstring>

namespace zryaml::parse {

template <typename Element> class PoolArray {
public:
    // NOLINTNEXTLINE(bugprone-sizeof-expression): an element may well be a pointer
    static constexpr uint32_t PerPart = 8192 / sizeof(Element);

    PoolArray() noexcept = default;
    PoolArray(const PoolArray &) = delete; // m_parts may lead to m_first
    PoolArray &operator=(const PoolArray &) = delete;

    [[nodiscard]] Element &operator[](uint32_t number) const noexcept
    {
        return m_parts[number / PerPart][number % PerPart];
    }
    [[nodiscard]] uint32_t Capacity() const noexcept { return m_capacity; }
    [[nodiscard]] bool IsWhole() const noexcept { return m_capacity >= PerPart; }

    // Makes room for so many elements, in whole parts from PerPart on; new ones are zero. False if out of memory, and
    // then nothing has changed but the room that there is.
    [[nodiscard]] bool Reserve(uint32_t count) noexcept
    {
        if (count <= m_capacity)
            return true;
        if (!IsWhole() && !FirstGrow(count < PerPart ? count : PerPart))
            return false;
        while (m_capacity < count) {
            if (!PartAdd())
                return false;
        }
        return true;
    }

    void Release() noexcept
    {
        const uint32_t parts = (m_capacity + PerPart - 1) / PerPart;
        for (uint32_t part = 0; part < parts; ++part)
            ZR_MemFree(m_parts[part], yaml_MemHandleGet());
        if (m_parts != &m_first)
            ZR_MemFree(m_parts, yaml_MemHandleGet());
        m_parts = &m_first;
        m_capacity = m_room = 0;
    }

    // Takes over what another one holds, which is empty afterwards.
    void Take(PoolArray &other) noexcept
    {
        Release();
        m_first = other.m_first;
        m_parts = other.m_parts == &other.m_first ? &m_first : other.m_parts;
        m_capacity = other.m_capacity;
        m_room = other.m_room;
        other.m_parts = &other.m_first;
        other.m_capacity = other.m_room = 0;
    }

private:
    [[nodiscard]] static Element *PartTake(uint32_t elements) noexcept
    {
        // NOLINTNEXTLINE(bugprone-sizeof-expression): an element may well be a pointer
        const auto bytes = static_cast<uint32_t>(elements * sizeof(Element));
        void *part = ZR_MemAlloc(bytes, yaml_MemHandleGet());
        return static_cast<Element *>(part != nullptr ? memset(part, 0, bytes) : nullptr);
    }

    [[nodiscard]] bool FirstGrow(uint32_t elements) noexcept
    {
        Element *part = PartTake(elements);
        if (part == nullptr)
            return false;
        if (m_capacity != 0) {
            // NOLINTNEXTLINE(bugprone-sizeof-expression): an element may well be a pointer
            memcpy(part, m_first, m_capacity * sizeof(Element));
            ZR_MemFree(m_first, yaml_MemHandleGet());
        }
        m_first = part;
        m_capacity = elements;
        return true;
    }

    [[nodiscard]] bool PartAdd() noexcept
    {
        const uint32_t parts = m_capacity / PerPart;
        if (parts >= (m_room != 0 ? m_room : 1) && !RoomMake(parts * 2))
            return false;
        m_parts[parts] = PartTake(PerPart);
        if (m_parts[parts] == nullptr)
            return false;
        m_capacity += PerPart;
        return true;
    }

    // Room for so many pointers to parts.
    [[nodiscard]] bool RoomMake(uint32_t parts) noexcept
    {
        auto **room =
            static_cast<Element **>(ZR_MemAlloc(static_cast<uint32_t>(parts * sizeof(Element *)), yaml_MemHandleGet()));
        if (room == nullptr)
            return false;
        memcpy(room, m_parts, m_capacity / PerPart * sizeof(Element *));
        if (m_parts != &m_first)
            ZR_MemFree(m_parts, yaml_MemHandleGet());
        m_parts = room;
        m_room = parts;
        return true;
    }

    Element *m_first = nullptr;
    Element **m_parts = &m_first;
    uint32_t m_capacity = 0; // elements
    uint32_t m_room = 0;     // pointers that m_parts has room for; 0: it is m_first
};

} // namespace zryaml::parse
