// SPDX-License-Identifier: Apache-2.0
//
// Named memory pools: counted blocks of malloc. Callers that need many small pieces should suballocate from blocks of
// KeptSize bytes, which the pool keeps and hands out again. malloc would return the memory of a freed document to the
// system and fetch it anew, page by page, for the next one.

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>

#include <malloc.h>

#include "zr_base.h"

namespace {

constexpr uint32_t KeptSize = 8192;
constexpr uint64_t KeptMax = (uint64_t{32} << 20) / KeptSize; // blocks; enough for 1 MB of short scalars

struct KeptBlock {
    KeptBlock *pstNext;
};

struct Pool {
    std::mutex stLock; // guards all but the name and the link
    KeptBlock *pstKept = nullptr;
    uint64_t ulKept = 0;
    uint64_t ulBlocksInUse = 0;
    uint64_t ulBytesInUse = 0;
    uint64_t ulBytesPeak = 0;
    std::unique_ptr<char[]> pName;
    Pool *pstNext = nullptr;
};

// Links all pools, which live until the process ends, so that no leak checker takes them for lost.
constinit std::atomic<Pool *> g_pstPools{nullptr};

[[nodiscard]] std::unique_ptr<char[]> TextCopy(const char *pcText) noexcept
{
    const size_t ulBytes = strlen(pcText) + 1;
    std::unique_ptr<char[]> pCopy(new (std::nothrow) char[ulBytes]);
    if (pCopy != nullptr)
        memcpy(pCopy.get(), pcText, ulBytes);
    return pCopy;
}

[[nodiscard]] void *KeptTake(Pool &stPool) noexcept
{
    KeptBlock *pstBlock = stPool.pstKept;
    if (pstBlock != nullptr) {
        stPool.pstKept = pstBlock->pstNext;
        --stPool.ulKept;
    }
    return pstBlock;
}

// Keeps a block if it has the size that is kept; malloc may have rounded ulBytes up a little.
[[nodiscard]] bool Keep(Pool &stPool, void *pBlock, size_t ulBytes) noexcept
{
    if (ulBytes < KeptSize || ulBytes > KeptSize + alignof(max_align_t) || stPool.ulKept == KeptMax)
        return false;
    auto *pstBlock = static_cast<KeptBlock *>(pBlock);
    pstBlock->pstNext = stPool.pstKept;
    stPool.pstKept = pstBlock;
    ++stPool.ulKept;
    return true;
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
    const std::lock_guard stHeld(stPool.stLock);
    void *pBlock = uiSize == KeptSize ? KeptTake(stPool) : nullptr;
    if (pBlock == nullptr)
        pBlock = malloc(std::max(uiSize, 1U));
    if (pBlock == nullptr)
        return nullptr;
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
    const size_t ulBytes = malloc_usable_size(pBlock);
    const std::lock_guard stHeld(stPool.stLock);
    --stPool.ulBlocksInUse;
    stPool.ulBytesInUse -= ulBytes;
    if (!Keep(stPool, pBlock, ulBytes))
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
