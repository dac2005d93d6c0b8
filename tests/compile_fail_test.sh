#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What the C++ face must refuse to compile, in C++17 and C++20. Each refused line stands in the frame below; the frame
# with all accepted lines must compile without a warning, with and without exceptions and RTTI.
set -euo pipefail

include=$ZRYAML_SOURCE/yaml/include
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
snippets=0

# A function body with a document, a value and a result in sight.
frame='#include <zr_yaml.hpp>
using namespace zryaml;
enum class Colour { red };
void test(const Document &doc, Value v, Result<Document> &r, Result<bool> &rb);
void test(const Document &doc, Value v, Result<Document> &r, Result<bool> &rb)
{
    (void)doc, (void)v, (void)r, (void)rb;
    STATEMENT
}'

accepted='
    { (void)doc["a"][0]["b"].get<int>(); }
    { int i = 0; (void)v[i]; (void)v[0U]; (void)v[std::size_t{0}]; (void)v[std::string("a")]; }
    { (void)doc.at("a.{}[{}]", std::string("k"), 1L); (void)doc.at(std::string("a.b")); }
    { (void)r->root(); (void)(*r).root(); (void)r.value()["a"]; Document d = std::move(r).value(); (void)d.root(); }
    { for (auto [key, value] : doc["a"].items()) (void)key, (void)value; }
    { for (Value e : doc["a"]["b"]) (void)e; }
    { for (int e : v.get<std::vector<int>>().value()) (void)e; }
    { if (v) (void)*v.get<std::chrono::milliseconds>(); }
    { if (r) return; }
    { if (rb.has_value() && *rb) return; }
    { (void)v.get_or<std::uint16_t>(80); (void)v.get_or("text"); (void)v.get_or(std::string_view("x")); }
    static_assert(sizeof(Value) <= 3 * sizeof(void *), "a value is a light view");
#if __cplusplus > 201703L
    static_assert(std::forward_iterator<ChildIterator<Value>> && std::forward_iterator<ChildIterator<Item>>);
#endif'

refused=(
    # Copies of a document.
    'Document x = doc;'
    'Document x = r.value();'
    'Document x = *r;'
    'Document x = r.or_throw();'
    'r.value() = doc;'
    # A result or value taken for what it holds.
    'int x = v.get<int>();'
    'int x = v.get_or(1);'
    'std::string_view x = v.text();'
    'bool x = v;'
    'bool x = rb;'
    'if (rb) return;'
    'if (v.get_or(true)) return;'
    'if (v["a"] == "text") return;'
    'if (v == v) return;'
    'Result<Error> x = Error();'
    'Result<int &> x = Error();'
    # Texts that may be NULL, and what is behind a value.
    'auto x = Document::load(nullptr);'
    'auto x = Document::parse(0);'
    'auto x = Document::parse(nullptr, "name");'
    'Value x(nullptr);'
    'Value x = v.node();'
    # Answers that are dropped.
    'v.get<int>();'
    'doc["a"];'
    'Document::parse("a: 1");'
)
refuse() { # refuse BEFORE AFTER WORD...   each word, between what stands before and behind it
    local word
    for word in "${@:3}"; do refused+=("$1$word$2"); done
}
# Values of a document that is gone at the end of the statement; types that are not read; keys, indices and arguments.
refuse 'Value x = ' ';' 'Document::parse("a: 1").value().root()' 'Document::parse("a: 1").value()["a"]' \
    'Document::parse("[1]").value()[0]' 'Document::parse("a: 1").value().at("a")' '(*Document::parse("a: 1")).at("a")' \
    'Document::parse("a: 1")->root()' 'std::move(r)->root()' 'Document::parse("a: 1").or_throw()["a"]'
refuse 'auto x = v.get<' '>();' char wchar_t 'const char *' 'int *' 'const int' 'int &' 'long double' Colour void Value \
    'std::vector<char>' 'std::chrono::duration<double>' 'std::chrono::duration<char>'
refuse 'auto x = v.get_or(' ');' "'x'" nullptr
refuse '(void)v[' '];' nullptr true "'a'" 1.0 Colour::red
refuse '(void)doc[' '];' nullptr false
refuse '(void)v.at(' ');' 0 nullptr
refuse '(void)doc.at(' ');' 0 '0, 1'
refuse '(void)v.at("a.{}", ' ');' 1.0 true "'c'" nullptr v Colour::red 'static_cast<const void *>("")'

warnings='-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wcast-qual -Wundef'

# Makes the header quick to include in one mode.
precompile() {
    printf '#include <zr_yaml.hpp>\n' >"$work/face.hpp"
    # shellcheck disable=SC2086 # a mode is several words, as below
    "$CXX" $1 -I"$include" -x c++-header "$work/face.hpp" -o "$work/face.hpp.gch"
}

# Compiles the frame around a statement in one mode.
compiles() {
    snippets=$((snippets + 1))
    printf '%s\n' "${frame/STATEMENT/"$2"}" >"$work/snippet.cpp"
    # shellcheck disable=SC2086
    "$CXX" -fsyntax-only $1 -I"$include" -include "$work/face.hpp" "$work/snippet.cpp" >"$work/log" 2>&1
}

fail() {
    echo "FAIL: $1"
    sed 's/^/    /' "$work/log"
    failures=$((failures + 1))
}

for standard in -std=c++17 -std=c++20; do
    for mode in "$standard $warnings -Werror" "$standard $warnings -Werror -fno-exceptions -fno-rtti"; do
        precompile "$mode"
        compiles "$mode" "$accepted" || fail "does not compile ($mode): what is accepted"
    done
    # Of the warnings only the one for a dropped answer counts as a refusal.
    mode="$standard -Werror=unused-result"
    precompile "$mode"
    compiles "$mode" "$accepted" || fail "does not compile ($mode): what is accepted"
    for statement in "${refused[@]}"; do
        ! compiles "$mode" "$statement" || fail "compiles ($mode): $statement"
    done
done
echo "$snippets snippets, $failures failed"
[ "$failures" -eq 0 ]
