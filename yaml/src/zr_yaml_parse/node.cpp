// SPDX-License-Identifier: Apache-2.0
// Node records: taken from the pool, initialised, given a text, released. Every node is on its document's all-nodes
// list from its allocation to its release.
#include "parse_internal.h"

#include <cstring>

void zryaml::parse::NodeRelease(YamlListNode &stNode) noexcept
{
    if (stNode.uiDataType == YAML_DATATYPE_MAP)
        KeyIndexRelease(stNode);
    if (stNode.pcValue != nullptr)
        ZR_MemFree(stNode.pcValue, yaml_MemHandleGet());
    ZR_MemFree(&stNode, yaml_MemHandleGet());
}

void yaml_NodeInit(YamlListNode *pstNode)
{
    if (memset_s(pstNode, sizeof(*pstNode), 0, sizeof(*pstNode)) != 0) {
        YAML_LOG_ONLY(YAML_LOG_WARN, YAML_ERR_PARAM, "Secure check fail.");
        *pstNode = {};
    }
    pstNode->uiMagic = YAML_NODE_MAGIC;
    ListInit(pstNode->stChildLink);
    ListInit(pstNode->stChildList);
    ListInit(pstNode->stSeqLink);
    ListInit(pstNode->stAllocLink);
    pstNode->uiDataType = YAML_DATATYPE_NONE;
    pstNode->uiNextLevelType = YAML_DATATYPE_NONE;
}

YamlListNode *yaml_ListNodeAlloc(YamlHandle *pstHandle)
{
    auto *pstNode = static_cast<YamlListNode *>(ZR_MemAlloc(sizeof(YamlListNode), yaml_MemHandleGet()));
    if (pstNode == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Allocate memory for list node failed.");
        return nullptr;
    }
    yaml_NodeInit(pstNode);
    pstNode->uiLine = pstHandle->uiLine;
    pstNode->uiColumn = pstHandle->uiColumn;
    ListInsertAfter(pstHandle->stRoot.stAllocLink, pstNode->stAllocLink);
    if (yaml_IsDebugSwitchOpen() == 1)
        pstHandle->uiMemSize += static_cast<uint32_t>(sizeof(YamlListNode));
    return pstNode;
}

void yaml_ListNodeFree(YamlListNode *pstNode)
{
    ChildrenDetach(*pstNode); // they stay with the document, but reach nothing that is released
    ListRemove(pstNode->stAllocLink);
    ListRemove(pstNode->stChildLink);
    ListRemove(pstNode->stSeqLink);
    NodeRelease(*pstNode);
}

char *yaml_ValueDup(YamlHandle *pstHandle, uint32_t uiCountFlag, const char *pcText)
{
    const size_t ulLength = strlen(pcText);
    const uint32_t uiSize = static_cast<uint32_t>(ulLength + 1);
    auto *pcCopy = ulLength < UINT32_MAX ? static_cast<char *>(ZR_MemAlloc(uiSize, yaml_MemHandleGet())) : nullptr;
    if (pcCopy == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to allocate memory to copy value.");
        return nullptr;
    }
    YAML_SECURE(strncpy_s(pcCopy, uiSize, pcText, ulLength));
    if (uiCountFlag == 1 && yaml_IsDebugSwitchOpen() == 1)
        pstHandle->uiMemSize += uiSize;
    return pcCopy;
}

YamlListNode *yaml_ScalarNodeCreate(YamlHandle *pstHandle, const char *pcText)
{
    YamlListNode *pstNode = yaml_ListNodeAlloc(pstHandle);
    if (pstNode == nullptr)
        return nullptr;
    pstNode->pcValue = yaml_ValueDup(pstHandle, 1, pcText);
    if (pstNode->pcValue == nullptr) {
        yaml_ListNodeFree(pstNode);
        return nullptr;
    }
    pstNode->uiDataType = YAML_DATATYPE_SCALAR;
    return pstNode;
}
