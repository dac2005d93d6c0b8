#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The first screen of the README shows a file, a program and its output: each is what lies in examples/ and what that
# program really prints.
set -euo pipefail
cd "$ZRYAML_SOURCE"

# The first code block of the README in the language named, without its fences.
block() {
    awk -v fence="\`\`\`$1" '$0 == fence && !done { inside = 1; next } /^```/ && inside { inside = 0; done = 1 } inside' \
        README.md
}
same() {
    diff "$1" "$2" || { echo "FAIL: README.md differs from $3"; exit 1; }
}

same <(block yaml) examples/servers.yaml examples/servers.yaml
same <(block c) <(grep -v SPDX examples/servers.c) examples/servers.c
same <(block console | grep -v '^\$') <("$ZRYAML_BUILD/examples/servers") "what examples/servers prints"
same <(block cpp) <(sed -n '/^    /p' examples/servers_cxx.cpp | sed 's/^    //') examples/servers_cxx.cpp
diff <("$ZRYAML_BUILD/examples/servers_cxx") <(printf 'alpha listens on 8080\nbeta listens on 9090\n')
"$ZRYAML_BUILD/examples/demo" examples/demo.yaml | grep -qx 'a list in a list: 1' || { echo "FAIL: examples/demo"; exit 1; }
