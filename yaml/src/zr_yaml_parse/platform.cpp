// SPDX-License-Identifier: Apache-2.0
// The library's memory pool, made by the first load, and the module that this folder logs for.
#include "parse_internal.h"

#include <pthread.h>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

pthread_mutex_t g_initLock = PTHREAD_MUTEX_INITIALIZER;

struct InitGuard {
    InitGuard() noexcept { (void)pthread_mutex_lock(&g_initLock); }
    ~InitGuard() { (void)pthread_mutex_unlock(&g_initLock); }
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

    const InitGuard guard;
    if (g_pstYamlMemHandle != nullptr)
        return YAML_OK;
    const uint32_t result = ZR_BaseInit();
    if (result != 0)
        return YAML_FAIL(result, "Failed to initialize base module.");
    void *made = ZR_HandleInit("zr.yaml.memhdl");
    if (made == nullptr)
        return YAML_FAIL(YAML_ERR_POOL, "Failed to initialize memory pool.");
    __atomic_store_n(&g_pstYamlMemHandle, made, __ATOMIC_RELEASE);
    return YAML_OK;
}

void *yaml_MemHandleGet(void)
{
    return __atomic_load_n(&g_pstYamlMemHandle, __ATOMIC_ACQUIRE);
}
