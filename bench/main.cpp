// SPDX-License-Identifier: Apache-2.0
// The program behind script/bench: one process that runs all suites.
//
// Usage: zryaml_bench [--seconds=S] [--folder=FOLDER] [FILE...] [flags of Google Benchmark]
//   --seconds  how long the rounds of a repetition last, at least
//   --folder   where the generated documents go
//   FILE       load these instead of the generated configuration files
#include <benchmark/benchmark.h>
#include <cstdio>
#include <exception>
#include <libfyaml.h>
#include <stdexcept>
#include <yaml.h>

#include <zr_base.h>

#include "measure.h"
#include "suite.h"

using namespace zryaml::bench;

namespace {

// What is left of an argument behind an option's name; NULL if it is not that option.
const char *ValueOf(std::string_view argument, std::string_view option)
{
    return argument.starts_with(option) ? argument.data() + option.size() : nullptr;
}

Setting SettingOf(int count, char **arguments)
{
    Setting setting{{}, "build/bench/documents"};
    for (int i = 1; i < count; ++i) {
        if (const char *seconds = ValueOf(arguments[i], "--seconds="))
            RoundSecondsSet(std::stod(seconds));
        else if (const char *folder = ValueOf(arguments[i], "--folder="))
            setting.folder = folder;
        else if (arguments[i][0] == '-')
            throw std::runtime_error(std::string("unknown option ") + arguments[i]);
        else
            setting.files.push_back(DocumentOf(arguments[i]));
    }
    if (setting.files.empty())
        setting.files = ShapesWrite(setting.folder);
    return setting;
}

} // namespace

int main(int count, char **arguments)
{
    try {
        ZR_LogLevelSet(ZR_LOG_WARNING); // as by default, whatever the environment says
        // The repetitions of all measurements are mixed; a flag on the command line may still say otherwise.
        std::string mixed = "--benchmark_enable_random_interleaving=true";
        std::vector<char *> flags = {arguments[0], mixed.data()};
        flags.insert(flags.end(), arguments + 1, arguments + count);
        int left = static_cast<int>(flags.size());
        benchmark::Initialize(&left, flags.data());
        benchmark::AddCustomContext("libyaml", yaml_get_version_string());
        benchmark::AddCustomContext("libfyaml", fy_library_version());
        benchmark::AddCustomContext("yaml-cpp", YAMLCPP_VERSION);
        benchmark::AddCustomContext("compiler", __VERSION__);
        Suite::AddAll(SettingOf(left, flags.data()));
        benchmark::RunSpecifiedBenchmarks();
        return 0;
    } catch (const std::exception &error) {
        (void)fprintf(stderr, "zryaml_bench: %s\n", error.what());
        return 1;
    }
}
