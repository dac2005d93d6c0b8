// SPDX-License-Identifier: Apache-2.0
// The report as JSON: machine and versions, ratios, times of each contestant, memory.
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "peers.h"
#include "report.h"

namespace zryaml::bench {

namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

template <typename Number> void Put(Writer &stWriter, const char *pcKey, Number stNumber)
{
    stWriter.Key(pcKey);
    if constexpr (std::is_floating_point_v<Number>)
        stWriter.Double(stNumber);
    else
        stWriter.Uint64(stNumber);
}

void Put(Writer &stWriter, const char *pcKey, const std::string &text)
{
    stWriter.Key(pcKey);
    stWriter.String(text.c_str());
}

void Put(Writer &stWriter, const char *pcKey, const Spread &stSpread)
{
    stWriter.Key(pcKey);
    stWriter.StartObject();
    Put(stWriter, "median", stSpread.dMedian);
    Put(stWriter, "lower_quartile", stSpread.dLow);
    Put(stWriter, "upper_quartile", stSpread.dHigh);
    stWriter.EndObject();
}

constexpr const char *NameOf(Kind eKind)
{
    switch (eKind) {
    case Kind::Load:
        return "load";
    case Kind::Hard:
        return "hard";
    case Kind::Lookup:
        return "lookup";
    case Kind::Growth:
        return "growth";
    }
    return "";
}

void MeasurePut(Writer &stWriter, const Measure &stMeasure)
{
    stWriter.StartObject();
    Put(stWriter, "kind", std::string(NameOf(stMeasure.eKind)));
    Put(stWriter, "name", stMeasure.name);
    Put(stWriter, "rounds", uint64_t{stMeasure.uiRounds});
    if (stMeasure.eKind != Kind::Growth)
        Put(stWriter, "ratio", stMeasure.Ratio());
    if (stMeasure.dTarget > 0)
        Put(stWriter, "target", stMeasure.dTarget);
    stWriter.Key("ns_per_item");
    stWriter.StartObject();
    for (size_t ul = 0; ul < stMeasure.contestants.size(); ++ul)
        Put(stWriter, stMeasure.contestants[ul].name.c_str(), stMeasure.Nanoseconds(ul));
    stWriter.EndObject();
    stWriter.EndObject();
}

void MemoryPut(Writer &stWriter, const Report &stReport)
{
    stWriter.Key("memory");
    stWriter.StartArray();
    for (const Holding &stHolding : stReport.holdings) {
        stWriter.StartObject();
        Put(stWriter, "document", stHolding.name);
        Put(stWriter, "text_bytes", stHolding.ulTextBytes);
        Put(stWriter, "nodes", stHolding.ulNodes);
        Put(stWriter, "bytes_in_use", stHolding.ulBytesInUse);
        stWriter.EndObject();
    }
    stWriter.EndArray();
    stWriter.Key("reload");
    stWriter.StartArray();
    for (const Reload &stReload : stReport.reloads) {
        stWriter.StartObject();
        Put(stWriter, "document", stReload.name);
        Put(stWriter, "times", stReload.ulTimes);
        Put(stWriter, "resident_bytes_before", stReload.ulBytesBefore);
        Put(stWriter, "resident_bytes_after", stReload.ulBytesAfter);
        stWriter.EndObject();
    }
    stWriter.EndArray();
}

} // namespace

std::string ReportJson(const Report &stReport)
{
    rapidjson::StringBuffer stBuffer;
    Writer stWriter(stBuffer);
    stWriter.StartObject();
    stWriter.Key("setting");
    stWriter.StartArray();
    for (const std::string &part : stReport.setting)
        stWriter.String(part.c_str());
    stWriter.EndArray();
    stWriter.Key("measures");
    stWriter.StartArray();
    for (const Measure *pstMeasure : stReport.measures)
        MeasurePut(stWriter, *pstMeasure);
    stWriter.EndArray();
    const std::vector<Figure> loops = FiguresSelect(stReport, Kind::Load, EventLoopLoader().pcName);
    if (!loops.empty()) {
        Put(stWriter, "load_geometric_mean", GeometricMean(loops).stRatio);
        Put(stWriter, "load_worst", WorstOf(loops).stRatio);
    }
    MemoryPut(stWriter, stReport);
    stWriter.EndObject();
    return std::string(stBuffer.GetString()) + "\n";
}

} // namespace zryaml::bench
