// SPDX-License-Identifier: Apache-2.0
// Single calls with what neither a file nor a row of cases/ can hand to them.
#include "support/case_operations.h"
#include "support/load_text.h"

#include <cstring>
#include <gtest/gtest.h>
#include <yaml.h>

namespace {

struct Call : Recorded {
    ~Call() override { ZRYAML_HandleFree(pstHandle); }
    YamlHandle *pstHandle = ZRYAML_TextLoad("a: {b: x, c: [p, q]}", 20, nullptr);
};

} // namespace

TEST_F(Call, WithFormats)
{
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "%c.%s[%u]", 'a', "c", 1U), "q");
    const wchar_t acNone[] = {wchar_t{0x110000}, 0};                             // no character, so there is no path
    char *(*const pfnGet)(YamlHandle *, const char *, ...) = ZRYAML_PropertyGet; // the format is not checked here
    EXPECT_EQ(pfnGet(pstHandle, "%ls", acNone), nullptr);
    EXPECT_STREQ(ZRYAML_LastErrorGet()->pcKeyPath, "%ls");
    EXPECT_STREQ(ZRYAML_LastErrorGet()->pcMessage, "the format of the key path cannot be used");
    Base().bSecureCallsFail = true; // is noted, and the text is there
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "{a}.{b}"), "x");
    EXPECT_EQ(Base().LogText(), "2 19000005 The input key is too long to format.\n"
                                "1 16 Secure check fail.\n1 16 Secure check fail.\n");
}

TEST_F(Call, WithFormatsThatAreReadInPlace)
{
    constexpr std::string_view text = "{a: {k1x: [p, q], '50%': [r, [s]], '': t, 'c.d': u}, '-1': v, '7': w}";
    ZRYAML_HandleFree(std::exchange(pstHandle, ZRYAML_TextLoad(text.data(), text.size(), nullptr)));
    const std::string letters(1019, 'k');
    const auto Get = [this](const char *pcFormat, auto... arguments) {
        char *(*const pfnGet)(YamlHandle *, const char *, ...) = ZRYAML_PropertyGet; // not checked here
        const char *pcText = pfnGet(pstHandle, pcFormat, arguments...);
        return pcText != nullptr ? pcText : ZRYAML_LastErrorGet()->pcMessage;
    };
    EXPECT_STREQ(Get("%s.k%u%s[%zu]", "a", 1U, "x", size_t{1}), "q");
    EXPECT_STREQ(Get("a.%s[%d][%lu]", "50%", 1, 0UL), "s");
    EXPECT_STREQ(Get("a.5%d%%[0]", 0), "r");
    EXPECT_STREQ(Get("a.%s", ""), "the key path is malformed: a key is missing after the last '.'");
    EXPECT_STREQ(Get("%sa.%sk%ux[1]", "", "", 1U), "q"); // empty, with a number behind it
    EXPECT_STREQ(Get("a.%s", "k1x[0]"), "p");            // an argument may be path syntax
    EXPECT_STREQ(Get("%s.c\\.%s", "a", "d"), "u");
    EXPECT_STREQ(Get("%s.%s[%u]", "a", "k1x[9].b", 1U), "a.k1x has 2 elements, there is no [9]");
    EXPECT_STREQ(Get("%d", -1), "v");
    EXPECT_STREQ(Get("%1$d", 7), "w");
    EXPECT_STREQ(Get("a.k1x[%d]", -1), "the key path is malformed: an index is not a number from 0 on");
    EXPECT_STREQ(Get("%s.%s", "a", letters.c_str()), ("no key '" + letters.substr(0, 61) + "...' in a").c_str());
    EXPECT_STREQ(Get("%s.%s%s", "a", "kkk", letters.c_str()), "the key path is longer than 1023 bytes");
}

