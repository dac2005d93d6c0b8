// SPDX-License-Identifier: Apache-2.0
// The dump of a document: its text, and at every size of the buffer what is written, what is logged and that nothing
// outside the buffer is touched.
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <cstring>

#include <gtest/gtest.h>

namespace {

constexpr const char *Document = R"(name: demo
port: 8080
server:
  host: alpha
  tags: [a, b]
users:
  - id: 1
    role: admin
  - guest
  - visitor
  - id: 2
  - [x, y]
mode: fast
)";
constexpr const char *DocumentDump =
    "{ name: demo, port: 8080, \n  server: \n    { host: alpha, \n      tags: \n        [ a, b ] }, \n  users: \n"
    "    [ { id: 1, role: admin }, \n      guest, visitor, \n      { id: 2 }, \n      [ x, y ] ], \n  mode: fast }";

#define BODY "2 19000005 The size of buffer is not enough when dump every map node.\n"
#define MAP "2 19000005 The size of buffer is not enough when dump the map list.\n"
#define SEQ                                                                  \
    "2 19000005 The size of buffer is not enough when dump sequence list.\n" \
    "2 19000005 The size of buffer is not enough when dump sequence list.\n"
#define MAP_EMPTY "2 19000004 The map list is empty. (Scalar=)\n"
#define SEQ_EMPTY "2 19000004 The sequence list is empty.\n"

#define SIZE "2 19000005 The size of "

// What is written in one go, by its kind, and what is logged when it does not fit.
constexpr char OpenMap = '{', OpenSeq = '[', Key = 'k', Value = 'v', KeyBreak = 'b', ElementBreak = 'e', Element = 's',
               CloseMap = '}', CloseSeq = ']';
struct KindLog {
    char cKind;
    const char *pcLog;
};
constexpr KindLog g_astKindLog[] = {
    {OpenMap, SIZE "rest buffer is not enough when begin to dump map list.\n"},
    {OpenSeq, SIZE "buffer is not enough when begin to dump sequence list.\n"},
    {Key, SIZE "buffer is not enough when dump scalar node. (Scalar="},
    {Value, ""},
    {KeyBreak, SIZE "buffer is not enough to dump map node.\n" MAP},
    {ElementBreak, SIZE "buffer is not enough to dump space when dump sequence.\n"},
    {Element, SIZE "buffer is not enough to dump sequence scalar. (Scalar="},
    {CloseMap, SIZE "buffer is not enough when dump the last sign.\n"},
    {CloseSeq, SIZE "buffer is not enough when finish to dump sequence list.\n"},
};

struct Piece {
    char cKind;
    const char *pcText;
};
struct Run { // pieces in a row and the collections that fail with each of them, innermost first: m a map, s a sequence
    const char *pcAround;
    Piece astPiece[4];
};
constexpr Run g_astRun[] = {
    {"", {{OpenMap, "{ "}}},
    {"m", {{Key, "name: "}, {Value, "demo, "}, {Key, "port: "}, {Value, "8080, "}}},
    {"", {{KeyBreak, "\n  "}}},
    {"m", {{Key, "server: "}, {OpenMap, "\n    { "}}},
    {"mm", {{Key, "host: "}, {Value, "alpha, "}}},
    {"m", {{KeyBreak, "\n      "}}},
    {"mm", {{Key, "tags: "}, {OpenSeq, "\n        [ "}}},
    {"smm", {{Element, "a, "}, {Element, "b, "}}},
    {"mm", {{CloseSeq, " ], "}}},
    {"m", {{CloseMap, " }, "}}},
    {"", {{KeyBreak, "\n  "}}},
    {"m", {{Key, "users: "}, {OpenSeq, "\n    [ "}}},
    {"sm", {{OpenMap, "{ "}}},
    {"msm", {{Key, "id: "}, {Value, "1, "}, {Key, "role: "}, {Value, "admin, "}}},
    {"sm", {{CloseMap, " }, "}, {ElementBreak, "\n      "}, {Element, "guest, "}, {Element, "visitor, "}}},
    {"sm", {{OpenMap, "\n      { "}}},
    {"msm", {{Key, "id: "}, {Value, "2, "}}},
    {"sm", {{CloseMap, " }, "}, {OpenSeq, "\n      [ "}}},
    {"ssm", {{Element, "x, "}, {Element, "y, "}}},
    {"sm", {{CloseSeq, " ], "}}},
    {"m", {{CloseSeq, " ], "}}},
    {"", {{KeyBreak, "\n  "}}},
    {"m", {{Key, "mode: "}, {Value, "fast, "}}},
    {"", {{CloseMap, " }, "}}},
};

