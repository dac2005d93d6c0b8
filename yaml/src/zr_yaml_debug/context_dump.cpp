// SPDX-License-Identifier: Apache-2.0
// Renders the whole document for people: maps in braces, sequences in brackets. One pass over the tree writes straight
// into the caller's buffer, which is terminated after every piece, so that a failure leaves the text up to the piece
// that did not fit. The operations are the steps of that pass, each with a writer of its own.
#include "debug_internal.h"

#include <algorithm>
#include <cstring>

using namespace zryaml;
using namespace zryaml::debug;

#define DUMP_FAIL(writer, ...) (YAML_LOG(YAML_LOG_ERROR, YAML_ERR_BUF, __VA_ARGS__), (writer).Fail())

namespace {

constexpr uint32_t Separator = 2; // length of the ", " whose place a closing bracket takes

class Writer { // remembers an overflow, after which it writes no more
public:
    Writer(char *pcBuf, uint32_t uiSize) noexcept : m_buf(pcBuf), m_size(uiSize) {}

    [[nodiscard]] bool HasFailed() const noexcept { return m_hasFailed; }
    [[nodiscard]] uint32_t Done() const noexcept { return m_done; }
    // The result of an operation.
    [[nodiscard]] int32_t Result() const noexcept { return m_hasFailed ? -1 : static_cast<int32_t>(m_done); }
    // Whether what was written since a place ends with a text.
    [[nodiscard]] bool EndsWith(const char *pcText, uint32_t since) const noexcept
    {
        const auto length = static_cast<uint32_t>(strlen(pcText));
        return m_done - since >= length && memcmp(m_buf + m_done - length, pcText, length) == 0;
    }

    void Fail() noexcept { m_hasFailed = true; }
    void Back(uint32_t uiCount) noexcept { m_done -= uiCount; }
    void Text(const char *pcText, const char *end = "") noexcept
    {
        if (!m_hasFailed)
            Add(snprintf_s(m_buf + m_done, Rest(), Rest() - 1, "%s%s", pcText, end));
    }
    void Break(uint32_t uiIndent, const char *pcText) noexcept
    {
        if (!m_hasFailed)
            Add(snprintf_s(m_buf + m_done, Rest(), Rest() - 1, "\n%*s", static_cast<int>(uiIndent + 2), pcText));
    }
    void Indent(uint32_t uiIndent) noexcept
    {
        if (!m_hasFailed)
            Add(yaml_SpacePrintWithNewLine(m_buf + m_done, Rest(), uiIndent));
    }

private:
    [[nodiscard]] uint32_t Rest() const noexcept { return m_size - m_done; }
    void Add(int32_t count) noexcept
    {
        if (count > 0)
            m_done += static_cast<uint32_t>(count);
        else
            m_hasFailed = true;
    }

