#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs into a new prefix, moves the prefix, and builds and runs programs that see the moved copy only.
set -euo pipefail
unset LD_LIBRARY_PATH PKG_CONFIG_PATH CMAKE_PREFIX_PATH CFLAGS CXXFLAGS LDFLAGS

here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAIL: $1"
    exit 1
}

cmake --install "$ZRYAML_BUILD" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/moved"
prefix=$work/moved

# Nothing may lead back to where the copy was built or first installed; debug records of the compiler do not count.
strays=$(grep -rlIF -e "$work/first" -e "$ZRYAML_BUILD" -e "$ZRYAML_SOURCE" "$prefix" || true)
[ -z "$strays" ] || fail "installed files with fixed paths: $strays"
pc=$(find "$prefix" -name zryaml.pc)
libraries=$(dirname "$(dirname "$pc")")
for file in "$libraries/libzryaml.so.1" "$libraries/libzrbase.so.1"; do
    [ -e "$file" ] || fail "$file is not installed"
    # shellcheck disable=SC2016 # the linker's own $ORIGIN
    readelf -dW "$file" | grep -q 'R.*PATH.*\[\$ORIGIN\]' || fail "$file does not look for its neighbours"
done

# With this as the only place to look, a need for another package's development files would show.
export PKG_CONFIG_LIBDIR=$libraries/pkgconfig
read -ra flags <<<"$(pkg-config --cflags --libs zryaml)"
read -ra includes <<<"$(pkg-config --cflags zryaml)"

strict=(-Wall -Wextra -pedantic -Werror -fsyntax-only)
for header in zr_yaml.h zr_base.h zr_safe.h; do
    "$CC" -x c -std=c11 "${strict[@]}" "${includes[@]}" - <<<"#include <$header>"
    "$CXX" -x c++ -std=c++11 "${strict[@]}" "${includes[@]}" - <<<"#include <$header>"
done
if [ -e "$ZRYAML_SOURCE/yaml/include/zr_yaml.hpp" ]; then
    "$CXX" -x c++ -std=c++20 "${strict[@]}" "${includes[@]}" - <<<"#include <zr_yaml.hpp>"
fi

"$CC" -std=c11 -pedantic -Wall -Wextra -Werror "$here/consumer.c" -o "$work/by_pkg_config" "${flags[@]}" \
    "-Wl,-rpath,$libraries"
cmake -S "$here" -B "$work/build" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_C_COMPILER="$CC" >/dev/null
cmake --build "$work/build" >/dev/null
grep -qF "zryaml_DIR:PATH=$prefix" "$work/build/CMakeCache.txt" || fail "find_package found another copy"

printf 'servers:\n  - {host: a, port: 80}\n  - {host: b, port: 8080}\n' >"$work/servers.yaml"
for program in "$work/by_pkg_config" "$work/build/consumer"; do
    output=$("$program" "$work/servers.yaml")
    [ "$output" = 'port 8080 of 2 servers' ] || fail "$program printed: $output"
done
if [ -n "${ZRYAML_COMMAND:-}" ]; then
    "$prefix/bin/zryaml" --version >/dev/null || fail "the installed command does not start"
fi
echo "built and run against $prefix"
