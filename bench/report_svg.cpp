// SPDX-License-Identifier: Apache-2.0
// The report as a chart: one bar for each ratio, a mark at its target, a thin line from quartile to quartile. Colours
// follow the reader's light or dark setting; a reader without one sees the light ones on their own background.
#include <algorithm>
#include <map>

#include "peers.h"
#include "report.h"
#include "text.h"

namespace zryaml::bench {

namespace {

constexpr double Width = 860;
constexpr double BarsLeft = 300;
constexpr double BarsWidth = 440;
constexpr double NumbersLeft = BarsLeft + BarsWidth + 16;
constexpr double RowHeight = 18;
constexpr double Scale = 1.5; // the ratio at the right end; a longer bar is cut there, its number still tells

constexpr const char *Style = R"(<style>
  .page { fill: #ffffff } .text { fill: #1f2328 } .faint { fill: #59636e } .grid { stroke: #d1d9e0 }
  .good { fill: #4a86c5 } .over { fill: #d9822b } .target { stroke: #b3261e } .spread { stroke: #1f2328 }
  @media (prefers-color-scheme: dark) {
    .page { fill: #0d1117 } .text { fill: #e6edf3 } .faint { fill: #9198a1 } .grid { stroke: #3d444d }
    .good { fill: #4a86c5 } .over { fill: #d9822b } .target { stroke: #ff7b72 } .spread { stroke: #e6edf3 }
  }
  text { font: 12px sans-serif } .head { font-weight: bold }
</style>
)";

double PlaceOf(double dRatio)
{
    return BarsLeft + std::min(dRatio, Scale) / Scale * BarsWidth;
}

std::string Escaped(const std::string &text)
{
    std::string escaped;
    for (const char cChar : text) {
        if (cChar == '&')
            escaped += "&amp;";
        else if (cChar == '<')
            escaped += "&lt;";
        else
            escaped += cChar;
    }
    return escaped;
}

std::string Text(double dX, double dY, const char *pcClass, const char *pcAnchor, const std::string &text)
{
    return Printed("<text x=\"%.1f\" y=\"%.1f\" class=\"%s\" text-anchor=\"%s\">", dX, dY, pcClass, pcAnchor) +
           Escaped(text) + "</text>\n";
}

std::string Line(double dX1, double dY1, double dX2, double dY2, const char *pcClass, double dWidth)
{
    return Printed("<line x1=\"%.1f\" y1=\"%.1f\" x2=\"%.1f\" y2=\"%.1f\" class=\"%s\" stroke-width=\"%.1f\"/>\n", dX1,
                   dY1, dX2, dY2, pcClass, dWidth);
}

// The drawing grows downwards, row by row.
class Chart {
public:
    void Head(const std::string &title)
    {
        m_dY += RowHeight * 0.6;
        m_body += Text(12, m_dY + 13, "text head", "start", title);
        m_dY += RowHeight;
    }

    void Bar(const Figure &stFigure, const std::string &name)
    {
        const Spread &stRatio = stFigure.stRatio;
        const double dMiddle = m_dY + RowHeight / 2;
        m_body += Text(BarsLeft - 8, dMiddle + 4, "text", "end", name);
        m_body +=
            Printed("<rect x=\"%.1f\" y=\"%.1f\" width=\"%.1f\" height=\"%.1f\" class=\"%s\"/>\n", BarsLeft, m_dY + 3,
                    PlaceOf(stRatio.dMedian) - BarsLeft, RowHeight - 6, stFigure.IsMissed() ? "over" : "good");
        m_body += Line(PlaceOf(stRatio.dLow), dMiddle, PlaceOf(stRatio.dHigh), dMiddle, "spread", 1.5);
        if (stFigure.dTarget > 0)
            m_body += Line(PlaceOf(stFigure.dTarget), m_dY, PlaceOf(stFigure.dTarget), m_dY + RowHeight, "target", 2);
        m_body += Text(NumbersLeft, dMiddle + 4, "text", "start", Printed("%.3f", stRatio.dMedian));
        if (stFigure.dTarget > 0)
            m_body += Text(Width - 12, dMiddle + 4, "faint", "end", Printed("%.3g", stFigure.dTarget));
        m_dY += RowHeight;
    }

    [[nodiscard]] std::string Finish() const
    {
        const double dHeight = m_dY + 12;
        std::string svg = Printed("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %.0f %.0f\" "
                                  "width=\"%.0f\" height=\"%.0f\">\n",
                                  Width, dHeight, Width, dHeight);
        svg += "<title>Time of the library as a ratio to the time of others</title>\n";
        svg += Style;
        svg += Printed("<rect width=\"%.0f\" height=\"%.0f\" class=\"page\"/>\n", Width, dHeight);
        for (const double dTick : {0.0, 0.5, 1.0, 1.5}) {
            svg += Line(PlaceOf(dTick), Top, PlaceOf(dTick), m_dY, "grid", 1);
            svg += Text(PlaceOf(dTick), Top - 4, "faint", "middle", Printed("%.1f", dTick));
        }
        svg += Text(12, 18, "text head", "start", "Time of the library / time of the other; shorter is better");
        svg +=
            Text(12, 34, "faint", "start", "Red: the target. Orange: it is missed. Thin: quartiles. Bars end at 1.5.");
        svg += Text(NumbersLeft, Top - 4, "faint", "start", "ratio");
        svg += Text(Width - 12, Top - 4, "faint", "end", "at most");
        return svg + m_body + "</svg>\n";
    }

private:
    static constexpr double Top = 62;
    double m_dY = Top;
    std::string m_body;
};

// Of figures whose names are "shape, size" the slowest of each shape, under the name of the shape.
std::vector<Figure> SlowestOfShapes(const std::vector<Figure> &figures)
{
    std::vector<Figure> slowest;
    for (const Figure &stFigure : figures) {
        const std::string shape = stFigure.name.substr(0, stFigure.name.rfind(','));
        const auto stFound = std::find_if(slowest.begin(), slowest.end(),
                                          [&shape](const Figure &stOther) { return stOther.name == shape; });
        if (stFound == slowest.end()) {
            slowest.push_back(stFigure);
            slowest.back().name = shape;
        } else if (stFigure.stRatio.dMedian > stFound->stRatio.dMedian) {
            stFound->stRatio = stFigure.stRatio;
        }
    }
    return slowest;
}

} // namespace

std::string ReportSvg(const Report &stReport)
{
    Chart stChart;
    const std::vector<Figure> loops = FiguresSelect(stReport, Kind::Load, EventLoopLoader().pcName);
    if (!loops.empty()) {
        stChart.Head("Loading and releasing / the bare event loop of libyaml");
        stChart.Bar(GeometricMean(loops), "geometric mean");
        for (const Figure &stFigure : loops)
            stChart.Bar(stFigure, stFigure.name);
    }
    for (const Loader &stPeer : {DocumentLoader(), FyamlLoader(), YamlCppLoader()}) {
        const std::vector<Figure> shapes = SlowestOfShapes(FiguresSelect(stReport, Kind::Load, stPeer.pcName));
        if (!shapes.empty())
            stChart.Head(Printed("Loading and releasing / %s, worst size of each shape", stPeer.pcName));
        for (const Figure &stFigure : shapes)
            stChart.Bar(stFigure, stFigure.name);
    }
    if (!FiguresSelect(stReport, Kind::Hard).empty())
        stChart.Head("Hard documents / the bare event loop of libyaml");
    for (const Figure &stFigure : FiguresSelect(stReport, Kind::Hard))
        stChart.Bar(stFigure, stFigure.name);
    std::string against;
    for (const Figure &stFigure : FiguresSelect(stReport, Kind::Lookup)) {
        if (stFigure.dTarget <= 0) // the plain walk is a yardstick, no rival
            continue;
        if (against.empty())
            stChart.Head("Lookup of one value, seven components deep / the same elsewhere");
        against = stFigure.against;
        stChart.Bar(stFigure, stFigure.name + ", " + against);
    }
    return stChart.Finish();
}

} // namespace zryaml::bench
