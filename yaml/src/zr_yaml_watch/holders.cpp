// SPDX-License-Identifier: Apache-2.0
// Acquiring, replacing and releasing documents. No lock: see holders.h.
#include "watch_internal.h"

#include <sched.h>

using namespace zryaml;
using namespace zryaml::watch;

namespace {

using Holds = std::atomic_ref<uint64_t>;
static_assert(Holds::is_always_lock_free && alignof(YamlHandle) >= Holds::required_alignment);

void DocumentFree(YamlHandle &document) noexcept
{
    document.ulHolds = 0;
    ZRYAML_HandleFree(&document);
}

// The thread-local record lies at another address in each thread.
uint32_t ShardNumber(uint32_t shards) noexcept
{
    constexpr uint64_t Spread = 0x9E3779B97F4A7C15; // 2^64 by the golden ratio: neighbours end up far apart
    return static_cast<uint32_t>((reinterpret_cast<uintptr_t>(&t_error) * Spread) >> 32) % shards;
}

} // namespace

YamlHandle *zryaml::watch::Holders::Acquire() noexcept
{
    std::atomic<uint32_t> &inside = m_shards[ShardNumber(Shards)].inside[m_side.load(std::memory_order_relaxed)];
    inside.fetch_add(1); // in one order with the exchange of the pointer
    YamlHandle *document = m_newest.load();
    Holds(document->ulHolds).fetch_add(1, std::memory_order_relaxed);
    inside.fetch_sub(1, std::memory_order_release);
    return document;
}

YamlHandle *zryaml::watch::Holders::Replace(YamlHandle *document) noexcept
{
    YamlHandle *old = m_newest.exchange(document);
    for (uint32_t turn = 0; turn < 2; ++turn)
        InsideAwait(m_side.fetch_xor(1));
    return old;
}

void zryaml::watch::Holders::InsideAwait(uint32_t side) noexcept
{
    for (const Shard &shard : m_shards) {
        while (shard.inside[side].load() != 0)
            (void)sched_yield();
    }
}

void zryaml::watch::WatchTake(YamlHandle &document) noexcept
{
    document.ulHolds = WatchHolds;
}

void zryaml::watch::WatchRelease(YamlHandle *document) noexcept
{
    if (document != nullptr && Holds(document->ulHolds).fetch_and(~WatchHolds) == WatchHolds)
        DocumentFree(*document);
}

YamlHandle *ZRYAML_WatchAcquire(YamlWatch *pstWatch)
{
    return pstWatch != nullptr ? pstWatch->holders.Acquire() : nullptr;
}

void ZRYAML_HandleRelease(YamlHandle *pstHandle)
{
    if (pstHandle == nullptr)
        return;
    const Holds holds(pstHandle->ulHolds);
    uint64_t before = holds.load(std::memory_order_relaxed);
    do {
        if ((before & ~WatchHolds) == 0) {
            ErrorClear();
            return YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "The document was not acquired from a watch. (Name=%s)",
                            ZRYAML_NameGet(pstHandle));
        }
    } while (!holds.compare_exchange_weak(before, before - 1));
    if (before == 1)
        DocumentFree(*pstHandle);
}
