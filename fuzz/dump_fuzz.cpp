// SPDX-License-Identifier: Apache-2.0
// A dump into a buffer of any size, which is the number in the first line, and of sizes at which things change.
#include "fuzz_support.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    const TwoParts stInput = InputSplit(pucData, ulSize);
    const Document stDocument = DocumentLoad(stInput.svBody);
    if (stDocument == nullptr)
        return 0;
    const std::string whole = DumpText(*stDocument);
    const size_t ulAny = strtoul(stInput.head.c_str(), nullptr, 10) % 100000;
    for (const size_t ulBytes : {ulAny, whole.size(), whole.size() + 1, whole.size() / 2})
        DumpCheck(*stDocument, static_cast<uint32_t>(ulBytes), whole);
    return 0;
}
