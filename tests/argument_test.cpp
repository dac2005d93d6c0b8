// SPDX-License-Identifier: Apache-2.0
// The public calls with arguments that are wrong or missing, with formats, and from several threads.
#include "support/load_text.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <latch>
#include <thread>

namespace {

constexpr char Text[] = "a: {b: x, c: [p, q]}\n50%: r\n";

struct Argument : Recorded {
    Argument() : pstHandle(ZRYAML_TextLoad(Text, sizeof(Text) - 1, "doc")) {}
    void TearDown() override
    {
        ZRYAML_HandleFree(pstHandle);
        Recorded::TearDown();
    }
    YamlHandle *pstHandle;
};

// The same calls where the compiler does not look at the format.
char *(*const g_pfnGet)(YamlHandle *, const char *, ...) = ZRYAML_PropertyGet;
uint32_t (*const g_pfnSize)(YamlHandle *, const char *, ...) = ZRYAML_ArraySizeGet;
YamlIterator *(*const g_pfnIterate)(YamlHandle *, const char *, ...) = yaml_IteratorCreate;
const YamlListNode *(*const g_pfnFind)(YamlHandle *, const char *, ...) = ZRYAML_ValueFind;
uint32_t (*const g_pfnPosition)(YamlHandle *, uint32_t *, uint32_t *, const char *, ...) = ZRYAML_PositionGet;

std::string SizeLog(const void *pvHandle, const void *pvKey)
{
    char acLog[200];
    (void)snprintf(acLog, sizeof(acLog), "2 16 The input parameter is invalid. (Handle=%p, Key=%p)\n", pvHandle, pvKey);
    return acLog;
}

#define NULL_LOG "2 16 The parameter is null.\n"
#define ITERATOR_LOG "2 16 The parameter is invalid to get iterator.\n"
#define PAIR_LOG "2 16 The input parameter is invalid to get key and value.\n"
#define DUMP_LOG "2 16 The parameter is invalid to dump YAML context.\n"
#define LIMITS_LOG "2 16 The limits are invalid.\n"

} // namespace

