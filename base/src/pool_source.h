// SPDX-License-Identifier: Apache-2.0
//
// Where a pool's blocks come from: a slab, or, under AddressSanitizer, malloc block by block, so that the pool hides no
// error from it. Both have the same three operations.

#ifndef ZR_POOL_SOURCE_H
#define ZR_POOL_SOURCE_H

#if defined(__SANITIZE_ADDRESS__)
#define ZR_POOL_BY_MALLOC 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZR_POOL_BY_MALLOC 1
#endif
#endif

#ifdef ZR_POOL_BY_MALLOC

#include <cstdint>
#include <cstdlib>

#include <malloc.h>

#include "pool_size.h"

namespace zr {

class BlockSource {
public:
    [[nodiscard]] void *Take(uint32_t uiSize) noexcept
    {
        void *pBlock = std::malloc(uiSize);
        m_ulHeld += pBlock != nullptr ? BlockBytesOf(uiSize) : 0;
        return pBlock;
    }

    // The sanitizer's malloc knows the very size asked for.
    uint64_t Give(void *pBlock) noexcept
    {
        const uint64_t ulBlockBytes = BlockBytesOf(static_cast<uint32_t>(malloc_usable_size(pBlock)));
        m_ulHeld -= ulBlockBytes;
        std::free(pBlock);
        return ulBlockBytes;
    }

    [[nodiscard]] uint64_t HeldBytes() const noexcept { return m_ulHeld; }

private:
    uint64_t m_ulHeld = 0;
};

} // namespace zr

#else

#include "pool_slab.h"

namespace zr {
using BlockSource = Slab;
}

#endif

#endif // ZR_POOL_SOURCE_H
