// SPDX-License-Identifier: Apache-2.0
//
// Memory from the system, in whole regions that begin at a multiple of their unit.

#ifndef ZR_POOL_REGION_H
#define ZR_POOL_REGION_H

#include <cstddef>
#include <cstdint>

namespace zr {

// Unit and alignment of regions. As every region is a whole number of units, regions lie side by side and the system
// keeps few entries for them.
constexpr size_t RegionUnit = size_t{64} * 1024;

// Maps at least that many bytes, rounded up to the unit; NULL if memory is short.
[[nodiscard]] void *RegionMap(uint64_t ulBytes) noexcept;

// Gives a region of that many bytes back.
void RegionUnmap(void *pRegion, uint64_t ulBytes) noexcept;

// Bytes that RegionMap takes for that many.
[[nodiscard]] constexpr uint64_t RegionBytesOf(uint64_t ulBytes) noexcept
{
    return (ulBytes + RegionUnit - 1) / RegionUnit * RegionUnit;
}

} // namespace zr

#endif // ZR_POOL_REGION_H
