#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The first screen of the README, and that of docs/binding.md, show files, programs and their output: each is what lies in
# examples/ and what that program really prints.
set -euo pipefail
cd "$ZRYAML_SOURCE"

# The first code block of the README, or of another page, in the language named, without its fences.
block() {
    awk -v fence="\`\`\`$1" '$0 == fence && !done { inside = 1; next } /^```/ && inside { inside = 0; done = 1 } inside' \
        "${2:-README.md}"
}
same() {
    diff "$1" "$2" || { echo "FAIL: README.md differs from $3"; exit 1; }
}

same <(block yaml) examples/servers.yaml examples/servers.yaml
same <(block c) <(grep -v SPDX examples/servers.c) examples/servers.c
same <(block console | grep -v '^\$') <("$ZRYAML_BUILD/examples/servers") "what examples/servers prints"
same <(block cpp) <(grep -v SPDX examples/servers_cxx.cpp) examples/servers_cxx.cpp
diff <("$ZRYAML_BUILD/examples/servers_cxx") <(printf 'alpha listens on 8080\nbeta listens on 9090\n')
[ ! -x "$ZRYAML_BUILD/examples/schema_check" ] || "$ZRYAML_BUILD/examples/schema_check" | grep -qx 'the document fits' || {
    echo "FAIL: examples/schema_check"
    exit 1
}
"$ZRYAML_BUILD/examples/demo" examples/demo.yaml | grep -qx 'a list in a list: 1' || { echo "FAIL: examples/demo"; exit 1; }

# What stands below each command of the shell block is what it prints.
if [ -x "$ZRYAML_BUILD/cli/zryaml" ]; then
    PATH=$ZRYAML_BUILD/cli:$PATH
    shell=$(awk '/^\$ zryaml /{ inside = 1 } /^```/{ inside = 0 } inside' README.md)
    same <(echo "$shell") <(grep '^\$ ' <<<"$shell" | while read -r call; do
        echo "$call"
        eval "${call#* }" 2>&1 || true
    done) "what these commands print"
fi

same <(block c docs/binding.md) <(grep -v SPDX examples/bound.c) examples/bound.c
same <(block cpp docs/binding.md) <(grep -v SPDX examples/bound_cxx.cpp) examples/bound_cxx.cpp
same <(block yaml docs/binding.md) examples/bound.yaml examples/bound.yaml
for program in bound bound_cxx; do
    same <(echo 'checkout listens on 8443 and tries 3 times more') <("$ZRYAML_BUILD/examples/$program") "what $program prints"
done
same <(block text docs/binding.md) <("$ZRYAML_BUILD/examples/bound" examples/bound_wrong.yaml || true) "what bound prints"
same <(block text docs/binding.md | sed 's/from 1 to/from 0 to/') \
    <("$ZRYAML_BUILD/examples/bound_cxx" examples/bound_wrong.yaml || true) "what bound_cxx prints"
