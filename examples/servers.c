/* SPDX-License-Identifier: Apache-2.0 */
#include <stdio.h>
#include <zr_yaml.h>

int main(void)
{
    YamlHandle *conf = ZRYAML_FileLoad("examples/servers.yaml");
    if (conf == NULL) {
        const YamlErrorInfo *error = ZRYAML_LastErrorGet();
        if (error->uiLine > 0)
            fprintf(stderr, "%s:%u:%u: %s\n", error->pcFile, error->uiLine, error->uiColumn, error->pcMessage);
        else
            fprintf(stderr, "%s: %s\n", error->pcFile, error->pcMessage);
        return 1;
    }
    uint32_t servers = ZRYAML_ArraySizeGet(conf, "servers");
    for (uint32_t i = 0; i < servers; ++i) {
        const char *name = ZRYAML_PropertyGet(conf, "servers[%u].name", i); // NULL where nothing is there
        const char *port = ZRYAML_PropertyGet(conf, "servers[%u].port", i);
        printf("%s:%s uses cores", name != NULL ? name : "?", port != NULL ? port : "80");
        uint32_t cores = ZRYAML_ArraySizeGet(conf, "servers[%u].cores", i);
        for (uint32_t k = 0; k < cores; ++k)
            printf(" %s", ZRYAML_PropertyGet(conf, "servers[%u].cores[%u]", i, k));
        printf("\n");
    }
    ZRYAML_HandleFree(conf);
    return 0;
}