std::string FailureLog(const Piece &stPiece, const char *pcAround)
{
    std::string log;
    for (const KindLog &stKind : g_astKindLog)
        log += stKind.cKind == stPiece.cKind ? stKind.pcLog : "";
    if (stPiece.cKind == Key || stPiece.cKind == Element)
        log += std::string(stPiece.pcText, strlen(stPiece.pcText) - 2) + ")\n";
    for (; *pcAround != '\0'; ++pcAround)
        log += *pcAround == 'm' ? BODY MAP : SEQ;
    return log;
}

struct Outcome {
    uint32_t uiResult;
    std::string text, log;
    bool operator==(const Outcome &) const = default;
};
void PrintTo(const Outcome &stOutcome, std::ostream *pstStream)
{
    *pstStream << stOutcome.uiResult << " \"" << stOutcome.text << "\" " << stOutcome.log;
}

// What the buffer holds behind a text to which a piece is added; a closing goes two characters back, and a break before
// an element is written whole or not at all.
bool PieceAdd(std::string &text, const Piece &stPiece, size_t ulSize)
{
    if (stPiece.cKind == CloseMap || stPiece.cKind == CloseSeq)
        text.resize(text.size() - 2);
    const std::string piece = stPiece.pcText;
    const bool bFits = text.size() + piece.size() < ulSize;
    if (bFits || stPiece.cKind != ElementBreak)
        text += piece.substr(0, ulSize - 1 - text.size());
    return bFits;
}

Outcome Expected(size_t ulSize)
{
    std::string text;
    for (const Run &stRun : g_astRun) {
        for (const Piece &stPiece : stRun.astPiece) {
            if (stPiece.cKind != '\0' && !PieceAdd(text, stPiece, ulSize))
                return {YAML_ERR_BUF, text, FailureLog(stPiece, stRun.pcAround)};
        }
    }
    return {YAML_OK, text.substr(0, text.size() - 2), ""};
}

// Dumps into a buffer between canaries.
Outcome Dump(YamlHandle *pstHandle, uint32_t uiSize)
{
    constexpr size_t Margin = 64;
    constexpr char Canary = '\x7E';
    std::string room(uiSize + 2 * Margin, Canary);
    Base().Reset();
    const uint32_t uiResult = ZRYAML_ContextDump(pstHandle, uiSize, room.data() + Margin);
    const std::string margins = room.substr(0, Margin) + room.substr(Margin + uiSize);
    EXPECT_EQ(margins, std::string(2 * Margin, Canary));
    const std::string buffer = room.substr(Margin, uiSize);
    EXPECT_NE(buffer.find('\0'), std::string::npos) << "not terminated";
    EXPECT_EQ(Base().ulAllocations, 0U);
    return {uiResult, buffer.substr(0, buffer.find('\0')), Base().LogText()};
}

struct DumpCase {
    int iLine;
    const char *pcDocument, *pcText;
};
constexpr DumpCase g_astDump[] = {
    {__LINE__, Document, DocumentDump},
    {__LINE__, "a: b", "{ a: b }"},
    {__LINE__, "[a, b, {k: v}, c]", "\n[ a, b, \n  { k: v }, \n  c ]"},
    {__LINE__, "[a]", "\n[ a ]"},
    {__LINE__, "a:", "{ a:  }"}, // an empty value still has its ", ", which the closing takes
    {__LINE__, "{a: , b: 1}", "{ a: , b: 1 }"},
    {__LINE__, "{a: 1, b: 'x]', c: 2}", "{ a: 1, b: x], \n  c: 2 }"},
    {__LINE__, "{a: '}', c: 2}", "{ a: }, \n  c: 2 }"},
    {__LINE__, "{a: '} ', c: 2}", "{ a: } , c: 2 }"},
    {__LINE__, "{a: \"x\\ny\", b: ' 2 '}", "{ a: x\ny, b:  2  }"},
    {__LINE__, "{'': '', b: 2}", "{ : , b: 2 }"},
    {__LINE__, "['', '', {k: ''}]", "\n[ , , \n  { k:  } ]"},
    {__LINE__, "[[[x], y], z]", "\n[ \n  [ \n    [ x ], \n    y ], \n  z ]"},
    {__LINE__, "[{a: 1}, {b: 2}]", "\n[ { a: 1 }, \n  { b: 2 } ]"},
    {__LINE__, "{a: {b: {c: [1, {d: [2]}]}}}",
     "{ a: \n    { b: \n        { c: \n            [ 1, \n              { d: \n                  [ 2 ] } ] } } }"},
    {__LINE__, "b: &b {k: 1, j: 2}\nm: {<<: *b, k: 9}\ns: *b",
     "{ b: \n    { k: 1, j: 2 }, \n  m: \n    { k: 9, j: 2 }, \n  s: \n    { k: 1, j: 2 } }"},
    {__LINE__, "b: &b {k: {x: 1}, j: 2}\nm: {<<: *b, k: [9], i: 3}",
     "{ b: \n    { k: \n        { x: 1 }, \n      j: 2 }, \n  m: \n    { k: \n        [ 9 ], \n      i: 3, j: 2 } }"},
};

