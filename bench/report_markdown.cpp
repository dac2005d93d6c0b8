// SPDX-License-Identifier: Apache-2.0
// The report as Markdown that can be read as it is. A median in bold misses its target.
#include <algorithm>
#include <map>

#include "peers.h"
#include "report.h"
#include "text.h"

namespace zryaml::bench {

namespace {

using Rows = std::vector<std::vector<std::string>>;

std::string Section(const char *pcTitle, const Rows &rows)
{
    return rows.size() < 2 ? "" : "\n### " + std::string(pcTitle) + "\n\n" + MarkdownTable(rows);
}

// The time of one call in the library, for scale only: it is another one on each machine.
std::string TimeText(double dNs)
{
    return dNs < 1e3   ? Printed("%.0f ns", dNs)
           : dNs < 1e6 ? Printed("%.1f us", dNs / 1e3)
                       : Printed("%.1f ms", dNs / 1e6);
}

// A row for each document and a column for each peer; what did not run is a dash.
std::string LoadSection(const Report &stReport)
{
    const std::vector<std::string> peers = {EventLoopLoader().pcName, DocumentLoader().pcName, FyamlLoader().pcName,
                                            YamlCppLoader().pcName};
    Rows rows = {{"document", "library"}};
    rows[0].insert(rows[0].end(), peers.begin(), peers.end());
    std::map<std::string, size_t> places;
    for (const Measure *pstMeasure : stReport.measures) {
        if (pstMeasure->eKind == Kind::Load && places.try_emplace(pstMeasure->name, rows.size()).second)
            rows.push_back({pstMeasure->name, TimeText(pstMeasure->Nanoseconds(0).dMedian), "-", "-", "-", "-"});
    }
    for (const Figure &stFigure : FiguresSelect(stReport, Kind::Load)) {
        const auto stColumn = std::find(peers.begin(), peers.end(), stFigure.against);
        rows[places[stFigure.name]][static_cast<size_t>(stColumn - peers.begin()) + 2] = TextOf(stFigure);
    }
    const std::vector<Figure> loops = FiguresSelect(stReport, Kind::Load, peers[0]);
    if (!loops.empty()) {
        rows.push_back({"geometric mean", "", TextOf(GeometricMean(loops)), "", "", ""});
        rows.push_back({"worst", "", TextOf(WorstOf(loops)), "", "", ""});
        rows.push_back({"target", "", "mean 1.05, worst 1.15", "below 1", "below 1", "below 1"});
    }
    return Section("Loading and releasing, ratio to each peer", rows);
}

std::string RatioSection(const Report &stReport, Kind eKind, const char *pcTitle)
{
    Rows rows = {{"what", "library", "against", "ratio", "times as fast", "target"}};
    for (const Figure &stFigure : FiguresSelect(stReport, eKind))
        rows.push_back({stFigure.name, TimeText(stFigure.dLibraryNs), stFigure.against, TextOf(stFigure),
                        Printed("%.3g", 1 / stFigure.stRatio.dMedian),
                        stFigure.dTarget > 0 ? Printed("%.3g", stFigure.dTarget) : "-"});
    return Section(pcTitle, rows);
}

std::string GrowthSection(const Report &stReport)
{
    Rows rows = {{"what, in ns", "1k", "10k", "100k", "100k / 1k"}};
    for (const Measure *pstMeasure : stReport.measures) {
        if (pstMeasure->eKind != Kind::Growth)
            continue;
        std::vector<std::string> row = {pstMeasure->name};
        for (size_t ul = 0; ul < pstMeasure->contestants.size(); ++ul)
            row.push_back(Printed("%.3g", pstMeasure->Nanoseconds(ul).dMedian));
        row.push_back(Printed("%.3g", pstMeasure->Nanoseconds(2).dMedian / pstMeasure->Nanoseconds(0).dMedian));
        rows.push_back(std::move(row));
    }
    return Section("Time for each item, as documents grow", rows);
}

std::string MemorySection(const Report &stReport)
{
    Rows rows = {{"document", "text bytes", "nodes", "bytes in use", "per node", "per text byte"}};
    for (const Holding &stHolding : stReport.holdings) {
        const auto dInUse = static_cast<double>(stHolding.ulBytesInUse);
        rows.push_back({stHolding.name, std::to_string(stHolding.ulTextBytes), std::to_string(stHolding.ulNodes),
                        std::to_string(stHolding.ulBytesInUse),
                        Printed("%.1f", dInUse / static_cast<double>(stHolding.ulNodes)),
                        Printed("%.1f", dInUse / static_cast<double>(stHolding.ulTextBytes))});
    }
    return Section("Memory of a loaded document", rows);
}

std::string ReloadSection(const Report &stReport)
{
    Rows rows = {{"document", "times", "resident kB before", "after", "change"}};
    for (const Reload &stReload : stReport.reloads)
        rows.push_back({stReload.name, std::to_string(stReload.ulTimes), std::to_string(stReload.ulBytesBefore / 1024),
                        std::to_string(stReload.ulBytesAfter / 1024),
                        Printed("%+.0f", (static_cast<double>(stReload.ulBytesAfter) -
                                          static_cast<double>(stReload.ulBytesBefore)) /
                                             1024)});
    return Section("Loaded and released again and again", rows);
}

std::string MissedSection(const Report &stReport)
{
    std::vector<Figure> figures = stReport.figures;
    const std::vector<Figure> loops = FiguresSelect(stReport, Kind::Load, EventLoopLoader().pcName);
    if (!loops.empty())
        figures.push_back(GeometricMean(loops));
    std::string text;
    for (const Figure &stFigure : figures) {
        if (stFigure.IsMissed())
            text += Printed("- %s, against %s: %.3f, target %.3g\n", stFigure.name.c_str(), stFigure.against.c_str(),
                            stFigure.stRatio.dMedian, stFigure.dTarget);
    }
    return "\n### Targets missed\n\n" + (text.empty() ? "None.\n" : text);
}

} // namespace

std::string ReportMarkdown(const Report &stReport)
{
    std::string text = "Measured on: ";
    for (const std::string &part : stReport.setting)
        text += (&part == &stReport.setting.front() ? "" : "; ") + part;
    text += ".\n";
    text += LoadSection(stReport);
    text += RatioSection(stReport, Kind::Hard, "Hard documents, ratio to the event loop");
    text += RatioSection(stReport, Kind::Lookup, "Lookup of one value, seven components deep");
    text += GrowthSection(stReport);
    text += MemorySection(stReport);
    text += ReloadSection(stReport);
    text += MissedSection(stReport);
    return text;
}

} // namespace zryaml::bench
