// SPDX-License-Identifier: Apache-2.0
// Comparison of scalar texts within one list of keys.
#include "parse_internal.h"

#include <cstring>

namespace {

enum Mode : uint32_t { WrittenOnly = 0, CopiesOnly = 1 }; // any other mode compares with every node

} // namespace

uint32_t yaml_ScalarSameCheck(const YamlListNode *pstListNode, const YamlListNode *pstCandidate, uint32_t uiMode)
{
    if ((uiMode == WrittenOnly || uiMode == CopiesOnly) && pstListNode->uiFromAlias != uiMode)
        return YAML_OK;
    if (pstListNode->pcValue == nullptr || strcmp(pstListNode->pcValue, pstCandidate->pcValue) != 0)
        return YAML_OK;
    return YAML_ERR_SAME;
}

uint32_t yaml_ListSameScalarCheck(const YamlList *pstHead, uint32_t uiMode, const YamlListNode *pstCandidate)
{
    for (const YamlListNode &stKey : NodeRange(*pstHead, NodeLink::Child)) {
        const uint32_t uiResult = yaml_ScalarSameCheck(&stKey, pstCandidate, uiMode);
        if (uiResult != YAML_OK)
            return uiResult;
    }
    return YAML_OK;
}
