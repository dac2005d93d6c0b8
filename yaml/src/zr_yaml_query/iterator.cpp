// SPDX-License-Identifier: Apache-2.0
// Iterators over the scalar pairs below a key: of a map each key with a scalar value, of a sequence the first key of
// each element that is a map, if its value is a scalar. They only read the tree.
#include "key_query.h"

using namespace zryaml;
using namespace zryaml::query;

namespace {

// The key whose pair an entry gives: of a map the key itself, of a sequence the first key of an element that is a map.
// NULL if the entry is passed over.
const YamlListNode *QualifyingKey(const YamlListNode &entry, bool isElement) noexcept
{
    const YamlListNode *key = &entry;
    if (isElement)
        key = entry.uiDataType == YAML_DATATYPE_MAP ? FirstChild(entry) : nullptr;
    const bool isScalar = key != nullptr && key->uiNextLevelType == YAML_DATATYPE_SCALAR && HasChildren(*key);
    return isScalar ? key : nullptr;
}

// Yields the first qualifying entry from a place on; the walk ends at the list's head.
uint32_t PairYield(NodeRange::Iterator entry, YamlIterator &iter, NodeLink by, YamlKeyValue &pair) noexcept
{
    for (; !(entry == NodeRange::End{}); ++entry) {
        const YamlListNode *key = QualifyingKey(*entry, by == NodeLink::Seq);
        if (key != nullptr) {
            ReadMark(*key);
            iter.pstCurrNode = &*entry;
            pair = {key->pcValue, FirstChild(*key)->pcValue};
            return YAML_OK;
        }
    }
    return YAML_ERR_ITER_END;
}

uint32_t PairFirst(YamlIterator &iter, NodeLink by, YamlKeyValue &pair) noexcept
{
    return PairYield(NodeRange(iter.pstCurrNode->stChildList, by).begin(), iter, by, pair);
}

uint32_t PairAfter(const YamlListNode &entry, YamlIterator &iter, NodeLink by, YamlKeyValue &pair) noexcept
{
    return PairYield({LinkOf(entry, by).next, &iter.pstFatherNode->stChildList, by}, iter, by, pair);
}

// The first pair of a walk of any type but a map's is looked for as in a sequence,
uint32_t PairFirst(YamlIterator &iter, YamlKeyValue &pair) noexcept
{
    return PairFirst(iter, iter.uiIterType == YAML_DATATYPE_MAP ? NodeLink::Child : NodeLink::Seq, pair);
}

// and there is none after it, whatever the entry is, NULL too.
uint32_t PairAfter(uint32_t type, const YamlListNode *entry, YamlIterator &iter, YamlKeyValue &pair) noexcept
{
    if (type != YAML_DATATYPE_SEQ && type != YAML_DATATYPE_MAP)
        return YAML_ERR_PARAM;
    return PairAfter(*entry, iter, type == YAML_DATATYPE_MAP ? NodeLink::Child : NodeLink::Seq, pair);
}

// The map or sequence below a key, or NULL (logged).
YamlListNode *ContainerBelow(const YamlListNode &node) noexcept
{
    const uint32_t uiType = node.uiNextLevelType;
    if (uiType != YAML_DATATYPE_SEQ && uiType != YAML_DATATYPE_MAP) {
        YAML_LOG(YAML_LOG_WARN, YAML_ERR_PARAM,
                 "The node style below the destination is not map or sequence. (DataType=%u)", uiType);
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOT_FOUND, "Can not get the specified iterator.");
        return nullptr;
    }
    // By the type below alone: the maps of a sequence hang by the other link, and are no container of its own.
    const NodeLink by = uiType == YAML_DATATYPE_SEQ ? NodeLink::Seq : NodeLink::Child;
    YamlListNode *container = NodeOf(node.stChildList.next, by);
    const bool hangsSo = ChildLinkOf(node) == by && HasChildren(node);
    if (!hangsSo || !IsNode(*container)) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOT_FOUND, "Can not get the specified iterator.");
        return nullptr;
    }
    return container;
}