TEST_F(Argument, OfTheWrongKind)
{
    uint32_t uiLine = 7, uiColumn = 7;
    char acBuf[] = "kept";
    const char *pcKept = "kept";
    YamlKeyValue stPair = {pcKept, pcKept};
    YamlIterator stForeign = {0x123456FE, YAML_DATATYPE_MAP, nullptr, nullptr};
    YamlIterator stOther = {YAML_NODE_MAGIC, YAML_DATATYPE_SCALAR, nullptr, &pstHandle->stRoot};
    YamlUnreadKey stUnread = {};
    YamlLimits stLimits = {};
    const auto Refused = [](int iLine, const std::string &log, bool bRefused) {
        EXPECT_TRUE(bRefused) << iLine;
        EXPECT_TRUE(Base().LogText() == log) << iLine << Base().LogText();
        EXPECT_EQ(ZRYAML_LastErrorGet()->uiCode, YAML_ERR_PARAM) << iLine;
        Base().Reset();
    };
#define REFUSED(log, condition) Refused(__LINE__, log, condition)
    REFUSED(NULL_LOG, ZRYAML_FileLoad(nullptr) == nullptr);
    REFUSED(NULL_LOG, ZRYAML_TextLoad(nullptr, 1, "x") == nullptr);
    REFUSED("", ZRYAML_PropertyGet(nullptr, "a.b") == nullptr);
    REFUSED("", g_pfnGet(pstHandle, nullptr) == nullptr);
    REFUSED(SizeLog(pstHandle, nullptr), g_pfnSize(pstHandle, nullptr) == 0);
    REFUSED(SizeLog(nullptr, Text), g_pfnSize(nullptr, Text) == 0);
    REFUSED(NULL_LOG, g_pfnFind(pstHandle, nullptr) == nullptr);
    REFUSED(NULL_LOG, g_pfnFind(nullptr, "a") == nullptr);
    REFUSED(NULL_LOG, ZRYAML_PathFind(pstHandle, nullptr) == nullptr);
    REFUSED(NULL_LOG, ZRYAML_TypeGet(nullptr, "a") == YAML_DATATYPE_NONE);
    REFUSED(NULL_LOG, ZRYAML_PositionGet(pstHandle, &uiLine, nullptr, "a") == YAML_ERR_PARAM);
    REFUSED(NULL_LOG, ZRYAML_PositionGet(pstHandle, nullptr, &uiColumn, "a") == YAML_ERR_PARAM);
    REFUSED(NULL_LOG, ZRYAML_PositionGet(nullptr, &uiLine, &uiColumn, "a") == YAML_ERR_PARAM);
    REFUSED(NULL_LOG, g_pfnPosition(pstHandle, &uiLine, &uiColumn, nullptr) == YAML_ERR_PARAM);
    REFUSED(ITERATOR_LOG, g_pfnIterate(nullptr, "a") == nullptr);
    REFUSED(ITERATOR_LOG, g_pfnIterate(pstHandle, nullptr) == nullptr);
    REFUSED(PAIR_LOG, yaml_NextKeyValueGet(nullptr, &stPair) == YAML_ERR_PARAM);
    REFUSED(PAIR_LOG, yaml_NextKeyValueGet(&stForeign, nullptr) == YAML_ERR_PARAM);
    REFUSED("2 16 The input iterator is invalid.\n", yaml_NextKeyValueGet(&stForeign, &stPair) == YAML_ERR_PARAM);
    REFUSED(DUMP_LOG, ZRYAML_ContextDump(pstHandle, 0, acBuf) == YAML_ERR_PARAM);
    REFUSED(DUMP_LOG, ZRYAML_ContextDump(pstHandle, sizeof(acBuf), nullptr) == YAML_ERR_PARAM);
    REFUSED(DUMP_LOG, ZRYAML_ContextDump(nullptr, sizeof(acBuf), acBuf) == YAML_ERR_PARAM);
    REFUSED(NULL_LOG, ZRYAML_UnreadKeyNext(nullptr, &stUnread) == YAML_ERR_PARAM);
    REFUSED(NULL_LOG, ZRYAML_UnreadKeyNext(pstHandle, nullptr) == YAML_ERR_PARAM);
    REFUSED(LIMITS_LOG, ZRYAML_LimitsSet(nullptr) == YAML_ERR_PARAM);
    REFUSED(LIMITS_LOG, ZRYAML_LimitsSet(&stLimits) == YAML_ERR_PARAM);
    stLimits.uiDepth = 513;
    REFUSED(LIMITS_LOG, ZRYAML_LimitsSet(&stLimits) == YAML_ERR_PARAM);
    // Nothing was written.
    EXPECT_EQ(uiLine + uiColumn, 14U);
    EXPECT_STREQ(acBuf, "kept");
    EXPECT_EQ(yaml_NextKeyValueGet(&stOther, &stPair), YAML_ERR_PARAM);
    yaml_IteratorDestroy(nullptr);
    yaml_IteratorDestroy(&stForeign);
    EXPECT_TRUE(stPair.pcKey == pcKept && stPair.pcValue == pcKept);
    ZRYAML_LimitsGet(nullptr);
    ZRYAML_LimitsGet(&stLimits);
    EXPECT_EQ(stLimits.uiDepth, 512U);
    EXPECT_EQ(stLimits.ulCopyBytes, 256U << 20);
    YamlHandle *pstEmpty = ZRYAML_TextLoad(nullptr, 0, nullptr);
    EXPECT_EQ(ZRYAML_LastErrorGet()->uiCode, 0U);
    EXPECT_STREQ(ZRYAML_NameGet(pstEmpty), "");
    ZRYAML_HandleFree(pstEmpty);
}

TEST_F(Argument, NothingHasNoChildren)
{
    YamlChild stChild = {};
    char acPath[2] = "x";
    uint32_t uiLine = 1, uiColumn = 1;
    EXPECT_EQ(ZRYAML_ChildNextGet(nullptr, &stChild), YAML_ERR_ITER_END);
    EXPECT_EQ(ZRYAML_ChildNextGet(nullptr, nullptr), YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_ChildGet(nullptr, 0, &stChild), YAML_ERR_ITER_END);
    EXPECT_EQ(ZRYAML_ChildGet(nullptr, 0, nullptr), YAML_ERR_PARAM);
    stChild.pstEntry = ZRYAML_RootGet(pstHandle);
    EXPECT_EQ(ZRYAML_ChildNextGet(nullptr, &stChild), YAML_ERR_ITER_END);
    EXPECT_EQ(ZRYAML_ChildCountGet(nullptr), 0U);
    EXPECT_EQ(ZRYAML_ChildFind(nullptr, "a", 1), nullptr);
    EXPECT_EQ(ZRYAML_ChildFind(ZRYAML_RootGet(pstHandle), nullptr, 0), nullptr);
    EXPECT_EQ(ZRYAML_ChildFind(ZRYAML_RootGet(pstHandle), "ab", 2), nullptr);
    EXPECT_EQ(ZRYAML_ValueTypeGet(nullptr), YAML_DATATYPE_NONE);
    EXPECT_EQ(ZRYAML_ValueTextGet(nullptr), nullptr);
    EXPECT_EQ(ZRYAML_RootGet(nullptr), nullptr);
    EXPECT_EQ(ZRYAML_DocumentGet(nullptr), nullptr);
    EXPECT_STREQ(ZRYAML_NameGet(nullptr), "");
    EXPECT_STREQ(ZRYAML_NameGet(pstHandle), "doc");
    EXPECT_EQ(ZRYAML_ValuePathGet(nullptr, 2, acPath), 0U);
    EXPECT_STREQ(acPath, "");
    EXPECT_EQ(ZRYAML_ValuePathGet(ZRYAML_ValueFind(pstHandle, "a.b"), 0, nullptr), 3U);
    ZRYAML_ValuePositionGet(nullptr, &uiLine, &uiColumn);
    EXPECT_EQ(uiLine + uiColumn, 0U);
    EXPECT_EQ(Base().LogText(), "");
}

