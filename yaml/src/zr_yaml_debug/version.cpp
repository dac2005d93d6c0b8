// SPDX-License-Identifier: Apache-2.0
// Version strings for other programs and for inspection of the installed file.
#include <zr_yaml.h>

const char *const g_pcYAMLMiniVer = "1.21.0";
const char *const g_pcYAMLInterSubVer = "B035";
const char *const g_pcYAMLOuterVer = ZRYAML_OUTER_VERSION;

uint32_t ZRYAML_VersionGet(void)
{
    return ZRYAML_VERSION;
}
