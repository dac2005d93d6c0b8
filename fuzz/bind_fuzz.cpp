// SPDX-License-Identifier: Apache-2.0
// Any document against a description with fields of every kind: the record is complete or untouched, and the result,
// the problems and the error record agree.
#include "fuzz_support.h"

#include "../tests/support/bound_record.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    const Document document = DocumentLoad({reinterpret_cast<const char *>(pucData), ulSize});
    if (document == nullptr)
        return 0;
    Bound bound = {}, again = {};
    const Bound untouched = {};
    YamlProblems *problems = nullptr;
    const uint32_t code = ZRYAML_RecordRead(document.get(), nullptr, &BoundRecord, &bound, &problems);
    Require(ZRYAML_LastErrorGet()->uiCode == code, "result and error record differ");
    uint32_t errors = 0;
    for (uint32_t index = 0; index < ZRYAML_ProblemCountGet(problems); ++index)
        errors += ZRYAML_ProblemGet(problems, index)->uiLevel == YAML_PROBLEM_ERROR ? 1 : 0;
    ZRYAML_ProblemsFree(problems);
    Require((code == YAML_OK) == (errors == 0), "result and problems differ");
    Require(ZRYAML_RecordRead(document.get(), nullptr, &BoundRecord, &again, nullptr) == code, "a second read differs");
    if (code != YAML_OK) {
        Require(memcmp(&bound, &untouched, sizeof(bound)) == 0, "a refused record is not as it was");
        return 0;
    }
    Require(bound.servers_count == again.servers_count && bound.colour == again.colour, "a second read differs");
    size_t length = 0; // whatever the record points to can be read
    for (uint32_t index = 0; index < bound.servers_count; ++index)
        length += bound.servers[index].name != nullptr ? strlen(bound.servers[index].name) : 0;
    for (uint32_t index = 0; index < bound.ports_count; ++index)
        length += strlen(bound.ports[index].key);
    Require(length <= ulSize * 1000, "texts are longer than the document");
    return 0;
}