TEST_F(Call, WithRecordsOfOtherSizes)
{
    struct Grown { // as a later header has it
        YamlChild stChild = YAML_CHILD_INIT;
        uint64_t ulNew = 7;
    } stGrown;
    stGrown.stChild.uiSize = sizeof(Grown);
    YamlChild stZero = {}, stSmall = YAML_CHILD_INIT;
    stSmall.uiSize = sizeof(YamlChild) - 1;
    const YamlListNode *pstRoot = ZRYAML_RootGet(pstHandle);
    EXPECT_EQ(ZRYAML_ChildNextGet(pstRoot, &stGrown.stChild), YAML_OK);
    EXPECT_EQ(ZRYAML_ChildGet(pstRoot, 0, &stZero), YAML_OK);
    EXPECT_EQ(ZRYAML_ChildNextGet(pstRoot, &stSmall), YAML_ERR_PARAM);
    EXPECT_EQ(stSmall.pcKey, nullptr);
    EXPECT_STREQ(stZero.pcKey, "a");
    EXPECT_TRUE(stGrown.stChild.uiSize == sizeof(Grown) && stGrown.ulNew == 7);

    YamlLimits stLimits = YAML_LIMITS_INIT;
    ZRYAML_LimitsGet(&stLimits);
    stLimits.uiSize = 8;
    EXPECT_EQ(ZRYAML_LimitsSet(&stLimits), YAML_ERR_PARAM);
    EXPECT_STREQ(ZRYAML_CodeNameGet(YAML_ERR_SCHEMA), "YAML_ERR_SCHEMA");
    EXPECT_STREQ(ZRYAML_CodeNameGet(0x19000010U), "");
}

TEST_F(Call, WithoutTextOrName)
{
    EXPECT_STREQ(ZRYAML_NameGet(pstHandle), "");
    ZRYAML_HandleFree(std::exchange(pstHandle, ZRYAML_TextLoad(nullptr, 0, "none")));
    EXPECT_STREQ(ZRYAML_NameGet(pstHandle), "none");
}

TEST_F(Call, WithIteratorsThatAreForeignOrOutliveTheDocument)
{
    char acKept[] = "kept";
    YamlKeyValue stPair = {acKept, acKept};
    YamlIterator astForeign[] = {{0x123456FE, YAML_DATATYPE_MAP, nullptr, nullptr},
                                 {0x123456FF, YAML_DATATYPE_SCALAR, nullptr, &pstHandle->stRoot}};
    for (YamlIterator &stForeign : astForeign)
        EXPECT_EQ(yaml_NextKeyValueGet(&stForeign, &stPair), YAML_ERR_PARAM);
    EXPECT_TRUE(stPair.pcKey == acKept && stPair.pcValue == acKept);
    yaml_IteratorDestroy(&astForeign[0]);

    ZRYAML_DebugSwitchSet(1);
    YamlIterator *pstIter = yaml_IteratorCreate(pstHandle, "a");
    EXPECT_EQ(pstHandle->uiQueryCount + pstHandle->uiMemSize, 0U); // neither counted nor timed
    ZRYAML_HandleFree(std::exchange(pstHandle, nullptr));
    yaml_IteratorDestroy(pstIter);
}

TEST_F(Call, WithMoreEventsThanTheStackHolds)
{
    for (int i = 1; i <= 513; ++i)
        yaml_EventStartSet(pstHandle, i == 512 ? 9 : 7);
    EXPECT_EQ(yaml_CurrEventGet(pstHandle), 9U);
    yaml_EventEndSet(pstHandle);
    EXPECT_EQ(pstHandle->uiEventDepth, 511U);
    EXPECT_EQ(pstHandle->auiEventStack[511], 0U);
}

