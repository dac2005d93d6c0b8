// SPDX-License-Identifier: Apache-2.0
// The public calls with arguments that are wrong or missing, and with formats.
#include "support/load_text.h"

#include <gtest/gtest.h>

namespace {

struct Argument : Recorded {
    Argument() : pstHandle(ZRYAML_TextLoad("a: {b: x, c: [p, q]}", 20, "doc")) {}
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

#define NULL_LOG "2 16 The parameter is null.\n"
#define SIZE_LOG "2 16 The input parameter is invalid. "
#define ITERATOR_LOG "2 16 The parameter is invalid to get iterator.\n"
#define PAIR_LOG "2 16 The input parameter is invalid to get key and value.\n"
#define DUMP_LOG "2 16 The parameter is invalid to dump YAML context.\n"
#define LIMITS_LOG "2 16 The limits are invalid.\n"

} // namespace

TEST_F(Argument, OfTheWrongKind)
{
    uint32_t uiLine = 7, uiColumn = 7;
    char acBuf[] = "kept";
    auto *const pstAnywhere = reinterpret_cast<YamlHandle *>(0x7E57);
    YamlKeyValue stPair = {acBuf, acBuf};
    YamlIterator stForeign = {0x123456FE, YAML_DATATYPE_MAP, nullptr, nullptr};
    YamlIterator stOther = {YAML_NODE_MAGIC, YAML_DATATYPE_SCALAR, nullptr, &pstHandle->stRoot};
    YamlUnreadKey stUnread = {};
    YamlLimits stNone = {}, stDeep = {513, 0, 0, 0}, stLimits = {};
    const auto Refused = [](int iLine, const std::string &log, bool bRefused) {
        EXPECT_TRUE(bRefused) << iLine;
        EXPECT_EQ(Base().LogText(), log) << iLine;
        EXPECT_EQ(ZRYAML_LastErrorGet()->uiCode, YAML_ERR_PARAM) << iLine;
        Base().Reset();
    };
#define REFUSED(log, condition) Refused(__LINE__, log, condition)
    REFUSED(NULL_LOG, ZRYAML_FileLoad(nullptr) == nullptr);
    REFUSED(NULL_LOG, ZRYAML_TextLoad(nullptr, 1, "x") == nullptr);
    REFUSED("", ZRYAML_PropertyGet(nullptr, "a.b") == nullptr);
    REFUSED("", g_pfnGet(pstHandle, nullptr) == nullptr);
    EXPECT_STREQ(ZRYAML_LastErrorGet()->pcMessage, "The parameter is null."); // only not logged
    REFUSED(SIZE_LOG "(Handle=0x7e57, Key=(nil))\n", g_pfnSize(pstAnywhere, nullptr) == 0);
    REFUSED(SIZE_LOG "(Handle=(nil), Key=0x7e57)\n", g_pfnSize(nullptr, reinterpret_cast<char *>(pstAnywhere)) == 0);
    REFUSED(NULL_LOG, ZRYAML_PathFind(nullptr, "a") == nullptr);
    REFUSED(NULL_LOG, ZRYAML_PathFind(pstHandle, nullptr) == nullptr);
    REFUSED(NULL_LOG, ZRYAML_PositionGet(pstHandle, &uiLine, nullptr, "a") == YAML_ERR_PARAM);
    REFUSED(NULL_LOG, ZRYAML_PositionGet(pstHandle, nullptr, &uiColumn, "a") == YAML_ERR_PARAM);
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
    REFUSED(LIMITS_LOG, ZRYAML_LimitsSet(&stNone) == YAML_ERR_PARAM);
    REFUSED(LIMITS_LOG, ZRYAML_LimitsSet(&stDeep) == YAML_ERR_PARAM);
    // Nothing was written.
    EXPECT_EQ(yaml_NextKeyValueGet(&stOther, &stPair), YAML_ERR_PARAM);
    EXPECT_TRUE(uiLine == 7 && uiColumn == 7 && stPair.pcKey == acBuf && stPair.pcValue == acBuf);
    EXPECT_STREQ(acBuf, "kept");
    yaml_IteratorDestroy(nullptr);
    yaml_IteratorDestroy(&stForeign);
    ZRYAML_LimitsGet(nullptr);
    ZRYAML_LimitsGet(&stLimits);
    EXPECT_TRUE(stLimits.uiDepth == 512 && stLimits.ulCopyBytes == 256U << 20);
    EXPECT_EQ(Base().LogText(), "");
}

TEST_F(Argument, OfNothing)
{
    const YamlListNode *pstRoot = ZRYAML_RootGet(pstHandle);
    YamlChild stChild = {nullptr, nullptr, 0, 0, pstRoot};
    uint32_t uiLine = 1, uiColumn = 1;
    EXPECT_TRUE(ZRYAML_RootGet(nullptr) == nullptr && ZRYAML_ValueTextGet(nullptr) == nullptr);
    EXPECT_TRUE(ZRYAML_ChildFind(nullptr, "a", 1) == nullptr && ZRYAML_ChildFind(pstRoot, nullptr, 0) == nullptr);
    EXPECT_TRUE(*ZRYAML_NameGet(nullptr) == '\0' && ZRYAML_ChildCountGet(nullptr) == 0);
    EXPECT_EQ(ZRYAML_ChildNextGet(nullptr, &stChild), YAML_ERR_ITER_END);
    EXPECT_EQ(ZRYAML_ChildGet(nullptr, 0, &stChild), YAML_ERR_ITER_END);
    EXPECT_EQ(ZRYAML_ChildNextGet(pstRoot, nullptr), YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_ChildGet(pstRoot, 0, nullptr), YAML_ERR_PARAM);
    YamlHandle *pstEmpty = ZRYAML_TextLoad(nullptr, 0, nullptr);
    EXPECT_EQ(ZRYAML_LastErrorGet()->uiCode, 0U);
    EXPECT_STREQ(ZRYAML_NameGet(pstEmpty), "");
    ZRYAML_HandleFree(pstEmpty);
    ZRYAML_ValuePositionGet(nullptr, &uiLine, &uiColumn);
    EXPECT_EQ(uiLine + uiColumn, 0U);
    EXPECT_EQ(Base().LogText(), "");
}

TEST_F(Argument, Formats)
{
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "%c.%s[%u]", 'a', "c", 1U), "q");
    const wchar_t acNone[] = {wchar_t{0x110000}, 0}; // no character, so there is no path
    EXPECT_EQ(g_pfnGet(pstHandle, "%ls", acNone), nullptr);
    EXPECT_STREQ(ZRYAML_LastErrorGet()->pcKeyPath, "%ls");
    Base().bSecureCallsFail = true; // is noted, and the text is there
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "{a}.{b}"), "x");
    EXPECT_EQ(Base().LogText(), "2 19000005 The input key is too long to format.\n"
                                "1 16 Secure check fail.\n1 16 Secure check fail.\n");
}

