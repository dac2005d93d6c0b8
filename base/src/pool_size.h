// SPDX-License-Identifier: Apache-2.0
//
// Sizes of blocks: which size is handed out for which request, and its class. Small blocks come in steps of 16 bytes,
// as most are node records and short texts; medium ones in powers of two; large ones have no class.

#ifndef ZR_POOL_SIZE_H
#define ZR_POOL_SIZE_H

#include <bit>
#include <cstddef>
#include <cstdint>

namespace zr {

constexpr uint64_t BlockAlign = 16;
constexpr uint64_t SmallMax = 512;
constexpr uint64_t MediumMax = 8192;
constexpr size_t SmallClasses = SmallMax / BlockAlign;
constexpr size_t Classes = SmallClasses + std::bit_width(MediumMax) - std::bit_width(SmallMax);

// Bytes handed out for a request.
[[nodiscard]] constexpr uint64_t BlockBytesOf(uint32_t uiSize) noexcept
{
    if (uiSize > SmallMax && uiSize <= MediumMax) [[unlikely]]
        return std::bit_ceil(uiSize);
    const uint64_t ulAsked = uint64_t{uiSize} + (uiSize == 0 ? 1 : 0);
    return (ulAsked + BlockAlign - 1) / BlockAlign * BlockAlign;
}

// Class of a small or medium size as BlockBytesOf makes it.
[[nodiscard]] constexpr size_t ClassOf(uint64_t ulBlockBytes) noexcept
{
    if (ulBlockBytes <= SmallMax) [[likely]]
        return ulBlockBytes / BlockAlign - 1;
    return SmallClasses + static_cast<size_t>(std::bit_width(ulBlockBytes) - std::bit_width(SmallMax)) - 1;
}

static_assert(ClassOf(BlockBytesOf(0)) == 0 && ClassOf(BlockBytesOf(MediumMax)) == Classes - 1);
static_assert(ClassOf(BlockBytesOf(SmallMax)) + 1 == ClassOf(BlockBytesOf(SmallMax + 1)));

} // namespace zr

#endif // ZR_POOL_SIZE_H
