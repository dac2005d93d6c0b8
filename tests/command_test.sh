#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs the zryaml command, ZRYAML_COMMAND. A row of a table is one call, "STATUS ARGUMENTS", and may end with what the
# call prints:
#   => TEXT   all of standard output, TEXT being written for printf '%b'
#   =! TEXT   a line of standard error begins with TEXT
# Arguments are read as the shell reads them, redirections included.
set -u

zryaml=$ZRYAML_COMMAND
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
unset NO_COLOR
failures=0
rows=0

fail() {
    echo "FAIL: $1"
    failures=$((failures + 1))
}

# Runs the command and compares its status; what it prints is then in the files out and err.
run() {
    local status=$1 got
    shift
    rows=$((rows + 1))
    "$zryaml" "$@" >out 2>err
    got=$?
    [ "$got" -eq "$status" ] || fail "zryaml $*: status $got, not $status; $(head -c 300 err)"
    [ "$status" -eq 0 ] || [ -s err ] || [ -s out ] || fail "zryaml $*: failed in silence"
}

table() {
    local row call wanted
    while IFS= read -r row; do
        call=${row%% =[>!] *}
        [[ $call == *' <'* ]] || call+=' </dev/null'
        eval "run $call"
        printf -v wanted %b. "${row#* =[>!] }"
        wanted=${wanted%.}
        case $row in
        *' => '*) printf %b "${row#* => }" | cmp -s - out || fail "$call: printed $(od -An -c out | head -5)" ;;
        *' =! '*) start=$wanted awk 'index($0, ENVIRON["start"]) == 1 { found = 1 } END { exit !found }' err ||
            fail "$row: told $(cat err)" ;;
        esac
    done
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
cp conf.yaml json
printf 'a: 1\nb:\n\t- x\n' >tab.yaml
printf 'list:\n  -a\n  -b\n' >fold.yaml
printf 'k: 1\nx: 2\nk: 3\n' >again.yaml
printf 'a: b\nc: \xff\n' >bytes.yaml
printf 'a\033b: 1\n' >$'n\nl.yaml'
printf '? %s\n: {x: 1}\n' "$(printf 'k%.0s' {1..2000})" >key.yaml
cat >typed.yaml <<'YAML'
a: [~, '', True, no, -007, 0x1F, +.5, "5", !!int "5", !!str 5]
b: [.inf, 18446744073709551616]
YAML
long=$(printf 'x%.0s' {1..100000})
deep=$(printf '[%.0s' {1..512})$(printf ']%.0s' {1..512})

cat >base.yaml <<'YAML'
db: {password: hunter2, host: h, url: "pg://${db.password}@${db.host}"}
servers: [{name: a, port: 80}]
YAML
printf 'db: {password: s3cret}\nservers: !append [{name: b}]\n' >site.yaml
mkdir sub
echo '{"properties": {"port": {"maximum": 65535}}, "maxProperties": 1}' >sub/s.json
printf '# yaml-language-server: $schema=sub/s.json\nport: 65536\n' >lined.yaml
printf '# yaml-language-server: $schema=https://example.org/s.json\nport: 65536\n' >url.yaml
export T_DB__HOST=env T_SERVERS__0__PORT=81

