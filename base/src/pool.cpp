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
    KeptBlock *next;
};

struct Pool {
    std::mutex lock; // guards all but the name and the link
    KeptBlock *pstKept = nullptr;
    uint64_t kept = 0;
    uint64_t ulBlocksInUse = 0;
    uint64_t ulBytesInUse = 0;
    uint64_t ulBytesPeak = 0;
    std::unique_ptr<char[]> name;
    Pool *next = nullptr;
};

// Links all pools, which live until the process ends, so that no leak checker takes them for lost.
constinit std::atomic<Pool *> g_pools{nullptr};

[[nodiscard]] std::unique_ptr<char[]> TextCopy(const char *text) noexcept
{
    const size_t bytes = strlen(text) + 1;
    std::unique_ptr<char[]> copy(new (std::nothrow) char[bytes]);
    if (copy != nullptr)
        memcpy(copy.get(), text, bytes);
    return copy;
}

[[nodiscard]] void *KeptTake(Pool &pool) noexcept
{
    KeptBlock *block = pool.pstKept;
    if (block != nullptr) {
        pool.pstKept = block->next;
        --pool.kept;
    }
    return block;
}

// Keeps a block if it has the size that is kept; malloc may have rounded ulBytes up a little.
[[nodiscard]] bool Keep(Pool &pool, void *pBlock, size_t bytes) noexcept
{
    if (bytes < KeptSize || bytes > KeptSize + alignof(max_align_t) || pool.kept == KeptMax)
        return false;
    auto *block = static_cast<KeptBlock *>(pBlock);
    block->next = pool.pstKept;
    pool.pstKept = block;
    ++pool.kept;
    return true;
}

} // namespace

void *ZR_HandleInit(const char *pcName)
{
    if (pcName == nullptr)
        return nullptr;
    std::unique_ptr<Pool> made(new (std::nothrow) Pool);
    if (made == nullptr || (made->name = TextCopy(pcName)) == nullptr)
        return nullptr;
    Pool *pool = made.release();
    pool->next = g_pools.load(std::memory_order_relaxed);
    while (!g_pools.compare_exchange_weak(pool->next, pool, std::memory_order_release)) {
    }
    return pool;
}

void *ZR_MemAlloc(uint32_t uiSize, void *pMemHandle)
{
    if (pMemHandle == nullptr)
        return nullptr;
    auto &pool = *static_cast<Pool *>(pMemHandle);
    const std::lock_guard held(pool.lock);
    void *pBlock = uiSize == KeptSize ? KeptTake(pool) : nullptr;
    if (pBlock == nullptr)
        pBlock = malloc(std::max(uiSize, 1U));
    if (pBlock == nullptr)
        return nullptr;
    ++pool.ulBlocksInUse;
    pool.ulBytesInUse += malloc_usable_size(pBlock);
    pool.ulBytesPeak = std::max(pool.ulBytesPeak, pool.ulBytesInUse);
    return pBlock;
}

void ZR_MemFree(void *pBlock, void *pMemHandle)
{
    if (pBlock == nullptr || pMemHandle == nullptr)
        return;
    auto &pool = *static_cast<Pool *>(pMemHandle);
    const size_t ulBytes = malloc_usable_size(pBlock);
    const std::lock_guard held(pool.lock);
    --pool.ulBlocksInUse;
    pool.ulBytesInUse -= ulBytes;
    if (!Keep(pool, pBlock, ulBytes))
        free(pBlock);
}

uint32_t ZR_MemInfoGet(void *pMemHandle, ZR_MemInfo *pstInfo)
{
    if (pMemHandle == nullptr || pstInfo == nullptr)
        return EINVAL;
    auto &pool = *static_cast<Pool *>(pMemHandle);
    const std::lock_guard held(pool.lock);
    *pstInfo = {.pcName = pool.name.get(),
                .ulBlocksInUse = pool.ulBlocksInUse,
                .ulBytesInUse = pool.ulBytesInUse,
                .ulBytesPeak = pool.ulBytesPeak};
    return 0;
}
