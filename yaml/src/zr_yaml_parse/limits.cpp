// SPDX-License-Identifier: Apache-2.0
// The process-wide limits: what a host may set, and their defaults. A load takes them over when it begins.
#include "../record_size.h"
#include "parse_internal.h"

#include <pthread.h>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

pthread_mutex_t g_lock = PTHREAD_MUTEX_INITIALIZER;

YamlLimits g_limits = {
    .uiSize = sizeof(YamlLimits),
    .uiDepth = YAML_EVENT_STACK_SIZE,
    .uiDirectives = 1000,             // far more than anybody writes, and parsed in less than a second
    .ulFileBytes = uint64_t{1} << 30, // a tree takes up to 20 times as much, and more for very short texts
    .ulCopyBytes = uint64_t{256} << 20,
};

} // namespace

uint32_t ZRYAML_LimitsSet(const YamlLimits *pstLimits)
{
    ErrorClear();
    if (pstLimits == nullptr || !RecordFits(*pstLimits) || pstLimits->uiDepth == 0 ||
        pstLimits->uiDepth > YAML_EVENT_STACK_SIZE)
        return YAML_FAIL(YAML_ERR_PARAM, "The limits are invalid.");
    (void)pthread_mutex_lock(&g_lock);
    g_limits = *pstLimits;
    g_limits.uiSize = sizeof(YamlLimits);
    (void)pthread_mutex_unlock(&g_lock);
    return YAML_OK;
}

void ZRYAML_LimitsGet(YamlLimits *pstLimits)
{
    if (pstLimits == nullptr || !RecordFits(*pstLimits))
        return;
    (void)pthread_mutex_lock(&g_lock);
    *pstLimits = g_limits;
    (void)pthread_mutex_unlock(&g_lock);
}