TEST_F(Call, WithEventsAndErrorsThatLibyamlNeverGives)
{
    yaml_parser_t stParser = {};
    for (const yaml_error_type_t eError : {YAML_MEMORY_ERROR, YAML_COMPOSER_ERROR}) {
        stParser.error = eError;
        yaml_ParseErrProcess(&stParser);
    }
    for (const int iType : {0, 11}) {
        yaml_event_t stEvent = {};
        memcpy(&stEvent.type, &iType, sizeof(stEvent.type)); // 11 is none of the enumeration
        YamlListNode *pstCurrent = &pstHandle->stRoot;
        uint32_t uiFlag = 1, uiLast = 1, uiDocuments = 0;
        EXPECT_EQ(yaml_EventAnalyze(&stEvent, &pstCurrent, &uiFlag, &uiLast, &uiDocuments, pstHandle), YAML_ERR_EVENT);
        EXPECT_EQ(uiLast, static_cast<uint32_t>(iType)); // after every event, failed or not
    }
    pstHandle->ulOwnBytes = 0;
    for (const uint64_t ulBytes : {0U, 1U}) {
        pstHandle->stLimits.ulCopyBytes = ulBytes;
        EXPECT_EQ(yaml_SingleNodeDup(pstHandle, &pstHandle->stRoot), nullptr);         // at no alias
        EXPECT_NE(strstr(ZRYAML_LastErrorGet()->pcHint, "may copy 0 bytes"), nullptr); // the first hint stays
    }
    EXPECT_EQ(Base().LogText(), "2 c There is not enough memory for parsing.\n"
                                "2 16 There is an internal error in libYAML.\n"
                                "2 1900000b Unknown parse event. (Event=0)\n"
                                "2 1900000b Unknown parse event. (Event=11)\n"
                                "2 c The alias expansion is too large. (Alias=)\n"
                                "2 c The alias expansion is too large. (Alias=)\n");
}

// A node that goes leaves its children free; a list of anchors is released up to what is no record.
TEST_F(Call, OfRelease)
{
    const int64_t lBlocks = Base().lBlocks;
    YamlListNode *pstMap = yaml_ListNodeAlloc(pstHandle), *pstKey = yaml_ScalarNodeCreate(pstHandle, "k");
    pstMap->uiDataType = YAML_DATATYPE_MAP;
    EXPECT_EQ(yaml_ScalarNodeAddWithKeyRole(pstKey, pstMap), YAML_OK);
    yaml_ListNodeFree(pstMap);
    EXPECT_TRUE(pstKey->pstFather == nullptr && pstKey->stChildLink.next == &pstKey->stChildLink);
    yaml_ListNodeFree(pstKey);
    EXPECT_EQ(Base().lBlocks, lBlocks);

    YamlAnchorNode *pstForeign = yaml_AnchorNodeAlloc(pstHandle, "f");
    YamlList stHead = {&pstForeign->stAnchorLink, &pstForeign->stAnchorLink};
    pstForeign->stAnchorLink = {&stHead, &stHead};
    for (const uint32_t uiMagic : {0U, YAML_NODE_MAGIC}) {
        pstForeign->uiMagic = uiMagic;
        yaml_AnchorNodesRelease(&stHead);
        EXPECT_EQ(Base().lBlocks, lBlocks + (uiMagic == 0 ? 2 : 0));
    }
    EXPECT_EQ(stHead.next, &stHead);
}

// What goes from a large map or comes into it is what lookups find from then on.
TEST_F(Call, OnAMapWithAnIndex)
{
    std::string text = "m: {last: b";
    for (int i = 0; i < 40; ++i)
        text += ", " + std::to_string(i) + ": a";
    text += '}';
    const auto Key = [&](const char *pcPath) { return NodeAt(*pstHandle, pcPath); };
    for (const bool bGoes : {true, false}) {
        ZRYAML_HandleFree(std::exchange(pstHandle, ZRYAML_TextLoad(text.data(), text.size(), nullptr)));
        EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "m.last"), "b");
        YamlListNode *pstNew = yaml_ScalarNodeCreate(pstHandle, "new");
        uint32_t uiValue = 1;
        if (bGoes) {
            yaml_ListNodeFree(Key("m.7"));
        } else {
            EXPECT_EQ(yaml_ScalarNodeAddWithKeyRole(pstNew, Key("m.0")), YAML_OK);
            EXPECT_EQ(yaml_ScalarNodeAddInMap(yaml_ScalarNodeCreate(pstHandle, "v"), pstNew, &uiValue), YAML_OK);
            EXPECT_EQ(yaml_ScalarNodeAddWithKeyRole(yaml_ScalarNodeCreate(pstHandle, "last"), Key("m.0")),
                      YAML_ERR_SAME);
        }
        EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "m.7"), bGoes ? nullptr : "a");
        EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "m.new"), bGoes ? nullptr : "v");
        EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "m.last"), "b");
    }
}