TEST_F(Argument, Formats)
{
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "a.%s", "b"), "x");
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "a.c[%u]", 1U), "q");
    EXPECT_EQ(ZRYAML_ArraySizeGet(pstHandle, "%c.%s", 'a', "c"), 2U);
    EXPECT_EQ(Base().LogText(), "");
    const wchar_t acNone[] = {wchar_t{0x110000}, 0}; // no character, so there is no path
    EXPECT_EQ(g_pfnGet(pstHandle, "%ls", acNone), nullptr);
    EXPECT_EQ(Base().LogText(), "2 19000005 The input key is too long to format.\n");
    EXPECT_STREQ(ZRYAML_LastErrorGet()->pcKeyPath, "%ls");
    Base().Reset();
    Base().bSecureCallsFail = true; // is noted, and the text is there
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "{a}.{b}"), "x");
    EXPECT_EQ(Base().LogText(), "1 16 Secure check fail.\n1 16 Secure check fail.\n");
}

TEST_F(Argument, IteratorsAreIndependentAndOutliveTheDocument)
{
    YamlKeyValue stPair = {};
    Base().ulFailAllocation = 1;
    EXPECT_EQ(yaml_IteratorCreate(pstHandle, "a"), nullptr);
    EXPECT_EQ(Base().LogText(),
              "2 c Failed to alloc memory for create iterator. (Size=" + std::to_string(sizeof(YamlIterator)) + ")\n");
    ZRYAML_DebugSwitchSet(1);
    YamlIterator *pstFirst = yaml_IteratorCreate(pstHandle, "%s", "a"),
                 *pstSecond = yaml_IteratorCreate(pstHandle, "a");
    for (YamlIterator *pstIter : {pstFirst, pstSecond}) {
        ASSERT_NE(pstIter, nullptr);
        EXPECT_EQ(yaml_NextKeyValueGet(pstIter, &stPair), YAML_OK);
        EXPECT_STREQ(stPair.pcValue, "x");
    }
    EXPECT_EQ(pstHandle->uiQueryCount + pstHandle->uiMemSize, 0U); // neither counted nor timed
    ZRYAML_HandleFree(std::exchange(pstHandle, nullptr));
    yaml_IteratorDestroy(pstSecond);
    yaml_IteratorDestroy(pstFirst);
}

TEST_F(Argument, FindingAChildMarksItsKeyAsRead)
{
    ZRYAML_DebugSwitchSet(1);
    YamlUnreadKey stUnread = {};
    EXPECT_NE(ZRYAML_ChildFind(ZRYAML_RootGet(pstHandle), "a", 1), nullptr);
    EXPECT_EQ(ZRYAML_UnreadKeyNext(pstHandle, &stUnread), YAML_OK);
    EXPECT_STREQ(stUnread.acPath, "a.b");
}

TEST_F(Argument, ThreadsLoseNoCount)
{
    constexpr uint32_t Queries = 20000;
    std::latch stStart(3);
    ZRYAML_DebugSwitchSet(1);
    const auto Query = [this, &stStart] {
        stStart.arrive_and_wait();
        for (uint32_t ui = 0; ui < Queries; ++ui)
            (void)ZRYAML_PropertyGet(pstHandle, "a.b");
    };
    std::thread astThread[] = {std::thread(Query), std::thread(Query), std::thread(Query)};
    for (std::thread &stThread : astThread)
        stThread.join();
    EXPECT_EQ(pstHandle->uiQueryCount, 3 * Queries);
    EXPECT_GE(pstHandle->ulQueryTimeTotal, 3 * Queries);
}