struct EmptyCase {
    int iLine;
    const char *pcDocument, *pcText, *pcLog;
};
constexpr EmptyCase g_astEmpty[] = {
    {__LINE__, "{}", "", MAP_EMPTY},
    {__LINE__, "[]", "", SEQ_EMPTY},
    {__LINE__, "a: {}", "{ a: ", MAP_EMPTY BODY MAP},
    {__LINE__, "a: []", "{ a: ", SEQ_EMPTY BODY MAP},
    {__LINE__, "{z: 1, a: {}}", "{ z: 1, \n  a: ", MAP_EMPTY BODY MAP},
    {__LINE__, "[x, {}]", "\n[ x, ", MAP_EMPTY SEQ},
    {__LINE__, "[{}]", "\n[ ", MAP_EMPTY SEQ},
    {__LINE__, "[[], x]", "\n[ ", SEQ_EMPTY SEQ},
    {__LINE__, "[{a: [x, {b: {}}]}]", "\n[ { a: \n      [ x, \n        { b: ", MAP_EMPTY BODY MAP SEQ BODY MAP SEQ},
    {__LINE__, "{a: {b: [[]]}, c: 1}", "{ a: \n    { b: \n        [ ", SEQ_EMPTY SEQ BODY MAP BODY MAP},
};

YamlListNode *NodeAt(YamlHandle *pstHandle, std::string path)
{
    uint32_t uiIndexed = 0;
    return yaml_NodeFind(pstHandle, path.data(), static_cast<uint32_t>(path.size() + 1), &uiIndexed);
}

} // namespace

TEST(ContextDump, EverySizeOfBuffer)
{
    YamlHandle *pstHandle = TextFileLoad(Document);
    ASSERT_NE(pstHandle, nullptr);
    ASSERT_EQ(strlen(DocumentDump), 207U);
    for (uint32_t uiSize = 1; uiSize <= 260; ++uiSize) {
        SCOPED_TRACE(uiSize);
        EXPECT_EQ(Dump(pstHandle, uiSize), Expected(uiSize));
    }
    const std::string dump = DocumentDump;
    struct {
        uint32_t uiSize;
        Outcome stOutcome;
    } const astNamed[] = {
        {1, {YAML_ERR_BUF, "", SIZE "rest buffer is not enough when begin to dump map list.\n"}},
        {3, {YAML_ERR_BUF, "{ ", SIZE "buffer is not enough when dump scalar node. (Scalar=name)\n" BODY MAP}},
        {202, {YAML_ERR_BUF, dump.substr(0, dump.size() - 6), BODY MAP}},
        {209, {YAML_ERR_BUF, dump + ",", SIZE "buffer is not enough when dump the last sign.\n"}},
        {210, {YAML_OK, dump, ""}},
    };
    for (const auto &stCase : astNamed)
        EXPECT_EQ(Dump(pstHandle, stCase.uiSize), stCase.stOutcome) << stCase.uiSize;
    ZRYAML_HandleFree(pstHandle);
}

TEST(ContextDump, NeedsThreeBytesMore)
{
    for (const DumpCase &stCase : g_astDump) {
        SCOPED_TRACE(stCase.iLine);
        YamlHandle *pstHandle = TextFileLoad(stCase.pcDocument);
        ASSERT_NE(pstHandle, nullptr);
        const auto uiEnough = static_cast<uint32_t>(strlen(stCase.pcText) + 3);
        EXPECT_EQ(Dump(pstHandle, uiEnough), (Outcome{YAML_OK, stCase.pcText, ""}));
        for (uint32_t uiSize = 1; uiSize < uiEnough; ++uiSize)
            EXPECT_EQ(Dump(pstHandle, uiSize).uiResult, YAML_ERR_BUF) << uiSize;
        ZRYAML_HandleFree(pstHandle);
    }
}

TEST(ContextDump, EmptyCollectionsHaveNoPicture)
{
    for (const EmptyCase &stCase : g_astEmpty) {
        SCOPED_TRACE(stCase.iLine);
        YamlHandle *pstHandle = TextFileLoad(stCase.pcDocument);
        ASSERT_NE(pstHandle, nullptr);
        EXPECT_EQ(Dump(pstHandle, 1000), (Outcome{YAML_ERR_BUF, stCase.pcText, stCase.pcLog}));
        ZRYAML_HandleFree(pstHandle);
    }
}

