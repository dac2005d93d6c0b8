// SPDX-License-Identifier: Apache-2.0
// Google Benchmark chooses the number of rounds, spreads the repetitions of all measurements over the run in random
// order and offers its flags. It times a whole benchmark at once, so the times that count, those of each contestant in
// each round, are taken here.
#include "measure.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <ctime>
#include <deque>
#include <unistd.h>

namespace zryaml::bench {

namespace {

constexpr double SampleNs = 200e3; // shorter work is repeated, so that reading the clock does not count

std::deque<Measure> g_measures; // in the order in which they were added

// Time that this process was given, kernel included. What other programs take in the middle of a sample is not in it;
// all contestants compute, none waits.
double ProcessorNs()
{
    timespec stNow = {};
    (void)clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &stNow);
    return static_cast<double>(stNow.tv_sec) * 1e9 + static_cast<double>(stNow.tv_nsec);
}

double TimeOf(const Contestant &stContestant)
{
    const double dStart = ProcessorNs();
    stContestant.stWork(stContestant.uiCalls);
    return ProcessorNs() - dStart;
}

void CallsFind(Contestant &stContestant)
{
    stContestant.uiCalls = 1;
    while (TimeOf(stContestant) < SampleNs)
        stContestant.uiCalls *= 2;
}

// What Google Benchmark would print says nothing about the pairs; a dot shows that the run goes on.
class Silent : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &) override {}
};

void RoundsRun(benchmark::State &stState, Measure &stMeasure)
{
    for ([[maybe_unused]] auto stIteration : stState)
        stMeasure.Round();
    if (isatty(STDERR_FILENO) != 0)
        (void)fputc('.', stderr);
}

} // namespace

Spread SpreadOf(std::vector<double> numbers)
{
    std::sort(numbers.begin(), numbers.end());
    const auto At = [&numbers](double dPart) {
        const double dPlace = dPart * static_cast<double>(numbers.size() - 1);
        const auto ulBelow = static_cast<size_t>(dPlace);
        const size_t ulAbove = std::min(ulBelow + 1, numbers.size() - 1);
        return numbers[ulBelow] + (dPlace - static_cast<double>(ulBelow)) * (numbers[ulAbove] - numbers[ulBelow]);
    };
    return {At(0.25), At(0.5), At(0.75)};
}

void Measure::Round()
{
    if (uiRounds == 0)
        std::for_each(contestants.begin(), contestants.end(), CallsFind);
    const bool bForward = uiRounds++ % 2 == 0;
    for (size_t ul = 0; ul < contestants.size(); ++ul) {
        Contestant &stNext = contestants[bForward ? ul : contestants.size() - 1 - ul];
        stNext.samples.push_back(TimeOf(stNext) / stNext.uiCalls);
    }
}

Spread Measure::Ratio() const
{
    std::vector<double> ratios;
    for (uint32_t ui = 0; ui < uiRounds; ++ui)
        ratios.push_back(contestants[0].samples[ui] / contestants[1].samples[ui]);
    return SpreadOf(std::move(ratios));
}

Spread Measure::Nanoseconds(size_t ulWhich) const
{
    const Contestant &stContestant = contestants[ulWhich];
    const Spread stCall = SpreadOf(stContestant.samples);
    return {stCall.dLow / stContestant.dItems, stCall.dMedian / stContestant.dItems,
            stCall.dHigh / stContestant.dItems};
}

void MeasureAdd(Measure stMeasure, uint32_t uiRepeats, double dSeconds)
{
    Measure &stAdded = g_measures.emplace_back(std::move(stMeasure));
    const std::string name = stAdded.name + "/" + stAdded.contestants.back().name;
    benchmark::RegisterBenchmark(name.c_str(), [&stAdded](benchmark::State &stState) { RoundsRun(stState, stAdded); })
        ->Repetitions(static_cast<int>(uiRepeats))
        ->MinTime(dSeconds)
        ->UseRealTime();
}

void MeasuresRun()
{
    Silent stReporter;
    benchmark::RunSpecifiedBenchmarks(&stReporter);
}

std::vector<const Measure *> MeasuresGet()
{
    std::vector<const Measure *> measures;
    for (const Measure &stMeasure : g_measures) {
        if (stMeasure.uiRounds > 0)
            measures.push_back(&stMeasure);
    }
    return measures;
}

} // namespace zryaml::bench
