// SPDX-License-Identifier: Apache-2.0
// The document handle: initialisation, the stack of open collection events, release of a whole document.
#include "node_store.h"
#include "parse_internal.h"

namespace {

// The whole document goes, so no node is taken out of any list first, and a released one is never looked at again.
void NodesRelease(YamlHandle &stHandle) noexcept
{
    YamlList &stHead = stHandle.stRoot.stAllocLink;
    for (YamlList *pstLink = stHead.next; pstLink != &stHead;) {
        YamlListNode &stNode = *NodeOf(pstLink, NodeLink::Alloc);
        pstLink = pstLink->next;
        NodeRelease(stNode);
    }
}

} // namespace

uint32_t yaml_CurrEventGet(const YamlHandle *pstHandle)
{
    return pstHandle->uiEventDepth == 0 ? 0 : pstHandle->auiEventStack[pstHandle->uiEventDepth - 1];
}

void yaml_EventStartSet(YamlHandle *pstHandle, uint32_t uiEventType)
{
    if (pstHandle->uiEventDepth < YAML_EVENT_STACK_SIZE)
        pstHandle->auiEventStack[pstHandle->uiEventDepth++] = uiEventType;
}

void yaml_EventEndSet(YamlHandle *pstHandle)
{
    if (pstHandle->uiEventDepth > 0)
        pstHandle->auiEventStack[--pstHandle->uiEventDepth] = 0;
}

void yaml_HandleInit(YamlHandle *pstHandle)
{
    YAML_SECURE(memset_s(pstHandle, sizeof(*pstHandle), 0, sizeof(*pstHandle)));
    yaml_NodeInit(&pstHandle->stRoot);
    ListInit(pstHandle->stAnchorList);
    ListInit(pstHandle->stOpenAnchorList);
    ZRYAML_LimitsGet(&pstHandle->stLimits);
    if (DebugSwitch() == 1)
        pstHandle->uiMemSize += static_cast<uint32_t>(sizeof(*pstHandle));
}

void ZRYAML_HandleFree(YamlHandle *pstHandle)
{
    if (pstHandle == nullptr)
        return;
    if (pstHandle->uiOwnBlocks != 0 || pstHandle->uiEventDepth != 0) // an open map may have an index
        NodesRelease(*pstHandle);
    StoreRelease(*pstHandle);
    ZR_MemFree(pstHandle, yaml_MemHandleGet());
}
