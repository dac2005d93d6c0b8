// SPDX-License-Identifier: Apache-2.0
// The blocks of a document's store, the youngest first. They grow with the document, so that a small one takes little;
// a large text has a block to itself.
#include "node_store.h"

#include "parse_internal.h"

using namespace zryaml;
using namespace zryaml::parse;

struct YamlStoreBlock {
    YamlStoreBlock *older;
};

namespace {

#ifdef ZRYAML_STORE_CLOSED
constexpr uint32_t FirstBlockSize = 0; // never open
#else
constexpr uint32_t FirstBlockSize = 1024;
#endif
constexpr uint32_t LastBlockSize = 8192;

// A block of the pool, which takes sizes of 32 bits; NULL if there is none.
[[nodiscard]] void *BlockTake(size_t size) noexcept
{
    return size <= UINT32_MAX ? ZR_MemAlloc(static_cast<uint32_t>(size), yaml_MemHandleGet()) : nullptr;
}

[[nodiscard]] char *BlockAdd(YamlHandle &handle, size_t size) noexcept
{
    auto *block = static_cast<YamlStoreBlock *>(BlockTake(size));
    if (block == nullptr)
        return nullptr;
    block->older = handle.stStore.pstBlocks;
    handle.stStore.pstBlocks = block;
    return reinterpret_cast<char *>(block + 1);
}

} // namespace

void zryaml::parse::StoreOpen(YamlHandle &handle) noexcept
{
    handle.stStore.uiBlockSize = FirstBlockSize;
}

void zryaml::parse::StoreClose(YamlHandle &handle) noexcept
{
    handle.stStore.uiBlockSize = 0;
    handle.stStore.ulFree = 0;
}

void zryaml::parse::StoreTakeOver(YamlHandle &handle, YamlHandle &other) noexcept
{
    YamlStoreBlock **end = &other.stStore.pstBlocks;
    while (*end != nullptr)
        end = &(*end)->older;
    *end = handle.stStore.pstBlocks;
    handle.stStore.pstBlocks = other.stStore.pstBlocks;
    other.stStore.pstBlocks = nullptr;
}

void zryaml::parse::StoreRelease(YamlHandle &handle) noexcept
{
    while (YamlStoreBlock *block = handle.stStore.pstBlocks) {
        handle.stStore.pstBlocks = block->older;
        ZR_MemFree(block, yaml_MemHandleGet());
    }
}

void *zryaml::parse::StoreGrow(YamlHandle &handle, size_t bytes) noexcept
{
    auto &store = handle.stStore;
    if (!StoreIsOpen(handle))
        return BlockTake(bytes);
    const uint32_t blockSize = store.uiBlockSize;
    const size_t pieceSize = PieceSizeOf(bytes);
    if (pieceSize > blockSize / 4)
        return BlockAdd(handle, sizeof(YamlStoreBlock) + pieceSize);
    char *block = BlockAdd(handle, blockSize);
    if (block == nullptr)
        return nullptr;
    store.uiBlockSize = blockSize < LastBlockSize ? blockSize * 2 : LastBlockSize;
    store.pcFree = block + pieceSize;
    store.ulFree = blockSize - sizeof(YamlStoreBlock) - pieceSize;
    return block;
}
