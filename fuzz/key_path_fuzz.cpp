// SPDX-License-Identifier: Apache-2.0
// Any text as a key path, on a document with every kind of value and with keys that paths must escape.
#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    static YamlHandle *const pstHandle = // lives as long as the program
        DocumentLoad("base: &b {p: 1, q: [x, y]}\n"
                     "copy: {<<: *b, q: [{r: 2}, [3, [4]], [], [[0, {a: 1}], [2]]]}\n"
                     "k.d: {'a[0]': v, '{b}': w, '\\': z, '': {'': n}, '1': {'%s': m}}\n"
                     "empty: {}\n"
                     "a: {b: {c: [0, 1, 2]}}\n")
            .release();
    ZRYAML_DebugSwitchSet(ulSize % 2);
    PathCheck(*pstHandle, std::string(reinterpret_cast<const char *>(pucData), ulSize).c_str()); // ends at a NUL
    Require(TreeCheck(*pstHandle).empty(), "a lookup changes the tree");
    return 0;
}
