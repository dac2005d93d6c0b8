// SPDX-License-Identifier: Apache-2.0
// The C++ face on any document, with a path from the first line: it finds what the C interface finds, all ways to a
// value agree, and an absent value at any depth explains itself.
#include "fuzz_support.h"

#include "../tests/support/cxx_check.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    const auto [path, svBody] = InputSplit(pucData, ulSize);
    const auto stLoaded = zryaml::Document::parse(svBody, "fuzz");
    if (!stLoaded)
        return ErrorCheck(stLoaded.error()), 0;
    const zryaml::Value stRoot = stLoaded->root(), stFound = stRoot.at(path);
    if (stFound && !path.empty())
        Require(stFound.node() == ZRYAML_PathFind(stLoaded->handle(), path.c_str()), "in C a path differs", path);
    DocumentCheck(*stLoaded->handle());
    int32_t iRest = 500;
    (void)TextsRead(stRoot, stRoot, iRest);
    for (const auto &stAny : {stFound, stFound[path], stFound[3], stFound["x"][0].at(path)})
        ValueCheck(stAny);
    return 0;
}
