// SPDX-License-Identifier: Apache-2.0
// Steps of a load in states to which no file and no row of cases/ leads.
#include "support/load_text.h"

#include <cstring>
#include <gtest/gtest.h>
#include <yaml.h>

namespace {

struct ParseStep : Recorded { // with an empty document that was made of garbage
    ParseStep()
    {
        memset(static_cast<void *>(&stHandle), 0xA5, sizeof(stHandle));
        ZRYAML_DebugSwitchSet(1);
        yaml_HandleInit(&stHandle);
    }
    YamlHandle stHandle;
};

} // namespace

TEST_F(ParseStep, InitLeavesAnEmptyDocument)
{
    const YamlListNode &stRoot = stHandle.stRoot;
    EXPECT_EQ(TreeCheck(stHandle) + TreeText(stHandle) + ZRYAML_NameGet(&stHandle), "");
    EXPECT_TRUE(stRoot.stChildLink.next == &stRoot.stChildLink && stRoot.stSeqLink.prev == &stRoot.stSeqLink);
    EXPECT_EQ(stRoot.uiMagic, 0x123456FFU);
    EXPECT_EQ(stRoot.uiFromAlias + stRoot.uiSameWithAnchor, 0U);
    EXPECT_EQ(stRoot.uiDataType, YAML_DATATYPE_NONE);
    EXPECT_EQ(stHandle.uiParseTime + stHandle.uiQueryCount + stHandle.ulQueryTimeTotal, 0U);
    EXPECT_EQ(stHandle.uiMemSize, sizeof(YamlHandle));
    ZRYAML_DebugSwitchSet(2); // counts no memory
    yaml_HandleInit(&stHandle);
    EXPECT_EQ(stHandle.uiMemSize, 0U);
}

TEST_F(ParseStep, EventStackIgnoresWhatIsBeyondItsEnd)
{
    for (int i = 1; i <= 513; ++i)
        yaml_EventStartSet(&stHandle, i == 512 ? 9 : 7);
    EXPECT_EQ(yaml_CurrEventGet(&stHandle), 9U);
    yaml_EventEndSet(&stHandle);
    EXPECT_EQ(stHandle.uiEventDepth, 511U);
    EXPECT_EQ(stHandle.auiEventStack[511], 0U);
}

TEST_F(ParseStep, EventsAndErrorsThatLibyamlNeverGives)
{
    yaml_parser_t stParser = {};
    for (const yaml_error_type_t eError : {YAML_MEMORY_ERROR, YAML_COMPOSER_ERROR}) {
        stParser.error = eError;
        yaml_ParseErrProcess(&stParser);
    }
    for (const int iType : {0, 11}) {
        yaml_event_t stEvent = {};
        memcpy(&stEvent.type, &iType, sizeof(stEvent.type)); // 11 is none of the enumeration
        YamlListNode *pstCurrent = &stHandle.stRoot;
        uint32_t uiFlag = 1, uiLast = 1, uiDocuments = 0;
        EXPECT_EQ(yaml_EventAnalyze(&stEvent, &pstCurrent, &uiFlag, &uiLast, &uiDocuments, &stHandle), YAML_ERR_EVENT);
        EXPECT_EQ(uiLast, static_cast<uint32_t>(iType)); // after every event, failed or not
    }
    stHandle.stLimits.ulCopyBytes = 0;
    EXPECT_EQ(yaml_SingleNodeDup(&stHandle, &stHandle.stRoot), nullptr); // at no alias
    EXPECT_EQ(Base().LogText(), "2 c There is not enough memory for parsing.\n"
                                "2 16 There is an internal error in libYAML.\n"
                                "2 1900000b Unknown parse event. (Event=0)\n"
                                "2 1900000b Unknown parse event. (Event=11)\n"
                                "2 c The alias expansion is too large. (Alias=)\n");
}

TEST_F(ParseStep, ReleasedNodeLeavesItsChildrenFree)
{
    YamlListNode *pstMap = yaml_ListNodeAlloc(&stHandle), *pstKey = yaml_ScalarNodeCreate(&stHandle, "k");
    pstMap->uiDataType = YAML_DATATYPE_MAP;
    EXPECT_EQ(yaml_ScalarNodeAddWithKeyRole(pstKey, pstMap), YAML_OK);
    yaml_ListNodeFree(pstMap);
    EXPECT_TRUE(pstKey->pstFather == nullptr && pstKey->stChildLink.next == &pstKey->stChildLink);
    yaml_ListNodeFree(pstKey);
}

// A list of anchors is released up to what is no record.
TEST_F(ParseStep, AnchorsEndAtAForeignRecord)
{
    YamlAnchorNode *pstForeign = yaml_AnchorNodeAlloc(&stHandle, "f");
    YamlList stHead = {&pstForeign->stAnchorLink, &pstForeign->stAnchorLink};
    pstForeign->stAnchorLink = {&stHead, &stHead};
    for (const uint32_t uiMagic : {0U, YAML_NODE_MAGIC}) {
        pstForeign->uiMagic = uiMagic;
        yaml_AnchorNodesRelease(&stHead);
        EXPECT_EQ(Base().lBlocks, uiMagic == 0 ? 2 : 0);
    }
    EXPECT_EQ(stHead.next, &stHead);
}
