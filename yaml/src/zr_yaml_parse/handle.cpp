// SPDX-License-Identifier: Apache-2.0
// The document handle: initialisation, and release of a whole document.
#include "handle.h"

#include "../kept_memory.h"
#include "../layering.h"
#include "key_search.h"
#include "node.h"
#include "node_store.h"
#include "parse_internal.h"

using namespace zryaml;
using namespace zryaml::parse;

namespace {

// All nodes go, so none is taken out of a list first, and none is looked at after its release.
void NodesRelease(YamlHandle &handle) noexcept
{
    YamlList &head = handle.stRoot.stAllocLink;
    for (YamlList *link = head.next; link != &head;) {
        YamlListNode &node = *NodeOf(link, NodeLink::Alloc);
        link = link->next;
        NodeRelease(node);
    }
}

} // namespace

void zryaml::parse::HandleInit(YamlHandle &handle) noexcept
{
    YAML_SECURE(memset_s(&handle, sizeof(handle), 0, sizeof(handle)));
    NodeInit(handle.stRoot);
    ListInit(handle.stAnchorList);
    ListInit(handle.stOpenAnchorList);
    ZRYAML_LimitsGet(&handle.stLimits);
    MemoryCount(handle, sizeof(handle));
}

void ZRYAML_HandleFree(YamlHandle *pstHandle)
{
    if (pstHandle == nullptr)
        return;
    if (__atomic_load_n(&pstHandle->ulHolds, __ATOMIC_RELAXED) != 0)
        return YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "The document belongs to a watch: release it. (Name=%s)",
                        ZRYAML_NameGet(pstHandle));
    if (pstHandle->uiOwnBlocks != 0)
        NodesRelease(*pstHandle);
    KeyIndexesRelease(*pstHandle);
    StoreRelease(*pstHandle);
    KeptRelease(*pstHandle);
    LayeringRelease(*pstHandle);
    ZR_MemFree(pstHandle, yaml_MemHandleGet());
}
