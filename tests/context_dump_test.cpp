// SPDX-License-Identifier: Apache-2.0
// The dump of a document: its text, and at every size of the buffer what is written, what is logged and that nothing
// outside the buffer is touched.
#include "support/paths.h"

#include <cstring>

#include <gtest/gtest.h>

namespace {

constexpr const char *Full = "{name: demo, port: 8080, server: {host: alpha, tags: [a, b]}, users: "
                             "[{id: 1, role: admin}, guest, visitor, {id: 2}, [x, y]], mode: fast}";
constexpr const char *FullDump =
    "{ name: demo, port: 8080, \n  server: \n    { host: alpha, \n      tags: \n        [ a, b ] }, \n  users: \n"
    "    [ { id: 1, role: admin }, \n      guest, visitor, \n      { id: 2 }, \n      [ x, y ] ], \n  mode: fast }";

#define SIZE "2 19000005 The size of "
#define BODY SIZE "buffer is not enough when dump every map node.\n"
#define MAP SIZE "buffer is not enough when dump the map list.\n"
#define SEQ \
    SIZE "buffer is not enough when dump sequence list.\n" SIZE "buffer is not enough when dump sequence list.\n"
#define MAP_EMPTY "2 19000004 The map list is empty. (Scalar=)\n"
#define SEQ_EMPTY "2 19000004 The sequence list is empty.\n"

struct DumpCase {
    const char *pcDocument, *pcText;
};
constexpr DumpCase g_astDump[] = {
    {Full, FullDump},
    {"a: b", "{ a: b }"},
    {"[a, b, {k: v}, c]", "\n[ a, b, \n  { k: v }, \n  c ]"},
    {"a:", "{ a:  }"}, // an empty value still has its ", ", which the closing takes
    {"{a: , b: 1}", "{ a: , b: 1 }"},
    {"{a: 1, b: 'x]', c: 2}", "{ a: 1, b: x], \n  c: 2 }"},
    {"{a: '}', c: 2}", "{ a: }, \n  c: 2 }"},
    {"{a: '} ', c: \"x\\ny\"}", "{ a: } , c: x\ny }"},
    {"{'': '', b: ' 2 '}", "{ : , b:  2  }"},
    {"['', '', {k: ''}]", "\n[ , , \n  { k:  } ]"},
    {"[[[x], y], z]", "\n[ \n  [ \n    [ x ], \n    y ], \n  z ]"},
    {"[{a: 1}, {b: 2}]", "\n[ { a: 1 }, \n  { b: 2 } ]"},
    {"{a: {b: {c: [1, {d: [2]}]}}}",
     "{ a: \n    { b: \n        { c: \n            [ 1, \n              { d: \n                  [ 2 ] } ] } } }"},
    {"b: &b {k: {x: 1}, j: 2}\nm: {<<: *b, k: [9], i: 3}",
     "{ b: \n    { k: \n        { x: 1 }, \n      j: 2 }, \n  m: \n    { k: \n        [ 9 ], \n      i: 3, j: 2 } }"},
};

// One size for each kind of piece that does not fit, and collections without a picture at any size.
struct FailureCase {
    const char *pcDocument;
    uint32_t uiSize;
    const char *pcEnd; // of what is left in the buffer
    const char *pcLog;
};
constexpr FailureCase g_astFailure[] = {
    {Full, 1, "", SIZE "rest buffer is not enough when begin to dump map list.\n"},
    {Full, 3, "{ ", SIZE "buffer is not enough when dump scalar node. (Scalar=name)\n" BODY MAP},
    {Full, 10, "name: d", BODY MAP},
    {Full, 28, "8080, \n", SIZE "buffer is not enough to dump map node.\n" MAP},
    {Full, 44, "server: \n    {", SIZE "rest buffer is not enough when begin to dump map list.\n" BODY MAP},
    {Full, 79, "tags: \n       ", SIZE "buffer is not enough when begin to dump sequence list.\n" BODY MAP BODY MAP},
    {Full, 87, "[ a, b,", SIZE "buffer is not enough to dump sequence scalar. (Scalar=b)\n" SEQ BODY MAP BODY MAP},
    {Full, 88, "[ a, b ]", SIZE "buffer is not enough when finish to dump sequence list.\n" BODY MAP BODY MAP},
    {Full, 202, "\n  mode: ", BODY MAP},
    {Full, 209, "\n  mode: fast },", SIZE "buffer is not enough when dump the last sign.\n"},
    {"[a, {k: v}, c]", 22, "{ k: v }, ", SIZE "buffer is not enough to dump space when dump sequence.\n" SEQ},
    {"{}", 1000, "", MAP_EMPTY},
    {"[]", 1000, "", SEQ_EMPTY},
    {"{z: 1, a: {}}", 1000, "{ z: 1, \n  a: ", MAP_EMPTY BODY MAP},
    {"a: []", 1000, "{ a: ", SEQ_EMPTY BODY MAP},
    {"[[], x]", 1000, "\n[ ", SEQ_EMPTY SEQ},
    {"[{a: [x, {b: {}}]}]", 1000, "\n[ { a: \n      [ x, \n        { b: ", MAP_EMPTY BODY MAP SEQ BODY MAP SEQ},
};

// Dumps into a buffer between canaries; the buffer's text.
std::string Dump(YamlHandle *pstHandle, uint32_t uiSize, uint32_t uiResult)
{
    const std::string margin(64, '\x7E');
    std::string room = margin + std::string(uiSize, '\x7E') + margin;
    Base().Reset();
    EXPECT_EQ(ZRYAML_ContextDump(pstHandle, uiSize, room.data() + margin.size()), uiResult) << uiSize;
    EXPECT_EQ(room.substr(0, margin.size()) + room.substr(margin.size() + uiSize), margin + margin) << uiSize;
    EXPECT_EQ(Base().ulAllocations, 0U);
    const std::string buffer = room.substr(margin.size(), uiSize);
    EXPECT_NE(buffer.find('\0'), std::string::npos) << "not terminated at " << uiSize;
    return buffer.c_str();
}

} // namespace

