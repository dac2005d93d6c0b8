// SPDX-License-Identifier: Apache-2.0
// The two value queries: what they give, what they log, and which of them are counted.
#include "support/paths.h"

#include <cstdio>
#include <latch>
#include <thread>

#include <gtest/gtest.h>

namespace {

#define IS_MAP "2 19000011 The specified node is a map node.\n"
#define IS_SEQ(type) \
    "2 19000011 The specified node is not scalar node or has many sequence nodes. (DataType=" type ")\n"
#define NO_CHILD "2 19000004 There is not any data in the child list.\n"
#define NO_SEQ(type) "2 1900000c The value for specified key is not sequence node. (DataType=" type ")\n"
#define NO_SEQ_NODE(type) "2 1900000c The current node is not sequence node. (DataType=" type ")\n"
#define NO_TYPE(type) "2 16 The type in specified node is invalid. (DataType=" type ")\n"
#define BAD_SIZE "2 16 The input parameter is invalid. (Handle=%p, Key=%p)\n"

struct ValueCase {
    const char *pcPath;
    uint32_t uiCounted;          // the text, as a query while the debug switch is on
    const char *pcText, *pcSize; // "=" and the text; the size if it is not 0; then the log
};
constexpr ValueCase g_astMap[] = {
    {"a.b", 1, "=x", NO_SEQ("2")},        {"a.c[1]", 1, "=q", NO_SEQ("2")},
    {"a.c[2].r", 1, "=s", NO_SEQ("2")},   {"a.f", 1, "=", NO_SEQ("2")},
    {"a.g", 1, "=8080", NO_SEQ("2")},     {"a.n", 1, "=~", NO_SEQ("2")},
    {"a.z", 1, "=tab\tend", NO_SEQ("2")}, {"a", 1, IS_MAP, NO_SEQ("1")},
    {"a.e", 1, IS_MAP, NO_SEQ("1")},      {"a.c[2]", 1, IS_MAP, NO_SEQ("1")},
    {"rows", 1, IS_SEQ("0"), "4"},        {"maps", 1, IS_SEQ("1"), "1"},
    {"a.c", 1, IS_SEQ("2"), "3"},         {"rows[0]", 1, IS_SEQ("2"), "2"},
    {"emp", 1, IS_SEQ("3"), ""},          {"rows[1]", 1, IS_SEQ("3"), ""},
    {"seqs[0]", 1, IS_SEQ("3"), ""},      {"mode.fast", 0, NO_CHILD, NO_SEQ("3")},
    {"a.f.", 0, LENGTH_0, LENGTH_0},      {"a.zz", 0, NOT_FOUND("zz"), NOT_FOUND("zz")},
    {"", 0, TOO_LONG, TOO_LONG},
};
constexpr ValueCase g_astSeq[] = {
    {"[1]", 1, "=plain", NO_SEQ("2")}, {"[0].v[1]", 1, "=y", NO_SEQ("2")}, {"[0]", 1, IS_MAP, NO_SEQ("1")},
    {"[0].v", 1, IS_SEQ("2"), "2"},    {"[2]", 1, IS_SEQ("2"), "2"},
};

void ValuesCheck(const Document &stDocument, std::span<const ValueCase> astCases)
{
    for (const ValueCase &stCase : astCases) {
        SCOPED_TRACE(stCase.pcPath);
        for (const uint32_t uiSwitch : {0U, 1U, 2U}) {
            Base().Reset();
            stDocument->ulQueryTimeTotal = stDocument->uiQueryCount = 0;
            ZRYAML_DebugSwitchSet(uiSwitch);
            const char *pcText = ZRYAML_PropertyGet(stDocument, "%s", stCase.pcPath);
            EXPECT_EQ((pcText != nullptr ? "=" + std::string(pcText) : "") + Base().LogText(), stCase.pcText);
            EXPECT_EQ(stDocument->uiQueryCount, uiSwitch != 0 ? stCase.uiCounted : 0);
            EXPECT_GE(stDocument->ulQueryTimeTotal, stDocument->uiQueryCount);
            Base().Reset();
            const uint32_t uiSize = ZRYAML_ArraySizeGet(stDocument, "%s", stCase.pcPath);
            EXPECT_EQ((uiSize != 0 ? std::to_string(uiSize) : "") + Base().LogText(), stCase.pcSize);
            EXPECT_EQ(stDocument->uiQueryCount, uiSwitch != 0 ? stCase.uiCounted : 0);
            ZRYAML_DebugSwitchSet(0);
            EXPECT_EQ(ZRYAML_PropertyGet(stDocument, "%s", stCase.pcPath), pcText); // the document's own
            EXPECT_EQ(Base().ulAllocations, 0U);
        }
    }
}

// The same calls where the compiler does not look at the format.
char *(*const g_fnPropertyGet)(YamlHandle *, const char *, ...) = ZRYAML_PropertyGet;
uint32_t (*const g_fnArraySizeGet)(YamlHandle *, const char *, ...) = ZRYAML_ArraySizeGet;

} // namespace

