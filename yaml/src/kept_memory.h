// SPDX-License-Identifier: Apache-2.0
// Memory that a document keeps for what was read from it: arrays and optional values of records, texts of defaults.
// Blocks of the pool, cut from the front. A reading collects blocks of its own and hands them to the document at its
// end, in one step, so that any number of threads may read one document.
#pragma once

#include <cstddef>
#include <cstdint>

#include <zr_yaml.h>

struct YamlKeptBlock;

namespace zryaml {

class KeptMemory {
public:
    KeptMemory() = default;
    KeptMemory(const KeptMemory &) = delete;
    KeptMemory &operator=(const KeptMemory &) = delete;
    ~KeptMemory() { Release(); }

    // Memory of zeros, aligned for any type; NULL if there is none left.
    [[nodiscard]] void *Take(size_t bytes) noexcept;
    // Gives everything back.
    void Release() noexcept;
    // From now on everything belongs to the document.
    void HandOver(YamlHandle &document) noexcept;

private:
    [[nodiscard]] char *BlockAdd(size_t bytes) noexcept;

    char *free_ = nullptr;
    size_t left_ = 0;
    YamlKeptBlock *youngest_ = nullptr;
    YamlKeptBlock *oldest_ = nullptr;
    uint32_t blockSize_ = 0;
};

// Gives back what a document that goes was handed.
void KeptRelease(YamlHandle &document) noexcept;

} // namespace zryaml