TEST(ContextDump, EmptyDocumentAndBadArguments)
{
    YamlHandle *pstHandle = TextFileLoad("");
    ASSERT_NE(pstHandle, nullptr);
    EXPECT_EQ(Dump(pstHandle, 1), (Outcome{YAML_OK, "", ""}));
    Base().Reset();
    char acBuf[] = "kept";
    EXPECT_EQ(ZRYAML_ContextDump(pstHandle, 0, acBuf), YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_ContextDump(pstHandle, sizeof(acBuf), nullptr), YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_ContextDump(nullptr, sizeof(acBuf), acBuf), YAML_ERR_PARAM);
    EXPECT_STREQ(acBuf, "kept");
    EXPECT_EQ(Base().LogText(), "2 16 The parameter is invalid to dump YAML context.\n"
                                "2 16 The parameter is invalid to dump YAML context.\n"
                                "2 16 The parameter is invalid to dump YAML context.\n");
    ZRYAML_HandleFree(pstHandle);
}

// Trees that no load makes: a key without a value, a collection in the place of a key, and a record that is no node.
TEST(ContextDump, TreesMadeByHand)
{
    YamlHandle *pstHandle = TextFileLoad("{a: 1, b: 2, c: {d: 3, e: 4}, f: [5, 6, 7]}");
    ASSERT_NE(pstHandle, nullptr);
    YamlListNode *pstKey = NodeAt(pstHandle, "b");
    YamlListNode *pstThird = NodeAt(pstHandle, "c.e");
    YamlListNode *pstSecond = NodeAt(pstHandle, "f[1]");
    pstThird->uiMagic = pstSecond->uiMagic = 0;
    EXPECT_EQ(Dump(pstHandle, 1000).text, "{ a: 1, b: 2, \n  c: \n    { d: 3 }, \n  f: \n    [ 5 ] }");
    pstThird->uiMagic = pstSecond->uiMagic = YAML_NODE_MAGIC;

    pstKey->stChildList.next->prev = pstKey->stChildList.next->next = pstKey->stChildList.next;
    pstKey->stChildList = {&pstKey->stChildList, &pstKey->stChildList};
    pstKey->uiNextLevelType = YAML_DATATYPE_NONE;
    EXPECT_EQ(Dump(pstHandle, 1000).text, "{ a: 1, \n  b: \n  c: \n    { d: 3, e: 4 }, \n  f: \n    [ 5, 6, 7 ] }");
    char acOut[100] = "";
    EXPECT_EQ(yaml_DumpMapList(pstThird->pstFather, 1, 3, sizeof(acOut), acOut), 20);
    EXPECT_STREQ(acOut, "\n   { d: 3, e: 4 }, ");
    ZRYAML_HandleFree(pstHandle);
}

TEST(ContextDump, SpacesByHand)
{
    struct {
        int iLine;
        uint32_t uiRest, uiIndent;
        int32_t iResult;
        const char *pcText;
    } const astBreak[] = {
        {__LINE__, 10, 3, 4, "\n   ~~~~~~"}, {__LINE__, 5, 3, 4, "\n   ~~~~~~"}, {__LINE__, 4, 3, -1, "~~~~~~~~~~"},
        {__LINE__, 2, 0, 1, "\n~~~~~~~~~"},  {__LINE__, 1, 0, -1, "~~~~~~~~~~"}, {__LINE__, 0, 0, -1, "~~~~~~~~~~"},
    };
    for (const auto &stCase : astBreak) {
        SCOPED_TRACE(stCase.iLine);
        std::string buffer(10, '~');
        EXPECT_EQ(yaml_SpacePrintWithNewLine(buffer.data(), stCase.uiRest, stCase.uiIndent), stCase.iResult);
        EXPECT_EQ(buffer, stCase.pcText);
    }
    struct {
        int iLine;
        const char *pcText;
        uint32_t uiLength, uiSpaces;
    } const astTail[] = {
        {__LINE__, "ab  ", 4, 2}, {__LINE__, "ab  ", 3, 1}, {__LINE__, "ab  ", 2, 0}, {__LINE__, "    ", 4, 3},
        {__LINE__, "  ", 2, 1},   {__LINE__, " ", 1, 0},    {__LINE__, " ", 0, 0},
    };
    for (const auto &stCase : astTail) {
        SCOPED_TRACE(stCase.iLine);
        EXPECT_EQ(yaml_StringTailSpaceCount(stCase.pcText, stCase.uiLength), stCase.uiSpaces);
    }
}
