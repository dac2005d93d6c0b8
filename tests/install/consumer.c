/* SPDX-License-Identifier: Apache-2.0 */
/* A program that knows the installed copy only: prints a text and a size from the file it is given. */
#include <zr_yaml.h>

#include <stdio.h>

int main(int argc, char **argv)
{
    YamlHandle *pstHandle = argc == 2 ? ZRYAML_FileLoad(argv[1]) : NULL;
    const char *pcPort = NULL;

    if (pstHandle == NULL) {
        return 1;
    }
    pcPort = ZRYAML_PropertyGet(pstHandle, "servers[%u].port", 1U);
    (void)printf("port %s of %u servers\n", pcPort == NULL ? "?" : pcPort, ZRYAML_ArraySizeGet(pstHandle, "servers"));
    ZRYAML_HandleFree(pstHandle);
    return 0;
}