    char *m_buf;
    uint32_t m_size;
    uint32_t m_done = 0;
    bool m_hasFailed = false;
};

void MapDump(const YamlListNode &map, bool breaksLine, uint32_t indent, Writer &writer) noexcept;
void SeqDump(const YamlListNode &seq, uint32_t indent, Writer &writer) noexcept;

void ValueDump(const YamlListNode &key, uint32_t indent, Writer &writer) noexcept
{
    const YamlListNode *value = FirstChild(key);
    switch (ZRYAML_ValueTypeGet(value)) {
    case YAML_DATATYPE_SCALAR:
        return writer.Text(value->pcValue, ", ");
    case YAML_DATATYPE_MAP:
        return MapDump(*value, true, indent + 4, writer);
    case YAML_DATATYPE_SEQ:
        return SeqDump(*value, indent + 4, writer);
    default:
        return writer.Fail();
    }
}

void KeyDump(const YamlListNode &key, uint32_t indent, Writer &writer) noexcept
{
    writer.Text(key.pcValue, ": ");
    if (writer.HasFailed())
        return DUMP_FAIL(writer, "The size of buffer is not enough when dump scalar node. (Scalar=%s)", key.pcValue);
    if (HasChildren(key))
        ValueDump(key, indent, writer);
}

void EntryDump(const YamlListNode &entry, uint32_t indent, Writer &writer) noexcept
{
    switch (entry.uiDataType) {
    case YAML_DATATYPE_SCALAR:
        return KeyDump(entry, indent, writer);
    case YAML_DATATYPE_MAP:
        return MapDump(entry, false, indent + 2, writer);
    case YAML_DATATYPE_SEQ:
        return SeqDump(entry, indent + 2, writer);
    default:
        return writer.Fail();
    }
}

void MapEntriesDump(const YamlListNode &map, uint32_t indent, Writer &writer) noexcept
{
    const uint32_t start = writer.Done();
    for (const YamlListNode &entry : Children(map)) {
        if (entry.uiSameWithAnchor == 1)
            continue; // its value is shown under the merged key
        // A new line comes after a closed collection, and before whatever is not a scalar.
        const bool afterClosed = writer.EndsWith("}, ", start) || writer.EndsWith("], ", start);
        if (afterClosed || (entry.uiNextLevelType != YAML_DATATYPE_SCALAR && writer.Done() - start > 2))
            writer.Break(indent, "");
        if (writer.HasFailed())
            return DUMP_FAIL(writer, "The size of buffer is not enough to dump map node.");
        EntryDump(entry, indent, writer);
        if (writer.HasFailed())
            return DUMP_FAIL(writer, "The size of buffer is not enough when dump every map node.");
    }
}

void MapDump(const YamlListNode &map, bool breaksLine, uint32_t indent, Writer &writer) noexcept
{
    if (FirstChild(map) == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "The map list is empty. (Scalar=%s)",
                 map.pcValue != nullptr ? map.pcValue : "");
        return writer.Fail();
    }
    breaksLine ? writer.Break(indent, "{ ") : writer.Text("{ ");
    if (writer.HasFailed())
        return DUMP_FAIL(writer, "The size of rest buffer is not enough when begin to dump map list.");
    const uint32_t start = writer.Done();
    MapEntriesDump(map, indent, writer);
    if (writer.HasFailed() || writer.Done() == start)
        return DUMP_FAIL(writer, "The size of buffer is not enough when dump the map list.");
    writer.Back(Separator);
    writer.Text(" }, ");
    if (writer.HasFailed())
        DUMP_FAIL(writer, "The size of buffer is not enough when dump the last sign.");
}

void ScalarElementDump(const YamlListNode &element, uint32_t prevType, uint32_t indent, Writer &writer) noexcept
{
    if (prevType != YAML_DATATYPE_SCALAR)
        writer.Indent(indent);
    if (writer.HasFailed())
        return DUMP_FAIL(writer, "The size of buffer is not enough to dump space when dump sequence.");
    writer.Text(element.pcValue, ", ");
    if (writer.HasFailed())
        DUMP_FAIL(writer, "The size of buffer is not enough to dump sequence scalar. (Scalar=%s)", element.pcValue);
}

void ElementDump(const YamlListNode &element, uint32_t indent, bool isFirst, uint32_t prevType, Writer &writer) noexcept
{
    switch (element.uiDataType) {
    case YAML_DATATYPE_MAP:
        return MapDump(element, !isFirst, indent, writer);
    case YAML_DATATYPE_SEQ:
        return SeqDump(element, indent, writer);
    case YAML_DATATYPE_SCALAR:
        return ScalarElementDump(element, isFirst ? YAML_DATATYPE_SCALAR : prevType, indent, writer);
    default:
        return writer.Fail();
    }
}

void ElementsDump(const YamlListNode &seq, uint32_t indent, Writer &writer) noexcept
{
    uint32_t prevType = YAML_DATATYPE_NONE;
    for (const YamlListNode &element : Children(seq)) {
        ElementDump(element, indent, prevType == YAML_DATATYPE_NONE, prevType, writer);
        if (writer.HasFailed())
            return DUMP_FAIL(writer, "The size of buffer is not enough when dump sequence list.");
        prevType = element.uiDataType;
    }
}

