// SPDX-License-Identifier: Apache-2.0
// The blocks of a document's store, the youngest first. They grow with the document, so that a small one takes little;
// a large text has a block to itself.
#include "node_store.h"

#include "parse_internal.h"

using namespace zryaml;
using namespace zryaml::parse;

struct YamlStoreBlock {
    YamlStoreBlock *pstOlder;
};

namespace {

#ifdef ZRYAML_STORE_CLOSED
constexpr uint32_t FirstBlockSize = 0; // never open
#else
constexpr uint32_t FirstBlockSize = 1024;
#endif
constexpr uint32_t LastBlockSize = 8192;

// A block of the pool, which takes sizes of 32 bits; NULL if there is none.
[[nodiscard]] void *BlockTake(size_t ulSize) noexcept
{
    return ulSize <= UINT32_MAX ? ZR_MemAlloc(static_cast<uint32_t>(ulSize), yaml_MemHandleGet()) : nullptr;
}

[[nodiscard]] char *BlockAdd(YamlHandle &stHandle, size_t ulSize) noexcept
{
    auto *pstBlock = static_cast<YamlStoreBlock *>(BlockTake(ulSize));
    if (pstBlock == nullptr)
        return nullptr;
    pstBlock->pstOlder = stHandle.stStore.pstBlocks;
    stHandle.stStore.pstBlocks = pstBlock;
    return reinterpret_cast<char *>(pstBlock + 1);
}

} // namespace

void zryaml::parse::StoreOpen(YamlHandle &stHandle) noexcept
{
    stHandle.stStore.uiBlockSize = FirstBlockSize;
}

void zryaml::parse::StoreClose(YamlHandle &stHandle) noexcept
{
    stHandle.stStore.uiBlockSize = 0;
    stHandle.stStore.ulFree = 0;
}

void zryaml::parse::StoreTakeOver(YamlHandle &stHandle, YamlHandle &stOther) noexcept
{
    YamlStoreBlock **ppstEnd = &stOther.stStore.pstBlocks;
    while (*ppstEnd != nullptr)
        ppstEnd = &(*ppstEnd)->pstOlder;
    *ppstEnd = stHandle.stStore.pstBlocks;
    stHandle.stStore.pstBlocks = stOther.stStore.pstBlocks;
    stOther.stStore.pstBlocks = nullptr;
}

void zryaml::parse::StoreRelease(YamlHandle &stHandle) noexcept
{
    while (YamlStoreBlock *pstBlock = stHandle.stStore.pstBlocks) {
        stHandle.stStore.pstBlocks = pstBlock->pstOlder;
        ZR_MemFree(pstBlock, yaml_MemHandleGet());
    }
}

void *zryaml::parse::StoreGrow(YamlHandle &stHandle, size_t ulBytes) noexcept
{
    auto &stStore = stHandle.stStore;
    if (!StoreIsOpen(stHandle))
        return BlockTake(ulBytes);
    const uint32_t uiBlockSize = stStore.uiBlockSize;
    const size_t ulPiece = PieceSizeOf(ulBytes);
    if (ulPiece > uiBlockSize / 4)
        return BlockAdd(stHandle, sizeof(YamlStoreBlock) + ulPiece);
    char *pcBlock = BlockAdd(stHandle, uiBlockSize);
    if (pcBlock == nullptr)
        return nullptr;
    stStore.uiBlockSize = uiBlockSize < LastBlockSize ? uiBlockSize * 2 : LastBlockSize;
    stStore.pcFree = pcBlock + ulPiece;
    stStore.ulFree = uiBlockSize - sizeof(YamlStoreBlock) - ulPiece;
    return pcBlock;
}
