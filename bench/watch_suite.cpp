// SPDX-License-Identifier: Apache-2.0
// What a watch costs its readers, and how soon a renamed file is a document.
#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <stdexcept>

#include <zr_yaml_watch.h>

#include "suite.h"

namespace zryaml::bench {

namespace {

constexpr int Keys = 10;
constexpr int Renames = 50;
constexpr int WaitMilliseconds = 10000;

class Watched {
public:
    Watched(const std::string &folder, const char *name) : m_path(folder + '/' + name + ".yaml")
    {
        std::filesystem::create_directories(folder);
        Write(0);
        const YamlLayer layer = {YAML_LAYER_FILE, 0, m_path.c_str(), nullptr, 0, nullptr};
        m_watch = ZRYAML_WatchOpen(&layer, 1, nullptr, nullptr);
        if (m_watch == nullptr)
            throw std::runtime_error("no watch of " + m_path);
    }
    ~Watched() { ZRYAML_WatchClose(m_watch); }
    Watched(const Watched &) = delete;
    Watched &operator=(const Watched &) = delete;

    [[nodiscard]] YamlWatch *Get() const { return m_watch; }
    // Puts a new version where the file is.
    void Write(int version) const
    {
        const std::string part = m_path + ".part";
        {
            std::ofstream file(part);
            for (int key = 0; key < Keys; ++key)
                file << "key_" << key << ": {value: " << version + key << "}\n";
        }
        std::filesystem::rename(part, m_path);
    }
    // Waits until it is there.
    void Await() const
    {
        struct pollfd wake = {ZRYAML_WatchFdGet(m_watch), POLLIN, 0};
        do {
            if (poll(&wake, 1, WaitMilliseconds) == 0)
                throw std::runtime_error("the watch of " + m_path + " tells nothing");
        } while (ZRYAML_WatchPoll(m_watch, nullptr) != YAML_WATCH_CHANGED);
    }

private:
    std::string m_path;
    YamlWatch *m_watch = nullptr;
};

using WatchedPtr = std::shared_ptr<Watched>;

void PairMeasure(benchmark::State &state, const WatchedPtr &watched)
{
    for ([[maybe_unused]] auto iteration : state)
        ZRYAML_HandleRelease(ZRYAML_WatchAcquire(watched->Get()));
}

void WorkMeasure(benchmark::State &state, const WatchedPtr &watched)
{
    constexpr const char *Paths[Keys] = {"key_0.value", "key_1.value", "key_2.value", "key_3.value", "key_4.value",
                                         "key_5.value", "key_6.value", "key_7.value", "key_8.value", "key_9.value"};
    for ([[maybe_unused]] auto iteration : state) {
        YamlHandle *conf = ZRYAML_WatchAcquire(watched->Get());
        for (const char *path : Paths)
            benchmark::DoNotOptimize(ZRYAML_PathFind(conf, path));
        ZRYAML_HandleRelease(conf);
    }
    state.SetItemsProcessed(state.iterations());
}

// The settling time of 10 ms is in it.
void RenameMeasure(benchmark::State &state, const WatchedPtr &watched)
{
    int version = 0;
    for ([[maybe_unused]] auto iteration : state) {
        watched->Write(++version);
        const auto start = std::chrono::steady_clock::now();
        watched->Await();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
}

const Suite added([](const Setting &setting) {
    const auto Open = [&](const char *name) { return std::make_shared<Watched>(setting.folder, name); };
    benchmark::RegisterBenchmark("watch/acquire and release", PairMeasure, Open("pair"));
    for (const int threads : {1, 2})
        benchmark::RegisterBenchmark("watch/acquire, ten values, release", WorkMeasure, Open("work"))
            ->Threads(threads)
            ->UseRealTime();
    benchmark::RegisterBenchmark("watch/rename to new document", RenameMeasure, Open("rename"))
        ->Iterations(Renames)
        ->UseManualTime();
});

} // namespace

} // namespace zryaml::bench
