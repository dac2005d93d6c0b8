// SPDX-License-Identifier: Apache-2.0
// Stacks of layers, parts of the input between form feeds: documents, "$NAME=text", "--set path=text". Whatever loads
// has a sound tree whose values all know where they came from, and differs from itself in nothing.
#include "fuzz_support.h"

#include "../tests/support/layer_stack.h"

namespace {

void OriginsCheck(const YamlListNode *pstValue)
{
    YamlOrigin stOrigin = YAML_ORIGIN_INIT;
    uint32_t uiShadowed = 0;
    while (ZRYAML_OriginGet(pstValue, uiShadowed, &stOrigin) == YAML_OK)
        Require(stOrigin.pcSource[0] != '\0' && ++uiShadowed < 1000, "an origin without a source, or without an end");
    Require(uiShadowed != 0, "a value without an origin");
    for (uint32_t ui = 0; ZRYAML_ReferenceGet(pstValue, ui) != nullptr; ++ui)
        Require(ZRYAML_ValueTextGet(ZRYAML_ReferenceGet(pstValue, ui)) != nullptr, "a text taken from no scalar");
    YamlChild stChild = YAML_CHILD_INIT;
    while (ZRYAML_ChildNextGet(pstValue, &stChild) == YAML_OK)
        OriginsCheck(stChild.pstValue);
}

std::vector<std::string> Parts(std::string_view svInput)
{
    std::vector<std::string> parts(1);
    for (const char cChar : svInput) {
        if (cChar == '\f')
            parts.emplace_back();
        else
            parts.back() += cChar;
    }
    return parts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    const std::string_view svInput(reinterpret_cast<const char *>(pucData), ulSize);
    const LayerStack stStack(Parts(svInput.substr(ulSize % 2)), static_cast<uint32_t>(ulSize) % 4);
    YamlProblems *pstProblems = nullptr;
    const Document stDocument(stStack.Load(&pstProblems)), stEmpty;
    Require((stDocument == nullptr) == (ZRYAML_LastErrorGet()->uiCode != YAML_OK), "result and record differ");
    Require(stDocument != nullptr || ZRYAML_ProblemCountGet(pstProblems) != 0, "a refusal without a problem");
    ZRYAML_ProblemsFree(pstProblems);
    if (stDocument == nullptr)
        return 0;
    Require(TreeCheck(*stDocument).empty(), "the tree is not sound"); // values that were set have no place to check
    if (const YamlListNode *pstTop = ZRYAML_RootGet(stDocument.get()))
        OriginsCheck(pstTop);
    YamlChange stChange = YAML_CHANGE_INIT;
    Require(ZRYAML_ChangeNext(stDocument.get(), stDocument.get(), &stChange) == YAML_ERR_ITER_END,
            "a change of nothing");
    return 0;
}
