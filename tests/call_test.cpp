// SPDX-License-Identifier: Apache-2.0
// Single calls with what neither a file nor a row of cases/ can hand to them.
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
    Base().bSecureCallsFail = true; // is noted, and the text is there
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "{a}.{b}"), "x");
    EXPECT_EQ(Base().LogText(), "2 19000005 The input key is too long to format.\n"
                                "1 16 Secure check fail.\n1 16 Secure check fail.\n");
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
