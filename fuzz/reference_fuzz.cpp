// SPDX-License-Identifier: Apache-2.0
// Any text as a document, read by the library and by the plain reference: the same tree or the same refusal.
#include "fuzz_support.h"

#include "../tests/support/reference_tree.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    const std::string_view svText(reinterpret_cast<const char *>(pucData), ulSize);
    const Document stDocument = DocumentLoad(svText);
    const bool bLoaded = stDocument != nullptr; // and checked, which has left errors of lookups behind
    const uint32_t uiCode = bLoaded ? YAML_OK : ZRYAML_LastErrorGet()->uiCode;
    const std::string_view svMessage = bLoaded ? "" : ZRYAML_LastErrorGet()->pcRecord;
    const bool bLimit = svMessage.find("(Limit=") != svMessage.npos || svMessage.find("too deep") != svMessage.npos ||
                        svMessage.find("expansion is too large") != svMessage.npos;
    if (bLimit || ulSize > size_t{16} << 10)
        return 0;
    const ReferenceResult stExpected = ReferenceLoad(svText);
    Require(uiCode == stExpected.uiCode, "the reference says otherwise",
            std::to_string(uiCode).append(" ").append(svMessage) + ", not " + std::to_string(stExpected.uiCode));
    if (bLoaded)
        Require(TreeText(*stDocument) == stExpected.text, "the trees differ", stExpected.text);
    return 0;
}
