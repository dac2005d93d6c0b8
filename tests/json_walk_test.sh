#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# For every document that the project has, the walk in C, the walk in C++ and the command's JSON show the same tree.
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cat >"$work/walk.cpp" <<'PROGRAM'
#include <cstdio>
#include <string>
#include <zr_yaml.hpp>

static std::string Quoted(std::string_view text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        static const std::string short_forms = "\"\\\b\f\n\r\t", letters = "\"\\bfnrt";
        const auto at = short_forms.find(c);
        char code[8];
        std::snprintf(code, sizeof(code), "\\u%04X", static_cast<unsigned>(c));
        quoted += at != std::string::npos ? std::string("\\") + letters[at]
                  : static_cast<unsigned char>(c) < 0x20 ? std::string(code) : std::string(1, c);
    }
    return quoted + "\"";
}

static std::string InC(const YamlListNode *value)
{
    const bool map = ZRYAML_ValueTypeGet(value) == YAML_DATATYPE_MAP;
    if (const char *text = ZRYAML_ValueTextGet(value))
        return Quoted(text);
    std::string json;
    YamlChild child = {};
    while (ZRYAML_ChildNextGet(value, &child) == YAML_OK)
        json += (json.empty() ? "" : ",") + (map ? Quoted(child.pcKey) + ":" : "") + InC(child.pstValue);
    return map ? "{" + json + "}" : "[" + json + "]";
}

static std::string InCxx(zryaml::Value value)
{
    if (value.is_scalar())
        return Quoted(*value.text());
    std::string json;
    if (value.is_map()) {
        for (auto [key, below] : value.items())
            json += (json.empty() ? "" : ",") + Quoted(key) + ":" + InCxx(below);
        return "{" + json + "}";
    }
    for (zryaml::Value below : value)
        json += (json.empty() ? "" : ",") + InCxx(below);
    return "[" + json + "]";
}

int main(int, char **args)
{
    YamlHandle *handle = ZRYAML_FileLoad(args[1]);
    const auto document = zryaml::Document::load(args[1]);
    if (handle == nullptr || ZRYAML_RootGet(handle) == nullptr)
        return handle == nullptr && !document ? 3 : 4;
    std::printf("%s\n%s\n", InC(ZRYAML_RootGet(handle)).c_str(), InCxx((*document).root()).c_str());
    ZRYAML_HandleFree(handle);
}
PROGRAM
libraries=$(dirname "$ZRYAML_LIBRARY")
"$CXX" -std=c++17 -I"$ZRYAML_SOURCE/yaml/include" "$work/walk.cpp" -o "$work/walk" "$ZRYAML_LIBRARY" \
    "-Wl,-rpath,$libraries:$libraries/../base" "-Wl,-rpath-link,$libraries/../base"

compared=0
for file in "$ZRYAML_SOURCE"/examples/*.yaml "$ZRYAML_SOURCE"/fuzz/corpus/file_text_fuzz/*; do
    status=0
    "$work/walk" "$file" >"$work/walked" 2>/dev/null || status=$?
    if [ "$status" -ne 0 ]; then # refused, or empty: then so it is by the command
        ! "$ZRYAML_COMMAND" json "$file" >/dev/null 2>&1 || [ "$status" -eq 4 ] || { echo "FAIL: $file"; exit 1; }
        continue
    fi
    json=$("$ZRYAML_COMMAND" json "$file")
    diff "$work/walked" <(printf '%s\n%s\n' "$json" "$json") || { echo "FAIL: $file"; exit 1; }
    compared=$((compared + 1))
done
[ "$compared" -ge 10 ] || { echo "FAIL: only $compared documents"; exit 1; }
echo "$compared documents read the same"
