// SPDX-License-Identifier: Apache-2.0
// A growing array of plain records in one block of the pool. It has no destructor: whoever owns it releases it.
#pragma once

#include "report.h"

#include <cstring>
#include <type_traits>

namespace zryaml {

template <typename Record> class GrowingArray {
    static_assert(std::is_trivially_copyable_v<Record>);

public:
    // False if out of memory, and then nothing has changed.
    [[nodiscard]] bool Add(const Record &record) noexcept { return Add(&record, 1); }
    [[nodiscard]] bool Add(const Record *records, uint32_t count) noexcept
    {
        if (count > m_capacity - m_count && !Grow(count))
            return false;
        if (count != 0)
            memcpy(static_cast<void *>(m_records + m_count), records, count * sizeof(Record));
        m_count += count;
        return true;
    }

    void Release() noexcept
    {
        if (m_records != nullptr)
            ZR_MemFree(m_records, yaml_MemHandleGet());
        *this = {};
    }

    [[nodiscard]] uint32_t Count() const noexcept { return m_count; }
    [[nodiscard]] Record &operator[](uint32_t index) const noexcept { return m_records[index]; }
    [[nodiscard]] Record *begin() const noexcept { return m_records; }
    [[nodiscard]] Record *end() const noexcept { return m_records + m_count; }

private:
    [[nodiscard]] bool Grow(uint32_t count) noexcept
    {
        uint64_t capacity = m_capacity == 0 ? 8 : uint64_t{m_capacity} * 2;
        while (capacity < uint64_t{m_count} + count)
            capacity *= 2;
        const uint64_t bytes = capacity * sizeof(Record);
        void *block = bytes <= UINT32_MAX ? ZR_MemAlloc(static_cast<uint32_t>(bytes), yaml_MemHandleGet()) : nullptr;
        if (block == nullptr)
            return false;
        const GrowingArray old = *this;
        m_records = static_cast<Record *>(block);
        m_capacity = static_cast<uint32_t>(capacity);
        if (old.m_records != nullptr) {
            memcpy(static_cast<void *>(m_records), old.m_records, m_count * sizeof(Record));
            ZR_MemFree(old.m_records, yaml_MemHandleGet());
        }
        return true;
    }

    Record *m_records = nullptr;
    uint32_t m_count = 0;
    uint32_t m_capacity = 0;
};

} // namespace zryaml
