// SPDX-License-Identifier: Apache-2.0
// Any text as a key path, on two documents with every kind of value and with keys that paths must escape.
#include "fuzz_support.h"

namespace {

constexpr std::string_view g_svMap = "base: &b {p: 1, q: [x, y]}\n"
                                     "copy: {<<: *b, q: [{r: 2}, [3, [4]], []]}\n"
                                     "k.d: {'a[0]': v, '{b}': w, '\\': z, '': {'': n}, '1': {'%s': m}}\n"
                                     "empty: {}\n"
                                     "a: {b: {c: [0, 1, 2]}}\n";
constexpr std::string_view g_svSequence = "- [[0, {a: 1}], [2]]\n"
                                          "- {k: [p, q], k.d: {e: f}}\n"
                                          "- text\n";

YamlHandle &Loaded(std::string_view svText)
{
    YamlHandle *pstHandle = DocumentLoad(svText).release(); // lives as long as the program
    Require(pstHandle != nullptr, "a document of the target does not load");
    return *pstHandle;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    static YamlHandle &stMap = Loaded(g_svMap);
    static YamlHandle &stSequence = Loaded(g_svSequence);
    const std::string input(reinterpret_cast<const char *>(pucData), ulSize);
    const std::string path = input.c_str(); // ends at a NUL
    ZRYAML_DebugSwitchSet(ulSize % 2);
    PathCheck(stMap, path);
    PathCheck(stSequence, path);
    return 0;
}
