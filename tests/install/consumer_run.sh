#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds and runs the README's programs against one installed copy only, in C and C++, through pkg-config and through CMake.
# Usage: consumer_run.sh PREFIX
set -euo pipefail
unset LD_LIBRARY_PATH PKG_CONFIG_PATH CMAKE_PREFIX_PATH CFLAGS CXXFLAGS LDFLAGS

source=$(cd "$(dirname "$0")/../.." && pwd)
prefix=$1
CC=${CC:-cc}
CXX=${CXX:-c++}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAIL: $1"
    exit 1
}

# Those of libyaml and PCRE2 are the only other .pc files in reach, so that a need for any more would show.
pc=$(find "$prefix" -name zryaml.pc)
libraries=$(dirname "$(dirname "$pc")")
mkdir "$work/pc"
for other in yaml-0.1 libpcre2-8; do
    ln -s "$(pkg-config --variable=pcfiledir "$other")/$other.pc" "$work/pc"
done
export PKG_CONFIG_LIBDIR=${pc%/*}:$work/pc
read -ra includes <<<"$(pkg-config --cflags zryaml)"
read -ra links <<<"$(pkg-config --libs zryaml)"
[[ " ${links[*]} " != *' -lyaml '* ]] || fail "programs are linked with libyaml: ${links[*]}"
read -ra schema_links <<<"$(pkg-config --libs zryaml_schema)"
[[ " ${links[*]} ${schema_links[*]} " != *' -lpcre2'* ]] || fail "programs are linked with PCRE2: ${schema_links[*]}"
[[ "$(pkg-config --static --libs zryaml) " == *' -lyaml '* ]] || fail "zryaml.pc does not name libyaml"

strict=(-Wall -Wextra -pedantic -Werror)
for header in zr_yaml.h zr_yaml_schema.h zr_base.h zr_safe.h; do
    "$CC" -x c -std=c11 "${strict[@]}" -fsyntax-only "${includes[@]}" - <<<"#include <$header>"
    "$CXX" -x c++ -std=c++11 "${strict[@]}" -fsyntax-only "${includes[@]}" - <<<"#include <$header>"
done

[ "$prefix" = /usr ] || links+=("-Wl,-rpath,$libraries") schema_links+=("-Wl,-rpath,$libraries")
"$CC" -std=c11 "${strict[@]}" "${includes[@]}" "$source/examples/servers.c" -o "$work/by_pkg_config" "${links[@]}"
"$CC" -std=c11 "${strict[@]}" "${includes[@]}" "$source/examples/schema_check.c" -o "$work/schema_by_pkg_config" "${schema_links[@]}"
cmake -S "$source/tests/install" -B "$work/build" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_C_COMPILER="$CC" -DCMAKE_CXX_COMPILER="$CXX" \
    >/dev/null
cmake --build "$work/build" --parallel >/dev/null
grep -qF "zryaml_DIR:PATH=$libraries" "$work/build/CMakeCache.txt" || fail "find_package found another copy"

cd "$source" # where the programs find their file
for program in by_pkg_config build/consumer_c11 build/consumer_cxx11 build/consumer_cxx20; do
    output=$("$work/$program") || fail "$program ends with status $?"
    expected=$'alpha:8080 uses cores 0 1\nbeta:9090 uses cores 2'
    [[ $program != *cxx* ]] || expected=$'alpha listens on 8080\nbeta listens on 9090'
    [ "$output" = "$expected" ] || fail "$program printed: $output"
    [ "$(ldd "$work/$program" | awk '/libzryaml/ {print $3}' | xargs realpath)" = "$(realpath "$libraries/libzryaml.so.1")" ] ||
        fail "$program runs with another copy"
done
for program in schema_by_pkg_config build/consumer_schema; do
    [ "$("$work/$program")" = 'the document fits' ] || fail "$program does not check"
done
for standard in 11:17 20:20; do # asked for, and given
    grep -qe "-std=c++${standard#*:} .*consumer_cxx${standard%:*}.dir" "$work/build/compile_commands.json" ||
        fail "C++${standard#*:} is not given to a program that asks for C++${standard%:*}"
done
echo "built and run against $prefix"
