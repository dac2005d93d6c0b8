// SPDX-License-Identifier: Apache-2.0
// A picture of the whole document as text: maps in braces, sequences in brackets. One pass over the tree straight into
// the caller's buffer, which is terminated after every piece, so that a failure leaves the text up to the piece that
// did not fit.
#include "debug_internal.h"

#include <algorithm>
#include <cstring>

#define DUMP_FAIL(...) (YAML_LOG(YAML_LOG_ERROR, YAML_ERR_BUF, __VA_ARGS__), -1)

namespace {

class Cursor { // the place where the next piece goes
public:
    Cursor(char *pcPos, uint32_t uiRest) noexcept : m_pcPos(pcPos), m_uiRest(uiRest) {}

    [[nodiscard]] char *Pos() const noexcept { return m_pcPos + m_iDone; }
    [[nodiscard]] uint32_t Rest() const noexcept { return m_uiRest - static_cast<uint32_t>(m_iDone); }
    [[nodiscard]] int32_t Done() const noexcept { return m_iDone; }

    // Moves behind what a step added; false if the step failed.
    [[nodiscard]] bool Add(int32_t iCount) noexcept
    {
        m_iDone += std::max(iCount, 0);
        return iCount > 0;
    }
    void Back(int32_t iCount) noexcept { m_iDone -= iCount; }

    [[nodiscard]] bool Break(uint32_t uiIndent, const char *pcText) noexcept
    {
        return Add(snprintf_s(Pos(), Rest(), Rest() - 1, "\n%*s", static_cast<int>(uiIndent + 2), pcText));
    }
    [[nodiscard]] bool Text(const char *pcText, const char *pcEnd) noexcept
    {
        return Add(snprintf_s(Pos(), Rest(), Rest() - 1, "%s%s", pcText, pcEnd));
    }

private:
    char *m_pcPos;
    uint32_t m_uiRest;
    int32_t m_iDone = 0;
};

constexpr int32_t Separator = 2; // length of the ", " that a closing takes the place of

// Whether the next entry of a map starts a new line: after a closed collection, and before whatever is no scalar.
bool BreakNeeded(const YamlListNode &stEntry, const Cursor &stCursor) noexcept
{
    if (stCursor.Done() < 3)
        return false;
    const char *pcEnd = stCursor.Pos() - 3;
    return stEntry.uiNextLevelType != YAML_DATATYPE_SCALAR || strncmp(pcEnd, "}, ", 3) == 0 ||
           strncmp(pcEnd, "], ", 3) == 0;
}

int32_t EntryDump(YamlListNode &stEntry, uint32_t uiIndent, uint32_t uiRest, char *pcPos) noexcept
{
    switch (stEntry.uiDataType) {
    case YAML_DATATYPE_SCALAR:
        return yaml_DumpScalarNode(&stEntry, uiIndent, uiRest, pcPos);
    case YAML_DATATYPE_MAP:
        return yaml_DumpMapList(&stEntry, 0, uiIndent + 2, uiRest, pcPos);
    case YAML_DATATYPE_SEQ:
        return yaml_DumpSeqList(&stEntry, uiIndent + 2, uiRest, pcPos);
    default:
        return -1;
    }
}

} // namespace

uint32_t ZRYAML_ContextDump(YamlHandle *pstHandle, uint32_t uiBufSize, char *pcBuf)
{
    ErrorClear();
    if (uiBufSize == 0 || pcBuf == nullptr || pstHandle == nullptr)
        return YAML_FAIL(YAML_ERR_PARAM, "The parameter is invalid to dump YAML context.");
    return yaml_DumpValue(pstHandle, uiBufSize, pcBuf);
}

uint32_t yaml_DumpValue(YamlHandle *pstHandle, uint32_t uiBufSize, char *pcBuf)
{
    YamlListNode *pstTop = FirstChild(pstHandle->stRoot);
    pcBuf[0] = '\0'; // also when not even the first piece is written
    if (pstTop == nullptr)
        return YAML_OK;
    const uint32_t uiRest = std::min(uiBufSize, uint32_t{INT32_MAX}); // what a count can hold
    const int32_t iCount = pstHandle->stRoot.uiDataType == YAML_DATATYPE_MAP
                               ? yaml_DumpMapList(pstTop, 0, 0, uiRest, pcBuf)
                               : yaml_DumpSeqList(pstTop, 0, uiRest, pcBuf);
    if (iCount <= 0)
        return YAML_ERR_BUF;
    const auto uiCount = static_cast<uint32_t>(iCount);
    pcBuf[uiCount - 1 - yaml_StringTailSpaceCount(pcBuf, uiCount)] = '\0'; // without the last ", "
    return YAML_OK;
}

int32_t yaml_DumpMapList(YamlListNode *pstMap, uint32_t uiBreakFlag, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    if (FirstChild(*pstMap) == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "The map list is empty. (Scalar=%s)",
                 pstMap->pcValue != nullptr ? pstMap->pcValue : "");
        return -1;
    }
    Cursor stCursor(pcPos, uiRest);
    if (!(uiBreakFlag == 1 ? stCursor.Break(uiIndent, "{ ") : stCursor.Text("{ ", "")))
        return DUMP_FAIL("The size of rest buffer is not enough when begin to dump map list.");
    if (!stCursor.Add(yaml_MapListDumpProcess(pstMap, uiIndent, stCursor.Rest(), stCursor.Pos())))
        return DUMP_FAIL("The size of buffer is not enough when dump the map list.");
    stCursor.Back(Separator);
    if (!stCursor.Text(" }, ", ""))
        return DUMP_FAIL("The size of buffer is not enough when dump the last sign.");
    return stCursor.Done();
}

