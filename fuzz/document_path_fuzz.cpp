// SPDX-License-Identifier: Apache-2.0
// Document and key path from one input: the path is the first line.
#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    const TwoParts stInput = InputSplit(pucData, ulSize);
    ZRYAML_DebugSwitchSet(ulSize % 2);
    if (const Document stDocument = DocumentLoad(stInput.svBody))
        PathCheck(*stDocument, stInput.head);
    return 0;
}
