// SPDX-License-Identifier: Apache-2.0
// Key paths and steps as zr_yaml_path.h offers them.
#include "../record_size.h"
#include "../value_lookup.h"
#include "read_mark.h"

#include <zr_yaml_path.h>

using namespace zryaml;
using namespace zryaml::query;

namespace {

uint32_t StepTake(const YamlListNode *from, const char *key, size_t length, uint64_t index,
                  const YamlListNode *&to) noexcept
{
    return key != nullptr ? KeyTake(from, {key, length}, to) : IndexTake(from, index, to);
}

} // namespace

uint32_t ZRYAML_PathStepNext(YamlPathStep *pstStep)
{
    if (pstStep == nullptr || !RecordFits(*pstStep))
        return YAML_ERR_PARAM;
    PathReader reader({pstStep->pcRest, pstStep->ulRest}, pstStep->uiPlaceholders != 0, pstStep->uiSeparated != 0);
    PathStep step;
    if (!reader.Next(step)) {
        const PathFault fault = reader.Fault();
        if (fault == PathFault::None)
            return YAML_ERR_ITER_END;
        ErrorClear();
        ErrorNote(PathFaultCode(fault), "%s", "");
        PathFaultExplain(fault);
        return PathFaultCode(fault);
    }
    const std::string_view rest = reader.Rest();
    pstStep->pcRest = rest.data();
    pstStep->ulRest = rest.size();
    pstStep->pcText = step.text.data();
    pstStep->ulLength = step.text.size();
    pstStep->ulIndex = step.index;
    pstStep->uiIsIndex = step.isIndex ? 1 : 0;
    pstStep->uiSeparated = reader.Separated() ? 1 : 0;
    return YAML_OK;
}

size_t ZRYAML_PathKeyRead(const char *pcText, size_t ulLength, char *pcBuf)
{
    return NameUnescape({pcText, ulLength}, pcBuf, ulLength);
}

uint32_t ZRYAML_PathKeyWrite(const char *pcKey, size_t ulLength, uint32_t uiBufSize, char *pcBuf)
{
    PathWriter path(pcBuf, uiBufSize);
    path.KeyPut({pcKey, ulLength});
    return static_cast<uint32_t>(path.End());
}

uint32_t ZRYAML_StepTake(const YamlListNode *pstValue, const char *pcKey, size_t ulKeyLen, uint64_t ulIndex,
                         const YamlListNode **ppstFound)
{
    const YamlListNode *found = nullptr;
    const uint32_t uiCode = StepTake(pstValue, pcKey, ulKeyLen, ulIndex, found);
    if (uiCode == YAML_OK) {
        ReadMark(*found);
        *ppstFound = found;
    }
    return uiCode;
}

uint32_t ZRYAML_StepExplain(const YamlListNode *pstValue, const char *pcKey, size_t ulKeyLen, uint64_t ulIndex)
{
    ErrorClear();
    const YamlListNode *found = nullptr;
    const uint32_t uiCode = StepTake(pstValue, pcKey, ulKeyLen, ulIndex, found);
    if (uiCode == YAML_OK)
        return YAML_OK;
    ErrorNote(uiCode, "%s", "");
    if (pcKey != nullptr)
        KeyMissExplain(pstValue, {pcKey, ulKeyLen});
    else
        IndexMissExplain(pstValue, ulIndex);
    return uiCode;
}

uint32_t ZRYAML_KindExplain(const YamlListNode *pstValue, uint32_t uiWanted)
{
    const uint32_t uiCode = uiWanted == YAML_DATATYPE_SCALAR ? YAML_ERR_NOT_SCALAR : YAML_ERR_NODE_TYPE;
    ErrorClear();
    ErrorNote(uiCode, "%s", "");
    KindExplain(*pstValue, KindName(uiWanted));
    return uiCode;
}
