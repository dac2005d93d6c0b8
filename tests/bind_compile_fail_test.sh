#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Descriptions that must not compile: members of a wrong type, in strict C11 and in C++17, where the compiler's message
# must name the member or the way out. What is right next to it compiles without a warning.
set -euo pipefail

include=$ZRYAML_SOURCE/yaml/include
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail() {
    echo "FAIL: $1"
    sed 's/^/    /' "$work/log" | head -20
    failures=$((failures + 1))
}

c_record='#include <zr_yaml_bind.h>
typedef struct Inner { int one; } Inner;
typedef YAML_PAIR(int) Pair;
typedef struct Record { const char *text; char *writable; int whole; unsigned natural; float number; _Bool flag;
    long long wide; unsigned long long size; Inner inner; int *numbers; char *bytes; Pair *pairs; unsigned count; } Record;
static const YamlField InnerFields[] = {YAML_FIELD_INT(Inner, one, "one")};
const YamlRecord InnerRecord = YAML_RECORD(Inner, InnerFields);
const YamlField fields[] = {'
c_compiles() {
    printf '%s\n%s};\nconst YamlRecord record = YAML_RECORD(Record, fields);\n' "$c_record" "$1" >"$work/record.c"
    "$CC" -std=c11 -pedantic -Wall -Wextra -Wconversion -Werror -fsyntax-only -I"$include" "$work/record.c" \
        >"$work/log" 2>&1
}
c_compiles 'YAML_FIELD_TEXT(Record, text, "a"), YAML_FIELD_INT(Record, whole, "b", .pcMin = "1"),
    YAML_FIELD_UINT(Record, natural, "c"), YAML_FIELD_DOUBLE(Record, number, "d"), YAML_FIELD_BOOL(Record, flag, "e"),
    YAML_FIELD_DURATION(Record, wide, "f"), YAML_FIELD_BYTES(Record, size, "g", .bRequired = 1),
    YAML_FIELD_RECORD(Record, inner, "h", .pstRecord = &InnerRecord), YAML_FIELD_ARRAY(Record, numbers, count, "i"),
    YAML_FIELD_MAP(Record, pairs, count, "j"), YAML_FIELD_OPTIONAL(Record, text, "k")' || fail "does not compile"
for field in 'TEXT(Record, writable' 'TEXT(Record, whole' 'INT(Record, natural' 'INT(Record, flag' 'UINT(Record, whole' \
    'DOUBLE(Record, whole' 'BOOL(Record, wide' 'DURATION(Record, whole' 'DURATION(Record, size' 'BYTES(Record, wide' \
    'ENUM(Record, text' 'RECORD(Record, whole' 'RECORD(Record, text' 'OPTIONAL(Record, whole' 'OPTIONAL(Record, bytes' \
    'ARRAY(Record, whole, count' 'ARRAY(Record, numbers, whole' 'ARRAY(Record, bytes, count' 'MAP(Record, numbers, count' \
    'UNION(Record, inner, text'; do
    ! c_compiles "YAML_FIELD_$field, \"key\")" || fail "compiles: $field"
done

# Compiles a type with a member, and looks for a sentence in what the compiler says.
cxx_refused() {
    printf '#include <zr_yaml/bind.hpp>\n%s\n' "$1" >"$work/type.cpp"
    if "$CXX" -std=c++17 -fsyntax-only -I"$include" "$work/type.cpp" >"$work/log" 2>&1; then
        fail "compiles: $1"
    else
        grep -q "$2" "$work/log" || fail "is not explained by '$2': $1"
    fi
}
cxx_refused 'struct Server { int *raw; }; ZRYAML_FIELDS(Server, raw)' 'the type of Server::raw cannot be bound'
cxx_refused 'struct Server { std::string_view name; }; ZRYAML_FIELDS(Server, name)' 'bind a std::string'
cxx_refused 'enum class Mode { fast }; struct Server { Mode mode; }; ZRYAML_FIELDS(Server, mode)' 'Server::mode cannot be'
cxx_refused 'struct Other {}; auto x = zryaml::bind<Other>(zryaml::Value());' 'this type cannot be bound'
[ "$failures" -eq 0 ]
