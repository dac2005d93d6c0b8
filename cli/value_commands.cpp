// SPDX-License-Identifier: Apache-2.0
// The commands about one value: get, size, type and where.
#include "document.h"
#include "output.h"
#include "source.h"
#include "typed_text.h"

namespace zryaml::cli {

namespace {

std::string KindMessage(const YamlListNode &stValue, const char *pcWanted)
{
    return std::string("the value is a ") + TypeName(ZRYAML_ValueTypeGet(&stValue)) + ", not a " + pcWanted;
}

// A default of the wrong type is a mistake on the command line, wherever the path leads.
void DefaultCheck(const Options &stOptions)
{
    if (!stOptions.stDefault || stOptions.stType.empty() || TextHasType(*stOptions.stDefault, stOptions.stType))
        return;
    Diagnostic stDiagnostic;
    stDiagnostic.stMessage = "--default: '" + *stOptions.stDefault + "' is no " + stOptions.stType;
    stDiagnostic.uiCode = YAML_ERR_PARAM;
    throw Failure(Status::Misuse, std::move(stDiagnostic));
}

std::string ScalarGet(const Document &stDocument, const Options &stOptions)
{
    const YamlListNode &stValue = stDocument.Find(stOptions.stPath);
    const char *pcText = ZRYAML_ValueTextGet(&stValue);
    if (pcText == nullptr)
        throw stDocument.Unfit(stValue, YAML_ERR_NOT_SCALAR, KindMessage(stValue, "scalar"));
    if (!stOptions.stType.empty() && !TextHasType(pcText, stOptions.stType))
        throw stDocument.Unfit(stValue, YAML_ERR_PARAM, "'" + std::string(pcText) + "' is no " + stOptions.stType);
    return pcText;
}

} // namespace

Status GetRun(const Options &stOptions)
{
    DefaultCheck(stOptions);
    const Document stDocument(stOptions.stFile);
    try {
        OutputItem(ScalarGet(stDocument, stOptions), stOptions.bNull);
    } catch (const Failure &stFailure) {
        if (!stFailure.IsAbsent() || !stOptions.stDefault)
            throw;
        OutputItem(*stOptions.stDefault, stOptions.bNull);
    }
    return Status::Found;
}

Status SizeRun(const Options &stOptions)
{
    const Document stDocument(stOptions.stFile);
    const YamlListNode &stValue = stDocument.Find(stOptions.stPath);
    if (ZRYAML_ValueTypeGet(&stValue) != YAML_DATATYPE_SEQ)
        throw stDocument.Unfit(stValue, YAML_ERR_NODE_TYPE, KindMessage(stValue, "sequence"));
    OutputItem(std::to_string(ZRYAML_ChildCountGet(&stValue)), false);
    return Status::Found;
}

Status TypeRun(const Options &stOptions)
{
    const Document stDocument(stOptions.stFile);
    try {
        OutputItem(TypeName(ZRYAML_ValueTypeGet(&stDocument.Find(stOptions.stPath))), false);
    } catch (const Failure &stFailure) {
        if (!stFailure.IsAbsent())
            throw;
        OutputItem(TypeName(YAML_DATATYPE_NONE), false);
        return Status::Missing;
    }
    return Status::Found;
}

Status WhereRun(const Options &stOptions)
{
    const Document stDocument(stOptions.stFile);
    uint32_t uiLine = 0;
    uint32_t uiColumn = 0;
    ZRYAML_ValuePositionGet(&stDocument.Find(stOptions.stPath), &uiLine, &uiColumn);
    const std::string stName = stOptions.stFile == g_pcInputArgument ? g_pcInputName : stOptions.stFile;
    OutputItem(stName + ':' + std::to_string(uiLine) + ':' + std::to_string(uiColumn), false);
    return Status::Found;
}

} // namespace zryaml::cli
