// SPDX-License-Identifier: Apache-2.0
// What is measured by time: two contestants that take turns within one process.
//
// A round runs each of them once, the next round in the opposite order, and so on, so that whatever disturbs the
// machine disturbs both sides, and none always finds the caches as the other left them. A ratio is taken within its
// round.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace zryaml::bench {

// Does a piece of work so many times. The loop is inside, so that it costs nothing of its own.
using Work = std::function<void(uint64_t calls)>;

template <typename Call> [[nodiscard]] Work Repeated(Call call)
{
    return [call = std::move(call)](uint64_t calls) {
        for (uint64_t done = 0; done < calls; ++done)
            call();
    };
}

struct Contestant {
    Work work;
    double items = 1; // that one call goes through, such as keys
};

// Adds a pair to the run as the benchmark "suite/what is done/peer". Its time is that of the library for one item, its
// counter "ratio" that time to the peer's, both the medians of the rounds of one repetition.
void PairAdd(const std::string &name, Contestant library, Contestant peer);

// How long the rounds of one repetition last, at least.
void RoundSecondsSet(double seconds);

} // namespace zryaml::bench
