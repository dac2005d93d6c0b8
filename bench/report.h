// SPDX-License-Identifier: Apache-2.0
// What came out of a run, and its three forms: text, JSON and a chart.
#pragma once

#include <string>
#include <vector>

#include "measure.h"
#include "memory.h"

namespace zryaml::bench {

struct Figure { // one ratio: time of the library / time of the other
    Kind eKind;
    std::string name;
    std::string against;
    Spread stRatio;
    double dTarget;    // 0: none
    double dLibraryNs; // time of one call in the library
    [[nodiscard]] bool IsMissed() const { return dTarget > 0 && stRatio.dMedian > dTarget; }
};

struct Report {
    std::vector<const Measure *> measures;
    std::vector<Figure> figures; // of all measures that are ratios
    std::vector<Holding> holdings;
    std::vector<Reload> reloads;
    std::vector<std::string> setting; // machine and versions
};

// All that the measures and the machine tell.
[[nodiscard]] Report ReportOf(std::vector<Holding> holdings, std::vector<Reload> reloads);

// The figures of a kind, and of a kind against one peer.
[[nodiscard]] std::vector<Figure> FiguresSelect(const Report &stReport, Kind eKind);
[[nodiscard]] std::vector<Figure> FiguresSelect(const Report &stReport, Kind eKind, const std::string &against);

// The geometric mean of the loads against the event loop, quartiles alike; the figures are not empty.
[[nodiscard]] Figure GeometricMean(const std::vector<Figure> &figures);

// The one with the largest median; the figures are not empty.
[[nodiscard]] Figure WorstOf(const std::vector<Figure> &figures);

// "1.03 [1.01, 1.06]": the median and the quartiles, in bold if the target is missed.
[[nodiscard]] std::string TextOf(const Figure &stFigure);

// Markdown for docs/performance.md and the terminal.
[[nodiscard]] std::string ReportMarkdown(const Report &stReport);

// All samples' quartiles, times in nanoseconds.
[[nodiscard]] std::string ReportJson(const Report &stReport);

// A bar for each ratio with a mark at its target; of the loads against other loaders the slowest size of each shape.
[[nodiscard]] std::string ReportSvg(const Report &stReport);

} // namespace zryaml::bench