int32_t yaml_MapListDumpProcess(YamlListNode *pstMap, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Cursor stCursor(pcPos, uiRest);
    for (YamlListNode &stEntry : Children(*pstMap)) {
        if (stEntry.uiSameWithAnchor == 1)
            continue; // its value is shown under the merged key
        if (BreakNeeded(stEntry, stCursor) && !stCursor.Break(uiIndent, ""))
            return DUMP_FAIL("The size of buffer is not enough to dump map node.");
        if (!stCursor.Add(EntryDump(stEntry, uiIndent, stCursor.Rest(), stCursor.Pos())))
            return DUMP_FAIL("The size of buffer is not enough when dump every map node.");
    }
    return stCursor.Done();
}

int32_t yaml_DumpScalarNode(YamlListNode *pstKey, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Cursor stCursor(pcPos, uiRest);
    if (!stCursor.Text(pstKey->pcValue, ": "))
        return DUMP_FAIL("The size of buffer is not enough when dump scalar node. (Scalar=%s)", pstKey->pcValue);
    if (HasChildren(*pstKey) && !stCursor.Add(yaml_DumpChildList(pstKey, uiIndent, stCursor.Rest(), stCursor.Pos())))
        return -1;
    return stCursor.Done();
}

int32_t yaml_DumpChildList(YamlListNode *pstKey, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    YamlListNode *pstValue = FirstChild(*pstKey);
    if (pstValue == nullptr)
        return -1;
    switch (pstValue->uiDataType) {
    case YAML_DATATYPE_SCALAR:
        return snprintf_s(pcPos, uiRest, uiRest - 1, "%s, ", pstValue->pcValue);
    case YAML_DATATYPE_MAP:
        return yaml_DumpMapList(pstValue, 1, uiIndent + 4, uiRest, pcPos);
    case YAML_DATATYPE_SEQ:
        return yaml_DumpSeqList(pstValue, uiIndent + 4, uiRest, pcPos);
    default:
        return -1;
    }
}

int32_t yaml_DumpSeqList(YamlListNode *pstSeq, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    if (FirstChild(*pstSeq) == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "The sequence list is empty.");
        return -1;
    }
    Cursor stCursor(pcPos, uiRest);
    if (!stCursor.Break(uiIndent, "[ "))
        return DUMP_FAIL("The size of buffer is not enough when begin to dump sequence list.");
    if (!stCursor.Add(yaml_SequenceListDump(pstSeq, uiIndent + 2, stCursor.Rest(), stCursor.Pos())))
        return DUMP_FAIL("The size of buffer is not enough when dump sequence list.");
    stCursor.Back(Separator);
    if (!stCursor.Text(" ], ", ""))
        return DUMP_FAIL("The size of buffer is not enough when finish to dump sequence list.");
    return stCursor.Done();
}

int32_t yaml_SequenceListDump(YamlListNode *pstSeq, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Cursor stCursor(pcPos, uiRest);
    uint32_t uiPrevType = YAML_DATATYPE_NONE;
    for (YamlListNode &stElement : Children(*pstSeq)) {
        const uint32_t uiFirstFlag = uiPrevType == YAML_DATATYPE_NONE ? 1 : 0;
        if (!stCursor.Add(
                yaml_SeqNodeDump(&stElement, uiIndent, uiFirstFlag, stCursor.Rest(), stCursor.Pos(), uiPrevType)))
            return DUMP_FAIL("The size of buffer is not enough when dump sequence list.");
        uiPrevType = stElement.uiDataType;
    }
    return stCursor.Done();
}

int32_t yaml_SeqNodeDump(YamlListNode *pstElement, uint32_t uiIndent, uint32_t uiFirstFlag, uint32_t uiRest,
                         char *pcPos, uint32_t uiPrevType)
{
    switch (pstElement->uiDataType) {
    case YAML_DATATYPE_MAP:
        return yaml_DumpMapList(pstElement, uiFirstFlag == 1 ? 0 : 1, uiIndent, uiRest, pcPos);
    case YAML_DATATYPE_SEQ:
        return yaml_DumpSeqList(pstElement, uiIndent, uiRest, pcPos);
    case YAML_DATATYPE_SCALAR:
        return yaml_ScalarDumpInSeq(pstElement, uiFirstFlag == 1 ? YAML_DATATYPE_SCALAR : uiPrevType, uiIndent, uiRest,
                                    pcPos);
    default:
        return -1;
    }
}

int32_t yaml_ScalarDumpInSeq(YamlListNode *pstElement, uint32_t uiPrevType, uint32_t uiIndent, uint32_t uiRest,
                             char *pcPos)
{
    Cursor stCursor(pcPos, uiRest);
    if (uiPrevType != YAML_DATATYPE_SCALAR &&
        !stCursor.Add(yaml_SpacePrintWithNewLine(stCursor.Pos(), stCursor.Rest(), uiIndent)))
        return DUMP_FAIL("The size of buffer is not enough to dump space when dump sequence.");
    if (!stCursor.Text(pstElement->pcValue, ", "))
        return DUMP_FAIL("The size of buffer is not enough to dump sequence scalar. (Scalar=%s)", pstElement->pcValue);
    return stCursor.Done();
}

int32_t yaml_SpacePrintWithNewLine(char *pcPos, uint32_t uiRest, uint32_t uiIndent)
{
    if (uint64_t{uiIndent} + 2 > uiRest)
        return -1;
    pcPos[0] = '\n';
    memset(pcPos + 1, ' ', uiIndent);
    return static_cast<int32_t>(uiIndent + 1);
}

uint32_t yaml_StringTailSpaceCount(const char *pcText, uint32_t uiLen)
{
    uint32_t uiSpaces = 0;
    while (uiSpaces + 1 < uiLen && pcText[uiLen - 1 - uiSpaces] == ' ')
        ++uiSpaces;
    return uiSpaces;
}