# Paths as they are; defaults for what is absent only; types; the other reads; wrong use and its words.
table <<'ROWS'
0 get conf.yaml name => demo\n
0 get -0 conf.yaml name => demo\0
0 get conf.yaml empty => \n
0 get conf.yaml 'd\.o\[t\]' => y\n
0 get conf.yaml 100%d => percent\n
0 get conf.yaml server.port => 9000\n
0 get json name => demo\n
0 get <(echo 'a: 1') a => 1\n
0 get key.yaml "$("$zryaml" keys key.yaml).x" => 1\n
1 get conf.yaml list.x --default d =! conf.yaml:10:7: error: list is a sequence and has no key 'x'
1 get conf.yaml server --default d =! conf.yaml:13:3: error: server is a map, not a scalar
1 get conf.yaml server.{a.b} =! conf.yaml:13:3: error: no key 'a.b' in server
0 get conf.yaml nothing --default d => d\n
0 get conf.yaml empty.x --default '' => \n
0 get conf.yaml no --default --x= => --x=\n
0 get -0 --default -5 conf.yaml list[4] => -5\0
0 get --default d empty.yaml a.b => d\n
2 get --default d conf.yaml list[x]
2 get --default d conf.yaml '' =! conf.yaml: error: the key path is empty
2 get --default d missing.yaml name
0 get conf.yaml port --type int => 8080\n
1 get conf.yaml port --type bool =! conf.yaml:2:7: error: port: 
0 get - a --type duration <<<'a: 90min' => 90min\n
0 get - a --type bytes <<<'a: 64KiB' => 64KiB\n
2 get conf.yaml nothing --type int --default x =! zryaml: error: --default: 'x' 
0 get conf.yaml nothing --type int --default 7 => 7\n
2 get conf.yaml name --type number
0 size conf.yaml list => 4\n
1 size conf.yaml server
0 list conf.yaml server => host\th\nport\t9000\n
0 list seq.yaml => a\t1\n
1 list conf.yaml name
0 list -0 - server <<<'server: {host: h, port: x, l: []}' => host\0h\0port\0x\0
0 list - <<<'"k\t\n": "x\n\\back"' => k\\t\\n\tx\\n\\\\back\n
0 keys seq.yaml => [0]\n[1]\n[2]\n[3]\n
0 keys -r - <<<'[{a: 1, b: 2}]' => [0]\n[0].a\n[0].b\n
0 keys -r hollow.yaml => a\nb\nb[0]\nb[1]\n
1 keys conf.yaml name
0 keys - <<<'"a\nb": 1' => a\\nb\n
0 keys -0 - <<<'"a\nb": 1' => a\nb\0
0 type conf.yaml name => scalar\n
0 type conf.yaml server => map\n
1 type conf.yaml nothing => none\n
1 type conf.yaml name.x =! conf.yaml:1:7: 
0 where conf.yaml server.port => conf.yaml:14:9\n
0 where conf.yaml server.host => conf.yaml:13:7\n
0 where - a[1] <<<'a: [x, y]' => <stdin>:1:8\n
0 dump seq.yaml => \n[ { a: 1, b: 2 }, \n  [ x, y ], \n  s, \n  { a: \n      [ q ], \n    b: 2 } ]\n
0 dump empty.yaml => \n
1 dump hollow.yaml =! hollow.yaml:1:4: error: a: an empty map or sequence cannot be dumped
0 json hollow.yaml => {"a":{},"b":[[],"c"]}\n
0 json hollow.yaml b => [[],"c"]\n
0 json --pretty conf.yaml server => {\n    "host": "h",\n    "port": "9000"\n}\n
0 json empty.yaml => null\n
0 json --typed typed.yaml => {"a":[null,"",true,"no",-7,31,0.5,"5",5,"5"],"b":[".inf","18446744073709551616"]}\n
0 json --typed typed.yaml =! typed.yaml:2:11: warning: b[1]: 
1 json empty.yaml a
1 json - <<<"[$deep]"
0 check [a,b] conf.yaml => 2 checked, 2 valid, 0 invalid, 0 unreadable\n
0 --diagnostics json check [a,b] => 1 checked, 1 valid, 0 invalid, 0 unreadable\n
0 check - - <<<'a: b' => 2 checked, 2 valid, 0 invalid, 0 unreadable\n
0 check fold.yaml => 1 checked, 1 valid, 0 invalid, 0 unreadable\n
0 check fold.yaml =! fold.yaml:3:3: warning: list: 
1 check --strict fold.yaml => 1 checked, 0 valid, 1 invalid, 0 unreadable\n
2 check . => 1 checked, 0 valid, 0 invalid, 1 unreadable\n
1 check again.yaml conf.yaml bytes.yaml => 3 checked, 1 valid, 2 invalid, 0 unreadable\n
2 check missing.yaml again.yaml => 2 checked, 0 valid, 1 invalid, 1 unreadable\n
1 json tab.yaml =! tab.yaml:3:1: error: 
1 json tab.yaml =! tab.yaml:3:1: note: indent with spaces
1 json again.yaml =! again.yaml:1:1: note: the first one is here
1 json - <again.yaml =! <stdin>:1:1: note: the first one is here
1 json $'n\nl.yaml' =! n\\nl.yaml:1:2: note: 
2 json missing.yaml =! missing.yaml: error: 
2 json - <. =! <stdin>: error: cannot be read: Is a directory
2
2 gte conf.yaml =! zryaml: error: there is no command 'gte'
2 gte conf.yaml =! zryaml: note: did you mean 'get'?
2 get conf.yaml
2 get conf.yaml name more =! zryaml: error: 'more' is one argument too many
2 --redact x json conf.yaml =! zryaml: error: the option '--redact' stands before the command
2 get conf.yaml name --prety =! zryaml: error: there is no option '--prety' for get
2 json conf.yaml --prety =! zryaml: note: did you mean '--pretty'?
2 --diagnostics xml check conf.yaml
2 check
1 --diagnostics github check [a,b] again.yaml => ::error file=again.yaml,line=3,col=1,title=YAML_ERR_SAME::the key 'k' stands twice in one map%0Arename or remove one of them\n2 checked, 1 valid, 1 invalid, 0 unreadable\n
0 json base.yaml servers --over site.yaml --env T_ --set servers[1].port=9 => [{"name":"a","port":"81"},{"name":"b","port":"9"}]\n
0 json - --over base.yaml servers <site.yaml => [{"name":"a","port":"80"}]\n
0 json - --merge-forms <<<'{a: &a {k: v}, b: {<<: [*a]}}' => {"a":{"k":"v"},"b":{"k":"v"}}\n
0 where --all base.yaml db.password --over site.yaml --set db.password=x => --set db.password: x\nsite.yaml:1:16: s3cret\nbase.yaml:1:16: hunter2\n
0 where base.yaml db.host --env T_ => environment T_DB__HOST\n
0 where --all base.yaml db.password --over site.yaml --redact *.password => site.yaml:1:16: ***\nbase.yaml:1:16: ***\n
1 get base.yaml db.pasword --over site.yaml =! base.yaml:1:5: note: did you mean 'password'?
1 get base.yaml db.password.x --over site.yaml =! site.yaml:1:16: error: db.password is a scalar
0 json base.yaml db --expand => {"password":"hunter2","host":"h","url":"pg://hunter2@h"}\n
0 json base.yaml db --expand --redact **.password => {"password":"***","host":"h","url":"***"}\n
0 json base.yaml servers --typed --redact servers[*].p* => [{"name":"a","port":"***"}]\n
0 get base.yaml db.password --redact db.* => ***\n
0 get base.yaml servers[0].name --redact servers.name => a\n
0 list base.yaml db --redact db.url --redact {db}.password => password\t***\nhost\th\nurl\t***\n
0 dump base.yaml --redact db.** => { db: \n    { password: ***, host: ***, url: *** }, \n  servers: \n    [ { name: a, port: 80 } ] }\n
1 get base.yaml db.password --type int --redact db.* =! base.yaml:1:16: error: db.password: the value is wrong; --redact hides it
1 check - --redact a <<<"'secret': b: c" =! <stdin>:1:12: error: 
2 json base.yaml --redact db..password =! zryaml: error: --redact: 'db..password' is not a pattern
1 diff base.yaml site.yaml => ~ db.password: hunter2 -> s3cret\n- db.host: h\n- db.url: pg://${db.password}@${db.host}\n~ servers[0].name: a -> b\n- servers[0].port: 80\n
1 diff hollow.yaml - --redact b <<<'{a: [], b: [[]]}' => - a: {}\n+ a: []\n- b[1]: c\n
0 diff conf.yaml json => 
2 diff conf.yaml missing.yaml
2 json base.yaml --set db.host.x=1 =! --set db.host.x: error: 
2 json base.yaml --over no1 --over no2 =! no2: error: 
1 check base.yaml --set servers[0].port=1 tab.yaml --over site.yaml => 2 checked, 1 valid, 1 invalid, 0 unreadable\n
1 check lined.yaml --diagnostics github => ::error file=lined.yaml,line=2,col=7,title=YAML_ERR_RANGE::port: must be at most 65535\n1 checked, 0 valid, 1 invalid, 0 unreadable\n
0 check lined.yaml --no-modeline
1 check base.yaml --schema sub/s.json =! base.yaml:1:1: error: 
0 check url.yaml =! url.yaml:1:1: note: the schema is not checked
2 check base.yaml --schema missing.json =! missing.json: error: 
2 get =! zryaml: error: FILE is required
2 get =! zryaml: note: see zryaml get --help
ROWS
"$zryaml" --version | grep -q '^libzryaml [0-9.]* (module 1\.21\.0, internal B035)$' || fail "--version"

