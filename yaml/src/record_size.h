// SPDX-License-Identifier: Apache-2.0
// Records that callers make and the library reads or fills. Each begins with its size, so that a later version can add
// fields behind those that are there.
#pragma once

#include <cstdint>

namespace zryaml {

// Whether a caller's record has all fields of version 1.0, which is what a size of 0 stands for. A record that has
// grown since then is compared with the size it had then.
template <typename Record> [[nodiscard]] constexpr bool RecordFits(const Record &record) noexcept
{
    return record.uiSize == 0 || record.uiSize >= sizeof(Record);
}

} // namespace zryaml
