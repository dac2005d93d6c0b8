// SPDX-License-Identifier: Apache-2.0
// zryaml stats: what loading took and what the document holds, as lines that are YAML again.
#include "../document.h"
#include "../output.h"

#include <algorithm>

namespace zryaml::cli {

namespace {

struct Counts {
    uint64_t maps = 0, sequences = 0, scalars = 0, keys = 0, depth = 0;

    void add(const Value &value, uint64_t open)
    {
        ++(value.is_map() ? maps : value.is_sequence() ? sequences : scalars);
        if (value.is_scalar())
            return;
        depth = std::max(depth, open + 1);
        keys += value.is_map() ? value.size() : 0;
        for (const Value &child : value)
            add(child, open + 1);
    }
};

void statistic_write(const char *name, uint64_t number)
{
    output_item(std::string(name) + ": " + std::to_string(number));
}

} // namespace

Status stats_run(const Options &options)
{
    ZRYAML_DebugSwitchSet(1); // before the load, which is what is measured
    const OpenDocument open(options);
    YamlDebugInfo info = {};
    (void)ZRYAML_DebugInfoGet(open.document().handle(), &info); // cannot fail: both are there and the switch is on
    Counts counts;
    if (open.root().exists())
        counts.add(open.root(), 0);
    statistic_write("parse_time_ms", info.uiParseTime);
    statistic_write("memory_bytes", info.uiMemSize);
    statistic_write("maps", counts.maps);
    statistic_write("sequences", counts.sequences);
    statistic_write("scalars", counts.scalars);
    statistic_write("keys", counts.keys);
    statistic_write("depth", counts.depth);
    return Status::found;
}

} // namespace zryaml::cli
