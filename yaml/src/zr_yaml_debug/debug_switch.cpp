// SPDX-License-Identifier: Apache-2.0
// The process-wide debug switch, and the module that this folder logs for.
#include "debug_internal.h"

using namespace zryaml;
using namespace zryaml::debug;

ZR_LogModule zryaml::debug::YamlLogModule = {"YAML", 0x1900U};

uint32_t g_bYamlDebugSwitch = 0;

void ZRYAML_DebugSwitchSet(uint32_t bSwitch)
{
    __atomic_store_n(&g_bYamlDebugSwitch, bSwitch, __ATOMIC_RELAXED);
}

uint32_t yaml_IsDebugSwitchOpen(void)
{
    return DebugSwitch();
}
