/* SPDX-License-Identifier: Apache-2.0 */
/* Loads a deployment file and shows what a program would read from it. */
#include <stdio.h>
#include <zr_yaml.h>

static void ServiceShow(YamlHandle *pstHandle, uint32_t uiService)
{
    printf("%-8s image %s, port %s, cpu %s\n", ZRYAML_PropertyGet(pstHandle, "services[%u].name", uiService),
           ZRYAML_PropertyGet(pstHandle, "services[%u].image", uiService),
           ZRYAML_PropertyGet(pstHandle, "services[%u].port", uiService),
           ZRYAML_PropertyGet(pstHandle, "services[%u].limits.cpu", uiService));

    YamlIterator *pstIter = yaml_IteratorCreate(pstHandle, "services[%u].env", uiService);
    YamlKeyValue stPair;
    while (yaml_NextKeyValueGet(pstIter, &stPair) == YAML_OK)
        printf("         %s=%s\n", stPair.pcKey, stPair.pcValue);
    yaml_IteratorDestroy(pstIter);
}

int main(int iArgs, char **ppcArgs)
{
    if (iArgs != 2) {
        fprintf(stderr, "usage: %s FILE\n", ppcArgs[0]);
        return 2;
    }
    YamlHandle *pstHandle = ZRYAML_FileLoad(ppcArgs[1]);
    if (pstHandle == NULL) {
        const YamlErrorInfo *pstError = ZRYAML_LastErrorGet();
        if (pstError->uiLine > 0)
            fprintf(stderr, "%s:%u:%u: %s\n", pstError->pcFile, pstError->uiLine, pstError->uiColumn,
                    pstError->pcMessage);
        else
            fprintf(stderr, "%s: %s\n", pstError->pcFile, pstError->pcMessage);
        return 1;
    }

    const uint32_t uiServices = ZRYAML_ArraySizeGet(pstHandle, "services");
    printf("version %s, %u services\n\n", ZRYAML_PropertyGet(pstHandle, "version"), uiServices);
    for (uint32_t ui = 0; ui < uiServices; ++ui)
        ServiceShow(pstHandle, ui);
    printf("\nfirst route of the gateway: %s to %s\n", ZRYAML_PropertyGet(pstHandle, "services[0].routes[0].prefix"),
           ZRYAML_PropertyGet(pstHandle, "services[0].routes[0].to[1]"));
    printf("a key with dots: rack %s\n", ZRYAML_PropertyGet(pstHandle, "hosts.%s\\.%s.rack", "eu-1", "example"));
    printf("a list in a list: %s\n", ZRYAML_PropertyGet(pstHandle, "matrix[1][1]"));

    ZRYAML_HandleFree(pstHandle);
    return 0;
}
