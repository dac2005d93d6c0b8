// SPDX-License-Identifier: Apache-2.0
//
// Named memory pools: a source of blocks with a lock and counters around it.

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>

#include "pool_lock.h"
#include "pool_source.h"
#include "zr_base.h"

namespace {

struct Pool {
    std::mutex stLock; // guards everything but the name and the link
    zr::BlockSource stBlocks;
    uint64_t ulBlocksInUse = 0;
    uint64_t ulBytesInUse = 0;
    uint64_t ulBytesPeak = 0; // before the last blocks that came back; what is in use now may be more
    std::unique_ptr<char[]> pName;
    Pool *pstNext = nullptr;
};

// All pools, so that none is taken for a leak: they live until the process ends.
constinit std::atomic<Pool *> g_pstPools{nullptr};

[[nodiscard]] std::unique_ptr<char[]> TextCopy(const char *pcText) noexcept
{
    const size_t ulBytes = strlen(pcText) + 1;
    std::unique_ptr<char[]> pCopy(new (std::nothrow) char[ulBytes]);
    if (pCopy != nullptr)
        memcpy(pCopy.get(), pcText, ulBytes);
    return pCopy;
}

[[nodiscard]] void *Take(Pool &stPool, uint32_t uiSize) noexcept
{
    void *pBlock = stPool.stBlocks.Take(uiSize);
    if (pBlock != nullptr) [[likely]] {
        ++stPool.ulBlocksInUse;
        stPool.ulBytesInUse += zr::BlockBytesOf(uiSize);
    }
    return pBlock;
}

void Give(Pool &stPool, void *pBlock) noexcept
{
    stPool.ulBytesPeak = std::max(stPool.ulBytesPeak, stPool.ulBytesInUse);
    stPool.ulBytesInUse -= stPool.stBlocks.Give(pBlock);
    --stPool.ulBlocksInUse;
}

} // namespace

void *ZR_HandleInit(const char *pcName)
{
    if (pcName == nullptr)
        return nullptr;
    std::unique_ptr<Pool> pPool(new (std::nothrow) Pool);
    if (pPool == nullptr || (pPool->pName = TextCopy(pcName)) == nullptr)
        return nullptr;
    Pool *pstPool = pPool.release();
    pstPool->pstNext = g_pstPools.load(std::memory_order_relaxed);
    while (!g_pstPools.compare_exchange_weak(pstPool->pstNext, pstPool, std::memory_order_release)) {
    }
    return pstPool;
}

void *ZR_MemAlloc(uint32_t uiSize, void *pMemHandle)
{
    if (pMemHandle == nullptr)
        return nullptr;
    auto &stPool = *static_cast<Pool *>(pMemHandle);
    return zr::Guarded(stPool.stLock, [&stPool, uiSize]() noexcept { return Take(stPool, uiSize); });
}

void ZR_MemFree(void *pBlock, void *pMemHandle)
{
    if (pBlock == nullptr || pMemHandle == nullptr)
        return;
    auto &stPool = *static_cast<Pool *>(pMemHandle);
    zr::Guarded(stPool.stLock, [&stPool, pBlock]() noexcept { Give(stPool, pBlock); });
}

uint32_t ZR_MemInfoGet(void *pMemHandle, ZR_MemInfo *pstInfo)
{
    if (pMemHandle == nullptr || pstInfo == nullptr)
        return EINVAL;
    auto &stPool = *static_cast<Pool *>(pMemHandle);
    *pstInfo = zr::Guarded(stPool.stLock, [&stPool]() noexcept {
        return ZR_MemInfo{.pcName = stPool.pName.get(),
                          .ulBlocksInUse = stPool.ulBlocksInUse,
                          .ulBytesInUse = stPool.ulBytesInUse,
                          .ulBytesPeak = std::max(stPool.ulBytesPeak, stPool.ulBytesInUse),
                          .ulBytesHeld = stPool.stBlocks.HeldBytes()};
    });
    return 0;
}
