#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# A program that was not linked with the library can open it while it runs. A thread for which no memory is left learns
# so, and goes on when there is some again.
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cat >"$work/short.c" <<'PROGRAM'
#define _GNU_SOURCE
#include <dlfcn.h>
#include <pthread.h>
#include <stdio.h>
#include <string.h>
#include <zr_yaml.h>

static __thread int none_left __attribute__((tls_model("initial-exec")));

#define GIVE(name, type, parameters, arguments)                                                                       \
    type name parameters                                                                                              \
    {                                                                                                                 \
        static type(*real) parameters;                                                                                \
        if (real == NULL)                                                                                             \
            *(void **)&real = dlsym(RTLD_NEXT, #name);                                                                \
        return none_left ? NULL : real arguments;                                                                     \
    }
GIVE(malloc, void *, (size_t size), (size))
GIVE(realloc, void *, (void *block, size_t size), (block, size))

static YamlHandle *(*load)(const char *, size_t, const char *);
static const YamlErrorInfo *(*error)(void);

static void *loads(void *unused)
{
    none_left = 1;
    YamlHandle *document = load("a: 1", 4, "text");
    none_left = 0;
    const YamlErrorInfo *told = error();
    if (document != NULL || told->uiCode != YAML_ERR_NOMEM || told->pcMessage[0] == '\0')
        return "no memory was not told";
    return load("a: 1\na: 2", 9, "text") == NULL && error()->uiCode == YAML_ERR_SAME &&
                   strstr(error()->pcMessage, "'a'") != NULL ? unused : "the next failure was not told";
}

int main(int args, char **arg)
{
    void *library = dlopen(arg[args - 1], RTLD_NOW);
    *(void **)&load = dlsym(library, "ZRYAML_TextLoad");
    *(void **)&error = dlsym(library, "ZRYAML_LastErrorGet");
    (void)load("a: 1", 4, "text"); // makes the pool
    pthread_t thread;
    void *fault = NULL;
    if (pthread_create(&thread, NULL, loads, NULL) != 0 || pthread_join(thread, &fault) != 0)
        fault = "no thread";
    if (fault != NULL)
        fprintf(stderr, "%s\n", (char *)fault);
    return fault != NULL;
}
PROGRAM
"$CC" "$work/short.c" -o "$work/short" -I "$ZRYAML_SOURCE/yaml/include" -ldl -pthread
"$work/short" "$ZRYAML_LIBRARY" 2>"$work/told" || { cat "$work/told"; exit 1; }
