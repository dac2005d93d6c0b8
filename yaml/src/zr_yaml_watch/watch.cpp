// SPDX-License-Identifier: Apache-2.0
// The calls of a watch: open, poll, walk changes, close.
#include "../layers_load.h"
#include "../record_size.h"
#include "watch_internal.h"

#include <new>

using namespace zryaml;
using namespace zryaml::watch;

namespace {

constexpr uint32_t IntervalUsual = 1000, SettleUsual = 10, SettleMax = 500;

// The options with the usual times, or false if they are none.
bool OptionsTake(const YamlWatchOptions *given, YamlWatchOptions &options) noexcept
{
    if (given != nullptr && !RecordFits(*given))
        return false;
    if (given != nullptr)
        options = *given;
    if (options.uiInterval == 0)
        options.uiInterval = IntervalUsual;
    if (options.uiSettle == 0)
        options.uiSettle = SettleUsual;
    const bool layersFit = options.pstLayers == nullptr || RecordFits(*options.pstLayers);
    return layersFit && options.uiSettle <= SettleMax && (options.uiFlags & ~YAML_WATCH_TIMER) == 0;
}

YamlWatch *WatchMake() noexcept
{
    void *block = yaml_MemInit() == YAML_OK ? ZR_MemAlloc(sizeof(YamlWatch), yaml_MemHandleGet()) : nullptr;
    return block != nullptr ? ::new (block) YamlWatch() : nullptr;
}

// Everything up to the first document.
uint32_t Begin(YamlWatch &watch, const YamlLayer *layers, uint32_t count, const YamlWatchOptions &options,
               YamlProblems **problems) noexcept
{
    if (!watch.settings.Copy(layers, count, options))
        return Tell(problems, YAML_ERR_NOMEM, "", "out of memory");
    if (!watch.wake.Open())
        return TellSystem(problems, YAML_ERR_OPEN, "", "the watch cannot be opened");
    const uint32_t code = Look(watch, Now(), problems);
    if (code == YAML_WATCH_CHANGED && !watch.wake.ArmNext())
        return TellSystem(problems, YAML_ERR_OPEN, "", "the timer of the watch cannot be set");
    return code == YAML_WATCH_CHANGED ? YAML_OK : code;
}

// The timer is set before events are taken and again at the end, so that whatever is refused in between, the
// descriptor becomes readable again.
uint32_t Poll(YamlWatch &watch, YamlProblems **problems) noexcept
{
    const uint64_t settle = watch.settings.watch.uiSettle * Millisecond;
    const uint64_t now = Now();
    if (!watch.wake.Arm(now + settle))
        return TellSystem(problems, YAML_ERR_OPEN, "", "the timer of the watch cannot be set");
    watch.wake.Notice(watch.paths.Drain(), now, settle);
    const uint32_t code = watch.wake.IsTime(now) ? Look(watch, now, problems) : YAML_OK;
    (void)watch.wake.ArmNext();
    return code;
}

// Gives the list to the caller, or back.
void ProblemsHand(YamlProblems *found, YamlProblems **wanted) noexcept
{
    if (wanted != nullptr)
        *wanted = found;
    else
        ZRYAML_ProblemsFree(found);
}

} // namespace

YamlWatch *ZRYAML_WatchOpen(const YamlLayer *pstLayers, uint32_t uiCount, const YamlWatchOptions *pstOptions,
                            YamlProblems **ppstProblems)
{
    ErrorClear();
    YamlProblems *found = nullptr;
    YamlWatchOptions options = YAML_WATCH_OPTIONS_INIT;
    YamlWatch *watch = nullptr;
    if (!OptionsTake(pstOptions, options)) {
        (void)Tell(&found, YAML_ERR_PARAM, "", "the options of the watch are invalid");
    } else if (LayersCheck(pstLayers, uiCount, options.pstLayers, &found)) {
        watch = WatchMake();
        if (watch == nullptr)
            (void)Tell(&found, YAML_ERR_NOMEM, "", "out of memory");
        else if (Begin(*watch, pstLayers, uiCount, options, &found) != YAML_OK) {
            ZRYAML_WatchClose(watch);
            watch = nullptr;
        }
    }
    ProblemsHand(found, ppstProblems);
    return watch;
}

int ZRYAML_WatchFdGet(const YamlWatch *pstWatch)
{
    return pstWatch != nullptr ? pstWatch->wake.File() : -1;
}

uint32_t ZRYAML_WatchPoll(YamlWatch *pstWatch, YamlProblems **ppstProblems)
{
    ErrorClear();
    YamlProblems *found = nullptr;
    const uint32_t code =
        pstWatch != nullptr ? Poll(*pstWatch, &found) : YAML_FAIL(YAML_ERR_PARAM, "The parameter is null.");
    ProblemsHand(found, ppstProblems);
    return code;
}

uint32_t ZRYAML_WatchChangeNext(YamlWatch *pstWatch, YamlChange *pstChange)
{
    if (pstWatch == nullptr)
        return YAML_ERR_PARAM;
    YamlHandle *newest = pstWatch->holders.Newest();
    return ZRYAML_ChangeNext(pstWatch->previous != nullptr ? pstWatch->previous : newest, newest, pstChange);
}

void ZRYAML_WatchClose(YamlWatch *pstWatch)
{
    if (pstWatch == nullptr)
        return;
    pstWatch->paths.Close();
    pstWatch->wake.Close();
    WatchRelease(pstWatch->previous);
    WatchRelease(pstWatch->holders.Newest());
    pstWatch->taken.Release();
    pstWatch->tried.Release();
    pstWatch->settings.Release();
    ZR_MemFree(pstWatch, yaml_MemHandleGet());
}
