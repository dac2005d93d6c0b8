// SPDX-License-Identifier: Apache-2.0
// The two value queries: what they give, what they log, and which of them are counted.
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <cstdio>
#include <thread>

#include <gtest/gtest.h>

namespace {

constexpr const char *MapDocument = R"(a:
  b: x
  c: [p, q, {r: s}]
  e: {}
  f:
  g: 8080
emp: []
mode: fast
rows: [[1, 2], [], x, {k: v}]
t: true
n: ~
z: "tab\tend"
maps: [{k: v}]
seqs: [[]]
)";
constexpr const char *SeqDocument = "[{name: ann, v: [x, y]}, plain, [i0, i1, i2]]";

#define NOT_FOUND(name) "1 19000003 Can not find the yaml node with key. (Key=" name ")\n"
#define TOO_LONG "2 19000005 The input key is too long to format.\n"
#define LENGTH_0 "2 19000002 The length of key is 0.\n"
#define IS_MAP "2 19000011 The specified node is a map node.\n"
#define IS_SEQ(type) \
    "2 19000011 The specified node is not scalar node or has many sequence nodes. (DataType=" type ")\n"
#define NO_CHILD "2 19000004 There is not any data in the child list.\n"
#define NO_SEQ(type) "2 1900000c The value for specified key is not sequence node. (DataType=" type ")\n"
#define NO_SEQ_NODE(type) "2 1900000c The current node is not sequence node. (DataType=" type ")\n"

constexpr uint32_t MaxPaths = 8;

struct TextCase { // paths with one outcome
    int iLine;
    const char *pcDocument, *pcText;
    uint32_t uiCounted; // as a query while the debug switch is on
    const char *pcLog;
    const char *apcPath[MaxPaths];
};
constexpr TextCase g_astText[] = {
    {__LINE__, MapDocument, "x", 1, "", {"a.b"}},
    {__LINE__, MapDocument, "q", 1, "", {"a.c[1]"}},
    {__LINE__, MapDocument, "s", 1, "", {"a.c[2].r"}},
    {__LINE__, MapDocument, "", 1, "", {"a.f"}},
    {__LINE__, MapDocument, "8080", 1, "", {"a.g"}},
    {__LINE__, MapDocument, "true", 1, "", {"t"}},
    {__LINE__, MapDocument, "~", 1, "", {"n"}},
    {__LINE__, MapDocument, "tab\tend", 1, "", {"z"}},
    {__LINE__, SeqDocument, "plain", 1, "", {"[1]"}},
    {__LINE__, SeqDocument, "y", 1, "", {"[0].v[1]"}},
    {__LINE__, MapDocument, nullptr, 1, IS_MAP, {"a", "a.e", "a.c[2]"}},
    {__LINE__, SeqDocument, nullptr, 1, IS_MAP, {"[0]"}},
    {__LINE__, MapDocument, nullptr, 1, IS_SEQ("0"), {"rows"}},
    {__LINE__, MapDocument, nullptr, 1, IS_SEQ("1"), {"maps"}},
    {__LINE__, MapDocument, nullptr, 1, IS_SEQ("2"), {"a.c", "rows[0]"}},
    {__LINE__, MapDocument, nullptr, 1, IS_SEQ("3"), {"emp", "rows[1]"}},
    {__LINE__, MapDocument, nullptr, 0, NO_CHILD, {"mode.fast"}},
    {__LINE__, MapDocument, nullptr, 0, LENGTH_0, {"a.f."}},
    {__LINE__, MapDocument, nullptr, 0, NOT_FOUND("zz"), {"a.zz"}},
    {__LINE__, MapDocument, nullptr, 0, TOO_LONG, {""}},
};

