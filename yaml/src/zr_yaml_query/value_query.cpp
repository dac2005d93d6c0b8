// SPDX-License-Identifier: Apache-2.0
// The two value queries by key path: the text of a scalar and the size of a sequence.
#include "../value_source.h"
#include "key_query.h"

#include <time.h>

using namespace zryaml;
using namespace zryaml::query;

namespace {

char *ScalarGet(YamlHandle &stHandle, KeyQuery &stQuery) noexcept
{
    struct timespec stStart = {};
    const bool bTimed = DebugSwitch() != 0;
    if (bTimed)
        yaml_StartPoint(&stStart);
    YamlListNode *pstNode = stQuery.NodeFind().pstNode;
    if (pstNode == nullptr)
        return nullptr;
    char *pcText = nullptr;
    if (stQuery.Indexed() != 1 && !HasChildren(*pstNode)) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "There is not any data in the child list.");
    } else {
        pcText = yaml_NodeValueGet(pstNode, stQuery.Indexed());
        if (bTimed)
            yaml_QueryDbgInfoRecord(&stHandle, &stStart);
    }
    if (pcText == nullptr)
        stQuery.NodeExplain(*pstNode, "a scalar");
    return pcText;
}

// The sequence that an element is, or that is the value of a key; NULL if there is none (logged).
const YamlListNode *SeqOf(const YamlListNode &stNode, bool bElement) noexcept
{
    const uint32_t uiType = bElement ? stNode.uiDataType : stNode.uiNextLevelType;
    if (uiType != YAML_DATATYPE_SEQ) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NODE_TYPE, "The value for specified key is not sequence node. (DataType=%u)",
                 uiType);
        return nullptr;
    }
    const YamlListNode *pstSeq = bElement ? &stNode : nullptr;
    if (!bElement && HasChildren(stNode))
        pstSeq = NodeOf(stNode.stChildList.next, NodeLink::Seq);
    if (pstSeq != nullptr && IsNode(*pstSeq) && pstSeq->uiDataType == YAML_DATATYPE_SEQ)
        return pstSeq;
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NODE_TYPE, "The current node is not sequence node. (DataType=%u)",
             ZRYAML_ValueTypeGet(pstSeq));
    return nullptr;
}

uint32_t SizeGet(KeyQuery &stQuery) noexcept
{
    const YamlListNode *pstNode = stQuery.NodeFind().pstNode;
    if (pstNode == nullptr)
        return 0;
    const YamlListNode *pstSeq = SeqOf(*pstNode, stQuery.Indexed() == 1);
    if (pstSeq == nullptr) {
        stQuery.NodeExplain(*pstNode, "a sequence");
        return 0;
    }
    uint32_t uiCount = 0;
    for ([[maybe_unused]] const YamlListNode &stElement : Children(*pstSeq))
        ++uiCount;
    return uiCount;
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
    KeyQuery stQuery(*pstHandle, pcKeyFormat, stArgs);
    va_end(stArgs);
    return ScalarGet(*pstHandle, stQuery);
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
    KeyQuery stQuery(*pstHandle, pcKeyFormat, stArgs);
    va_end(stArgs);
    return SizeGet(stQuery);
}

char *yaml_NodeValueGet(YamlListNode *pstNode, uint32_t uiIndexed)
{
    YamlListNode *pstValue = uiIndexed == 1 ? pstNode : FirstChild(*pstNode);
    if (pstValue == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "There is not any data in the child list.");
        return nullptr;
    }
    const YamlListNode *pstFirst = nullptr;
    switch (pstValue->uiDataType) {
    case YAML_DATATYPE_SCALAR:
        return pstValue->pcValue;
    case YAML_DATATYPE_MAP:
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOT_SCALAR, "The specified node is a map node.");
        break;
    case YAML_DATATYPE_SEQ:
        pstFirst = FirstChild(*pstValue);
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOT_SCALAR,
                 "The specified node is not scalar node or has many sequence nodes. (DataType=%u)",
                 pstFirst != nullptr ? pstFirst->uiDataType : YAML_DATATYPE_NONE);
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
