#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs the example server, whose workers read all the time, and edits its file in all the ways there are. Needs
# ZRYAML_BUILD.
set -u

work=$(mktemp -d)
cd "$work" || exit 1
server=
trap 'kill "$server" 2>/dev/null; rm -rf "$work"' EXIT
failures=0

conf() { # conf LEVEL SERVERS
    printf 'log: {level: %s}\npause: 1ms\nservers: [%s]\n' "$1" "$2"
}
told=0
wait_for() { # wait_for LINE COMMAND...   runs a command and waits until the server says the line anew
    local line=$1 round
    shift
    told=$(wc -l <out)
    "$@"
    for ((round = 0; round < 200; round++)); do
        tail -n +$((told + 1)) out | grep -qF -- "$line" && return
        sleep 0.05
    done
    echo "FAIL: no '$line' after: $*"
    cat out
    failures=$((failures + 1))
}
start() {
    "$ZRYAML_BUILD/examples/watching_server" app.yaml 'servers[0].name=set' >out 2>&1 &
    server=$!
}
in_place() { conf debug '{name: a}' >way/one/app.yaml; }
slowly() {
    exec 3>way/one/app.yaml
    conf debug '{name: a}, ' | head -c -2 >&3
    sleep 0.1
    echo '{name: b}]' >&3
    exec 3>&-
}
by_rename() {
    conf debug '{name: a}, {name: b}, {name: c}' >way/one/.app
    mv way/one/.app way/one/app.yaml
}
badly() { echo 'servers: [{name: a, prot: 1}]' >way/one/app.yaml; }
by_link() {
    mkdir way/two
    conf info '{name: a}, {name: b}' >way/two/app.yaml
    ln -s two way/new
    mv -T way/new way/data
    rm -r way/one
}
moved() {
    mv way away
    conf warning '{name: a}' >away/two/app.yaml
    mv away way
}
removed() { rm way/two/app.yaml; }
again() { conf error '' >way/two/app.yaml; }

mkdir -p way/one
conf info '{name: a}' >way/one/app.yaml
ln -s one way/data
ln -s way/data/app.yaml app.yaml
touch out
wait_for 'ready: 1 servers' start
wait_for 'log level: debug' in_place
wait_for 'new configuration: 2 servers' slowly
wait_for 'new configuration: 3 servers' by_rename
wait_for "servers[0]: unknown key 'prot'" badly
wait_for 'log level: info' by_link
wait_for 'log level: warning' moved
wait_for 'no such file' removed
wait_for 'new configuration: 1 servers' again
kill -TERM "$server"
wait "$server" || failures=$((failures + 1))
grep -qx worked out || failures=$((failures + 1))
echo "server example: $failures failed"
[ "$failures" -eq 0 ]
