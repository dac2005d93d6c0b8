// SPDX-License-Identifier: Apache-2.0
// Load and query statistics of a document. Any non-zero debug switch turns timing on.
#include "debug_internal.h"

#include <time.h>

using namespace zryaml;
using namespace zryaml::debug;

namespace {

constexpr uint32_t MsPerSecond = 1000;
constexpr int64_t NsPerSecond = 1'000'000'000;
constexpr int64_t NsPerMs = 1'000'000;

} // namespace

void yaml_StartPoint(struct timespec *pstStart)
{
    if (DebugSwitch() != 0)
        (void)clock_gettime(CLOCK_MONOTONIC, pstStart);
}

uint32_t yaml_ElapseTimeGet(const struct timespec *pstStart, uint32_t *puiElapse)
{
    if (DebugSwitch() == 0)
        return YAML_ERR_SWITCH_OFF;
    struct timespec now = {};
    (void)clock_gettime(CLOCK_MONOTONIC, &now);

    int64_t seconds = now.tv_sec - pstStart->tv_sec;
    int64_t ns = now.tv_nsec - pstStart->tv_nsec;
    if (ns < 0) { // borrow
        ns += NsPerSecond;
        --seconds;
    }
    if (seconds < 0)
        return YAML_ERR_PARAM;
    *puiElapse = static_cast<uint32_t>(seconds) * MsPerSecond + static_cast<uint32_t>(ns / NsPerMs);
    return YAML_OK;
}

void yaml_ParseElapseTimeGet(YamlHandle *pstHandle, const struct timespec *pstStart)
{
    uint32_t elapse = 0;
    if (yaml_ElapseTimeGet(pstStart, &elapse) == YAML_OK)
        pstHandle->uiParseTime = elapse;
}

void yaml_QueryDbgInfoRecord(YamlHandle *pstHandle, const struct timespec *pstStart)
{
    uint32_t elapse = 0;
    if (yaml_ElapseTimeGet(pstStart, &elapse) != YAML_OK)
        return;
    __atomic_fetch_add(&pstHandle->uiQueryCount, 1U, __ATOMIC_RELAXED);
    __atomic_fetch_add(&pstHandle->ulQueryTimeTotal, uint64_t{elapse} + 1, __ATOMIC_RELAXED);
}

uint32_t ZRYAML_DebugInfoGet(YamlHandle *pstHandle, YamlDebugInfo *pstDebugInfo)
{
    ErrorClear();
    if (pstHandle == nullptr || pstDebugInfo == nullptr)
        return YAML_FAIL(YAML_ERR_PARAM, "The parameter is invalid to get debug information.");
    if (DebugSwitch() == 0)
        return YAML_FAIL(YAML_ERR_SWITCH_OFF, "The debug switch has not been open.");

    YAML_SECURE(memset_s(pstDebugInfo, sizeof(*pstDebugInfo), 0, sizeof(*pstDebugInfo)));
    const uint32_t uiCount = __atomic_load_n(&pstHandle->uiQueryCount, __ATOMIC_RELAXED);
    const uint64_t total = __atomic_load_n(&pstHandle->ulQueryTimeTotal, __ATOMIC_RELAXED);
    *pstDebugInfo = {pstHandle->uiParseTime, pstHandle->uiMemSize, uiCount, 0};
    if (uiCount != 0)
        pstDebugInfo->uiQueryTimeAvg = static_cast<uint32_t>(total / uiCount);
    return YAML_OK;
}
