// SPDX-License-Identifier: Apache-2.0
// What the files of this folder share: a watch, and how it says what is wrong.
#pragma once

#include "../report.h"
#include "holders.h"
#include "path_watch.h"
#include "source_copy.h"
#include "wake.h"

#include <zr_yaml_watch.h>

namespace zryaml::watch {

extern ZR_LogModule YamlLogModule;

// The system calls in use (system_calls.cpp).
[[nodiscard]] const YamlWatchCalls &System() noexcept;

// Adds a problem about a source, with its record in the log, and is its code (watch_problem.cpp).
uint32_t Tell(YamlProblems **problems, uint32_t code, const char *source, const char *format, ...) noexcept
    __attribute__((format(printf, 4, 5)));
// As above, for a call of the system that failed with errno.
uint32_t TellSystem(YamlProblems **problems, uint32_t code, const char *source, const char *failed) noexcept;

// What a caller gave, copied (settings.cpp).
struct Settings {
    GrowingArray<WatchedLayer> layers;
    GrowingArray<const char *> environment;
    GrowingArray<char *> texts; // what the others point to
    YamlLayerOptions options = YAML_LAYER_OPTIONS_INIT;
    YamlWatchOptions watch = YAML_WATCH_OPTIONS_INIT;

    // False if out of memory.
    [[nodiscard]] bool Copy(const YamlLayer *given, uint32_t count, const YamlWatchOptions &wanted) noexcept;
    void Release() noexcept;

private:
    [[nodiscard]] const char *Keep(const char *folder, std::string_view text) noexcept;
    [[nodiscard]] bool LayerCopy(const YamlLayer &given, const char *folder) noexcept;
    [[nodiscard]] bool EnvironmentCopy(const char *const *given) noexcept;
};

// Reads what is there and, if it is new, makes a document of it (watch_look.cpp). YAML_OK, YAML_WATCH_CHANGED or a
// code.
[[nodiscard]] uint32_t Look(YamlWatch &watch, uint64_t now, YamlProblems **problems) noexcept;

} // namespace zryaml::watch

struct YamlWatch {
    zryaml::watch::Settings settings;
    zryaml::watch::Wake wake;
    zryaml::watch::PathWatch paths;
    zryaml::watch::Holders holders;
    YamlHandle *previous = nullptr;    // the document before the newest one
    zryaml::watch::SourceCopies taken; // what the document in use was made of
    zryaml::watch::SourceCopies tried; // what could not be used; empty: the last try succeeded, or is to be repeated
    uint64_t emptyUntil = 0;           // until then an empty file counts as half-written; 0: none is
    uint32_t failures = 0;             // tries in a row that the system refused
};
