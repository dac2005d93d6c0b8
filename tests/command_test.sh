#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs the zryaml command, ZRYAML_COMMAND: every row is one call with what it must print and return. Texts that are
# expected are written for printf '%b'.
set -u

zryaml=$ZRYAML_COMMAND
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
unset NO_COLOR
failures=0
rows=0

fail() {
    echo "FAIL (line ${BASH_LINENO[-2]}): $1"
    failures=$((failures + 1))
}

# Runs the command and compares its status; what it prints is then in the files out and err.
run() {
    local status=$1 got
    shift
    rows=$((rows + 1))
    "$zryaml" "$@" >out 2>err
    got=$?
    [ "$got" -eq "$status" ] || fail "zryaml $*: status $got, not $status"
}

# expect STATUS STDOUT ARGUMENT... (standard input is the caller's)
expect() {
    local status=$1 wanted=$2
    shift 2
    run "$status" "$@"
    printf %b "$wanted" | cmp -s - out || fail "zryaml $*: printed $(od -An -c out | head -5), not $wanted"
    [ "$status" -eq 0 ] || [ "$wanted" = 'none\n' ] || [ -s err ] || fail "zryaml $*: failed in silence"
}

# expect_told STATUS STDERR ARGUMENT...   STDERR is the whole of standard error.
expect_told() {
    local status=$1 wanted=$2
    shift 2
    run "$status" "$@"
    printf %b "$wanted" | cmp -s - err || fail "zryaml $*: told $(cat err), not $wanted"
}

cat >conf.yaml <<'YAML'
name: demo
port: 8080
empty: ''
"sp ace": x
"d.o[t]": y
"a:b": z
"": none
100%d: percent
"tab\tkey\n": "line\n\\back"
list: [1, 2, {id: 3, x: 4}, [5]]
base: &b {host: h, port: 0x1f}
server:
  <<: *b
  port: 9000
YAML
printf -- '- {a: 1, b: 2}\n- [x, y]\n- s\n- {a: [q], b: 2}\n' >seq.yaml
printf 'a: {}\nb: [[], c]\n' >hollow.yaml
: >empty.yaml
cp seq.yaml '[a,b]'

# --- get: paths as they are, defaults for what is absent only
expect 0 'demo\n' get conf.yaml name
expect 0 'demo\0' get -0 conf.yaml name
expect 0 '\n' get conf.yaml empty
expect 0 'x\n' get conf.yaml 'sp ace'
expect 0 'y\n' get conf.yaml 'd\.o\[t\]'
expect 0 'none\n' get conf.yaml '{}'
expect 0 'percent\n' get conf.yaml '100%d'
expect 0 'h\n' get conf.yaml server.host
expect 0 '9000\n' get conf.yaml server.port
expect 0 '5\n' get conf.yaml 'list[3][0]'
expect 0 '1\n' get seq.yaml '[0].a'
expect 1 '' get conf.yaml size
expect 1 '' get conf.yaml server
expect 0 'd\n' get conf.yaml nothing --default d
expect 0 '\n' get conf.yaml nothing --default ''
expect 0 '\n' get --default= conf.yaml nothing
expect 0 '-5\0' get -0 --default -5 conf.yaml 'list[4]'
expect 0 'd\n' get --default d empty.yaml a.b
expect 1 '' get --default d conf.yaml server
expect 2 '' get --default d conf.yaml 'list[x]'
expect 2 '' get --default d conf.yaml 'list['
expect 2 '' get --default d conf.yaml ''
expect 2 '' get --default d missing.yaml name
expect 1 '' get conf.yaml list.x
expect 1 '' get seq.yaml a

