#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# A program that was not linked with the library can open it while it runs, and load a file with it.
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cat >"$work/plugin.c" <<'PROGRAM'
#include <dlfcn.h>
#include <stdio.h>
int main(int args, char **arg)
{
    void *library = args == 2 ? dlopen(arg[1], RTLD_NOW) : NULL;
    if (library == NULL)
        return fprintf(stderr, "%s\n", dlerror()), 1;
    void *(*load)(const char *, unsigned long, const char *);
    *(void **)&load = dlsym(library, "ZRYAML_TextLoad");
    return load != NULL && load("a: 1", 4, "text") != NULL ? 0 : 2;
}
PROGRAM
"$CC" "$work/plugin.c" -o "$work/plugin" -ldl
"$work/plugin" "$ZRYAML_LIBRARY"
