// SPDX-License-Identifier: Apache-2.0
// Blocks grow with what is read, so that a small record costs little. A large piece has a block to itself.
#include "../kept_memory.h"

#include <cstring>

#include <zr_base.h>

struct alignas(max_align_t) YamlKeptBlock {
    YamlKeptBlock *older;
};

namespace {

#ifdef ZRYAML_STORE_CLOSED
constexpr uint32_t FirstBlockSize = 0; // the address sanitizer sees each piece
constexpr uint32_t LastBlockSize = 0;
#else
constexpr uint32_t FirstBlockSize = 1024;
constexpr uint32_t LastBlockSize = 65536;
#endif

void BlocksFree(YamlKeptBlock *youngest) noexcept
{
    while (youngest != nullptr) {
        YamlKeptBlock *older = youngest->older;
        ZR_MemFree(youngest, yaml_MemHandleGet());
        youngest = older;
    }
}

} // namespace

char *zryaml::KeptMemory::BlockAdd(size_t bytes) noexcept
{
    const size_t size = sizeof(YamlKeptBlock) + bytes;
    if (size < bytes || size > UINT32_MAX) // the pool takes sizes of 32 bits
        return nullptr;
    auto *block = static_cast<YamlKeptBlock *>(ZR_MemAlloc(static_cast<uint32_t>(size), yaml_MemHandleGet()));
    if (block == nullptr)
        return nullptr;
    block->older = youngest_;
    youngest_ = block;
    oldest_ = oldest_ != nullptr ? oldest_ : block;
    memset(block + 1, 0, bytes);
    return reinterpret_cast<char *>(block + 1);
}

void *zryaml::KeptMemory::Take(size_t bytes) noexcept
{
    if (bytes > UINT32_MAX)
        return nullptr;
    const size_t piece = (bytes + alignof(max_align_t) - 1) / alignof(max_align_t) * alignof(max_align_t);
    if (piece <= left_) {
        char *taken = free_;
        free_ += piece;
        left_ -= piece;
        return taken;
    }
    const uint32_t next = blockSize_ == 0 ? FirstBlockSize : blockSize_ < LastBlockSize ? blockSize_ * 2 : blockSize_;
    if (piece > next / 4)
        return BlockAdd(piece);
    char *block = BlockAdd(next);
    if (block == nullptr)
        return nullptr;
    blockSize_ = next;
    free_ = block + piece;
    left_ = next - piece;
    return block;
}

void zryaml::KeptMemory::Release() noexcept
{
    BlocksFree(youngest_);
    youngest_ = oldest_ = nullptr;
    left_ = 0;
}

void zryaml::KeptMemory::HandOver(YamlHandle &document) noexcept
{
    if (youngest_ == nullptr)
        return;
    YamlKeptBlock *head = __atomic_load_n(&document.pstKept, __ATOMIC_RELAXED);
    do {
        oldest_->older = head;
    } while (
        !__atomic_compare_exchange_n(&document.pstKept, &head, youngest_, true, __ATOMIC_RELEASE, __ATOMIC_RELAXED));
    youngest_ = oldest_ = nullptr;
    left_ = 0;
}

void zryaml::KeptRelease(YamlHandle &document) noexcept
{
    BlocksFree(document.pstKept);
    document.pstKept = nullptr;
}
