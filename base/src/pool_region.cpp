// SPDX-License-Identifier: Apache-2.0
//
// Regions are anonymous mappings. The system aligns them to pages only; a mapping that falls between two units is made
// again, one unit longer, and trimmed. Later mappings then fall beside it and need no trimming.

#include "pool_region.h"

#include <sys/mman.h>

namespace {

[[nodiscard]] char *PagesMap(size_t ulBytes) noexcept
{
    void *pPages = mmap(nullptr, ulBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return pPages != MAP_FAILED ? static_cast<char *>(pPages) : nullptr;
}

// Distance from an address up to the next multiple of the unit.
[[nodiscard]] size_t GapOf(const void *pAddress) noexcept
{
    return -reinterpret_cast<uintptr_t>(pAddress) % zr::RegionUnit;
}

// Trimming may only fail when the system is short of memory for its own tables; the pages then stay, unused.
void PagesTrim(char *pcPages, size_t ulBytes) noexcept
{
    if (ulBytes != 0)
        (void)munmap(pcPages, ulBytes);
}

} // namespace

void *zr::RegionMap(uint64_t ulBytes) noexcept
{
    if (ulBytes > PTRDIFF_MAX - 2 * RegionUnit)
        return nullptr;
    const auto ulRegion = static_cast<size_t>(RegionBytesOf(ulBytes));
    char *pcPages = PagesMap(ulRegion);
    if (pcPages == nullptr || GapOf(pcPages) == 0)
        return pcPages;

    PagesTrim(pcPages, ulRegion);
    pcPages = PagesMap(ulRegion + RegionUnit);
    if (pcPages == nullptr)
        return nullptr;
    const size_t ulGap = GapOf(pcPages);
    PagesTrim(pcPages, ulGap);
    PagesTrim(pcPages + ulGap + ulRegion, RegionUnit - ulGap);
    return pcPages + ulGap;
}

// A gap between mappings takes an entry in the system's tables. If there is none left, at least the memory goes back.
void zr::RegionUnmap(void *pRegion, uint64_t ulBytes) noexcept
{
    const auto ulRegion = static_cast<size_t>(RegionBytesOf(ulBytes));
    if (munmap(pRegion, ulRegion) != 0)
        (void)madvise(pRegion, ulRegion, MADV_DONTNEED);
}
