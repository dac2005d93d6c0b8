#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs the example server, whose workers read all the time, and edits its file. Needs ZRYAML_BUILD.
set -u

work=$(mktemp -d)
cd "$work" || exit 1
server=
trap 'kill "$server" 2>/dev/null; rm -rf "$work"' EXIT
failures=0

says() { # says LINE CONFIGURATION   puts a configuration in place and waits until the server says the line
    local line=$1 round
    echo "$2" >new && mv new app.yaml
    [ -n "$server" ] || { "$ZRYAML_BUILD/examples/watching_server" app.yaml 'servers[0].name=set' >out 2>&1 & server=$!; }
    for ((round = 0; round < 200; round++)); do
        grep -qF -- "$line" out && return
        sleep 0.05
    done
    echo "FAIL: no '$line' after: $2"
    cat out
    failures=$((failures + 1))
}
says 'ready: 1 servers' '{log: {level: info}, pause: 1ms, servers: [{name: a}]}'
says 'log level: debug' '{log: {level: debug}, pause: 1ms, servers: [{name: a}]}'
says 'new configuration: 2 servers' '{log: {level: debug}, pause: 1ms, servers: [{name: a}, {name: b}]}'
says "servers[0]: unknown key 'prot'" 'servers: [{name: a, prot: 1}]'
says 'log level: error' '{log: {level: error}, pause: 1ms, servers: [{name: a}]}'
kill -TERM "$server"
wait "$server" || failures=$((failures + 1))
grep -qx worked out || failures=$((failures + 1))
echo "server example: $failures failed"
[ "$failures" -eq 0 ]
