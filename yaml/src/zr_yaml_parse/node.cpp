// SPDX-License-Identifier: Apache-2.0
// The rarer steps in the life of a node record.
#include "node.h"

#include "parse_internal.h"

namespace zryaml::parse {

void RefusalLog() noexcept
{
    YAML_LOG_ONLY(YAML_LOG_WARN, YAML_ERR_PARAM, "Secure check fail.");
}

void NodeClear(YamlListNode &node) noexcept
{
    RefusalLog();
    node = {};
}

static YamlListNode *RecordCreate(YamlHandle &handle, size_t size) noexcept
{
    auto *node = static_cast<YamlListNode *>(StoreTake(handle, size));
    if (node == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Allocate memory for list node failed.");
        return nullptr;
    }
    NodeEnter(handle, *node);
    MemoryCount(handle, sizeof(YamlListNode)); // a copy counts as any other node
    return node;
}

YamlListNode *NodeCreate(YamlHandle &handle) noexcept
{
    return RecordCreate(handle, sizeof(YamlListNode));
}

YamlListNode *CopyCreate(YamlHandle &handle, const YamlListNode &source) noexcept
{
    YamlListNode *node = RecordCreate(handle, sizeof(CopiedNode));
    if (node == nullptr)
        return nullptr;
    reinterpret_cast<CopiedNode *>(node)->written = WrittenPlaceOf(source);
    node->uiState |= NODE_COPY;
    return node;
}

void NodeFree(YamlListNode &node) noexcept
{
    ChildrenDetach(node); // they stay with the document, but reach nothing that is released
    ListRemove(node.stAllocLink);
    ListRemove(node.stChildLink);
    ListRemove(node.stSeqLink);
    if (node.pstFather != nullptr && node.pstFather->uiDataType == YAML_DATATYPE_SEQ)
        ElementsNumber(*node.pstFather);
    NodeRelease(node);
}

// Gives back what a node has beside its document's store.
void NodeRelease(YamlListNode &node) noexcept
{
    KeyIndexDrop(node);
    if ((node.uiState & NODE_STORED) != 0) {
        node.uiMagic = 0; // no walk takes it for a node any more
        return;
    }
    if (node.pcValue != nullptr)
        ZR_MemFree(node.pcValue, yaml_MemHandleGet());
    ZR_MemFree(&node, yaml_MemHandleGet());
}

// A text that is not counted may be released before its document, so it has a block of its own.
char *TextCopy(YamlHandle &handle, bool counted, std::string_view text) noexcept
{
    const size_t size = text.size() + 1;
    void *block = nullptr;
    if (size <= UINT32_MAX)
        block = counted ? StoreTake(handle, size) : ZR_MemAlloc(static_cast<uint32_t>(size), yaml_MemHandleGet());
    if (block == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to allocate memory to copy value.");
        return nullptr;
    }
    auto *copy = static_cast<char *>(block);
    if (strncpy_s(copy, size, text.data(), text.size()) != 0)
        RefusalLog();
    if (counted)
        MemoryCount(handle, size);
    return copy;
}

bool TextSet(YamlHandle &handle, YamlListNode &node, std::string_view text) noexcept
{
    node.pcValue = TextCopy(handle, true, text);
    node.uPlace.uiTextMark = TextMarkOf(text);
    return node.pcValue != nullptr;
}

YamlListNode *ScalarCreateSlowly(YamlHandle &handle, std::string_view text) noexcept
{
    YamlListNode *scalar = NodeCreate(handle);
    if (scalar == nullptr)
        return nullptr;
    if (!TextSet(handle, *scalar, text)) {
        NodeFree(*scalar);
        return nullptr;
    }
    scalar->uiDataType = YAML_DATATYPE_SCALAR;
    return scalar;
}

} // namespace zryaml::parse