# --- get --type
typed() { # typed STATUS TYPE TEXT...
    local status=$1 type=$2 text
    shift 2
    for text in "$@"; do
        printf "v: '%s'\n" "$text" >typed.yaml
        if [ "$status" -eq 0 ]; then
            expect 0 "$text\n" get typed.yaml v --type "$type"
        else
            expect 1 '' get typed.yaml v --type "$type"
        fi
    done
}
typed 0 int 0 -1 +7 007 0x1F -0x10 0o17 9223372036854775807 -9223372036854775808
typed 1 int '' - 1.0 ' 1' '1 ' 0x 0o8 1_000 9223372036854775808 -9223372036854775809 0b1 --1 true
typed 0 uint 0 18446744073709551615 0xFFFFFFFFFFFFFFFF -0
typed 1 uint -1 18446744073709551616 1e3
typed 0 float 0 -1.5 +2e-3 .5 .inf -.INF .nan
typed 1 float '' 1,5 inf nan -.nan 1e999 0x1p3 1.5x --1
typed 0 bool true False YES no on Off
typed 1 bool '' y 1 tRUE 'true '
typed 0 duration 0s -5ms 90min 3ns 2us 1h 106751d
typed 1 duration '' 5 s 1.5s '5 s' 5m 1h30min 106752d
typed 0 string '' anything
expect 2 '' get conf.yaml nothing --type int --default x
expect 0 '7\n' get conf.yaml nothing --type int --default 7
expect 2 '' get conf.yaml name --type number

# --- The other reads
expect 0 '4\n' size conf.yaml list
expect 1 '' size conf.yaml server
expect 1 '' size conf.yaml nothing
expect 0 'host\th\nport\t9000\n' list conf.yaml server
expect 0 'id\t3\n' list conf.yaml list
expect 0 'a\t1\n' list seq.yaml
expect 0 'a\t1\nb\t2\n' list seq.yaml '[0]'
expect 1 '' list conf.yaml name
expect 0 'host\0h\0port\0x\0' list -0 - server <<<'server: {host: h, port: x}'
expect 0 'k\\t\\n\tx\\n\\\\back\n' list - <<<'"k\t\n": "x\n\\back"'
expect 0 '[0]\n[1]\n[2]\n[3]\n' keys seq.yaml
expect 0 '[0]\n[0].a\n[0].b\n' keys -r - <<<'[{a: 1, b: 2}]'
expect 0 'server.host\nserver.port\n' keys conf.yaml server
expect 0 '' keys hollow.yaml a
expect 0 'a\nb\nb[0]\nb[1]\n' keys -r hollow.yaml
expect 1 '' keys conf.yaml name
expect 0 'a\\nb\n' keys - <<<'"a\nb": 1'
expect 0 'a\nb\0' keys -0 - <<<'"a\nb": 1'
expect 0 'scalar\n' type conf.yaml name
expect 0 'map\n' type conf.yaml server
expect 0 'sequence\n' type seq.yaml
expect 1 'none\n' type conf.yaml nothing
expect 1 'none\n' type empty.yaml
expect 2 '' type conf.yaml 'list['
expect 0 'conf.yaml:14:9\n' where conf.yaml server.port
expect 0 'conf.yaml:13:7\n' where conf.yaml server.host
expect 0 '<stdin>:1:8\n' where - 'a[1]' <<<'a: [x, y]'
expect 0 '\n[ { a: 1, b: 2 }, \n  [ x, y ], \n  s, \n  { a: \n      [ q ], \n    b: 2 } ]\n' dump seq.yaml
expect 0 '\n' dump empty.yaml
expect 1 '' dump hollow.yaml
expect 0 '{"a":{},"b":[[],"c"]}\n' json hollow.yaml
expect 0 '[[],"c"]\n' json hollow.yaml b
expect 0 '{\n    "host": "h",\n    "port": "9000"\n}\n' json --pretty conf.yaml server
expect 0 'null\n' json empty.yaml
expect 1 '' json empty.yaml a
expect 0 '2 checked, 2 valid, 0 invalid, 0 unreadable\n' check '[a,b]' conf.yaml
expect 0 '2 checked, 2 valid, 0 invalid, 0 unreadable\n' check - - <<<'a: b'

stats=$("$zryaml" stats conf.yaml) || fail "stats failed"
for row in maps=4 sequences=2 scalars=18 keys=18 depth=3; do
    expect 0 "${row#*=}\n" get - "${row%%=*}" <<<"$stats"
done
[[ $stats == *memory_bytes:\ [1-9]* ]] || fail "stats counted no memory: $stats"

# A dump larger than any first guess of its size, and the deepest document.
long=$(printf 'x%.0s' {1..100000})
expect 0 "{ a: $long }\n" dump - <<<"a: $long"
deep=$(printf '[%.0s' {1..512})$(printf ']%.0s' {1..512})
expect 0 "$deep\n" json - <<<"$deep"
expect 1 '' json - <<<"[$deep]"

