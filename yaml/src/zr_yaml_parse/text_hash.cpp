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

uint64_t g_point = 0; // 0: not chosen yet

uint64_t PointChoose() noexcept
{
    uint64_t point = 0;
    if (getrandom(&point, sizeof(point), GRND_NONBLOCK) != static_cast<ssize_t>(sizeof(point))) {
        struct timespec now = {};
        (void)clock_gettime(CLOCK_MONOTONIC, &now); // early at boot: better than a fixed point
        point = reinterpret_cast<uintptr_t>(&now) * static_cast<uint64_t>(now.tv_nsec);
    }
    point = point % (Prime - 2) + 2;
    uint64_t none = 0; // the first thread's choice holds for all
    const bool isChosen =
        __atomic_compare_exchange_n(&g_point, &none, point, false, __ATOMIC_RELAXED, __ATOMIC_RELAXED);
    return isChosen ? point : none;
}

// A product modulo the prime, or at most three more than that.
uint64_t MultiplyMod(uint64_t a, uint64_t b) noexcept
{
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    const uint64_t sum = static_cast<uint64_t>(product & Prime) + static_cast<uint64_t>(product >> 61);
    return (sum & Prime) + (sum >> 61);
}

// Some bytes of a text, at most seven, as a number.
uint64_t WordOf(const char *text, size_t bytes) noexcept
{
    if (bytes >= 4) { // two halves that overlap
        uint32_t first = 0, last = 0;
        memcpy(&first, text, sizeof(first));
        memcpy(&last, text + bytes - sizeof(last), sizeof(last));
        return le32toh(first) | uint64_t{le32toh(last)} << (bytes - sizeof(last)) * 8;
    }
    const auto At = [text](size_t ul) { return uint64_t{static_cast<unsigned char>(text[ul])} << ul * 8; };
    return bytes == 0 ? 0 : At(0) | At(bytes / 2) | At(bytes - 1);
}

} // namespace

uint32_t zryaml::parse::TextHash(std::string_view text) noexcept
{
    const uint64_t chosen = __atomic_load_n(&g_point, __ATOMIC_RELAXED);
    const uint64_t point = chosen != 0 ? chosen : PointChoose();

    // The last word has less than seven characters, maybe none, and none is NUL: so different texts give different
    // words.
    const char *pcText = text.data();
    size_t rest = text.size();
    uint64_t hash = 0;
    for (; rest >= WordBytes; pcText += WordBytes, rest -= WordBytes)
        hash = MultiplyMod(hash + WordOf(pcText, WordBytes) + 1, point);
    hash = MultiplyMod(hash + WordOf(pcText, rest) + 1, point);
    hash = hash >= Prime ? hash - Prime : hash;
    // Texts that differ in their last word lie on a straight line; mixed, they lie in no order.
    hash = (hash ^ hash >> 32) * 0xD6E8FEB86659FD93U;
    return static_cast<uint32_t>((hash ^ hash >> 32) * 0xD6E8FEB86659FD93U >> 32);
}
