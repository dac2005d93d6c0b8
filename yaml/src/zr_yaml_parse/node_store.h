// SPDX-License-Identifier: Apache-2.0
// Memory for the nodes and texts of a document while it is being loaded: cut side by side from blocks of the pool, so
// that taking a piece is an addition, and all of them go back at once with the document. What is made for a document
// at any other time has a block of its own.
#pragma once

#include "../report.h"

namespace zryaml::parse {

// From now on pieces come from blocks. Not where the address sanitizer is to watch the border of each piece.
void StoreOpen(YamlHandle &handle) noexcept;
void StoreClose(YamlHandle &handle) noexcept;
// Makes the blocks of another document, whose store is closed, blocks of this one.
void StoreTakeOver(YamlHandle &handle, YamlHandle &other) noexcept;
// Gives all blocks back.
void StoreRelease(YamlHandle &handle) noexcept;

[[nodiscard]] inline bool StoreIsOpen(const YamlHandle &handle) noexcept
{
    return handle.stStore.uiBlockSize != 0;
}

// Pieces are aligned for records.
[[nodiscard]] constexpr size_t PieceSizeOf(size_t bytes) noexcept
{
    return (bytes + alignof(YamlListNode) - 1) / alignof(YamlListNode) * alignof(YamlListNode);
}

// A piece when the block at hand has no room for it, or a block of its own where the store is closed.
[[nodiscard]] void *StoreGrow(YamlHandle &handle, size_t bytes) noexcept;

// A piece of memory for the document; NULL if memory is short.
[[nodiscard]] inline void *StoreTake(YamlHandle &handle, size_t bytes) noexcept
{
    auto &store = handle.stStore;
    const size_t pieceSize = PieceSizeOf(bytes);
    if (pieceSize > store.ulFree) [[unlikely]]
        return StoreGrow(handle, bytes);
    char *piece = store.pcFree;
    store.pcFree += pieceSize;
    store.ulFree -= pieceSize;
    return piece;
}

// Fetches the memory of some records further on. Documents that do not fit the processor's caches would wait for it.
inline void StorePrefetch(const char *free) noexcept
{
    constexpr size_t Ahead = 512, Line = 64;
    __builtin_prefetch(free + Ahead, 1);
    __builtin_prefetch(free + Ahead + Line, 1); // a record with a short text takes little more than two lines
}

} // namespace zryaml::parse
