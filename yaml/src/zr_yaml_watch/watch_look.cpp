// SPDX-License-Identifier: Apache-2.0
// One look at what is there: whether it is new, and if so the way from bytes to the newest document. Only the last step
// is seen by readers.
#include "../layers_load.h"
#include "../problem.h"
#include "watch_internal.h"

#include <algorithm>

using namespace zryaml;
using namespace zryaml::watch;

namespace {

// The layers as they are loaded: copies in the place of files, each known by the number of its layer.
struct LoadedLayers {
    GrowingArray<YamlLayer> layers;
    GrowingArray<uint32_t> numbers;

    LoadedLayers() = default;
    ~LoadedLayers()
    {
        layers.Release();
        numbers.Release();
    }
    LoadedLayers(const LoadedLayers &) = delete;
    LoadedLayers &operator=(const LoadedLayers &) = delete;

    [[nodiscard]] bool Add(const YamlLayer &layer, uint32_t number) noexcept
    {
        return layers.Add(layer) && numbers.Add(number);
    }
};

// What cannot be read is left to the load, which says why. What need not be there still gives the document its name.
YamlLayer LayerOf(const SourceCopy &source, const YamlLayer &layer) noexcept
{
    YamlLayer loaded = {YAML_LAYER_TEXT, 0, source.name, "", 0, nullptr};
    if (source.found == Found::Bytes) {
        loaded.pcText = source.bytes;
        loaded.ulLength = source.length;
    } else if (source.found == Found::Unfit || (source.found == Found::Absent && !IsOptional(layer))) {
        loaded.uiKind = source.isMember ? YAML_LAYER_FILE : layer.uiKind;
        loaded.pcSource = source.path;
        loaded.pcText = nullptr;
    }
    return loaded;
}

// A folder's file that is gone since the folder was read says nothing, and so does the folder unless it comes first.
bool IsPassedOver(const SourceCopy &source) noexcept
{
    return (source.isMember && source.found == Found::Absent) || (source.found == Found::Folder && source.layer != 0);
}

bool LayersGather(const Settings &settings, const SourceCopies &sources, LoadedLayers &loaded) noexcept
{
    const SourceCopy *source = sources.begin();
    for (uint32_t number = 0; number < settings.layers.Count(); ++number) {
        const YamlLayer &layer = settings.layers[number].layer;
        if (!IsOnDisk(layer) && !loaded.Add(layer, number))
            return false;
        for (; source != sources.end() && source->layer == number; ++source) {
            if (!IsPassedOver(*source) && !loaded.Add(LayerOf(*source, layer), number))
                return false;
        }
    }
    return true;
}

uint32_t PipesRefuse(const SourceCopies &sources, YamlProblems **problems) noexcept
{
    for (const SourceCopy &source : sources) {
        if (source.found == Found::Pipe)
            return Tell(problems, YAML_ERR_OPEN, source.name, "a pipe or socket cannot be watched");
    }
    return YAML_OK;
}

// The program's own judgement. Its problems follow those of the load.
uint32_t CheckRun(const YamlWatchOptions &options, YamlHandle &document, YamlProblems **problems) noexcept
{
    if (options.pfnCheck == nullptr)
        return YAML_OK;
    YamlProblems *found = *problems != nullptr ? *problems : ProblemsMake();
    const uint32_t before = ProblemErrorCount(found);
    uint32_t code = options.pfnCheck(&document, options.pvArgument, found);
    const bool told = ProblemErrorCount(found) != before;
    *problems = ProblemsTrim(found);
    if (code == YAML_OK && !told)
        return YAML_OK;
    if (code == YAML_OK || code == YAML_WATCH_CHANGED) // which a poll must not give for a refusal
        code = YAML_ERR_VALUE;
    if (!told)
        return Tell(problems, code, ZRYAML_NameGet(&document), "the program's check refuses the document");
    return YAML_FAIL(code, "The program's check refuses the document. (Name=%s)", ZRYAML_NameGet(&document));
}

uint32_t DocumentMake(const Settings &settings, const SourceCopies &sources, YamlHandle *&document,
                      YamlProblems **problems) noexcept
{
    const uint32_t refused = PipesRefuse(sources, problems);
    if (refused != YAML_OK)
        return refused;
    LoadedLayers loaded;
    if (!LayersGather(settings, sources, loaded))
        return Tell(problems, YAML_ERR_NOMEM, "", "out of memory");
    document =
        LayersLoadAs(loaded.layers.begin(), loaded.numbers.begin(), loaded.layers.Count(), &settings.options, problems);
    if (document == nullptr)
        return ZRYAML_LastErrorGet()->uiCode;
    WatchTake(*document);
    const uint32_t code = CheckRun(settings.watch, *document, problems);
    if (code == YAML_OK)
        return YAML_OK;
    WatchRelease(document);
    document = nullptr;
    return code;
}

uint32_t Publish(YamlWatch &watch, YamlHandle &document, SourceCopies &sources) noexcept
{
    WatchRelease(watch.previous);
    watch.previous = watch.holders.Replace(&document);
    watch.taken.Take(sources);
    watch.failures = 0;
    return YAML_WATCH_CHANGED;
}

// Whether memory ran out, which has no place, and not a limit that the document exceeds.
bool IsShortOfMemory(uint32_t code) noexcept
{
    return code == YAML_ERR_NOMEM && ZRYAML_LastErrorGet()->uiLine == 0;
}

// A failure of the system is tried again, after a time that doubles with each. Any other stays until the bytes change.
uint32_t Failed(YamlWatch &watch, uint32_t code, SourceCopies &sources, bool again, uint64_t now) noexcept
{
    constexpr uint32_t DoublesMax = 6;
    if (!again) {
        watch.failures = 0;
        watch.tried.Take(sources);
        return code;
    }
    watch.wake.LookAt(now + (uint64_t{watch.settings.watch.uiInterval} << watch.failures) * Millisecond);
    watch.failures = std::min(watch.failures + 1, DoublesMax);
    return code;
}

// Whether an empty file may yet be filled; if so it is looked at again.
bool IsHalfWritten(YamlWatch &watch, const SourceCopies &sources, uint64_t now) noexcept
{
    if (!sources.Emptied(watch.taken)) {
        watch.emptyUntil = 0;
        return false;
    }
    if (watch.emptyUntil == 0)
        watch.emptyUntil = now + BurstMax;
    if (now >= watch.emptyUntil)
        return false;
    watch.wake.LookAt(watch.emptyUntil);
    return true;
}

uint32_t SourcesTake(YamlWatch &watch, SourceCopies &sources, uint64_t now, YamlProblems **problems) noexcept
{
    const uint32_t unread = sources.Read(watch.settings, problems);
    if (unread != YAML_OK)
        return Failed(watch, unread, sources, true, now);
    const bool first = watch.holders.Newest() == nullptr;
    if (!first && (IsHalfWritten(watch, sources, now) || (watch.tried.Count() != 0 && sources.Same(watch.tried))))
        return YAML_OK;
    watch.tried.Release();
    if (!first && sources.Same(watch.taken))
        return YAML_OK;
    YamlHandle *document = nullptr;
    const uint32_t code = DocumentMake(watch.settings, sources, document, problems);
    if (document != nullptr)
        return Publish(watch, *document, sources);
    return Failed(watch, code, sources, IsShortOfMemory(code), now);
}

} // namespace

uint32_t zryaml::watch::Look(YamlWatch &watch, uint64_t now, YamlProblems **problems) noexcept
{
    const YamlWatchOptions &options = watch.settings.watch;
    watch.paths.Renew(watch.settings, watch.wake);
    if (watch.paths.IsBlind() || (options.uiFlags & YAML_WATCH_TIMER) != 0)
        watch.wake.LookAt(now + options.uiInterval * Millisecond);
    SourceCopies sources;
    const uint32_t code = SourcesTake(watch, sources, now, problems);
    sources.Release();
    return code;
}
