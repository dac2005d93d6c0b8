// SPDX-License-Identifier: Apache-2.0
// Renders the whole document for people: maps in braces, sequences in brackets. One pass over the tree writes straight
// into the caller's buffer, which is terminated after every piece, so that a failure leaves the text up to the piece
// that did not fit. The operations are the steps of that pass, each with a writer of its own.
#include "debug_internal.h"

#include <algorithm>
#include <cstring>

using namespace zryaml;
using namespace zryaml::debug;

#define DUMP_FAIL(stWriter, ...) (YAML_LOG(YAML_LOG_ERROR, YAML_ERR_BUF, __VA_ARGS__), (stWriter).Fail())

namespace {

constexpr uint32_t Separator = 2; // length of the ", " whose place a closing bracket takes

class Writer { // remembers an overflow, after which it writes no more
public:
    Writer(char *pcBuf, uint32_t uiSize) noexcept : m_pcBuf(pcBuf), m_uiSize(uiSize) {}

    [[nodiscard]] bool HasFailed() const noexcept { return m_bFailed; }
    [[nodiscard]] uint32_t Done() const noexcept { return m_uiDone; }
    // The result of an operation.
    [[nodiscard]] int32_t Result() const noexcept { return m_bFailed ? -1 : static_cast<int32_t>(m_uiDone); }
    // Whether what was written since a place ends with a text.
    [[nodiscard]] bool EndsWith(const char *pcText, uint32_t uiSince) const noexcept
    {
        const auto uiLength = static_cast<uint32_t>(strlen(pcText));
        return m_uiDone - uiSince >= uiLength && memcmp(m_pcBuf + m_uiDone - uiLength, pcText, uiLength) == 0;
    }

    void Fail() noexcept { m_bFailed = true; }
    void Back(uint32_t uiCount) noexcept { m_uiDone -= uiCount; }
    void Text(const char *pcText, const char *pcEnd = "") noexcept
    {
        if (!m_bFailed)
            Add(snprintf_s(m_pcBuf + m_uiDone, Rest(), Rest() - 1, "%s%s", pcText, pcEnd));
    }
    void Break(uint32_t uiIndent, const char *pcText) noexcept
    {
        if (!m_bFailed)
            Add(snprintf_s(m_pcBuf + m_uiDone, Rest(), Rest() - 1, "\n%*s", static_cast<int>(uiIndent + 2), pcText));
    }
    void Indent(uint32_t uiIndent) noexcept
    {
        if (!m_bFailed)
            Add(yaml_SpacePrintWithNewLine(m_pcBuf + m_uiDone, Rest(), uiIndent));
    }

private:
    [[nodiscard]] uint32_t Rest() const noexcept { return m_uiSize - m_uiDone; }
    void Add(int32_t iCount) noexcept
    {
        if (iCount > 0)
            m_uiDone += static_cast<uint32_t>(iCount);
        else
            m_bFailed = true;
    }

