// SPDX-License-Identifier: Apache-2.0
// Who holds a document of a watch, and how readers get the newest one while it is replaced.
//
// 1. A document's ulHolds counts its readers; WatchHolds is set as long as the watch keeps it. It is freed when all of
//    that is 0, and a document of no watch has 0 from the start.
// 2. Between reading the pointer and counting itself a reader is "inside". Whoever replaces the pointer waits, before
//    the watch lets go of the old document, until each counter of readers inside has been seen at 0 once.
// 3. Readers count themselves inside on one of two sides, the one that the replacing thread does not wait for, so that
//    a stream of readers cannot hold it up.
#pragma once

#include <atomic>
#include <cstdint>

#include <zr_yaml.h>

namespace zryaml::watch {

constexpr uint64_t WatchHolds = uint64_t{1} << 63;

class Holders {
public:
    // The newest document, counted for the caller.
    [[nodiscard]] YamlHandle *Acquire() noexcept;
    [[nodiscard]] YamlHandle *Newest() const noexcept { return m_newest.load(std::memory_order_relaxed); }
    // Puts a document, which the watch holds already, in the place of the newest, which the watch goes on holding.
    YamlHandle *Replace(YamlHandle *document) noexcept;

private:
    static constexpr uint32_t Shards = 8; // so that readers on several cores do not share a counter
    static constexpr uint32_t CacheLine = 64;

    struct Shard {
        std::atomic<uint32_t> inside[2];
        char toNextLine[CacheLine - 2 * sizeof(std::atomic<uint32_t>)];
    };

    void InsideAwait(uint32_t side) noexcept;

    std::atomic<YamlHandle *> m_newest = nullptr;
    std::atomic<uint32_t> m_side = 0;
    [[maybe_unused]] char m_toNextLine[CacheLine] = {};
    Shard m_shards[Shards] = {};
};

// Makes a new document one of the watch.
void WatchTake(YamlHandle &document) noexcept;
// Lets the watch go of a document, which frees it if nobody holds it. NULL does nothing.
void WatchRelease(YamlHandle *document) noexcept;

} // namespace zryaml::watch