TEST(ValueQuery, TextsAndSizes)
{
    ValuesCheck(MapDocument, g_astMap);
    ValuesCheck(SeqDocument, g_astSeq);
}

TEST(ValueQuery, ArgumentsAndFormats)
{
    const Document stDocument(MapDocument);
    const char *pcPath = "a.c";
    EXPECT_EQ(ZRYAML_PropertyGet(nullptr, "a.b"), nullptr);
    EXPECT_EQ(g_fnPropertyGet(stDocument, nullptr), nullptr);
    EXPECT_EQ(Base().LogText(), "");
    EXPECT_EQ(g_fnArraySizeGet(stDocument, nullptr), 0U);
    EXPECT_EQ(g_fnArraySizeGet(nullptr, pcPath), 0U);
    const void *pvNone = nullptr, *pvHandle = static_cast<YamlHandle *>(stDocument), *pvPath = pcPath;
    char acLog[200];
    (void)snprintf(acLog, sizeof(acLog), BAD_SIZE BAD_SIZE, pvHandle, pvNone, pvNone, pvPath);
    EXPECT_EQ(Base().LogText(), acLog);

    EXPECT_STREQ(ZRYAML_PropertyGet(stDocument, "a.%s", "b"), "x");
    EXPECT_STREQ(ZRYAML_PropertyGet(stDocument, "a.c[%u]", 1U), "q");
    EXPECT_EQ(ZRYAML_ArraySizeGet(stDocument, "%c.%s", 'a', "c"), 3U);
    EXPECT_STREQ(ZRYAML_PropertyGet(stDocument, "50%%"), "r");
    EXPECT_STREQ(ZRYAML_PropertyGet(stDocument, "%s", "50%"), "r");
    Base().Reset();
    EXPECT_EQ(g_fnPropertyGet(stDocument, ""), nullptr); // without a format to fill
    EXPECT_EQ(Base().LogText(), TOO_LONG);
}

// Trees that no load makes.
TEST(ValueQuery, ValuesOfTheWrongKind)
{
    const Document stDocument("s: [p]\nk: v");
    YamlListNode *pstSeq = NodeAt(stDocument, "s[0]")->pstFather;
    pstSeq->uiDataType = 77;
    EXPECT_EQ(ZRYAML_PropertyGet(stDocument, "s"), nullptr);
    EXPECT_EQ(ZRYAML_ArraySizeGet(stDocument, "s"), 0U);
    pstSeq->uiDataType = YAML_DATATYPE_SEQ;
    pstSeq->uiMagic = 0;
    EXPECT_EQ(ZRYAML_ArraySizeGet(stDocument, "s"), 0U);
    EXPECT_EQ(Base().LogText(), NO_TYPE("77") NO_SEQ_NODE("77") NO_SEQ_NODE("0"));
}

TEST(ValueQuery, ThreadsLoseNoCount)
{
    const Document stDocument(MapDocument);
    constexpr uint32_t Queries = 20000;
    std::latch stStart(3);
    ZRYAML_DebugSwitchSet(1);
    auto fnQuery = [&stDocument, &stStart] {
        stStart.arrive_and_wait();
        for (uint32_t ui = 0; ui < Queries; ++ui)
            (void)ZRYAML_PropertyGet(stDocument, "a.b");
    };
    std::thread astThread[] = {std::thread(fnQuery), std::thread(fnQuery), std::thread(fnQuery)};
    for (std::thread &stThread : astThread)
        stThread.join();
    ZRYAML_DebugSwitchSet(0);
    EXPECT_EQ(stDocument->uiQueryCount, 3 * Queries);
    EXPECT_GE(stDocument->ulQueryTimeTotal, 3 * Queries);
}
