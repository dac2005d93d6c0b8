// SPDX-License-Identifier: Apache-2.0
// The calls of zr_yaml_schema.h. Nothing that is thrown inside gets past them.
#include "zr_yaml_schema.h"

#include "build.h"
#include "run.h"

#include <new>

using namespace zryaml::schema;

namespace {

uint32_t MemoryFault(YamlProblems **problems) noexcept
{
    YamlProblem problem = {};
    problem.uiCode = YAML_ERR_NOMEM;
    problem.pcMessage = "out of memory";
    (void)ZRYAML_ProblemReport(problems, &problem);
    return YAML_ERR_NOMEM;
}

template <class Compile> YamlSchema *Load(YamlProblems **problems, Compile compile) noexcept
{
    if (problems != nullptr)
        *problems = nullptr;
    try {
        auto made = std::make_unique<YamlSchema>();
        Build build(*made, problems);
        return compile(build) ? made.release() : nullptr;
    } catch (...) { // only memory can run short
        (void)MemoryFault(problems);
        return nullptr;
    }
}

void ArgumentFault(YamlProblems **problems, const char *message) noexcept
{
    YamlProblem problem = {};
    problem.uiCode = YAML_ERR_PARAM;
    problem.pcMessage = message;
    (void)ZRYAML_ProblemReport(problems, &problem);
}

} // namespace

YamlSchema *ZRYAML_SchemaLoad(const char *pcPath, YamlProblems **ppstProblems)
{
    return Load(ppstProblems, [&](Build &build) {
        if (pcPath != nullptr)
            return build.FileCompile(pcPath);
        ArgumentFault(ppstProblems, "the path of the schema is missing");
        return false;
    });
}

YamlSchema *ZRYAML_SchemaTextLoad(const char *pcText, size_t ulLength, const char *pcName, YamlProblems **ppstProblems)
{
    return Load(ppstProblems, [&](Build &build) {
        if (pcText != nullptr || ulLength == 0)
            return build.TextCompile({pcText != nullptr ? pcText : "", ulLength}, pcName != nullptr ? pcName : "");
        ArgumentFault(ppstProblems, "the text of the schema is missing");
        return false;
    });
}

uint32_t ZRYAML_SchemaCheck(const YamlSchema *pstSchema, const YamlListNode *pstValue, YamlProblems **ppstProblems)
{
    if (ppstProblems != nullptr)
        *ppstProblems = nullptr;
    if (pstSchema == nullptr) {
        ArgumentFault(ppstProblems, "there is no schema to check against");
        return YAML_ERR_PARAM;
    }
    // The record that heads a document stands for what the document holds, and for itself where that is nothing.
    const bool isHead = pstValue != nullptr && pstValue->pstFather == nullptr;
    const YamlListNode *held = isHead ? ZRYAML_RootGet(ZRYAML_DocumentGet(pstValue)) : nullptr;
    try {
        Run run(held != nullptr ? held : pstValue);
        const Findings findings = run.Whole(*pstSchema->root);
        findings.Report(ppstProblems);
        return findings.IsEmpty() ? YAML_OK : YAML_ERR_SCHEMA;
    } catch (...) {
        return MemoryFault(ppstProblems);
    }
}

void ZRYAML_SchemaFree(YamlSchema *pstSchema)
{
    delete pstSchema;
}