    char *m_pcBuf;
    uint32_t m_uiSize;
    uint32_t m_uiDone = 0;
    bool m_bFailed = false;
};

void MapDump(const YamlListNode &stMap, bool bBreak, uint32_t uiIndent, Writer &stWriter) noexcept;
void SeqDump(const YamlListNode &stSeq, uint32_t uiIndent, Writer &stWriter) noexcept;

void ValueDump(const YamlListNode &stKey, uint32_t uiIndent, Writer &stWriter) noexcept
{
    const YamlListNode *pstValue = FirstChild(stKey);
    switch (ZRYAML_ValueTypeGet(pstValue)) {
    case YAML_DATATYPE_SCALAR:
        return stWriter.Text(pstValue->pcValue, ", ");
    case YAML_DATATYPE_MAP:
        return MapDump(*pstValue, true, uiIndent + 4, stWriter);
    case YAML_DATATYPE_SEQ:
        return SeqDump(*pstValue, uiIndent + 4, stWriter);
    default:
        return stWriter.Fail();
    }
}

void KeyDump(const YamlListNode &stKey, uint32_t uiIndent, Writer &stWriter) noexcept
{
    stWriter.Text(stKey.pcValue, ": ");
    if (stWriter.HasFailed())
        return DUMP_FAIL(stWriter, "The size of buffer is not enough when dump scalar node. (Scalar=%s)",
                         stKey.pcValue);
    if (HasChildren(stKey))
        ValueDump(stKey, uiIndent, stWriter);
}

void EntryDump(const YamlListNode &stEntry, uint32_t uiIndent, Writer &stWriter) noexcept
{
    switch (stEntry.uiDataType) {
    case YAML_DATATYPE_SCALAR:
        return KeyDump(stEntry, uiIndent, stWriter);
    case YAML_DATATYPE_MAP:
        return MapDump(stEntry, false, uiIndent + 2, stWriter);
    case YAML_DATATYPE_SEQ:
        return SeqDump(stEntry, uiIndent + 2, stWriter);
    default:
        return stWriter.Fail();
    }
}

void MapEntriesDump(const YamlListNode &stMap, uint32_t uiIndent, Writer &stWriter) noexcept
{
    const uint32_t uiStart = stWriter.Done();
    for (const YamlListNode &stEntry : Children(stMap)) {
        if (stEntry.uiSameWithAnchor == 1)
            continue; // its value is shown under the merged key
        // A new line comes after a closed collection, and before whatever is not a scalar.
        const bool bAfterClosed = stWriter.EndsWith("}, ", uiStart) || stWriter.EndsWith("], ", uiStart);
        if (bAfterClosed || (stEntry.uiNextLevelType != YAML_DATATYPE_SCALAR && stWriter.Done() - uiStart > 2))
            stWriter.Break(uiIndent, "");
        if (stWriter.HasFailed())
            return DUMP_FAIL(stWriter, "The size of buffer is not enough to dump map node.");
        EntryDump(stEntry, uiIndent, stWriter);
        if (stWriter.HasFailed())
            return DUMP_FAIL(stWriter, "The size of buffer is not enough when dump every map node.");
    }
}

void MapDump(const YamlListNode &stMap, bool bBreak, uint32_t uiIndent, Writer &stWriter) noexcept
{
    if (FirstChild(stMap) == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "The map list is empty. (Scalar=%s)",
                 stMap.pcValue != nullptr ? stMap.pcValue : "");
        return stWriter.Fail();
    }
    bBreak ? stWriter.Break(uiIndent, "{ ") : stWriter.Text("{ ");
    if (stWriter.HasFailed())
        return DUMP_FAIL(stWriter, "The size of rest buffer is not enough when begin to dump map list.");
    const uint32_t uiStart = stWriter.Done();
    MapEntriesDump(stMap, uiIndent, stWriter);
    if (stWriter.HasFailed() || stWriter.Done() == uiStart)
        return DUMP_FAIL(stWriter, "The size of buffer is not enough when dump the map list.");
    stWriter.Back(Separator);
    stWriter.Text(" }, ");
    if (stWriter.HasFailed())
        DUMP_FAIL(stWriter, "The size of buffer is not enough when dump the last sign.");
}

void ScalarElementDump(const YamlListNode &stElement, uint32_t uiPrevType, uint32_t uiIndent, Writer &stWriter) noexcept
{
    if (uiPrevType != YAML_DATATYPE_SCALAR)
        stWriter.Indent(uiIndent);
    if (stWriter.HasFailed())
        return DUMP_FAIL(stWriter, "The size of buffer is not enough to dump space when dump sequence.");
    stWriter.Text(stElement.pcValue, ", ");
    if (stWriter.HasFailed())
        DUMP_FAIL(stWriter, "The size of buffer is not enough to dump sequence scalar. (Scalar=%s)", stElement.pcValue);
}

void ElementDump(const YamlListNode &stElement, uint32_t uiIndent, bool bFirst, uint32_t uiPrevType,
                 Writer &stWriter) noexcept
{
    switch (stElement.uiDataType) {
    case YAML_DATATYPE_MAP:
        return MapDump(stElement, !bFirst, uiIndent, stWriter);
    case YAML_DATATYPE_SEQ:
        return SeqDump(stElement, uiIndent, stWriter);
    case YAML_DATATYPE_SCALAR:
        return ScalarElementDump(stElement, bFirst ? YAML_DATATYPE_SCALAR : uiPrevType, uiIndent, stWriter);
    default:
        return stWriter.Fail();
    }
}

