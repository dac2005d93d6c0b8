// SPDX-License-Identifier: Apache-2.0
// The exported operations on single nodes and on the handle.
#include "event_stack.h"
#include "handle.h"
#include "node.h"
#include "parse_internal.h"

#include <cstring>

using namespace zryaml;
using namespace zryaml::parse;

void yaml_NodeInit(YamlListNode *pstNode)
{
    NodeInit(*pstNode);
}

YamlListNode *yaml_ListNodeAlloc(YamlHandle *pstHandle)
{
    return NodeCreate(*pstHandle);
}

void yaml_ListNodeFree(YamlListNode *pstNode)
{
    if (pstNode->pstFather != nullptr)
        KeyIndexDrop(*pstNode->pstFather);
    NodeFree(*pstNode);
}

char *yaml_ValueDup(YamlHandle *pstHandle, uint32_t uiCountFlag, const char *pcText)
{
    return TextCopy(*pstHandle, uiCountFlag == 1, pcText);
}

YamlListNode *yaml_ScalarNodeCreate(YamlHandle *pstHandle, const char *pcText)
{
    return ScalarCreate(*pstHandle, pcText);
}

uint32_t yaml_ScalarSameCheck(const YamlListNode *pstListNode, const YamlListNode *pstCandidate, uint32_t uiMode)
{
    enum Mode : uint32_t { WrittenOnly = 0, CopiesOnly = 1 }; // any other mode compares with every node
    if ((uiMode == WrittenOnly || uiMode == CopiesOnly) && pstListNode->uiFromAlias != uiMode)
        return YAML_OK;
    if (pstListNode->pcValue == nullptr || strcmp(pstListNode->pcValue, pstCandidate->pcValue) != 0)
        return YAML_OK;
    return YAML_ERR_SAME;
}

uint32_t yaml_ListSameScalarCheck(const YamlList *pstHead, uint32_t uiMode, const YamlListNode *pstCandidate)
{
    for (const YamlListNode &key : NodeRange(*pstHead, NodeLink::Child)) {
        const uint32_t result = yaml_ScalarSameCheck(&key, pstCandidate, uiMode);
        if (result != YAML_OK)
            return result;
    }
    return YAML_OK;
}

uint32_t yaml_FirstNodeCheck(const YamlListNode *pstNode)
{
    return IsFirstChild(*pstNode) ? 1 : 0;
}

void yaml_FatherNodeNextLevelTypeSet(YamlListNode *pstNode, uint32_t uiDataType)
{
    if (pstNode->pstFather != nullptr)
        ChildTypeFix(*pstNode->pstFather, uiDataType);
}

uint32_t yaml_CurrEventGet(const YamlHandle *pstHandle)
{
    return OpenEventOf(*pstHandle);
}

void yaml_EventStartSet(YamlHandle *pstHandle, uint32_t uiEventType)
{
    EventPush(*pstHandle, uiEventType);
}

void yaml_EventEndSet(YamlHandle *pstHandle)
{
    EventPop(*pstHandle);
}

void yaml_HandleInit(YamlHandle *pstHandle)
{
    HandleInit(*pstHandle);
}
