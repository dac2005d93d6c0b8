// SPDX-License-Identifier: Apache-2.0
// Google Benchmark repeats the pairs, mixes their repetitions in random order and writes what comes out. It times whole
// benchmarks, not the sides of a pair, so those times are taken here.
#include "measure.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>
#include <vector>

namespace zryaml::bench {

namespace {

constexpr double SampleSeconds = 200e-6; // shorter work is repeated, so that reading the clock does not count

double g_round_seconds = 0.1;

// Time that this process was given, kernel included. What other programs take in the middle of a sample is not in it;
// all contestants compute, none waits.
double ProcessorSeconds()
{
    timespec now = {};
    (void)clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double MedianOf(std::vector<double> numbers)
{
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::nth_element(numbers.begin(), middle, numbers.end());
    return *middle;
}

class Side {
public:
    explicit Side(Contestant contestant) : m_contestant(std::move(contestant))
    {
        while (TotalSeconds() < SampleSeconds)
            m_calls *= 2;
    }
    double ItemSeconds() const { return TotalSeconds() / (static_cast<double>(m_calls) * m_contestant.items); }

private:
    double TotalSeconds() const
    {
        const double start = ProcessorSeconds();
        m_contestant.work(m_calls);
        return ProcessorSeconds() - start;
    }

    Contestant m_contestant;
    uint64_t m_calls = 1;
};

void Repetition(benchmark::State &state, const Contestant &library, const Contestant &peer)
{
    const Side first(library);
    const Side second(peer);
    std::vector<double> times;
    std::vector<double> ratios;
    const double end = ProcessorSeconds() + g_round_seconds;
    for ([[maybe_unused]] auto iteration : state) {
        while (ratios.size() % 2 == 1 || ratios.empty() || ProcessorSeconds() < end) {
            const bool peer_first = ratios.size() % 2 == 1;
            const double before = peer_first ? second.ItemSeconds() : 0;
            times.push_back(first.ItemSeconds());
            ratios.push_back(times.back() / (peer_first ? before : second.ItemSeconds()));
        }
        state.SetIterationTime(MedianOf(times));
    }
    state.counters["ratio"] = MedianOf(ratios);
}

} // namespace

void PairAdd(const std::string &name, Contestant library, Contestant peer)
{
    const auto run = [library = std::move(library), peer = std::move(peer)](benchmark::State &state) {
        Repetition(state, library, peer);
    };
    benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime()->Iterations(1);
}

void RoundSecondsSet(double seconds)
{
    g_round_seconds = seconds;
}

} // namespace zryaml::bench
