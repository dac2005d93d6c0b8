// SPDX-License-Identifier: Apache-2.0
// The two value queries by key path: the text of a scalar and the size of a sequence.
#include "../value_source.h"
#include "key_query.h"

#include <time.h>

using namespace zryaml;
using namespace zryaml::query;

namespace {

char *ScalarGet(YamlHandle &handle, KeyQuery &query) noexcept
{
    struct timespec start = {};
    const bool isTimed = DebugSwitch() != 0;
    if (isTimed)
        yaml_StartPoint(&start);
    YamlListNode *node = query.NodeFind().pstNode;
    if (node == nullptr)
        return nullptr;
    char *text = nullptr;
    if (query.Indexed() != 1 && !HasChildren(*node)) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "There is not any data in the child list.");
    } else {
        text = yaml_NodeValueGet(node, query.Indexed());
        if (isTimed)
            yaml_QueryDbgInfoRecord(&handle, &start);
    }
    if (text == nullptr)
        query.NodeExplain(*node, "a scalar");
    return text;
}

// The sequence that an element is, or that is the value of a key; NULL if there is none (logged).
const YamlListNode *SeqOf(const YamlListNode &node, bool isElement) noexcept
{
    const uint32_t type = isElement ? node.uiDataType : node.uiNextLevelType;
    if (type != YAML_DATATYPE_SEQ) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NODE_TYPE, "The value for specified key is not sequence node. (DataType=%u)",
                 type);
        return nullptr;
    }
    const YamlListNode *seq = isElement ? &node : nullptr;
    if (!isElement && HasChildren(node))
        seq = NodeOf(node.stChildList.next, NodeLink::Seq);
    if (seq != nullptr && IsNode(*seq) && seq->uiDataType == YAML_DATATYPE_SEQ)
        return seq;
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NODE_TYPE, "The current node is not sequence node. (DataType=%u)",
             ZRYAML_ValueTypeGet(seq));
    return nullptr;
}

uint32_t SizeGet(KeyQuery &query) noexcept
{
    const YamlListNode *node = query.NodeFind().pstNode;
    if (node == nullptr)
        return 0;
    const YamlListNode *seq = SeqOf(*node, query.Indexed() == 1);
    if (seq == nullptr) {
        query.NodeExplain(*node, "a sequence");
        return 0;
    }
    uint32_t count = 0;
    for ([[maybe_unused]] const YamlListNode &element : Children(*seq))
        ++count;
    return count;
}

} // namespace

char *ZRYAML_PropertyGet(YamlHandle *pstHandle, const char *pcKeyFormat, ...)
{
    ErrorClear();
    if (pstHandle == nullptr || pcKeyFormat == nullptr) {
        ErrorNote(YAML_ERR_PARAM, "The parameter is null."); // not logged
        return nullptr;
    }
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    KeyQuery query(*pstHandle, pcKeyFormat, stArgs);
    va_end(stArgs);
    return ScalarGet(*pstHandle, query);
}

uint32_t ZRYAML_ArraySizeGet(YamlHandle *pstHandle, const char *pcKeyFormat, ...)
{
    ErrorClear();
    if (pstHandle == nullptr || pcKeyFormat == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "The input parameter is invalid. (Handle=%p, Key=%p)",
                 static_cast<const void *>(pstHandle), static_cast<const void *>(pcKeyFormat));
        return 0;
    }
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    KeyQuery query(*pstHandle, pcKeyFormat, stArgs);
    va_end(stArgs);
    return SizeGet(query);
}

char *yaml_NodeValueGet(YamlListNode *pstNode, uint32_t uiIndexed)
{
    YamlListNode *pstValue = uiIndexed == 1 ? pstNode : FirstChild(*pstNode);
    if (pstValue == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "There is not any data in the child list.");
        return nullptr;
    }
    const YamlListNode *first = nullptr;
    switch (pstValue->uiDataType) {
    case YAML_DATATYPE_SCALAR:
        return pstValue->pcValue;
    case YAML_DATATYPE_MAP:
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOT_SCALAR, "The specified node is a map node.");
        break;
    case YAML_DATATYPE_SEQ:
        first = FirstChild(*pstValue);
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOT_SCALAR,
                 "The specified node is not scalar node or has many sequence nodes. (DataType=%u)",
                 first != nullptr ? first->uiDataType : YAML_DATATYPE_NONE);
        break;
    default:
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "The type in specified node is invalid. (DataType=%u)",
                 pstValue->uiDataType);
        break;
    }
    ErrorPlaceAdd(pstValue->uiLine, pstValue->uiColumn);
    ErrorFileAdd(SourceNameOf(pstValue));
    return nullptr;
}