void ElementsDump(const YamlListNode &stSeq, uint32_t uiIndent, Writer &stWriter) noexcept
{
    uint32_t uiPrevType = YAML_DATATYPE_NONE;
    for (const YamlListNode &stElement : Children(stSeq)) {
        ElementDump(stElement, uiIndent, uiPrevType == YAML_DATATYPE_NONE, uiPrevType, stWriter);
        if (stWriter.HasFailed())
            return DUMP_FAIL(stWriter, "The size of buffer is not enough when dump sequence list.");
        uiPrevType = stElement.uiDataType;
    }
}

void SeqDump(const YamlListNode &stSeq, uint32_t uiIndent, Writer &stWriter) noexcept
{
    if (FirstChild(stSeq) == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "The sequence list is empty.");
        return stWriter.Fail();
    }
    stWriter.Break(uiIndent, "[ ");
    if (stWriter.HasFailed())
        return DUMP_FAIL(stWriter, "The size of buffer is not enough when begin to dump sequence list.");
    const uint32_t uiStart = stWriter.Done();
    ElementsDump(stSeq, uiIndent + 2, stWriter);
    if (stWriter.HasFailed() || stWriter.Done() == uiStart)
        return DUMP_FAIL(stWriter, "The size of buffer is not enough when dump sequence list.");
    stWriter.Back(Separator);
    stWriter.Text(" ], ");
    if (stWriter.HasFailed())
        DUMP_FAIL(stWriter, "The size of buffer is not enough when finish to dump sequence list.");
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
    const YamlListNode *pstTop = FirstChild(pstHandle->stRoot);
    pcBuf[0] = '\0'; // also when not even the first piece is written
    if (pstTop == nullptr)
        return YAML_OK;
    Writer stWriter(pcBuf, std::min(uiBufSize, uint32_t{INT32_MAX})); // what a count can hold
    if (pstHandle->stRoot.uiDataType == YAML_DATATYPE_MAP)
        MapDump(*pstTop, false, 0, stWriter);
    else
        SeqDump(*pstTop, 0, stWriter);
    if (stWriter.HasFailed())
        return YAML_ERR_BUF;
    const uint32_t uiCount = stWriter.Done();
    pcBuf[uiCount - 1 - yaml_StringTailSpaceCount(pcBuf, uiCount)] = '\0'; // without the last ", "
    return YAML_OK;
}

int32_t yaml_DumpMapList(YamlListNode *pstMap, uint32_t uiBreakFlag, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer stWriter(pcPos, uiRest);
    MapDump(*pstMap, uiBreakFlag == 1, uiIndent, stWriter);
    return stWriter.Result();
}

int32_t yaml_MapListDumpProcess(YamlListNode *pstMap, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer stWriter(pcPos, uiRest);
    MapEntriesDump(*pstMap, uiIndent, stWriter);
    return stWriter.Result();
}

int32_t yaml_DumpScalarNode(YamlListNode *pstKey, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer stWriter(pcPos, uiRest);
    KeyDump(*pstKey, uiIndent, stWriter);
    return stWriter.Result();
}

int32_t yaml_DumpChildList(YamlListNode *pstKey, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer stWriter(pcPos, uiRest);
    ValueDump(*pstKey, uiIndent, stWriter);
    return stWriter.Result();
}

int32_t yaml_DumpSeqList(YamlListNode *pstSeq, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer stWriter(pcPos, uiRest);
    SeqDump(*pstSeq, uiIndent, stWriter);
    return stWriter.Result();
}

int32_t yaml_SequenceListDump(YamlListNode *pstSeq, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer stWriter(pcPos, uiRest);
    ElementsDump(*pstSeq, uiIndent, stWriter);
    return stWriter.Result();
}

int32_t yaml_SeqNodeDump(YamlListNode *pstElement, uint32_t uiIndent, uint32_t uiFirstFlag, uint32_t uiRest,
                         char *pcPos, uint32_t uiPrevType)
{
    Writer stWriter(pcPos, uiRest);
    ElementDump(*pstElement, uiIndent, uiFirstFlag == 1, uiPrevType, stWriter);
    return stWriter.Result();
}

int32_t yaml_ScalarDumpInSeq(YamlListNode *pstElement, uint32_t uiPrevType, uint32_t uiIndent, uint32_t uiRest,
                             char *pcPos)
{
    Writer stWriter(pcPos, uiRest);
    ScalarElementDump(*pstElement, uiPrevType, uiIndent, stWriter);
    return stWriter.Result();
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
