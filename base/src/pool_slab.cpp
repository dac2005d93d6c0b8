// SPDX-License-Identifier: Apache-2.0
//
// The rarer steps of a slab: chunks that come and go, and large blocks.

#include "pool_slab.h"

namespace {

// Empty chunks kept for the next document, enough for one of a megabyte in short scalars. Beyond it they go back to the
// system.
constexpr size_t EmptyMax = size_t{32} * 1024 * 1024 / zr::RegionUnit;

[[nodiscard]] char *FirstBlockOf(zr::Chunk *pstChunk) noexcept
{
    return reinterpret_cast<char *>(pstChunk + 1);
}

void ChunkReset(zr::Chunk *pstChunk, uint64_t ulBlockBytes, uint32_t uiCapacity) noexcept
{
    *pstChunk = {.pstFree = nullptr,
                 .pcFresh = FirstBlockOf(pstChunk),
                 .ulBlockBytes = ulBlockBytes,
                 .uiUsed = 0,
                 .uiCapacity = uiCapacity,
                 .pstNext = nullptr,
                 .pstPrev = nullptr};
}

} // namespace

void zr::Slab::ListAdd(Chunk &stChunk) noexcept
{
    Chunk *&pstFirst = m_apstRoom[ClassOf(stChunk.ulBlockBytes)];
    stChunk.pstNext = pstFirst;
    stChunk.pstPrev = nullptr;
    if (pstFirst != nullptr)
        pstFirst->pstPrev = &stChunk;
    pstFirst = &stChunk;
}

void zr::Slab::ListRemove(Chunk &stChunk) noexcept
{
    if (stChunk.pstPrev != nullptr)
        stChunk.pstPrev->pstNext = stChunk.pstNext;
    else
        m_apstRoom[ClassOf(stChunk.ulBlockBytes)] = stChunk.pstNext;
    if (stChunk.pstNext != nullptr)
        stChunk.pstNext->pstPrev = stChunk.pstPrev;
}

// A block when no chunk of its class has room.
void *zr::Slab::FirstTake(uint64_t ulBlockBytes) noexcept
{
    if (ulBlockBytes > MediumMax)
        return LargeTake(ulBlockBytes);
    Chunk *pstChunk = EmptyTake();
    if (pstChunk == nullptr)
        return nullptr;
    ChunkReset(pstChunk, ulBlockBytes, static_cast<uint32_t>((RegionUnit - sizeof(Chunk)) / ulBlockBytes));
    ListAdd(*pstChunk);
    return BlockTake(*pstChunk);
}

zr::Chunk *zr::Slab::EmptyTake() noexcept
{
    if (Chunk *pstChunk = m_pstEmpty; pstChunk != nullptr) {
        m_pstEmpty = pstChunk->pstNext;
        --m_ulEmpty;
        return pstChunk;
    }
    auto *pstChunk = static_cast<Chunk *>(RegionMap(RegionUnit));
    m_ulHeld += pstChunk != nullptr ? RegionUnit : 0;
    return pstChunk;
}

void zr::Slab::EmptyGive(Chunk &stChunk) noexcept
{
    ListRemove(stChunk);
    if (m_ulEmpty == EmptyMax) {
        RegionUnmap(&stChunk, RegionUnit);
        m_ulHeld -= RegionUnit;
        return;
    }
    stChunk.pstNext = m_pstEmpty;
    m_pstEmpty = &stChunk;
    ++m_ulEmpty;
}

void *zr::Slab::LargeTake(uint64_t ulBlockBytes) noexcept
{
    const uint64_t ulRegionBytes = RegionBytesOf(sizeof(Chunk) + ulBlockBytes);
    auto *pstChunk = static_cast<Chunk *>(RegionMap(ulRegionBytes));
    if (pstChunk == nullptr)
        return nullptr;
    m_ulHeld += ulRegionBytes;
    ChunkReset(pstChunk, ulBlockBytes, 1);
    return FirstBlockOf(pstChunk);
}

void zr::Slab::LargeGive(Chunk &stChunk) noexcept
{
    const uint64_t ulRegionBytes = RegionBytesOf(sizeof(Chunk) + stChunk.ulBlockBytes);
    RegionUnmap(&stChunk, ulRegionBytes);
    m_ulHeld -= ulRegionBytes;
}
