#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs into a new prefix, moves the prefix, and builds and runs programs that see the moved copy only. Folders outside
# the prefix are what pkg-config tells.
set -euo pipefail

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
# Only whole paths count: a short one such as /src is also the end of others.
strays=$(grep -rlIE "(^|[^[:alnum:]_./-])($work/first|$ZRYAML_BUILD|$ZRYAML_SOURCE)(/|[^[:alnum:]_.-]|$)" "$prefix" || true)
[ -z "$strays" ] || fail "installed files with fixed paths: $strays"
libraries=$(dirname "$(find "$prefix" -name libzryaml.so)")
for file in "$libraries/libzryaml.so.1" "$libraries/libzrbase.so.1" "$libraries/libzryaml_schema.so.1"; do
    [ -e "$file" ] || fail "$file is not installed"
    # shellcheck disable=SC2016 # the linker's own $ORIGIN
    readelf -dW "$file" | grep -q 'R.*PATH.*\[\$ORIGIN\]' || fail "$file does not look for its neighbours"
done

bash "$ZRYAML_SOURCE/tests/install/consumer_run.sh" "$prefix"
if [ -n "${ZRYAML_COMMAND:-}" ]; then
    env -u LD_LIBRARY_PATH "$prefix/bin/zryaml" --version >/dev/null || fail "the installed command does not start"
fi

folders=(/elsewhere/lib /else/include)
cmake -S "$ZRYAML_SOURCE" -B "$work/build" -DCMAKE_INSTALL_PREFIX=/first -DZRYAML_TESTS=OFF -DZRYAML_CLI=OFF \
    -DCMAKE_INSTALL_LIBDIR="${folders[0]}" -DCMAKE_INSTALL_INCLUDEDIR="${folders[1]}" >/dev/null
for variable in prefix:/first libdir:"${folders[0]}" includedir:"${folders[1]}"; do
    told=$(pkg-config --variable="${variable%:*}" "$work/build/zryaml.pc")
    [ "$told" = "${variable#*:}" ] || fail "zryaml.pc has ${variable%:*}=$told"
done