struct SizeCase { // paths with one outcome
    int iLine;
    const char *pcDocument;
    uint32_t uiSize;
    const char *pcLog;
    const char *apcPath[MaxPaths];
};
constexpr SizeCase g_astSize[] = {
    {__LINE__, MapDocument, 0, "", {"emp", "rows[1]", "seqs[0]"}},
    {__LINE__, MapDocument, 1, "", {"maps"}},
    {__LINE__, MapDocument, 2, "", {"rows[0]"}},
    {__LINE__, MapDocument, 3, "", {"a.c"}},
    {__LINE__, MapDocument, 4, "", {"rows"}},
    {__LINE__, SeqDocument, 2, "", {"[0].v"}},
    {__LINE__, SeqDocument, 3, "", {"[2]"}},
    {__LINE__, SeqDocument, 0, NO_SEQ("1"), {"[0]"}},
    {__LINE__, MapDocument, 0, NO_SEQ("1"), {"a.e", "rows[3]"}},
    {__LINE__, MapDocument, 0, NO_SEQ("2"), {"a.b", "rows[2]"}},
    {__LINE__, MapDocument, 0, NO_SEQ("3"), {"mode.fast"}},
    {__LINE__, MapDocument, 0, NOT_FOUND("zz"), {"zz"}},
    {__LINE__, MapDocument, 0, NOT_FOUND("c"), {"a.c[9]"}},
    {__LINE__, MapDocument, 0, TOO_LONG, {""}},
};

// The same calls where the compiler does not look at the format.
char *(*const g_fnPropertyGet)(YamlHandle *, const char *, ...) = ZRYAML_PropertyGet;
uint32_t (*const g_fnArraySizeGet)(YamlHandle *, const char *, ...) = ZRYAML_ArraySizeGet;

} // namespace

TEST(ValueQuery, PropertyGet)
{
    for (const TextCase &stCase : g_astText) {
        SCOPED_TRACE(stCase.iLine);
        YamlHandle *pstHandle = TextFileLoad(stCase.pcDocument);
        ASSERT_NE(pstHandle, nullptr);
        for (uint32_t ui = 0; ui < 3 * MaxPaths && stCase.apcPath[ui / 3] != nullptr; ++ui) {
            const uint32_t uiSwitch = ui % 3;
            SCOPED_TRACE(stCase.apcPath[ui / 3]);
            Base().Reset();
            pstHandle->uiQueryCount = 0;
            pstHandle->ulQueryTimeTotal = 0;
            ZRYAML_DebugSwitchSet(uiSwitch);
            const char *pcText = ZRYAML_PropertyGet(pstHandle, "%s", stCase.apcPath[ui / 3]);
            ZRYAML_DebugSwitchSet(0);
            EXPECT_STREQ(pcText, stCase.pcText);
            EXPECT_EQ(Base().LogText(), stCase.pcLog);
            EXPECT_EQ(pstHandle->uiQueryCount, uiSwitch != 0 ? stCase.uiCounted : 0);
            EXPECT_GE(pstHandle->ulQueryTimeTotal, pstHandle->uiQueryCount);
            EXPECT_EQ(ZRYAML_PropertyGet(pstHandle, "%s", stCase.apcPath[ui / 3]), pcText); // the document's own
            EXPECT_EQ(Base().ulAllocations, 0U);
        }
        ZRYAML_HandleFree(pstHandle);
    }
}

TEST(ValueQuery, ArraySizeGet)
{
    for (const SizeCase &stCase : g_astSize) {
        SCOPED_TRACE(stCase.iLine);
        YamlHandle *pstHandle = TextFileLoad(stCase.pcDocument);
        ASSERT_NE(pstHandle, nullptr);
        ZRYAML_DebugSwitchSet(1);
        for (uint32_t ui = 0; ui < MaxPaths && stCase.apcPath[ui] != nullptr; ++ui) {
            Base().Reset();
            EXPECT_EQ(ZRYAML_ArraySizeGet(pstHandle, "%s", stCase.apcPath[ui]), stCase.uiSize) << stCase.apcPath[ui];
            EXPECT_EQ(Base().LogText(), stCase.pcLog) << stCase.apcPath[ui];
        }
        ZRYAML_DebugSwitchSet(0);
        EXPECT_EQ(pstHandle->uiQueryCount, 0U);
        ZRYAML_HandleFree(pstHandle);
    }
}

