// SPDX-License-Identifier: Apache-2.0
// What is measured by time: contestants that take turns within one process.
//
// A round runs each contestant once, a second round in the opposite order, and so on, so that whatever disturbs the
// machine disturbs both sides, and none always finds the caches as the other left them. A ratio is taken within its
// round; what is told is the median of all rounds with its quartiles.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zryaml::bench {

struct Spread {
    double dLow = 0; // first quartile
    double dMedian = 0;
    double dHigh = 0; // third quartile
};

// Quartiles of numbers, of which there is at least one.
[[nodiscard]] Spread SpreadOf(std::vector<double> numbers);

// Work that is done uiCalls times. The loop is inside, so that it costs nothing of its own.
using Work = std::function<void(uint32_t uiCalls)>;

template <typename Call> [[nodiscard]] Work Repeated(Call stCall)
{
    return [stCall = std::move(stCall)](uint32_t uiCalls) {
        for (uint32_t ui = 0; ui < uiCalls; ++ui)
            stCall();
    };
}

struct Contestant {
    std::string name;
    Work stWork;
    double dItems = 1;                // what one call goes through, such as keys
    uint32_t uiCalls = 0;             // of one sample; found in the first round
    std::vector<double> samples = {}; // ns per call, one for each round
};

enum class Kind { Load, Hard, Lookup, Growth };

struct Measure {
    Kind eKind;
    std::string name;                    // what is done
    std::vector<Contestant> contestants; // the library first
    double dTarget = 0;                  // the ratio of the first to the second is at most this; 0: no target
    uint32_t uiRounds = 0;

    void Round();
    [[nodiscard]] Spread Ratio() const;                     // of the first to the second contestant
    [[nodiscard]] Spread Nanoseconds(size_t ulWhich) const; // per item
};

// Adds a measurement to the run. "uiRepeats" runs of at least dSeconds each are spread over the whole run.
void MeasureAdd(Measure stMeasure, uint32_t uiRepeats, double dSeconds);

// Runs what Google Benchmark's flags select, in random order.
void MeasuresRun();

// The measurements that ran.
[[nodiscard]] std::vector<const Measure *> MeasuresGet();

} // namespace zryaml::bench