// Below the text and three bytes the buffer holds as much of it as fits, of which a closing would replace the last two
// characters; only the break before an element is written whole or not at all.
TEST(ContextDump, NeedsThreeBytesMore)
{
    ASSERT_EQ(strlen(FullDump), 207U);
    for (const DumpCase &stCase : g_astDump) {
        SCOPED_TRACE(stCase.pcDocument);
        const Document stDocument(stCase.pcDocument);
        const std::string dump = stCase.pcText;
        const auto uiEnough = static_cast<uint32_t>(dump.size() + 3);
        for (const uint32_t uiSize : {uiEnough, uiEnough + 1, 1000U}) {
            EXPECT_EQ(Dump(stDocument, uiSize, YAML_OK), dump);
            EXPECT_EQ(Base().LogText(), "");
        }
        for (uint32_t uiSize = 1; uiSize < uiEnough; ++uiSize) {
            const std::string text = Dump(stDocument, uiSize, YAML_ERR_BUF);
            const std::string sure = text.substr(0, text.size() - std::min<size_t>(text.size(), 2));
            EXPECT_EQ(sure, dump.substr(0, sure.size()));
            if (Base().LogText().find("dump space") == std::string::npos) {
                EXPECT_EQ(text.size(), uiSize - 1);
            }
        }
    }
}

TEST(ContextDump, FailsPieceByPiece)
{
    for (const FailureCase &stCase : g_astFailure) {
        SCOPED_TRACE(stCase.uiSize);
        const Document stDocument(stCase.pcDocument);
        const std::string text = Dump(stDocument, stCase.uiSize, YAML_ERR_BUF);
        EXPECT_EQ(Base().LogText(), stCase.pcLog);
        EXPECT_TRUE(text.ends_with(stCase.pcEnd)) << text;
        EXPECT_TRUE(stCase.uiSize < 1000 || text == stCase.pcEnd) << text;
    }
}

TEST(ContextDump, EmptyDocumentAndBadArguments)
{
    const Document stDocument("");
    EXPECT_EQ(Dump(stDocument, 1, YAML_OK), "");
    EXPECT_EQ(Base().LogText(), "");
    char acBuf[] = "kept";
    EXPECT_EQ(ZRYAML_ContextDump(stDocument, 0, acBuf), YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_ContextDump(stDocument, sizeof(acBuf), nullptr), YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_ContextDump(nullptr, sizeof(acBuf), acBuf), YAML_ERR_PARAM);
    EXPECT_STREQ(acBuf, "kept");
    const std::string line = "2 16 The parameter is invalid to dump YAML context.\n";
    EXPECT_EQ(Base().LogText(), line + line + line);
}

TEST(ContextDump, StopsAtWhatIsNoNode)
{
    const Document stDocument("{c: {d: 3, e: 4}, f: [5, 6, 7]}");
    NodeAt(stDocument, "c.e")->uiMagic = NodeAt(stDocument, "f[1]")->uiMagic = 0;
    EXPECT_EQ(Dump(stDocument, 1000, YAML_OK), "{ c: \n    { d: 3 }, \n  f: \n    [ 5 ] }");
}

TEST(ContextDump, SpacesByHand)
{
    std::string buffer(10, '~');
    EXPECT_EQ(yaml_SpacePrintWithNewLine(buffer.data(), 4, 3), -1);
    EXPECT_EQ(buffer, "~~~~~~~~~~");
    EXPECT_EQ(yaml_SpacePrintWithNewLine(buffer.data(), 5, 3), 4);
    EXPECT_EQ(buffer, "\n   ~~~~~~");
    EXPECT_EQ(yaml_StringTailSpaceCount("  ", 2), 1U);
}
