// SPDX-License-Identifier: Apache-2.0
//
// Named memory pools: blocks of malloc, counted. Who takes many small pieces cuts them from blocks of his own.

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>

#include <malloc.h>

#include "zr_base.h"

namespace {

struct Pool {
    std::mutex stLock; // guards the counters
    uint64_t ulBlocksInUse = 0;
    uint64_t ulBytesInUse = 0;
    uint64_t ulBytesPeak = 0;
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
    void *pBlock = pMemHandle != nullptr ? malloc(std::max(uiSize, 1U)) : nullptr;
    if (pBlock == nullptr)
        return nullptr;
    auto &stPool = *static_cast<Pool *>(pMemHandle);
    const std::lock_guard stHeld(stPool.stLock);
    ++stPool.ulBlocksInUse;
    stPool.ulBytesInUse += malloc_usable_size(pBlock);
    stPool.ulBytesPeak = std::max(stPool.ulBytesPeak, stPool.ulBytesInUse);
    return pBlock;
}

void ZR_MemFree(void *pBlock, void *pMemHandle)
{
    if (pBlock == nullptr || pMemHandle == nullptr)
        return;
    auto &stPool = *static_cast<Pool *>(pMemHandle);
    {
        const std::lock_guard stHeld(stPool.stLock);
        --stPool.ulBlocksInUse;
        stPool.ulBytesInUse -= malloc_usable_size(pBlock);
    }
    free(pBlock);
}

uint32_t ZR_MemInfoGet(void *pMemHandle, ZR_MemInfo *pstInfo)
{
    if (pMemHandle == nullptr || pstInfo == nullptr)
        return EINVAL;
    auto &stPool = *static_cast<Pool *>(pMemHandle);
    const std::lock_guard stHeld(stPool.stLock);
    *pstInfo = {.pcName = stPool.pName.get(),
                .ulBlocksInUse = stPool.ulBlocksInUse,
                .ulBytesInUse = stPool.ulBytesInUse,
                .ulBytesPeak = stPool.ulBytesPeak};
    return 0;
}
