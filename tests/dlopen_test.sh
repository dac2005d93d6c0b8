#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# A program that was not linked with the library can open it while it runs, and load a file with it; doing so again and
# again, with the library closed each time, costs no more memory than once.
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cat >"$work/plugin.c" <<'PROGRAM'
#include <dlfcn.h>
#include <malloc.h>
#include <stdio.h>
#include <string.h>

static char text[100000]; /* a sequence of ones that takes some megabytes once loaded */

static void cycle(const char *path)
{
    void *library = dlopen(path, RTLD_NOW);
    if (library == NULL)
        fprintf(stderr, "%s\n", dlerror());
    void *(*load)(const char *, unsigned long, const char *);
    void (*release)(void *);
    *(void **)&load = dlsym(library, "ZRYAML_TextLoad");
    *(void **)&release = dlsym(library, "ZRYAML_HandleFree");
    release(load(text, sizeof text, "text"));
    dlclose(library);
}

int main(int args, char **arg)
{
    memset(text, '1', sizeof text);
    for (size_t i = 2; i < sizeof text; i += 2)
        text[i] = ',';
    text[0] = '[';
    text[sizeof text - 1] = ']';
    size_t first = 0, last = 0;
    for (int i = 0; i < 10; ++i) {
        cycle(arg[args - 1]);
        last = mallinfo2().uordblks;
        first = i == 0 ? last : first;
    }
    if (last - first > 100000)
        fprintf(stderr, "bytes in use after one cycle: %zu, after ten: %zu\n", first, last);
    return last - first > 100000;
}
PROGRAM
"$CC" "$work/plugin.c" -o "$work/plugin" -ldl
"$work/plugin" "$ZRYAML_LIBRARY"
