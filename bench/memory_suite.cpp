// SPDX-License-Identifier: Apache-2.0
// What a loaded document holds of the pool, beyond its records and texts, and whether a process grows when it loads and
// releases a file again and again. Measured once, not timed: the figures are counters.
#include <benchmark/benchmark.h>
#include <cstring>
#include <fstream>
#include <unistd.h>

#include <zr_base.h>

#include "peer.h"
#include "suite.h"

namespace zryaml::bench {

namespace {

constexpr uint32_t ManyKeys = 32; // such a map may keep an index
constexpr int WarmLoads = 100;
constexpr int Loads = 10000;
constexpr size_t LoadBytes = 4000; // of the largest document that is loaded so often

uint64_t BytesInUse()
{
    ZR_MemInfo info = {};
    (void)ZR_MemInfoGet(g_pstYamlMemHandle, &info);
    return info.ulBytesInUse;
}

void DocumentWeigh(benchmark::State &state, const Document &document)
{
    Library.load(document.path.c_str()); // makes the pool, if it is the first
    for ([[maybe_unused]] auto iteration : state) {
        const uint64_t before = BytesInUse();
        const HandlePtr handle(ZRYAML_FileLoad(document.path.c_str()), ZRYAML_HandleFree);
        const auto bytes = static_cast<double>(BytesInUse() - before);
        double nodes = 0, texts = 0, indexed = 0;
        const YamlList *head = &handle->stRoot.stAllocLink;
        for (const YamlList *link = head->next; link != head; link = link->next) {
            const auto *node = reinterpret_cast<const YamlListNode *>(reinterpret_cast<const char *>(link) -
                                                                      offsetof(YamlListNode, stAllocLink));
            ++nodes;
            texts += node->pcValue != nullptr ? static_cast<double>(strlen(node->pcValue) + 1) : 0;
            const uint32_t children = node->uiDataType == YAML_DATATYPE_MAP ? ZRYAML_ChildCountGet(node) : 0;
            indexed += children >= ManyKeys ? children : 0;
        }
        state.counters["nodes"] = nodes;
        state.counters["bytes_per_node"] = bytes / nodes;
        state.counters["beyond_record_and_text"] = (bytes - texts) / nodes - double{sizeof(YamlListNode)};
        state.counters["indexed_per_node"] = indexed / nodes;
    }
}

double ResidentKilobytes()
{
    double pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024;
}

void LoadAgain(benchmark::State &state, const Document &document)
{
    const auto Load = [&](int times) {
        for (int i = 0; i < times; ++i)
            Library.load(document.path.c_str());
    };
    for ([[maybe_unused]] auto iteration : state) {
        (void)ResidentKilobytes(); // the first reading takes memory of its own
        Load(WarmLoads);
        const double before = ResidentKilobytes();
        Load(Loads);
        state.counters["grown_kB"] = ResidentKilobytes() - before;
    }
}

void Add(const std::string &suite, const Document &document, void (*measure)(benchmark::State &, const Document &))
{
    benchmark::RegisterBenchmark((suite + "/" + document.name).c_str(), measure, document)
        ->Iterations(1)
        ->Repetitions(1);
}

const Suite added([](const Setting &setting) {
    std::vector<Document> documents = setting.files;
    for (const Document &document : FlatMapsWrite(setting.folder))
        documents.push_back(document);
    for (const Document &document : documents) {
        Add("memory", document, DocumentWeigh);
        if (document.bytes <= LoadBytes)
            Add("memory of 10000 loads", document, LoadAgain);
    }
});

} // namespace

} // namespace zryaml::bench