# What json prints reads back as the same tree, and every path that keys prints leads somewhere.
"$zryaml" json conf.yaml >conf.json
expect 0 "$(sed 's/\\/\\\\/g' conf.json)\n" json conf.json
paths=()
mapfile -d '' paths < <("$zryaml" keys -r -0 conf.yaml)
[ "${#paths[@]}" -eq 23 ] || fail "keys -r printed ${#paths[@]} paths"
for path in "${paths[@]}"; do
    "$zryaml" where conf.yaml "$path" >out || fail "no value at the path '$path'"
done

# --- Wrong use
expect 2 ''
expect 2 '' nonsense
expect 2 '' get conf.yaml
expect 2 '' get conf.yaml name more
expect 2 '' get conf.yaml name --pretty
expect 2 '' --diagnostics xml check conf.yaml
expect 2 '' check
expect_told 2 'zryaml: error: FILE is required\nzryaml: note: see zryaml get --help\n' get
"$zryaml" --version | grep -q '^libzryaml [0-9.]* (module 1\.21\.0, internal B035)$' || fail "--version"

# --- Diagnostics: file, place, cause, hint
printf 'a: 1\nb:\n\t- x\n' >tab.yaml
printf 'k: 1\nx: 2\nk: 3\n' >again.yaml
printf 'a: b\nc: \xff\n' >bytes.yaml
tab_told='tab.yaml:3:1: note: a tab cannot stand here: indent with spaces\n'
tab_text='while scanning for the next token at line 3, column 1, found character that cannot start any token at line 3, column 1.'
expect_told 1 "tab.yaml:3:1: error: Scanner error: $tab_text\n$tab_told" json tab.yaml
expect_told 1 'again.yaml:3:1: error: There is a same scalar in this list. (Scalar=k)\nagain.yaml:1:1: note: the first one is here\n' json again.yaml
expect_told 1 '<stdin>:3:1: error: There is a same scalar in this list. (Scalar=k)\n<stdin>:1:1: note: the first one is here\n' json - <again.yaml
expect_told 2 'missing.yaml: error: Failed to get real path. (InputFile=missing.yaml)\nmissing.yaml: note: No such file or directory\n' json missing.yaml
expect_told 1 'conf.yaml:13:3: error: server: the value is a map, not a scalar\n' get conf.yaml server
expect_told 1 "conf.yaml:2:7: error: port: '8080' is no bool\n" get conf.yaml port --type bool
expect_told 1 'conf.yaml:13:3: error: server.nothing: Can not find the yaml node with key. (Key=nothing)\n' get conf.yaml server.nothing
expect_told 1 "hollow.yaml:1:4: error: a: an empty map or sequence cannot be dumped\nhollow.yaml:1:4: note: zryaml json shows it\n" dump hollow.yaml
expect_told 1 'seq.yaml: error: a: the document is a sequence, which has no keys\nseq.yaml: note: the path must begin with an index, such as [0]\n' get seq.yaml a
expect_told 2 'conf.yaml: error: the key path is empty\n' get conf.yaml ''
expect_told 2 '<stdin>: error: cannot be read: Is a directory\n' json - <.
expect 2 '1 checked, 0 valid, 0 invalid, 1 unreadable\n' check .
expect 1 '3 checked, 1 valid, 2 invalid, 0 unreadable\n' check again.yaml conf.yaml bytes.yaml
expect 2 '2 checked, 0 valid, 1 invalid, 1 unreadable\n' check missing.yaml again.yaml
printf 'a\033b: 1\n' >$'n\nl.yaml'
expect_told 1 'n\\nl.yaml:1:2: error: Reader error: control characters are not allowed: #1B at 1.\nn\\nl.yaml:1:2: note: a control character cannot stand here\n' json $'n\nl.yaml'

# One JSON object a line; being YAML too, each is read back with the command itself.
expect 1 '2 checked, 0 valid, 2 invalid, 0 unreadable\n' --diagnostics json check tab.yaml again.yaml
mapfile -t objects <err
[ "${#objects[@]}" -eq 2 ] || fail "${#objects[@]} lines of JSON, not 2"
for row in file=tab.yaml line=3 column=1 first_line=0 code=419430414 path= 'hint=a tab cannot stand here: indent with spaces'; do
    expect 0 "${row#*=}\n" get - "${row%%=*}" <<<"${objects[0]}"
