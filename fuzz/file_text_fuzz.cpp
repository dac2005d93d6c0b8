// SPDX-License-Identifier: Apache-2.0
// Any text as a document: whatever loads has a sound tree, which all ways of reading show alike.
#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    ZRYAML_DebugSwitchSet(ulSize % 2); // with the switch on, loads trace and count, and reads are marked
    (void)DocumentLoad({reinterpret_cast<const char *>(pucData), ulSize});
    return 0;
}
