#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Completes command lines of zryaml with the bash completion, and compares the list of commands with the documents.
# Needs ZRYAML_COMMAND and ZRYAML_SOURCE.
set -u

zryaml=$ZRYAML_COMMAND
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0
rows=0

fail() {
    echo "FAIL (line ${BASH_LINENO[1]}): $1"
    failures=$((failures + 1))
}

cat >conf.yaml <<'YAML'
name: demo
"sp ace": x
"d.o[t]": y
"a:b": z
"tab\tkey\n": t
"it's": q
"$HOME": h
list: [1, 2, {id: 3, x: 4}]
server: {host: h, port: 0x1f}
YAML
echo '[{a: 1, b: 2}]' >seq.yaml
cp seq.yaml 'two words.yaml'

# shellcheck source=/dev/null
source "$ZRYAML_SOURCE/cli/completion/zryaml.bash"
offers() { # offers WANTED WORD...   A word ! joins its neighbours, as bash leaves no blank beside a divider.
    local wanted=$1 word line=
    shift
    rows=$((rows + 1))
    COMP_WORDS=("$zryaml")
    line=$zryaml
    for word in "$@"; do
        if [[ $word == !* ]]; then line+=${word#!}; else line+=" $word"; fi
        COMP_WORDS+=("${word#!}")
    done
    COMP_LINE=$line COMP_POINT=${#line} COMP_CWORD=$#
    _zryaml
    [ "${COMPREPLY[*]}" = "$wanted" ] || fail "completing '$line': ${COMPREPLY[*]}, not $wanted"
}
offers 'get size list keys type where check diff watch dump json stats' ''
offers '--default' get --de
offers 'int' get conf.yaml --type i
offers 'duration' get '--type' '!=' '!d'
offers 'seq.yaml' check conf.yaml se
offers '' stats conf.yaml se
offers 'conf.yaml' get seq.yaml --over co
offers 'conf.yaml' diff seq.yaml co
offers 'server' get --set a=b --over seq.yaml conf.yaml se
offers '\[0\]' get 'two\ words.yaml' ''
offers 'sp\ ace' get conf.yaml sp
offers 'sp ace' get conf.yaml "'sp a"
offers 'd\\.o\\\[t\\\]' get conf.yaml d
offers 'a\:b' get conf.yaml a
offers 'b' get conf.yaml a '!:' '!b'
offers "\$'tab\\tkey\\n'" get conf.yaml ta
offers 'server server.host server.port' keys conf.yaml server
offers 'list\[2\].id list\[2\].x' get conf.yaml 'list[2].'
offers '\[0\].a \[0\].b' get -- seq.yaml '[0].'
offers "it\\'s" get conf.yaml i
offers "it'\\''s" get conf.yaml "'it"
# shellcheck disable=SC2016 # the text itself is meant
offers '\$HOME' get conf.yaml '"\$'
offers '' get conf.yaml name more
# shellcheck disable=SC2016 # as above
offers '' get '$(touch evil)' n
[ ! -e evil ] || fail "completion ran what was typed"

# --- The manual page and the completion know every command and every option
manual=$(sed 's/\\-/-/g' "$ZRYAML_SOURCE/cli/zryaml.1")
for command in $("$zryaml" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p'); do
    grep -q "^\.B $command\$" <<<"$manual" || fail "no $command in the manual page"
    offers "$command" "$command"
    for option in $("$zryaml" "$command" --help | grep -oE '^ +(-.,)?--[a-z-]+' | grep -oE -- '--[a-z-]+'); do
        grep -qE "^\.B[A-Z]* .*$option" <<<"$manual" || fail "no $option in the manual page"
        offers "$option" "$command" "$option"
    done
done

echo "$rows rows, $failures failed"
[ "$failures" -eq 0 ] && [ "$rows" -gt 35 ]
