#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds a project that has the sources as a subdirectory: they work there, and bring no test, no install rule and no
# compiler or linker option into it.
set -euo pipefail
unset LD_LIBRARY_PATH PKG_CONFIG_PATH CMAKE_PREFIX_PATH CFLAGS CXXFLAGS LDFLAGS

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAIL: $1"
    exit 1
}

cmake -S "$ZRYAML_SOURCE/tests/install" -B "$work/build" -DZRYAML_SOURCE="$ZRYAML_SOURCE" \
    -DCMAKE_C_COMPILER="$CC" -DCMAKE_CXX_COMPILER="$CXX" >/dev/null
cmake --build "$work/build" --parallel --verbose >"$work/log" || fail "$(cat "$work/log")"

! grep -m 1 -e '-Werror' "$work/log" || fail "warnings are errors"
# The search path of the built library is what any program of a CMake build has.
own=$(grep -E 'consumer_c(11|xx)' "$work/log" | sed -E 's/-Wl,-rpath[^ ]+//g')
[ "$(grep -cE -- '-c [^ ]*/servers(_cxx)?\.c(pp)?( |$)' <<<"$own")" -eq 3 ] || fail "not three programs compiled: $own"
! grep -E -- ' -([WfDO]|std=c\+\+(11|14))' <<<"$own" || fail "options reach the programs"
ctest --test-dir "$work/build" -N | grep -qx 'Total Tests: 0' || fail "tests are registered"
cmake --install "$work/build" --prefix "$work/installed" >/dev/null
installed=$(find "$work" -path "$work/installed/*" ! -type d)
[ -z "$installed" ] || fail "files are installed: $installed"

cd "$ZRYAML_SOURCE" # where the programs find their file
for row in c11:'alpha:8080 uses' cxx11:'alpha listens' cxx20:'alpha listens'; do
    output=$("$work/build/consumer_${row%%:*}") || fail "consumer_${row%%:*} ends with status $?"
    [[ $output == "${row#*:}"* ]] || fail "consumer_${row%%:*} printed: $output"
done
