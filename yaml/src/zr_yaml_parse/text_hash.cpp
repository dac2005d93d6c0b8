// SPDX-License-Identifier: Apache-2.0
// The keyed hash of texts: the text, cut into words of seven bytes, is a polynomial over the prime field of 2^61 - 1,
// evaluated at a secret random point. Two different texts of n words collide for at most n + 1 of the 2^61 points, so
// whoever does not know the point cannot write texts that do.
#include "text_index.h"

#include <sys/random.h>
#include <time.h>

namespace {

constexpr uint64_t Prime = (uint64_t{1} << 61) - 1;
constexpr size_t WordBytes = 7; // always below the prime

uint64_t g_ulPoint = 0; // 0: not chosen yet

uint64_t PointChoose() noexcept
{
    uint64_t ulPoint = 0;
    if (getrandom(&ulPoint, sizeof(ulPoint), GRND_NONBLOCK) != static_cast<ssize_t>(sizeof(ulPoint))) {
        struct timespec stNow = {};
        (void)clock_gettime(CLOCK_MONOTONIC, &stNow); // early at boot: better than a fixed point
        ulPoint = reinterpret_cast<uintptr_t>(&stNow) * static_cast<uint64_t>(stNow.tv_nsec);
    }
    ulPoint = ulPoint % (Prime - 2) + 2;
    uint64_t ulNone = 0; // the first thread's choice holds for all
    const bool bChosen =
        __atomic_compare_exchange_n(&g_ulPoint, &ulNone, ulPoint, false, __ATOMIC_RELAXED, __ATOMIC_RELAXED);
    return bChosen ? ulPoint : ulNone;
}

uint64_t MultiplyMod(uint64_t ulA, uint64_t ulB) noexcept
{
    __extension__ using Wide = unsigned __int128;
    const Wide ulProduct = static_cast<Wide>(ulA) * ulB;
    const uint64_t ulSum = static_cast<uint64_t>(ulProduct & Prime) + static_cast<uint64_t>(ulProduct >> 61);
    return ulSum >= Prime ? ulSum - Prime : ulSum;
}

} // namespace

uint64_t zryaml::parse::TextHash(const char *pcText) noexcept
{
    const uint64_t ulChosen = __atomic_load_n(&g_ulPoint, __ATOMIC_RELAXED);
    const uint64_t ulPoint = ulChosen != 0 ? ulChosen : PointChoose();

    size_t ulLeft = strlen(pcText);
    uint64_t ulHash = MultiplyMod(ulLeft % Prime, ulPoint);
    for (; ulLeft > 0; pcText += WordBytes) {
        const size_t ulTaken = ulLeft < WordBytes ? ulLeft : WordBytes;
        uint64_t ulWord = 0;
        memcpy(&ulWord, pcText, ulTaken);
        ulHash = MultiplyMod((ulHash + ulWord) % Prime, ulPoint);
        if (ulLeft <= WordBytes)
            break;
        ulLeft -= WordBytes;
    }
    return ulHash ^ (ulHash >> 32); // the low bits pick the slot
}