TEST_F(Argument, AnIteratorOutlivesItsDocument)
{
    Base().ulFailAllocation = 1;
    EXPECT_EQ(yaml_IteratorCreate(pstHandle, "a"), nullptr);
    EXPECT_EQ(Base().LogText(),
              "2 c Failed to alloc memory for create iterator. (Size=" + std::to_string(sizeof(YamlIterator)) + ")\n");
    ZRYAML_DebugSwitchSet(1);
    YamlIterator *pstIter = yaml_IteratorCreate(pstHandle, "a");
    EXPECT_EQ(pstHandle->uiQueryCount + pstHandle->uiMemSize, 0U); // neither counted nor timed
    ZRYAML_HandleFree(std::exchange(pstHandle, nullptr));
    yaml_IteratorDestroy(pstIter);
}

TEST_F(Argument, FindingAChildMarksItsKeyAsRead)
{
    ZRYAML_DebugSwitchSet(1);
    YamlUnreadKey stUnread = {};
    EXPECT_NE(ZRYAML_ChildFind(ZRYAML_RootGet(pstHandle), "a", 1), nullptr);
    EXPECT_EQ(ZRYAML_UnreadKeyNext(pstHandle, &stUnread), YAML_OK);
    EXPECT_STREQ(stUnread.acPath, "a.b");
}
