// SPDX-License-Identifier: Apache-2.0
//
// A slab: blocks cut from chunks of one region each. The header of a block's chunk is found by rounding the block's
// address down, so that a block has no header of its own. No locking here.
//
// Invariants of a chunk:
//  1. Its blocks all have one size. uiUsed of them are out, uiCapacity is what it holds; the rest are in its free list
//     or were never handed out (they begin at pcFresh).
//  2. It is in the list of its class exactly while 0 < uiUsed < uiCapacity. A full chunk is in no list, an empty one is
//     kept or given back.
//  3. uiCapacity is 1 exactly for a large block, alone in a region of its own; such a chunk is never in a list.

#ifndef ZR_POOL_SLAB_H
#define ZR_POOL_SLAB_H

#include <cstddef>
#include <cstdint>

#include "pool_region.h"
#include "pool_size.h"

namespace zr {

struct FreeBlock {
    FreeBlock *pstNext;
};

struct alignas(64) Chunk {
    FreeBlock *pstFree;
    char *pcFresh;
    uint64_t ulBlockBytes;
    uint32_t uiUsed;
    uint32_t uiCapacity;
    Chunk *pstNext;
    Chunk *pstPrev;
};

class Slab {
public:
    // A block of BlockBytesOf(uiSize) bytes; NULL if memory is short.
    [[nodiscard]] void *Take(uint32_t uiSize) noexcept
    {
        const uint64_t ulBlockBytes = BlockBytesOf(uiSize);
        Chunk *pstChunk = ulBlockBytes <= MediumMax ? m_apstRoom[ClassOf(ulBlockBytes)] : nullptr;
        if (pstChunk == nullptr) [[unlikely]]
            return FirstTake(ulBlockBytes);
        return BlockTake(*pstChunk);
    }

    // Takes a block back and tells its size.
    uint64_t Give(void *pBlock) noexcept
    {
        Chunk &stChunk = ChunkOf(pBlock);
        const uint64_t ulBlockBytes = stChunk.ulBlockBytes;
        if (stChunk.uiCapacity == 1) [[unlikely]] {
            LargeGive(stChunk);
            return ulBlockBytes;
        }
        auto *pstBlock = static_cast<FreeBlock *>(pBlock);
        pstBlock->pstNext = stChunk.pstFree;
        stChunk.pstFree = pstBlock;
        if (stChunk.uiUsed-- == stChunk.uiCapacity) [[unlikely]]
            ListAdd(stChunk);
        else if (stChunk.uiUsed == 0) [[unlikely]]
            EmptyGive(stChunk);
        return ulBlockBytes;
    }

    // Bytes of all regions that are mapped.
    [[nodiscard]] uint64_t HeldBytes() const noexcept { return m_ulHeld; }

private:
    [[nodiscard]] static Chunk &ChunkOf(void *pBlock) noexcept
    {
        const uintptr_t ulInside = reinterpret_cast<uintptr_t>(pBlock) % RegionUnit;
        return *reinterpret_cast<Chunk *>(static_cast<char *>(pBlock) - ulInside);
    }

    [[nodiscard]] void *BlockTake(Chunk &stChunk) noexcept
    {
        if (++stChunk.uiUsed == stChunk.uiCapacity) [[unlikely]]
            ListRemove(stChunk);
        if (FreeBlock *pstBlock = stChunk.pstFree; pstBlock != nullptr) {
            stChunk.pstFree = pstBlock->pstNext;
            return pstBlock;
        }
        char *pcBlock = stChunk.pcFresh;
        stChunk.pcFresh += stChunk.ulBlockBytes;
        return pcBlock;
    }

    void ListAdd(Chunk &stChunk) noexcept;
    void ListRemove(Chunk &stChunk) noexcept;
    [[nodiscard]] void *FirstTake(uint64_t ulBlockBytes) noexcept;
    [[nodiscard]] Chunk *EmptyTake() noexcept;
    void EmptyGive(Chunk &stChunk) noexcept;
    [[nodiscard]] void *LargeTake(uint64_t ulBlockBytes) noexcept;
    void LargeGive(Chunk &stChunk) noexcept;

    Chunk *m_apstRoom[Classes] = {}; // by class: chunks that have room
    Chunk *m_pstEmpty = nullptr;     // chunks kept for reuse, linked by pstNext
    size_t m_ulEmpty = 0;            // number of those
    uint64_t m_ulHeld = 0;
};

} // namespace zr

#endif // ZR_POOL_SLAB_H