done
for row in file=again.yaml line=3 column=1 first_line=1 first_column=1 code=419430410; do
    expect 0 "${row#*=}\n" get - "${row%%=*}" <<<"${objects[1]}"
done
expect 1 '' get conf.yaml list.x --diagnostics=json
mv err object
for row in 'path=list.x' line=10 'message=The array index has not been specified.'; do
    expect 0 "${row#*=}\n" get - "${row%%=*}" <object
done

# Log records come only with -v, notes with two.
records() { "$zryaml" "$@" 2>&1 >out | grep -c 'yaml/src/'; }
[ "$(records check tab.yaml)" -eq 0 ] || fail "log records without -v"
[ "$(records -v check tab.yaml)" -eq 2 ] || fail "no log records with -v"
[ "$(records -vv stats conf.yaml)" -gt "$(records -v stats conf.yaml)" ] || fail "no more records with -vv"

# --- A terminal: source line, caret, colour, progress. script runs a command on one; it turns \n into \r\n.
terminal() { script -qec "stty cols 40; $*" /dev/null | tr -d '\r'; }
shows() { # shows TEXT COMMAND...
    local wanted=$1
    shift
    rows=$((rows + 1))
    terminal "$@" >screen
    grep -qF "$(printf %b "$wanted")" screen || fail "$*: no '$wanted' in: $(cat -v screen)"
}
hides() { # hides TEXT COMMAND...
    local unwanted=$1
    shift
    rows=$((rows + 1))
    terminal "$@" >screen
    [ -s screen ] || fail "$*: nothing on the screen"
    ! grep -qF "$(printf %b "$unwanted")" screen || fail "$*: '$unwanted' in: $(cat -v screen)"
}
if [ "$(terminal echo there 2>/dev/null)" = there ]; then
    printf '\xe6\xbc\xa2\t"\x61\xcc\x81\xe2\x80\xae": @x\n' >wide.yaml
    printf 'a: [%s, @x, %s]\n' "$(printf '1, %.0s' {1..100})2" "$(printf '3, %.0s' {1..100})4" >long.yaml
    many=$(printf 'conf.yaml %.0s' {1..20})
    plain="env TERM=xterm NO_COLOR=1 $zryaml"
    shows ' 3 |         - x\n' "$plain check tab.yaml"
    shows '   | ^\n' "$plain check tab.yaml"
    shows ' 1 | k: 1\n' "$plain check again.yaml"
    shows ' 2 | c: \\xff\n' "$plain check bytes.yaml"
    shows '\\u202e' "$plain check wide.yaml"
    shows ' 1 | ..., 1, 1, 1, 2, @x, 3, 3, 3, 3...\n' "$plain check long.yaml"
    shows ' 1 | k: 1\n' "$plain check - <again.yaml"
    shows '\033[1;31merror:' "env TERM=xterm $zryaml check tab.yaml"
    shows '\033[1;31merror:' "env TERM=xterm NO_COLOR= $zryaml check tab.yaml"
    hides '\033' "$plain check tab.yaml"
    hides '\033' "env TERM=dumb $zryaml check tab.yaml"
    shows '20 of 20 files checked' "$plain check $many"
    hides 'files checked' "$plain check conf.yaml"
    hides 'files checked' "env TERM=dumb $zryaml check $many"
else
    echo "skipped: the rows about a terminal need script(1) and a pseudo-terminal"
fi

# --- Results that cannot be written
unwritten() { # unwritten REASON, after the call
    [ "$2" -eq 2 ] || fail "$1: status $2, not 2"
    grep -qF "zryaml: error: standard output: $1" err || fail "$1: told $(cat err)"
}
if [ -c /dev/full ]; then
    "$zryaml" json conf.yaml >/dev/full 2>err
    unwritten 'No space left on device' $?
fi
"$zryaml" get conf.yaml name >&- 2>err
unwritten 'Bad file descriptor' $?
exec 3> >(exit)
wait $!
(trap '' PIPE; exec "$zryaml" get conf.yaml name >&3 2>err)
unwritten 'Broken pipe' $?
exec 3>&-

echo "$rows rows, $failures failed"
[ "$failures" -eq 0 ] && [ "$rows" -gt 180 ]
