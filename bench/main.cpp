// SPDX-License-Identifier: Apache-2.0
// The program behind script/bench: runs the suite, prints the table and writes results.json and performance.svg.
//
// Usage: zryaml_bench [--quick] [--record] [--out FOLDER] [FILE...] [flags of Google Benchmark]
//   FILE      load these instead of the made-up configuration files
//   --quick   fewer rounds
//   --record  write the chart and the figures into docs/ too; only for a whole run
//   --out     where the results go, by default build/bench
#include <benchmark/benchmark.h>
#include <cstdio>
#include <exception>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <zr_base.h>

#include "report.h"
#include "suite.h"

using namespace zryaml::bench;

namespace {

constexpr const char *FiguresBegin = "<!-- figures: begin -->\n";
constexpr const char *FiguresEnd = "<!-- figures: end -->\n";
constexpr uint64_t ReloadTimes = 10000;
constexpr size_t ReloadBytes = 4000; // of the largest document that is loaded so often

struct Options {
    bool bQuick = false;
    bool bRecord = false;
    std::string folder = "build/bench";
    std::vector<std::string> files;
    bool bAll = true; // no filter of Google Benchmark
};

Options OptionsOf(const std::vector<std::string> &arguments)
{
    Options stOptions;
    for (size_t ul = 0; ul < arguments.size(); ++ul) {
        if (arguments[ul] == "--quick")
            stOptions.bQuick = true;
        else if (arguments[ul] == "--record")
            stOptions.bRecord = true;
        else if (arguments[ul] == "--out" && ul + 1 < arguments.size())
            stOptions.folder = arguments[++ul];
        else if (arguments[ul].starts_with("-"))
            throw std::runtime_error("unknown option " + arguments[ul]);
        else
            stOptions.files.push_back(arguments[ul]);
    }
    const std::string filter = benchmark::GetBenchmarkFilter();
    stOptions.bAll = filter.empty() || filter == "all" || filter == ".";
    if (stOptions.bRecord && (stOptions.bQuick || !stOptions.files.empty() || !stOptions.bAll))
        throw std::runtime_error("only a whole run can be recorded");
    return stOptions;
}

void FileWrite(const std::string &path, const std::string &text)
{
    std::ofstream stFile(path, std::ios::binary);
    stFile << text;
    stFile.close();
    if (!stFile)
        throw std::runtime_error("can not write " + path);
}

// Puts the figures between the two marks of the page.
void PageUpdate(const std::string &path, const std::string &figures)
{
    std::stringstream stText;
    stText << std::ifstream(path, std::ios::binary).rdbuf();
    std::string page = stText.str();
    const size_t ulBegin = page.find(FiguresBegin);
    const size_t ulEnd = page.find(FiguresEnd);
    if (ulBegin == std::string::npos || ulEnd == std::string::npos || ulEnd < ulBegin)
        throw std::runtime_error("no place for the figures in " + path);
    const size_t ulFirst = ulBegin + std::string_view(FiguresBegin).size();
    page.replace(ulFirst, ulEnd - ulFirst, "\n" + figures + "\n");
    FileWrite(path, page);
}

std::vector<Document> ShapesGet(const Options &stOptions, const std::string &folder)
{
    if (stOptions.files.empty())
        return ShapesWrite(folder);
    std::vector<Document> documents;
    for (const std::string &file : stOptions.files)
        documents.push_back(DocumentOf(file));
    return documents;
}

void MeasuresAdd(const Options &stOptions, const std::vector<Document> &shapes, const std::string &folder)
{
    LoadMeasuresAdd(shapes, stOptions.bQuick ? Budget{5, 0.05} : Budget{9, 0.2},
                    stOptions.bQuick ? Budget{3, 0.02} : Budget{7, 0.05});
    HardMeasuresAdd(HardWrite(folder), stOptions.bQuick ? Budget{3, 0.05} : Budget{7, 0.2});
    LookupMeasuresAdd(stOptions.bQuick ? Budget{3, 0.02} : Budget{7, 0.1});
    GrowthMeasuresAdd(stOptions.bQuick ? Budget{3, 0.02} : Budget{7, 0.1});
}

Report Run(const Options &stOptions)
{
    const std::string folder = stOptions.folder + "/documents";
    const std::vector<Document> shapes = ShapesGet(stOptions, folder);
    std::vector<Holding> holdings;
    std::vector<Reload> reloads;
    if (stOptions.bAll) {
        holdings.push_back(HoldingOf(DocumentWrite(folder, "one key", "a: b\n")));
        for (const Document &stShape : shapes)
            holdings.push_back(HoldingOf(stShape));
        for (const Document &stShape : shapes) {
            if (stShape.ulBytes <= ReloadBytes)
                reloads.push_back(ReloadOf(stShape, ReloadTimes));
        }
    }
    MeasuresAdd(stOptions, shapes, folder);
    MeasuresRun();
    return ReportOf(std::move(holdings), std::move(reloads));
}

void Publish(const Options &stOptions, const Report &stReport)
{
    const std::string figures = ReportMarkdown(stReport);
    const std::string chart = ReportSvg(stReport);
    printf("%s\n", figures.c_str());
    FileWrite(stOptions.folder + "/results.json", ReportJson(stReport));
    FileWrite(stOptions.folder + "/performance.svg", chart);
    printf("Written: %s/results.json, %s/performance.svg\n", stOptions.folder.c_str(), stOptions.folder.c_str());
    if (stOptions.bRecord) {
        PageUpdate("docs/performance.md", figures);
        FileWrite("docs/performance.svg", chart);
        printf("Recorded: docs/performance.md, docs/performance.svg\n");
    }
}

} // namespace

int main(int iCount, char **ppcArguments)
{
    try {
        ZR_LogLevelSet(ZR_LOG_WARNING); // as by default, whatever the environment says
        if (MemoryMode({ppcArguments + 1, ppcArguments + iCount}))
            return 0;
        // The repetitions of all measurements are mixed; a flag on the command line may still say otherwise.
        std::string mixed = "--benchmark_enable_random_interleaving=true";
        std::vector<char *> flags = {ppcArguments[0], mixed.data()};
        flags.insert(flags.end(), ppcArguments + 1, ppcArguments + iCount);
        int iFlags = static_cast<int>(flags.size());
        benchmark::Initialize(&iFlags, flags.data());
        const Options stOptions = OptionsOf({flags.begin() + 1, flags.begin() + iFlags});
        Publish(stOptions, Run(stOptions));
        return 0;
    } catch (const std::exception &stError) {
        (void)fprintf(stderr, "zryaml_bench: %s\n", stError.what());
        return 1;
    }
}
