// SPDX-License-Identifier: Apache-2.0
// Gathers the ratios from the measures, and the machine from the system.
#include "report.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <unistd.h>

#include "peers.h"
#include "text.h"

namespace zryaml::bench {

namespace {

constexpr double MeanTarget = 1.05;

std::string ProcessorName()
{
    std::ifstream stFile("/proc/cpuinfo");
    std::string line;
    while (std::getline(stFile, line)) {
        if (line.starts_with("model name") && line.find(": ") != std::string::npos)
            return line.substr(line.find(": ") + 2);
    }
    return "unknown processor";
}

std::vector<std::string> SettingOf()
{
    std::vector<std::string> setting = {
        Printed("%ld cores, %s", sysconf(_SC_NPROCESSORS_ONLN), ProcessorName().c_str())};
    for (const std::string &version : VersionsGet())
        setting.push_back(version);
    return setting;
}

} // namespace

Report ReportOf(std::vector<Holding> holdings, std::vector<Reload> reloads)
{
    Report stReport = {MeasuresGet(), {}, std::move(holdings), std::move(reloads), SettingOf()};
    for (const Measure *pstMeasure : stReport.measures) {
        if (pstMeasure->eKind != Kind::Growth)
            stReport.figures.push_back({pstMeasure->eKind, pstMeasure->name, pstMeasure->contestants[1].name,
                                        pstMeasure->Ratio(), pstMeasure->dTarget, pstMeasure->Nanoseconds(0).dMedian});
    }
    return stReport;
}

std::vector<Figure> FiguresSelect(const Report &stReport, Kind eKind)
{
    std::vector<Figure> figures;
    std::copy_if(stReport.figures.begin(), stReport.figures.end(), std::back_inserter(figures),
                 [eKind](const Figure &stFigure) { return stFigure.eKind == eKind; });
    return figures;
}

std::vector<Figure> FiguresSelect(const Report &stReport, Kind eKind, const std::string &against)
{
    std::vector<Figure> figures = FiguresSelect(stReport, eKind);
    std::erase_if(figures, [&against](const Figure &stFigure) { return stFigure.against != against; });
    return figures;
}

Figure GeometricMean(const std::vector<Figure> &figures)
{
    Spread stLog;
    for (const Figure &stFigure : figures) {
        stLog.dLow += std::log(stFigure.stRatio.dLow);
        stLog.dMedian += std::log(stFigure.stRatio.dMedian);
        stLog.dHigh += std::log(stFigure.stRatio.dHigh);
    }
    const auto dCount = static_cast<double>(figures.size());
    const Spread stMean = {std::exp(stLog.dLow / dCount), std::exp(stLog.dMedian / dCount),
                           std::exp(stLog.dHigh / dCount)};
    return {Kind::Load, "geometric mean", figures.front().against, stMean, MeanTarget, 0};
}

Figure WorstOf(const std::vector<Figure> &figures)
{
    return *std::max_element(figures.begin(), figures.end(), [](const Figure &stOne, const Figure &stOther) {
        return stOne.stRatio.dMedian < stOther.stRatio.dMedian;
    });
}

std::string TextOf(const Figure &stFigure)
{
    const Spread &stRatio = stFigure.stRatio;
    const char *pcBold = stFigure.IsMissed() ? "**" : "";
    return Printed("%s%.3f%s [%.3f, %.3f]", pcBold, stRatio.dMedian, pcBold, stRatio.dLow, stRatio.dHigh);
}

} // namespace zryaml::bench
