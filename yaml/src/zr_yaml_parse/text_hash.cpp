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

// A sum of two numbers below the prime, modulo the prime.
uint64_t Reduced(uint64_t ulSum) noexcept
{
    return ulSum >= Prime ? ulSum - Prime : ulSum;
}

uint64_t MultiplyMod(uint64_t ulA, uint64_t ulB) noexcept
{
    __extension__ using Wide = unsigned __int128;
    const Wide ulProduct = static_cast<Wide>(ulA) * ulB;
    return Reduced(static_cast<uint64_t>(ulProduct & Prime) + static_cast<uint64_t>(ulProduct >> 61));
}

} // namespace

uint64_t zryaml::parse::TextHash(const char *pcText) noexcept
{
    const uint64_t ulChosen = __atomic_load_n(&g_ulPoint, __ATOMIC_RELAXED);
    const uint64_t ulPoint = ulChosen != 0 ? ulChosen : PointChoose();

    // The last word has less than seven characters, maybe none, and none is NUL: so different texts give different
    // words.
    uint64_t ulHash = 0;
    for (bool bMore = true; bMore;) {
        uint64_t ulWord = 0;
        for (size_t ul = 0; ul < WordBytes && (bMore = *pcText != '\0'); ++ul)
            ulWord = ulWord << 8 | static_cast<unsigned char>(*pcText++);
        ulHash = MultiplyMod(Reduced(ulHash + ulWord + 1), ulPoint);
    }
    return ulHash ^ (ulHash >> 32); // the low bits pick the slot
}
