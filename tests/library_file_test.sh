#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Looks at the built libzryaml.so: what it exports, needs and leaves open, and how it is protected.
set -euo pipefail

library=$ZRYAML_LIBRARY
header=$ZRYAML_SOURCE/yaml/include/zr_yaml.h
failures=0

fail() {
    echo "FAIL: $1"
    failures=$((failures + 1))
}

# Names of the dynamic symbols that nm lists with the given option, without their version.
symbols() { nm -D "$1" "$library" | awk '$(NF - 1) != "A" {print $NF}' | sed 's/@.*//' | sort -u; }

# Each declaration with ZRYAML_API names the symbol last before its argument list or its end.
declared=$(grep -oE '^(extern )?ZRYAML_API [^(;]*' "$header" | grep -oE '[A-Za-z0-9_]+$' | sort -u)
exported=$(symbols --defined-only)
open=$(symbols --undefined-only)
dynamic=$(readelf -dW "$library")
segments=$(readelf -lW "$library")

difference=$(diff <(echo "$declared") <(echo "$exported")) ||
    fail "zr_yaml.h (<) and the exported names (>) differ: $difference"
for name in ZRYAML_FileLoad yaml_IteratorCreate g_pstYamlMemHandle g_bYamlDebugSwitch g_pcYAMLOuterVer; do
    grep -qx "$name" <<<"$exported" || fail "$name is not exported"
done
for name in ZR_BaseInit ZR_HandleInit ZR_MemAlloc ZR_MemFree ZR_LogWrite memset_s strncpy_s; do
    grep -qx "$name" <<<"$open" || fail "$name cannot be replaced by the host program"
done
unversioned=$(nm -D --defined-only "$library" | awk '$(NF - 1) != "A" {print $NF}' | grep -v '@@ZRYAML_1$' || true)
[ -z "$unversioned" ] || fail "exported outside the version node: $unversioned"
grep -q 'SONAME.*\[libzryaml\.so\.1\]' <<<"$dynamic" || fail "the soname is not libzryaml.so.1"
grep -q 'NEEDED.*\[libzrbase\.so\.1\]' <<<"$dynamic" || fail "libzrbase.so.1 is not needed"
! grep -E 'NEEDED.*(libstdc\+\+|libc\+\+)' <<<"$dynamic" || fail "a C++ run-time library is needed"
grep -qE 'FLAGS.*NOW' <<<"$dynamic" || fail "not bound at start"
grep -q GNU_RELRO <<<"$segments" || fail "no read-only relocations"
! grep -E 'GNU_STACK.*E' <<<"$segments" || fail "executable stack"

[ "$failures" -eq 0 ] && echo "$(wc -l <<<"$exported") exported names"
