// SPDX-License-Identifier: Apache-2.0
// Node records: taken from the store or the pool, initialised, given a text, released. Every node is on its document's
// all-nodes list from its allocation to its release.
#include "node_store.h"
#include "parse_internal.h"

namespace {

// Texts of nodes are counted and go with their document; any other may go earlier and has a block of its own.
char *TextTake(YamlHandle &stHandle, uint32_t uiCountFlag, uint32_t uiSize) noexcept
{
    void *pText = uiCountFlag == 1 ? StoreTake(stHandle, uiSize) : ZR_MemAlloc(uiSize, yaml_MemHandleGet());
    return static_cast<char *>(pText);
}

// A copy that is counted if the flag is 1; NULL if out of memory (logged).
char *TextCopy(YamlHandle &stHandle, uint32_t uiCountFlag, std::string_view svText) noexcept
{
    const size_t ulSize = svText.size() + 1;
    char *pcCopy = ulSize <= UINT32_MAX ? TextTake(stHandle, uiCountFlag, static_cast<uint32_t>(ulSize)) : nullptr;
    if (pcCopy == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to allocate memory to copy value.");
        return nullptr;
    }
    YAML_SECURE(strncpy_s(pcCopy, ulSize, svText.data(), svText.size()));
    if (uiCountFlag == 1 && DebugSwitch() == 1)
        stHandle.uiMemSize += static_cast<uint32_t>(ulSize);
    return pcCopy;
}

} // namespace

// Gives back what a node has beside its document's store.
void zryaml::parse::NodeRelease(YamlListNode &stNode) noexcept
{
    if (stNode.uiDataType == YAML_DATATYPE_MAP)
        KeyIndexRelease(stNode);
    if ((stNode.uiState & NODE_STORED) != 0) {
        stNode.uiMagic = 0; // no walk takes it for a node any more
        return;
    }
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
    auto *pstNode = static_cast<YamlListNode *>(StoreTake(*pstHandle, sizeof(YamlListNode)));
    if (pstNode == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Allocate memory for list node failed.");
        return nullptr;
    }
    yaml_NodeInit(pstNode);
    pstNode->uiLine = pstHandle->uiLine;
    pstNode->uiColumn = pstHandle->uiColumn;
    if (StoreIsOpen(*pstHandle))
        pstNode->uiState = NODE_STORED;
    else
        pstHandle->uiOwnBlocks = 1;
    ListInsertAfter(pstHandle->stRoot.stAllocLink, pstNode->stAllocLink);
    if (DebugSwitch() == 1)
        pstHandle->uiMemSize += static_cast<uint32_t>(sizeof(YamlListNode));
    return pstNode;
}

void yaml_ListNodeFree(YamlListNode *pstNode)
{
    ChildrenDetach(*pstNode); // they stay with the document, but reach nothing that is released
    ListRemove(pstNode->stAllocLink);
    ListRemove(pstNode->stChildLink);
    ListRemove(pstNode->stSeqLink);
    if (pstNode->pstFather != nullptr && pstNode->pstFather->uiDataType == YAML_DATATYPE_SEQ)
        ElementsNumber(*pstNode->pstFather);
    NodeRelease(*pstNode);
}

bool zryaml::parse::TextSet(YamlHandle &stHandle, YamlListNode &stNode, std::string_view svText) noexcept
{
    stNode.pcValue = TextCopy(stHandle, 1, svText);
    stNode.uPlace.uiTextMark = TextMarkOf(svText);
    return stNode.pcValue != nullptr;
}

YamlListNode *zryaml::parse::ScalarCreate(YamlHandle &stHandle, std::string_view svText) noexcept
{
    YamlListNode *pstNode = yaml_ListNodeAlloc(&stHandle);
    if (pstNode == nullptr)
        return nullptr;
    if (!TextSet(stHandle, *pstNode, svText)) {
        yaml_ListNodeFree(pstNode);
        return nullptr;
    }
    pstNode->uiDataType = YAML_DATATYPE_SCALAR;
    return pstNode;
}

char *yaml_ValueDup(YamlHandle *pstHandle, uint32_t uiCountFlag, const char *pcText)
{
    return TextCopy(*pstHandle, uiCountFlag, pcText);
}

YamlListNode *yaml_ScalarNodeCreate(YamlHandle *pstHandle, const char *pcText)
{
    return ScalarCreate(*pstHandle, pcText);
}