# Texts longer than any first guess, the deepest document; what json prints reads back as the same tree, and every path that keys prints leads somewhere.
[ "$("$zryaml" dump - <<<"a: $long")" = "{ a: $long }" ] || fail "a large dump"
"$zryaml" json - <<<"$deep" | cmp -s - <(echo "$deep") || fail "the deepest document"
for file in conf.yaml "$ZRYAML_SOURCE"/examples/*.yaml "$ZRYAML_SOURCE"/fuzz/corpus/file_text_fuzz/*; do
    "$zryaml" json "$file" >once 2>/dev/null || continue
    [ "$(cat once)" = null ] || "$zryaml" json once | cmp -s - once || fail "$file: its JSON reads back as another tree"
done
mapfile -d '' paths < <("$zryaml" keys -r -0 conf.yaml)
[ "${#paths[@]}" -eq 23 ] || fail "keys -r printed ${#paths[@]} paths"
for path in "${paths[@]}"; do
    "$zryaml" where conf.yaml "$path" >out || fail "no value at the path '$path'"
done

# One JSON object a line, and statistics: being YAML too, they are read back with the command itself.
holds() { # holds FILE KEY=TEXT...
    local file=$1 row
    shift
    for row in "$@"; do
        run 0 get "$file" "${row%%=*}" --default 'no such key'
        [ "$(cat out)" = "${row#*=}" ] || fail "$file: ${row%%=*} is $(cat out), not ${row#*=}"
    done
}
"$zryaml" stats conf.yaml >stats.yaml
holds stats.yaml maps=4 sequences=2 scalars=18 keys=18 depth=3
[[ $(cat stats.yaml) == *memory_bytes:\ [1-9]* ]] || fail "stats counted no memory"
run 1 --diagnostics json check tab.yaml again.yaml
head -1 err >first.json
tail -1 err >last.json
holds first.json level=error file=tab.yaml line=3 column=1 first_line=0 code=419430414 name=YAML_ERR_SCANNER path= \
    'hint=indent with spaces'
holds last.json file=again.yaml line=3 column=1 first_line=1 first_column=1 code=419430410
run 1 get conf.yaml list.x --diagnostics=json
mv err last.json
holds last.json path=list.x line=10 column=7 code=419430412
run 1 check --diagnostics sarif again.yaml
mv out sarif.json
result="runs[0].results[0]"
place=physicalLocation.region.startLine
holds sarif.json version=2.1.0 runs[0].tool.driver.rules[0].id=YAML_ERR_SAME "$result.ruleId=YAML_ERR_SAME" \
    "$result.locations[0].$place=3" "$result.relatedLocations[0].$place=1"

# Log records come only with -v, notes with two.
records() { "$zryaml" "$@" 2>&1 >out | grep -c 'yaml/src/'; }
[ "$(records check tab.yaml)" -eq 0 ] || fail "log records without -v"
[ "$(records -v check tab.yaml)" -eq 2 ] || fail "no log records with -v"
[ "$(records -v check again.yaml --redact x)" -eq 2 ] || fail "no log records with -v and --redact"
[ "$(records -vv stats conf.yaml)" -gt "$(records -v stats conf.yaml)" ] || fail "no more records with -vv"

# A terminal: source line, caret, colour, progress. script runs a command on one; it turns \n into \r\n. A row is
# "TEXT COMMAND", or "! TEXT COMMAND" if the text must not be there; words are divided by tabs.
terminal() { script -qec "stty cols 40; $*" /dev/null | tr -d '\r'; }
if [ "$(terminal echo there 2>/dev/null)" = there ]; then
    printf '\xe6\xbc\xa2\t"\x61\xcc\x81\xe2\x80\xae\xd8\x9c": @x\n' >wide.yaml
    printf 'a: [%s, @x, %s]\n' "$(printf '1, %.0s' {1..100})2" "$(printf '3, %.0s' {1..100})4" >long.yaml
    printf 'a: 1\xe2\x80\xa8b: 2\r\nc: 3\xc2\x85d: [ @x\n' >ends.yaml
    (echo -n 'a: [1, 2}' && head -c 100000000 /dev/zero | tr '\0' x) >large.yaml
    printf '{a: "z1, z1", b: {c: z1 z1\n  z1, d: !apend x}, e: !Unset z1}' >masked.yaml
    many="check $(printf 'conf.yaml %.0s' {1..20})"
    plain="env TERM=xterm NO_COLOR=1 $zryaml"
    while IFS=$'\t' read -r sign wanted call; do
        rows=$((rows + 1))
        terminal "$call" >screen
        grep -qF "$(printf %b "$wanted")" screen
        [[ $? == 0 && $sign == + || $? == 1 && $sign == - && -s screen ]] || fail "$call: $sign '$wanted': $(cat -v screen)"
    done <<ROWS
+	 3 |         - x\n	$plain check tab.yaml
+	   | ^\n	$plain check tab.yaml
+	 1 | k: 1\n	$plain check again.yaml
+	 2 | c: \\\\xff\n	$plain check bytes.yaml
+	\\\\u202e\\\\u061c	$plain check wide.yaml
+	 4 | d: [ @x\n   |      ^\n	$plain check ends.yaml
+	 1 | ..., 1, 1, 1, 2, @x, 3, 3, 3, 3...\n	$plain check long.yaml
+	 1 | a: [1, 2}xxx	ulimit -v 400000; $plain check large.yaml
+	 1 | k: 1\n	$plain check - <again.yaml
+	 1 | {a: ***, b: {c: ***, d: x}\n	$plain check --strict masked.yaml --redact a --redact *.c
-	z1	$plain check --strict masked.yaml --redact a --redact *.c
+	\033[1;31merror:	env TERM=xterm $zryaml check tab.yaml
+	\033[1;31merror:	env TERM=xterm NO_COLOR= $zryaml check tab.yaml
-	\033	$plain check tab.yaml
-	\033	env TERM=dumb $zryaml check tab.yaml
+	20 of 20 files checked	$plain $many
-	files checked	$plain check conf.yaml
-	files checked	env TERM=dumb $zryaml $many
ROWS
else
    echo "skipped: the rows about a terminal need script(1) and a pseudo-terminal"
fi

# Results that cannot be written.
unwritten() { # unwritten REASON STATUS, after the call
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
[ "$failures" -eq 0 ] && [ "$rows" -gt 120 ]