TEST(ValueQuery, ArgumentsAndFormats)
{
    YamlHandle *pstHandle = TextFileLoad(MapDocument);
    ASSERT_NE(pstHandle, nullptr);
    Base().Reset();
    ZRYAML_DebugSwitchSet(1);
    EXPECT_EQ(ZRYAML_PropertyGet(nullptr, "a.b"), nullptr);
    EXPECT_EQ(g_fnPropertyGet(pstHandle, nullptr), nullptr);
    EXPECT_EQ(Base().LogText(), "");
    EXPECT_EQ(g_fnArraySizeGet(pstHandle, nullptr), 0U);
    ZRYAML_DebugSwitchSet(0);
    EXPECT_EQ(pstHandle->uiQueryCount, 0U);
    const char *pcPath = "a.c";
    EXPECT_EQ(g_fnArraySizeGet(nullptr, pcPath), 0U);
    char acLog[200];
    (void)snprintf(acLog, sizeof(acLog),
                   "2 16 The input parameter is invalid. (Handle=%p, Key=%p)\n"
                   "2 16 The input parameter is invalid. (Handle=%p, Key=%p)\n",
                   static_cast<const void *>(pstHandle), static_cast<const void *>(nullptr),
                   static_cast<const void *>(nullptr), static_cast<const void *>(pcPath));
    EXPECT_EQ(Base().LogText(), acLog);

    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "a.%s", "b"), "x");
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "a.c[%u]", 1U), "q");
    EXPECT_EQ(ZRYAML_ArraySizeGet(pstHandle, "%c.%s", 'a', "c"), 3U);
    ZRYAML_HandleFree(pstHandle);
}

// Trees that no load makes.
TEST(ValueQuery, ValuesOfTheWrongKind)
{
    YamlHandle *pstHandle = TextFileLoad("s: [p]\nk: v");
    ASSERT_NE(pstHandle, nullptr);
    YamlListNode stSeq;
    char acSeq[] = "s[0]";
    uint32_t uiIndexed = 0;
    YamlListNode *pstValue = yaml_NodeFind(pstHandle, acSeq, sizeof(acSeq), &uiIndexed)->pstFather;

    Base().Reset();
    pstValue->uiDataType = YAML_DATATYPE_MAP;
    EXPECT_EQ(ZRYAML_ArraySizeGet(pstHandle, "s"), 0U);
    pstValue->uiDataType = YAML_DATATYPE_SEQ;
    pstValue->uiMagic = 0;
    EXPECT_EQ(ZRYAML_ArraySizeGet(pstHandle, "s"), 0U);
    EXPECT_EQ(Base().LogText(), NO_SEQ_NODE("1") NO_SEQ_NODE("0"));
    pstValue->uiMagic = YAML_NODE_MAGIC;
    EXPECT_EQ(ZRYAML_ArraySizeGet(pstHandle, "s"), 1U);

    Base().Reset();
    yaml_NodeInit(&stSeq);
    EXPECT_EQ(yaml_NodeValueGet(&stSeq, 1), nullptr);
    stSeq.uiDataType = 77;
    EXPECT_EQ(yaml_NodeValueGet(&stSeq, 1), nullptr);
    EXPECT_EQ(yaml_NodeValueGet(pstValue, 1), nullptr);
    EXPECT_EQ(yaml_NodeValueGet(pstValue->pstFather, 0), nullptr);
    EXPECT_EQ(Base().LogText(), "2 16 The type in specified node is invalid. (DataType=3)\n"
                                "2 16 The type in specified node is invalid. (DataType=77)\n" IS_SEQ("2") IS_SEQ("2"));
    ZRYAML_HandleFree(pstHandle);
}

TEST(ValueQuery, ThreadsLoseNoCount)
{
    YamlHandle *pstHandle = TextFileLoad(MapDocument);
    ASSERT_NE(pstHandle, nullptr);
    constexpr uint32_t Queries = 5000;
    ZRYAML_DebugSwitchSet(1);
    auto fnQuery = [pstHandle] {
        for (uint32_t ui = 0; ui < Queries; ++ui)
            (void)ZRYAML_PropertyGet(pstHandle, "a.b");
    };
    std::thread stFirst(fnQuery), stSecond(fnQuery), stThird(fnQuery);
    stFirst.join();
    stSecond.join();
    stThird.join();
    ZRYAML_DebugSwitchSet(0);
    EXPECT_EQ(pstHandle->uiQueryCount, 3 * Queries);
    EXPECT_GE(pstHandle->ulQueryTimeTotal, 3 * Queries);
    ZRYAML_HandleFree(pstHandle);
}