void SeqDump(const YamlListNode &seq, uint32_t indent, Writer &writer) noexcept
{
    if (FirstChild(seq) == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_EMPTY, "The sequence list is empty.");
        return writer.Fail();
    }
    writer.Break(indent, "[ ");
    if (writer.HasFailed())
        return DUMP_FAIL(writer, "The size of buffer is not enough when begin to dump sequence list.");
    const uint32_t start = writer.Done();
    ElementsDump(seq, indent + 2, writer);
    if (writer.HasFailed() || writer.Done() == start)
        return DUMP_FAIL(writer, "The size of buffer is not enough when dump sequence list.");
    writer.Back(Separator);
    writer.Text(" ], ");
    if (writer.HasFailed())
        DUMP_FAIL(writer, "The size of buffer is not enough when finish to dump sequence list.");
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
    const YamlListNode *top = FirstChild(pstHandle->stRoot);
    pcBuf[0] = '\0'; // also when not even the first piece is written
    if (top == nullptr)
        return YAML_OK;
    Writer writer(pcBuf, std::min(uiBufSize, uint32_t{INT32_MAX})); // what a count can hold
    if (pstHandle->stRoot.uiDataType == YAML_DATATYPE_MAP)
        MapDump(*top, false, 0, writer);
    else
        SeqDump(*top, 0, writer);
    if (writer.HasFailed())
        return YAML_ERR_BUF;
    const uint32_t uiCount = writer.Done();
    pcBuf[uiCount - 1 - yaml_StringTailSpaceCount(pcBuf, uiCount)] = '\0'; // without the last ", "
    return YAML_OK;
}

int32_t yaml_DumpMapList(YamlListNode *pstMap, uint32_t uiBreakFlag, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer writer(pcPos, uiRest);
    MapDump(*pstMap, uiBreakFlag == 1, uiIndent, writer);
    return writer.Result();
}

int32_t yaml_MapListDumpProcess(YamlListNode *pstMap, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer writer(pcPos, uiRest);
    MapEntriesDump(*pstMap, uiIndent, writer);
    return writer.Result();
}

int32_t yaml_DumpScalarNode(YamlListNode *pstKey, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer writer(pcPos, uiRest);
    KeyDump(*pstKey, uiIndent, writer);
    return writer.Result();
}

int32_t yaml_DumpChildList(YamlListNode *pstKey, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer writer(pcPos, uiRest);
    ValueDump(*pstKey, uiIndent, writer);
    return writer.Result();
}

int32_t yaml_DumpSeqList(YamlListNode *pstSeq, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer writer(pcPos, uiRest);
    SeqDump(*pstSeq, uiIndent, writer);
    return writer.Result();
}

int32_t yaml_SequenceListDump(YamlListNode *pstSeq, uint32_t uiIndent, uint32_t uiRest, char *pcPos)
{
    Writer writer(pcPos, uiRest);
    ElementsDump(*pstSeq, uiIndent, writer);
    return writer.Result();
}

int32_t yaml_SeqNodeDump(YamlListNode *pstElement, uint32_t uiIndent, uint32_t uiFirstFlag, uint32_t uiRest,
                         char *pcPos, uint32_t uiPrevType)
{
    Writer writer(pcPos, uiRest);
    ElementDump(*pstElement, uiIndent, uiFirstFlag == 1, uiPrevType, writer);
    return writer.Result();
}

int32_t yaml_ScalarDumpInSeq(YamlListNode *pstElement, uint32_t uiPrevType, uint32_t uiIndent, uint32_t uiRest,
                             char *pcPos)
{
    Writer writer(pcPos, uiRest);
    ScalarElementDump(*pstElement, uiPrevType, uiIndent, writer);
    return writer.Result();
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
    uint32_t spaces = 0;
    while (spaces + 1 < uiLen && pcText[uiLen - 1 - spaces] == ' ')
        ++spaces;
    return spaces;
}
