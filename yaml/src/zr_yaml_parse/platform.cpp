// SPDX-License-Identifier: Apache-2.0
// The library's memory pool, made by the first load, and the module that this folder logs for.
#include "parse_internal.h"

#include <pthread.h>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

pthread_mutex_t g_stInitLock = PTHREAD_MUTEX_INITIALIZER;

struct InitGuard {
    InitGuard() noexcept { (void)pthread_mutex_lock(&g_stInitLock); }
    ~InitGuard() { (void)pthread_mutex_unlock(&g_stInitLock); }
    InitGuard(const InitGuard &) = delete;
    InitGuard &operator=(const InitGuard &) = delete;
};

} // namespace

ZR_LogModule zryaml::parse::YamlLogModule = {"YAML", 0x1900U};

void *g_pstYamlMemHandle = nullptr;

uint32_t yaml_MemInit(void)
{
    if (__atomic_load_n(&g_pstYamlMemHandle, __ATOMIC_ACQUIRE) != nullptr)
        return YAML_OK;

    const InitGuard stGuard;
    if (g_pstYamlMemHandle != nullptr)
        return YAML_OK;
    const uint32_t uiResult = ZR_BaseInit();
    if (uiResult != 0)
        return YAML_FAIL(uiResult, "Failed to initialize base module.");
    void *pPool = ZR_HandleInit("zr.yaml.memhdl");
    if (pPool == nullptr)
        return YAML_FAIL(YAML_ERR_POOL, "Failed to initialize memory pool.");
    __atomic_store_n(&g_pstYamlMemHandle, pPool, __ATOMIC_RELEASE);
    return YAML_OK;
}

void *yaml_MemHandleGet(void)
{
    return __atomic_load_n(&g_pstYamlMemHandle, __ATOMIC_ACQUIRE);
}
