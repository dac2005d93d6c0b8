#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Looks at the built libraries: what libzryaml.so exports, needs and leaves open, and how both are protected.
set -euo pipefail

library=$ZRYAML_LIBRARY
include=$ZRYAML_SOURCE/yaml/include
failures=0

fail() {
    echo "FAIL: $1"
    failures=$((failures + 1))
}

# Names of the dynamic symbols that nm lists with the given option, without their version.
symbols() { nm -D "$1" "$2" | awk '$(NF - 1) != "A" {print $NF}' | sed 's/@.*//' | sort -u; }

# Each declaration with ZRYAML_API names the symbol last before its argument list or its end.
declared() { grep -oE '^(extern )?ZRYAML_API [^(;]*' -rh --include=*.h "$1" | grep -oE '[A-Za-z0-9_]+$' | sort -u; }
exports_check() {
    local difference
    difference=$(diff <(declared "$1") <(symbols --defined-only "$2")) ||
        fail "the headers in $1 (<) and the exported names of $2 (>) differ: $difference"
}
exports_check "$include" "$library"
exported=$(symbols --defined-only "$library")
open=$(symbols --undefined-only "$library")
dynamic=$(readelf -dW "$library")

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

# The compiler's command for each source file of a library, from a folder of the repository.
commands() { grep -F '"command": ' "$ZRYAML_BUILD/compile_commands.json" | grep -F -- "/$1/src/"; }

# Guards on the stack always; checked calls wherever the compiler optimises, as they need that.
protection_check() {
    local folder=$1 file=$2 name=${2##*/} open optimised unguarded
    open=$(symbols --undefined-only "$file")
    grep -qE 'FLAGS.*NOW' <<<"$(readelf -dW "$file")" || fail "$name: not bound at start"
    grep -q GNU_RELRO <<<"$(readelf -lW "$file")" || fail "$name: no read-only relocations"
    ! grep -E 'GNU_STACK.*E' <<<"$(readelf -lW "$file")" || fail "$name: executable stack"
    grep -qx __stack_chk_fail <<<"$open" || fail "$name: no guards on the stack"
    [ -n "$(commands "$folder")" ] || fail "$name: how it was compiled is not known"
    unguarded=$(commands "$folder" | grep -v -- ' -fstack-protector-strong ' | sed 's/.* -c //' || true)
    [ -z "$unguarded" ] || fail "$name: compiled without guards on the stack: $unguarded"
    optimised=$(commands "$folder" | grep -E -- ' -O([1-3s]|fast)? ' || true)
    [ -n "$optimised" ] || return 0
    grep -qx '__vsnprintf_chk' <<<"$open" || fail "$name: formatted writes are not checked"
    unguarded=$(grep -vE -- ' -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 ' <<<"$optimised" | sed 's/.* -c //' || true)
    [ -z "$unguarded" ] || fail "$name: compiled without checked calls: $unguarded"
}
protection_check yaml "$library"
protection_check base "$ZRYAML_BUILD/base/libzrbase.so"
for file in "$library" "$ZRYAML_BUILD/base/libzrbase.so"; do # so that dlclose loses no pool
    readelf -dW "$file" | grep -q NODELETE || fail "$file can be unloaded"
done

schema=$ZRYAML_BUILD/schema/libzryaml_schema.so
if [ -e "$schema" ]; then
    exports_check "$ZRYAML_SOURCE/schema/include" "$schema"
    protection_check schema "$schema"
    grep -q 'SONAME.*\[libzryaml_schema\.so\.1\]' <<<"$(readelf -dW "$schema")" || fail "$schema has another soname"
    beyond=$(symbols --undefined-only "$schema" | grep -E '^(yaml_|g_|ZR_)' || true)
    [ -z "$beyond" ] || fail "$schema needs more than the interface of libzryaml.so: $beyond"
fi

[ "$failures" -eq 0 ] && echo "$(wc -l <<<"$exported") exported names"