YamlIterator *IteratorAlloc(uint32_t type, YamlListNode *container) noexcept
{
    auto *iter = static_cast<YamlIterator *>(ZR_MemAlloc(sizeof(YamlIterator), yaml_MemHandleGet()));
    if (iter == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to alloc memory for create iterator. (Size=%u)",
                 static_cast<uint32_t>(sizeof(YamlIterator)));
        return nullptr;
    }
    *iter = {YAML_NODE_MAGIC, type, container, container};
    return iter;
}

} // namespace

YamlIterator *yaml_IteratorCreate(YamlHandle *pstHandle, const char *pcKeyFormat, ...)
{
    ErrorClear();
    if (pstHandle == nullptr || pcKeyFormat == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "The parameter is invalid to get iterator.");
        return nullptr;
    }
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    KeyQuery query(*pstHandle, pcKeyFormat, stArgs);
    va_end(stArgs);
    YamlListNode *pstNode = query.NodeFind().pstNode;
    if (pstNode == nullptr)
        return nullptr;
    YamlListNode *container = ContainerBelow(*pstNode);
    if (container != nullptr)
        return IteratorAlloc(pstNode->uiNextLevelType, container);
    query.NodeExplain(*pstNode, "a map, or the sequence of a key");
    return nullptr;
}

YamlListNode *yaml_IteratorGetByNode(YamlListNode *pstNode)
{
    return ContainerBelow(*pstNode);
}

uint32_t yaml_NextKeyValueGet(YamlIterator *pstIter, YamlKeyValue *pstKeyValue)
{
    ErrorClear();
    if (pstIter == nullptr || pstKeyValue == nullptr)
        return YAML_FAIL(YAML_ERR_PARAM, "The input parameter is invalid to get key and value.");
    if (pstIter->uiMagic != YAML_NODE_MAGIC)
        return YAML_FAIL(YAML_ERR_PARAM, "The input iterator is invalid.");
    if (pstIter->pstCurrNode == pstIter->pstFatherNode)
        return PairFirst(*pstIter, *pstKeyValue);
    return PairAfter(pstIter->uiIterType, pstIter->pstCurrNode, *pstIter, *pstKeyValue);
}

uint32_t yaml_FirstKeyValueGet(YamlIterator *pstIter, YamlKeyValue *pstKeyValue)
{
    return PairFirst(*pstIter, *pstKeyValue);
}

uint32_t yaml_FirstMapNodeGet(YamlIterator *pstIter, YamlKeyValue *pstKeyValue)
{
    return PairFirst(*pstIter, NodeLink::Child, *pstKeyValue);
}

uint32_t yaml_FirstSeqNodeGet(YamlIterator *pstIter, YamlKeyValue *pstKeyValue)
{
    return PairFirst(*pstIter, NodeLink::Seq, *pstKeyValue);
}

uint32_t yaml_KeyValueGet(uint32_t uiType, YamlListNode *pstNode, YamlIterator *pstIter, YamlKeyValue *pstKeyValue)
{
    return PairAfter(uiType, pstNode, *pstIter, *pstKeyValue);
}

uint32_t yaml_NextKeyValueGetInMap(YamlListNode *pstNode, YamlIterator *pstIter, YamlKeyValue *pstKeyValue)
{
    return PairAfter(*pstNode, *pstIter, NodeLink::Child, *pstKeyValue);
}

uint32_t yaml_NextKeyValueGetInSeq(YamlListNode *pstNode, YamlIterator *pstIter, YamlKeyValue *pstKeyValue)
{
    return PairAfter(*pstNode, *pstIter, NodeLink::Seq, *pstKeyValue);
}

void yaml_IteratorDestroy(YamlIterator *pstIter)
{
    if (pstIter == nullptr || pstIter->uiMagic != YAML_NODE_MAGIC)
        return;
    pstIter->uiMagic = 0; // so that a stale pointer is not taken for an iterator
    ZR_MemFree(pstIter, yaml_MemHandleGet());
}
