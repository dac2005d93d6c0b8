// SPDX-License-Identifier: Apache-2.0
// zryaml watch: prints what changed each time a new good version is there, tells what is wrong with a bad one, and runs
// a program after each good one. SIGINT and SIGTERM end it with status 0.
#include "../change_line.h"
#include "../child.h"
#include "../input.h"
#include "../load.h"
#include "../output.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <poll.h>
#include <zr_yaml_watch.h>

namespace zryaml::cli {

namespace {

struct WatchClose {
    void operator()(YamlWatch *watch) const noexcept { ZRYAML_WatchClose(watch); }
};
using WatchPtr = std::unique_ptr<YamlWatch, WatchClose>;

struct Release {
    void operator()(YamlHandle *document) const noexcept { ZRYAML_HandleRelease(document); }
};
using HeldDocument = std::unique_ptr<YamlHandle, Release>;

[[noreturn]] void misuse(std::string message)
{
    Diagnostic diagnostic;
    diagnostic.message = std::move(message);
    throw Failure(Status::misuse, std::move(diagnostic));
}

// What is wrong with one version, by a reporter that has seen no other: it may have looked at the files.
void all_report(const Options &options, const std::vector<Diagnostic> &diagnostics)
{
    const std::unique_ptr<Reporter> reporter = side_reporter_make(options);
    for (const Diagnostic &diagnostic : diagnostics)
        reporter->report(diagnostic);
}

std::string time_now()
{
    char text[sizeof("2026-11-23T19:40:01+0000")] = "";
    const time_t now = time(nullptr);
    struct tm local = {};
    if (localtime_r(&now, &local) != nullptr)
        (void)strftime(text, sizeof(text), "%Y-%m-%dT%H:%M:%S%z", &local);
    return text;
}

class Watcher {
public:
    explicit Watcher(const Options &options) : options_(options)
    {
        const std::vector<YamlLayer> layers = layers_of(options, options.files.front());
        const YamlLayerOptions layer_options = layer_options_of(options);
        YamlWatchOptions watch_options = YAML_WATCH_OPTIONS_INIT;
        watch_options.pstLayers = &layer_options;
        YamlProblems *problems = nullptr;
        watch_.reset(ZRYAML_WatchOpen(layers.data(), static_cast<uint32_t>(layers.size()), &watch_options, &problems));
        std::vector<Diagnostic> diagnostics = diagnostics_take(problems);
        if (watch_ == nullptr)
            throw load_failure(std::move(diagnostics));
        all_report(options, diagnostics);
        newest_.reset(ZRYAML_WatchAcquire(watch_.get()));
    }

    // Until a signal comes.
    void run()
    {
        struct pollfd wake[] = {{ZRYAML_WatchFdGet(watch_.get()), POLLIN, 0}, {signals_.descriptor(), POLLIN, 0}};
        while (wake[1].revents == 0) {
            if (poll(wake, 2, -1) < 0 && errno != EINTR)
                misuse(std::string("waiting failed: ") + strerror(errno));
            version_take();
        }
    }

private:
    void version_take()
    {
        YamlProblems *problems = nullptr;
        const uint32_t code = ZRYAML_WatchPoll(watch_.get(), &problems);
        all_report(options_, diagnostics_take(problems));
        if (code != YAML_WATCH_CHANGED)
            return;
        changes_write();
        output_flush();
        if (options_.command.empty())
            return;
        Diagnostic trouble;
        trouble.message = child_run(options_.command, signals_);
        if (!trouble.message.empty())
            all_report(options_, {trouble});
    }

    void changes_write()
    {
        HeldDocument old = std::move(newest_);
        newest_.reset(ZRYAML_WatchAcquire(watch_.get()));
        const Redactor old_redactor(options_.redact, Value(ZRYAML_RootGet(old.get())));
        const Redactor new_redactor(options_.redact, Value(ZRYAML_RootGet(newest_.get())));
        const std::string now = time_now();
        YamlChange change = YAML_CHANGE_INIT;
        while (ZRYAML_WatchChangeNext(watch_.get(), &change) == YAML_OK)
            output_item(now + ' ' + change_line(old_redactor, new_redactor, change));
    }

    const Options &options_;
    EndSignals signals_;
    WatchPtr watch_;
    HeldDocument newest_; // for what the patterns hide in it, once it is the old one
};

} // namespace

Status watch_run(const Options &options)
{
    if (options.files.front() == input_argument || std::ranges::count(options.over, input_argument) != 0)
        misuse("standard input cannot be watched");
    Watcher(options).run();
    return Status::found;
}

} // namespace zryaml::cli
