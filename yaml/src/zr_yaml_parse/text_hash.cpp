// SPDX-License-Identifier: Apache-2.0
// The keyed hash of texts: the text, cut into words of seven bytes, is a polynomial over the prime field of 2^61 - 1,
// evaluated at a secret random point. Two different texts of n words collide for at most n + 1 of the 2^61 points, so
// whoever does not know the point cannot write texts that do.
#include "text_hash.h"

#include <cstring>
#include <endian.h>
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

// A product modulo the prime, or at most three more than that.
uint64_t MultiplyMod(uint64_t ulA, uint64_t ulB) noexcept
{
    __extension__ using Wide = unsigned __int128;
    const Wide ulProduct = static_cast<Wide>(ulA) * ulB;
    const uint64_t ulSum = static_cast<uint64_t>(ulProduct & Prime) + static_cast<uint64_t>(ulProduct >> 61);
    return (ulSum & Prime) + (ulSum >> 61);
}

// Some bytes of a text, at most seven, as a number.
uint64_t WordOf(const char *pcText, size_t ulBytes) noexcept
{
    if (ulBytes >= 4) { // two halves that overlap
        uint32_t uiFirst = 0, uiLast = 0;
        memcpy(&uiFirst, pcText, sizeof(uiFirst));
        memcpy(&uiLast, pcText + ulBytes - sizeof(uiLast), sizeof(uiLast));
        return le32toh(uiFirst) | uint64_t{le32toh(uiLast)} << (ulBytes - sizeof(uiLast)) * 8;
    }
    const auto At = [pcText](size_t ul) { return uint64_t{static_cast<unsigned char>(pcText[ul])} << ul * 8; };
    return ulBytes == 0 ? 0 : At(0) | At(ulBytes / 2) | At(ulBytes - 1);
}

} // namespace

uint32_t zryaml::parse::TextHash(std::string_view text) noexcept
{
    const uint64_t ulChosen = __atomic_load_n(&g_ulPoint, __ATOMIC_RELAXED);
    const uint64_t ulPoint = ulChosen != 0 ? ulChosen : PointChoose();

    // The last word has less than seven characters, maybe none, and none is NUL: so different texts give different
    // words.
    const char *pcText = text.data();
    size_t ulRest = text.size();
    uint64_t ulHash = 0;
    for (; ulRest >= WordBytes; pcText += WordBytes, ulRest -= WordBytes)
        ulHash = MultiplyMod(ulHash + WordOf(pcText, WordBytes) + 1, ulPoint);
    ulHash = MultiplyMod(ulHash + WordOf(pcText, ulRest) + 1, ulPoint);
    ulHash = ulHash >= Prime ? ulHash - Prime : ulHash;
    // Texts that differ in their last word lie on a straight line; mixed, they lie in no order.
    ulHash = (ulHash ^ ulHash >> 32) * 0xD6E8FEB86659FD93U;
    return static_cast<uint32_t>((ulHash ^ ulHash >> 32) * 0xD6E8FEB86659FD93U >> 32);
}
