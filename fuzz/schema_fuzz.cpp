// SPDX-License-Identifier: Apache-2.0
// Schema and document from one input: the schema is the first line. Whatever both are, the check ends soon, and its
// result and its list of problems agree.
#include "fuzz_support.h"

#include <zr_yaml_schema.h>

namespace {

void ProblemsCheck(YamlProblems *pstProblems, bool bExpected)
{
    const uint32_t uiCount = ZRYAML_ProblemCountGet(pstProblems);
    Require((uiCount > 0) == bExpected, "result and problems differ");
    for (uint32_t ui = 0; ui < uiCount; ++ui) {
        const YamlProblem &stProblem = *ZRYAML_ProblemGet(pstProblems, ui);
        Require(stProblem.uiLevel == YAML_PROBLEM_ERROR && stProblem.pcMessage[0] != '\0', "a problem says nothing");
    }
    ZRYAML_ProblemsFree(pstProblems);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    const TwoParts stInput = InputSplit(pucData, ulSize);
    YamlProblems *pstProblems = nullptr;
    YamlSchema *pstSchema = ZRYAML_SchemaTextLoad(stInput.head.data(), stInput.head.size(), "schema", &pstProblems);
    ProblemsCheck(pstProblems, pstSchema == nullptr);
    const Document stDocument = DocumentLoad(stInput.svBody);
    if (pstSchema != nullptr && stDocument != nullptr) {
        const uint32_t uiResult = ZRYAML_SchemaCheck(pstSchema, &stDocument->stRoot, &pstProblems);
        ProblemsCheck(pstProblems, uiResult != YAML_OK);
        Require(ZRYAML_SchemaCheck(pstSchema, &stDocument->stRoot, nullptr) == uiResult, "a second check differs");
    }
    ZRYAML_SchemaFree(pstSchema);
    return 0;
}
