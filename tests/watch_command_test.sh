#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs zryaml watch: what it prints of good and bad versions, the program behind --, and how it ends. Needs
# ZRYAML_COMMAND.
set -u

work=$(mktemp -d)
cd "$work" || exit 1
pid=
trap 'kill "$pid" 2>/dev/null; rm -rf "$work"' EXIT
failures=0
rows=0

fail() {
    echo "FAIL: $1"
    cat out err
    failures=$((failures + 1))
}
# Writes a version until all texts that follow are in what the command has printed, the times taken out.
said() { # said VERSION TEXT...
    local version=$1 round text missing
    shift
    rows=$((rows + 1))
    printf '%b' "$version" >.new && mv .new app.yaml
    for ((round = 0; round < 400; round++)); do
        missing=
        for text in "$@"; do
            sed 's/^20[0-9T:+-]* //' out | cat - err | grep -qF -- "$text" || missing=$text
        done
        [ -n "$missing" ] || return
        sleep 0.05
    done
    fail "no '$missing' after '$version'"
}

echo '{port: 80, key: k}' >app.yaml
echo 'name: over' >over.yaml
"$ZRYAML_COMMAND" watch app.yaml --over over.yaml --set top=1 --redact key -- \
    sh -c 'echo "ran $0"; [ ! -e fail ] || exit 3; [ ! -e wait ] || exec sleep 100' it >out 2>err &
pid=$!
for ((round = 0; round < 400; round++)); do # until it waits
    [ "$(cut -d' ' -f3 "/proc/$pid/stat")" = S ] && ls -l "/proc/$pid/fd" | grep -q signalfd && break
    sleep 0.05
done
said '{port: 81, key: k}' '~ port: 80 -> 81' 'ran it'
said '{port: 81, key: s, "a\\tb": []}' '~ key: *** -> ***' '+ a\tb: []'
said '{port: [81}' 'app.yaml:1:11: error: '
touch fail
said '{key: s, "a\\tb": [], port: 82}' '~ port: 81 -> 82' 'zryaml: error: the program ended with status 3'
grep -qE '^20[0-9-]{8}T[0-9:]{8}[+-][0-9]{4} ~ port: 80 -> 81$' out || fail "no time before a change"
rm fail
touch wait
said '{port: 83}' '~ port: 82 -> 83' '- key: ***'
kill -TERM "$pid" # the program that runs is ended too
wait "$pid" || fail "status $? after SIGTERM"
for call in 'watch -' 'watch app.yaml --over -' 'watch missing.yaml' 'watch app.yaml other' 'watch'; do
    rows=$((rows + 1))
    # shellcheck disable=SC2086
    "$ZRYAML_COMMAND" $call </dev/null >out 2>err
    [ $? -eq 2 ] && [ -s err ] || fail "$call"
done
echo "watch: $rows rows, $failures failed"
[ "$failures" -eq 0 ]
