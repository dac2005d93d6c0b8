# SPDX-License-Identifier: Apache-2.0
# Bash completion for zryaml: commands, options, file names, and the key paths inside a file. What was typed is never
# evaluated; a word is read with its quotes and backslashes, and each completion is quoted to match.
# shellcheck shell=bash

# Sets _zryaml_text to the text that the shell word $1 stands for, and _zryaml_quote to the quote that is open at its
# end. Nothing is expanded.
_zryaml_unquote() {
    local word=$1 char
    _zryaml_text=
    _zryaml_quote=
    while [ -n "$word" ]; do
        char=${word:0:1}
        word=${word:1}
        if [ "$char" = "$_zryaml_quote" ]; then
            _zryaml_quote=
        elif [ -z "$_zryaml_quote" ] && [[ $char == [\'\"] ]]; then
            _zryaml_quote=$char
        elif [[ $char == \\ && (-z $_zryaml_quote || ($_zryaml_quote == \" && ${word:0:1} == [\"\\\$\`])) ]]; then
            _zryaml_text+=${word:0:1}
            word=${word:1}
        else
            _zryaml_text+=$char
        fi
    done
}

# Sets _zryaml_word to the text $1 as a shell word that stands behind the open quote $2.
_zryaml_requote() {
    local text=$1
    case $2 in
    \')
        text=${text//\'/\'\\\'\'}
        ;;
    \")
        text=${text//\\/\\\\}
        text=${text//\"/\\\"}
        text=${text//\$/\\\$}
        text=${text//\`/\\\`}
        ;;
    *)
        [ -z "$text" ] || printf -v text %q "$text"
        if [[ $text != \$\'* ]]; then # else all is quoted; these divide words for completion
            text=${text//:/\\:}
            text=${text//=/\\=}
            text=${text//@/\\@}
        fi
        ;;
    esac
    _zryaml_word=$text
}

# Fills _zryaml_words with the words of the command line up to the cursor, as the shell would divide them: pieces that
# stand without a blank between them are one word. Sets _zryaml_tail to the piece that a completion takes the place of,
# and _zryaml_head to the text of what stands before it in the last word.
_zryaml_words_get() {
    local rest=${COMP_LINE:0:COMP_POINT} before piece index
    _zryaml_words=()
    for ((index = 0; index <= COMP_CWORD; index++)); do
        before=$rest
        rest=${rest#"${rest%%[![:space:]]*}"}
        piece=${COMP_WORDS[index]}
        ((index < COMP_CWORD)) || piece=$rest
        if ((index == 0)) || [ "$before" != "$rest" ]; then
            _zryaml_words+=("$piece")
        else
            _zryaml_words[-1]+=$piece
        fi
        rest=${rest:${#piece}}
    done
    _zryaml_tail=$piece
    [[ $_zryaml_tail != [:=@\>\<] ]] || _zryaml_tail= # a divider alone is not replaced
    _zryaml_unquote "${_zryaml_words[-1]%"$_zryaml_tail"}"
    _zryaml_head=$_zryaml_text
}

# Offers those of the remaining arguments that begin with the text $1.
_zryaml_offer() {
    local typed=$1 quote candidate
    shift
    _zryaml_unquote "$_zryaml_tail"
    quote=$_zryaml_quote
    for candidate in "$@"; do
        [[ $candidate == "$typed"* ]] || continue
        _zryaml_requote "${candidate:${#_zryaml_head}}" "$quote"
        COMPREPLY+=("$_zryaml_word")
    done
}

# Offers file names that begin with the text $1.
_zryaml_offer_files() {
    local name
    compopt -o filenames 2>/dev/null # readline quotes the names, and puts a slash behind a folder
    while IFS= read -r name; do
        COMPREPLY+=("${name:${#_zryaml_head}}")
    done < <(compgen -f -- "$1")
}

# Offers key paths of the file $2 that begin with the text $3, step by step. $1 is the zryaml to ask.
_zryaml_offer_paths() {
    local zryaml=$1 file=$2 typed=$3 above=$3 paths=() below=() path
    [ "$file" != - ] || return 0 # standard input is not there yet
    [[ $file != \~/* ]] || file=$HOME/${file:2}
    # Cut the typed path at its last separator without a backslash before it.
    while [[ -n $above && $above != *[^\\][.[] ]]; do
        above=${above%?}
    done
    above=${above%?}
    mapfile -d '' paths < <("$zryaml" keys -0 -- "$file" ${above:+"$above"} 2>/dev/null)
    for path in "${paths[@]}"; do
        [ "$path" = "$typed" ] || continue
        mapfile -d '' below < <("$zryaml" keys -0 -- "$file" "$typed" 2>/dev/null)
    done
    compopt -o nospace 2>/dev/null # a path may go on
    _zryaml_offer "$typed" "${paths[@]}" "${below[@]}"
}

# Offers the options of the command $1, or their values, that begin with the text $2; $3 is the word before. Fails if
# something else is wanted there.
_zryaml_offer_options() {
    local options=(--diagnostics --verbose --help)
    [ -z "$1" ] || options+=(--over --env --set --expand --merge-forms --redact)
    case $1 in
    '') options+=(--version) ;;
    get) options+=(--default --type --null) ;;
    list) options+=(--null) ;;
    keys) options+=(--null --recursive) ;;
    where) options+=(--all) ;;
    check) options+=(--schema --no-modeline --strict) ;;
    json) options+=(--typed --pretty) ;;
    esac
    case $3 in
    --type) options=(int uint float bool duration bytes string) ;;
    --diagnostics) options=(text json github sarif) ;;
    --default | --env | --set | --redact) options=() ;;
    --over | --schema) _zryaml_offer_files "$2" && return ;;
    *)
        case $2 in
        --type=*) options=(--type={int,uint,float,bool,duration,bytes,string}) ;;
        --diagnostics=*) options=(--diagnostics={text,json,github,sarif}) ;;
        -*) ;;
        *) return 1 ;;
        esac
        ;;
    esac
    _zryaml_offer "$2" "${options[@]}"
}

_zryaml() {
    local _zryaml_words _zryaml_tail _zryaml_head _zryaml_text _zryaml_quote _zryaml_word
    local index last before='' command='' may_be_option=1 values=()
    COMPREPLY=()
    _zryaml_words_get
    last=$((${#_zryaml_words[@]} - 1))
    for ((index = 1; index < last; index++)); do
        _zryaml_unquote "${_zryaml_words[index]}"
        if [[ -n $may_be_option && $before == --@(default|type|diagnostics|over|env|set|redact|schema) ]]; then
            before= # this was its value
            continue
        fi
        before=$_zryaml_text
        if [ -n "$may_be_option" ] && [ "$before" = -- ]; then
            may_be_option=
        elif [[ -n $may_be_option && $before == -?* ]]; then
            continue
        elif [ -z "$command" ]; then
            command=$before
        else
            values+=("$before")
        fi
    done
    _zryaml_unquote "${_zryaml_words[last]}"
    if [ -n "$may_be_option" ] && _zryaml_offer_options "$command" "$_zryaml_text" "$before"; then
        return
    fi
    _zryaml_unquote "${_zryaml_words[last]}"
    case $command:${#values[@]} in
    :*) _zryaml_offer "$_zryaml_text" get size list keys type where check diff watch dump json stats ;;
    check:* | *:0 | diff:1) _zryaml_offer_files "$_zryaml_text" ;;
    get:1 | size:1 | list:1 | keys:1 | type:1 | where:1 | json:1)
        _zryaml_offer_paths "${COMP_WORDS[0]}" "${values[0]}" "$_zryaml_text"
        ;;
    esac
}

complete -F _zryaml zryaml
