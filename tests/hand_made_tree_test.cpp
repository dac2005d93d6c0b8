// SPDX-License-Identifier: Apache-2.0
// The exported operations one by one, on nodes and trees that no file makes.
#include "node_tree.h"
#include "support/load_text.h"

#include <cstring>
#include <gtest/gtest.h>
#include <yaml.h>

namespace {

using zryaml::Children;
using zryaml::FirstChild;
using zryaml::LinkIn;
using zryaml::ListInit;
using zryaml::ListInsertAfter;

struct HandMade : Recorded { // with an empty document; what a test puts into it is released with it
    HandMade() : pstHandle(TextFileLoad("")) {}
    void TearDown() override
    {
        EXPECT_EQ(Base().LogText(), "");
        yaml_AnchorListRealse(pstHandle);
        ZRYAML_HandleFree(pstHandle);
        Recorded::TearDown();
    }
    [[nodiscard]] YamlListNode *Scalar(const char *pcText) const { return yaml_ScalarNodeCreate(pstHandle, pcText); }
    [[nodiscard]] YamlListNode *Collection(uint32_t uiType) const
    {
        YamlListNode *pstNode = yaml_ListNodeAlloc(pstHandle);
        pstNode->uiDataType = uiType;
        return pstNode;
    }
    // Hangs nodes below a father; the father.
    static YamlListNode *Hang(YamlListNode *pstFather, std::initializer_list<YamlListNode *> children)
    {
        for (YamlListNode *pstChild : children) {
            pstChild->pstFather = pstFather;
            yaml_FatherNodeNextLevelTypeSet(pstChild, pstChild->uiDataType);
            ListInsertAfter(*pstFather->stChildList.prev, LinkIn(*pstFather, *pstChild));
        }
        return pstFather;
    }
    [[nodiscard]] YamlListNode *Map(std::initializer_list<YamlListNode *> keys) const
    {
        return Hang(Collection(YAML_DATATYPE_MAP), keys);
    }
    [[nodiscard]] YamlListNode *Seq(std::initializer_list<YamlListNode *> items) const
    {
        return Hang(Collection(YAML_DATATYPE_SEQ), items);
    }
    // The texts below a node, "-" for what has none.
    static std::string Below(const YamlListNode &stFather)
    {
        std::string text;
        for (const YamlListNode &stChild : Children(stFather))
            text += stChild.pcValue != nullptr ? stChild.pcValue : "-";
        return text;
    }
    [[nodiscard]] std::string Nodes() const // the all-nodes list
    {
        std::string text;
        for (const YamlListNode &stNode : zryaml::NodeRange(pstHandle->stRoot.stAllocLink, zryaml::NodeLink::Alloc))
            text += stNode.pcValue != nullptr ? stNode.pcValue : "-";
        return text;
    }
    static void ExpectLog(const std::string &log)
    {
        EXPECT_EQ(Base().LogText(), log);
        Base().Reset();
    }
    YamlHandle *pstHandle;
    yaml_event_t stEvent = {};
    uint32_t uiFlag = 1;
};

bool IsAlone(const YamlList &stLink)
{
    return stLink.next == &stLink && stLink.prev == &stLink;
}

#define NOT_IN_ANCHOR \
    "an not find node in anchor but the current father node has been set as same node with anchor. (Scalar=k)\n"
#define BAD_STACK "2 16 There is an invalid event in the event stack.\n"
#define NO_RECORD "2 c Allocate memory for anchor node failed.\n"

} // namespace

TEST_F(HandMade, InitLeavesAnEmptyDocument)
{
    YamlHandle stHandle;
    for (const uint32_t uiSwitch : {0U, 1U, 2U}) {
        memset(static_cast<void *>(&stHandle), 0xA5, sizeof(stHandle));
        ZRYAML_DebugSwitchSet(uiSwitch);
        yaml_HandleInit(&stHandle);
        const YamlListNode &stRoot = stHandle.stRoot;
        EXPECT_EQ(TreeCheck(stHandle) + TreeText(stHandle) + ZRYAML_NameGet(&stHandle), "");
        EXPECT_TRUE(IsAlone(stRoot.stChildLink) && IsAlone(stRoot.stSeqLink) && IsAlone(stRoot.stAllocLink));
        EXPECT_EQ(stRoot.uiMagic, 0x123456FFU);
        EXPECT_EQ(stRoot.uiFromAlias + stRoot.uiSameWithAnchor, 0U);
        EXPECT_TRUE(stRoot.uiDataType == YAML_DATATYPE_NONE && stRoot.uiNextLevelType == YAML_DATATYPE_NONE);
        EXPECT_EQ(stHandle.uiParseTime + stHandle.uiQueryCount + stHandle.ulQueryTimeTotal, 0U);
        EXPECT_EQ(stHandle.uiMemSize, uiSwitch == 1 ? sizeof(YamlHandle) : 0);
    }
}

TEST_F(HandMade, ReleasedNodeIsOutOfItsListsAndItsChildrenAreFree)
{
    YamlListNode *pstA = Scalar("a"), *pstB = Scalar("b"), *pstC = Scalar("c"), *pstMap = Map({pstA, pstB, pstC});
    EXPECT_EQ(Nodes(), "-cba");
    yaml_ListNodeFree(pstB);
    EXPECT_EQ(Below(*pstMap), "ac");
    EXPECT_EQ(pstC->stChildLink.prev, &pstA->stChildLink);
    yaml_ListNodeFree(pstMap);
    EXPECT_TRUE(IsAlone(pstA->stChildLink) && IsAlone(pstC->stChildLink));
    EXPECT_EQ(pstA->pstFather, nullptr);
    EXPECT_EQ(Nodes(), "ca"); // they stay with the document
}

TEST_F(HandMade, ScalarIsMadeWholeOrNotAtAll)
{
    for (const char *pcLog :
         {"2 c Allocate memory for list node failed.\n", "2 c Failed to allocate memory to copy value.\n"}) {
        Base().ulFailAllocation = pcLog[4] == 'A' ? 1 : 2;
        EXPECT_EQ(Scalar("x"), nullptr);
        EXPECT_EQ(Nodes(), "");
        ExpectLog(pcLog);
    }
}

TEST_F(HandMade, SameTextIsFoundByMode)
{
    const struct {
        const char *pcListed; // NULL: a node without a text
        uint32_t uiFromAlias, uiMode;
        bool bSame;
    } astCase[] = {{"a", 0, 0, true},  {"a", 1, 0, false},  {"a", 0, 1, false},
                   {"a", 1, 1, true},  {"a", 0, 2, true},   {"a", 1, 77, true},
                   {"A", 0, 0, false}, {"ab", 0, 2, false}, {nullptr, 0, 2, false}};
    const YamlListNode *pstCandidate = Scalar("a");
    for (const auto &stCase : astCase) {
        YamlListNode *pstListed = stCase.pcListed != nullptr ? Scalar(stCase.pcListed) : yaml_ListNodeAlloc(pstHandle);
        pstListed->uiFromAlias = stCase.uiFromAlias;
        const YamlListNode &stMap = *Map({Scalar("other"), pstListed});
        EXPECT_EQ(yaml_ListSameScalarCheck(&stMap.stChildList, stCase.uiMode, pstCandidate),
                  stCase.bSame ? YAML_ERR_SAME : YAML_OK)
            << &stCase - astCase;
        FirstChild(stMap)->uiMagic = 0; // there the list ends
        EXPECT_EQ(yaml_ListSameScalarCheck(&stMap.stChildList, stCase.uiMode, pstCandidate), YAML_OK);
    }
    EXPECT_EQ(yaml_ListSameScalarCheck(&Map({})->stChildList, 2, pstCandidate), YAML_OK);
}

TEST_F(HandMade, FirstChildFixesTheTypeBelowItsFather)
{
    YamlListNode *pstKey = Scalar("k"), *pstOther = Scalar("l"), *pstItem = Scalar("i"), *pstFather = Scalar("f");
    Hang(pstKey, {Seq({pstItem, Scalar("j")})});
    const YamlListNode &stMap = *Map({pstKey, pstOther});
    EXPECT_EQ(yaml_FirstNodeCheck(pstKey) + yaml_FirstNodeCheck(FirstChild(*pstKey)) + yaml_FirstNodeCheck(pstOther),
              2U);
    EXPECT_EQ(FirstChild(stMap), pstKey);
    for (const uint32_t uiType : {YAML_DATATYPE_MAP, YAML_DATATYPE_SEQ, YAML_DATATYPE_SCALAR}) {
        yaml_FatherNodeNextLevelTypeSet(pstItem, uiType); // has its type already
        EXPECT_EQ(pstItem->pstFather->uiNextLevelType, YAML_DATATYPE_SCALAR);
        yaml_FatherNodeNextLevelTypeSet(pstFather, uiType); // has no father
        EXPECT_EQ(pstFather->uiNextLevelType, YAML_DATATYPE_NONE);
    }
}

TEST_F(HandMade, EventStackHoldsFiveHundredAndTwelve)
{
    yaml_EventEndSet(pstHandle); // nothing open: ignored
    EXPECT_EQ(yaml_CurrEventGet(pstHandle), 0U);
    yaml_EventStartSet(pstHandle, 9);
    yaml_EventStartSet(pstHandle, 7);
    EXPECT_EQ(yaml_CurrEventGet(pstHandle), 7U);
    yaml_EventEndSet(pstHandle);
    EXPECT_EQ(yaml_CurrEventGet(pstHandle), 9U);
    EXPECT_EQ(pstHandle->auiEventStack[1], 0U);
    for (int i = 2; i <= 513; ++i) // the 513th is ignored
        yaml_EventStartSet(pstHandle, i == 512 ? 9 : 7);
    EXPECT_EQ(pstHandle->uiEventDepth, 512U);
    EXPECT_EQ(yaml_CurrEventGet(pstHandle), 9U);
}

TEST_F(HandMade, EventsAndParseErrorsThatNoFileCauses)
{
    yaml_parser_t stParser = {};
    for (const yaml_error_type_t eError : {YAML_MEMORY_ERROR, YAML_COMPOSER_ERROR}) {
        stParser.error = eError;
        yaml_ParseErrProcess(&stParser);
    }
    for (const int iType : {0, 11}) {
        memcpy(&stEvent.type, &iType, sizeof(stEvent.type)); // 11 is none of the enumeration
        YamlListNode *pstCurrent = &pstHandle->stRoot;
        uint32_t uiLast = 1, uiDocuments = 0;
        EXPECT_EQ(yaml_EventAnalyze(&stEvent, &pstCurrent, &uiFlag, &uiLast, &uiDocuments, pstHandle), YAML_ERR_EVENT);
        EXPECT_EQ(uiLast, static_cast<uint32_t>(iType)); // after every event, failed or not
    }
    YamlListNode *pstCurrent = &pstHandle->stRoot;
    for (int i = 0; i < 2; ++i) // the first hint is kept
        EXPECT_EQ(yaml_ScalarNodeAdd(pstHandle, Scalar("s"), &pstCurrent, &uiFlag), YAML_ERR_EVENT);
    ExpectLog("2 c There is not enough memory for parsing.\n"
              "2 16 There is an internal error in libYAML.\n"
              "2 1900000b Unknown parse event. (Event=0)\n"
              "2 1900000b Unknown parse event. (Event=11)\n"
              "2 1900000b Unknown last event when add scalar data. (Event=0)\n"
              "2 1900000b Unknown last event when add scalar data. (Event=0)\n");
}

// Without open marks the current node is the collection itself, or stands in it.
TEST_F(HandMade, PlacesInUnmarkedCollections)
{
    YamlListNode *pstItem = Scalar("i"), *pstSeq = Seq({pstItem}), *pstEmpty = Seq({}), *pstKey = Scalar("k");
    YamlListNode *pstValue = Scalar("v"), *pstMap = Map({Hang(pstKey, {pstValue})}), *pstLoose = Scalar("l");
    EXPECT_EQ(yaml_ScalarNodeAddInSeq(Scalar("1"), pstItem), YAML_OK);
    EXPECT_EQ(yaml_ScalarNodeAddInSeq(Scalar("2"), pstSeq), YAML_OK);
    EXPECT_EQ(yaml_ScalarNodeAddInSeq(Scalar("3"), pstEmpty), YAML_OK);
    EXPECT_EQ(yaml_ScalarNodeAddInSeq(Scalar("4"), pstLoose), YAML_OK); // nowhere
    yaml_MapNodeAddInSeq(Collection(YAML_DATATYPE_MAP), pstItem);
    EXPECT_EQ(Below(*pstSeq) + "," + Below(*pstEmpty) + "," + Below(*pstLoose), "i12-,3,");
    EXPECT_EQ(yaml_ScalarNodeAddWithKeyRole(Scalar("m"), pstValue), YAML_OK);
    EXPECT_EQ(yaml_ScalarNodeAddWithKeyRole(Scalar("o"), pstKey), YAML_OK);
    EXPECT_EQ(yaml_ScalarNodeAddWithKeyRole(Scalar("p"), pstLoose), YAML_ERR_PARSE);
    YamlListNode *pstNew = Map({});
    EXPECT_EQ(yaml_ScalarNodeAddWithKeyRole(Scalar("q"), pstNew), YAML_OK);
    EXPECT_EQ(Below(*pstMap) + Below(*pstNew), "komq");
    YamlListNode *pstCurrent = pstLoose;
    yaml_MapEndProcess(pstHandle, &pstCurrent);
    EXPECT_EQ(yaml_SeqEndProcess(pstHandle, &pstCurrent, &uiFlag), YAML_OK);
    EXPECT_TRUE(pstCurrent == pstLoose && uiFlag == 0);
    EXPECT_EQ(yaml_AnchorInsertInSequence(pstHandle, &pstCurrent, pstItem, 0), YAML_ERR_PARAM);
    ExpectLog("2 1900000f The father node is NULL.\n" BAD_STACK);
}

TEST_F(HandMade, CopiesOfBrokenNodes)
{
    YamlListNode *pstKey = Scalar("k"), *pstLoose = Scalar("l"), *pstTarget = Map({}), *pstMap = Map({pstKey});
    pstKey->uiSameWithAnchor = 1; // with no key that it could be the same as
    YamlAnchorNode stAnchor = {};
    stAnchor.pstAnchoredNode = pstMap;
    YamlListNode *pstCurrent = pstTarget;
    EXPECT_EQ(yaml_AnchorNodesParse(pstHandle, &pstCurrent, &stAnchor, &uiFlag), YAML_ERR_PARAM);
    EXPECT_EQ(yaml_AnchorNodesClone(pstHandle, pstLoose, pstKey), YAML_ERR_PARAM);
    EXPECT_EQ(yaml_ScalarNodeAddInMap(pstLoose, pstKey, &uiFlag), YAML_ERR_PARSE);
    EXPECT_EQ(uiFlag, 0U);
    pstCurrent = pstKey;
    EXPECT_EQ(yaml_SeqStartProcess(&stEvent, YAML_SCALAR_EVENT, &pstCurrent, pstHandle), YAML_ERR_PARSE);
    EXPECT_EQ(yaml_MapStartProcess(&stEvent, YAML_SCALAR_EVENT, &pstCurrent, pstHandle), YAML_ERR_PARSE);
    EXPECT_EQ(yaml_AnchorInsertInMap(pstHandle, &pstCurrent, pstLoose, 1), YAML_ERR_PARSE);
    EXPECT_EQ(pstCurrent, pstKey);
    pstCurrent = pstTarget;
    EXPECT_EQ(yaml_MapAnchorCopy(pstHandle, &pstCurrent, pstMap, 1), YAML_OK);
    EXPECT_EQ(Below(*pstTarget), "");
    pstKey->uiSameWithAnchor = 0;
    EXPECT_EQ(yaml_MapAnchorCopy(pstHandle, &pstCurrent, pstMap, 1), YAML_ERR_PARSE);
    EXPECT_EQ(pstCurrent, pstTarget);               // not written back
    pstKey->uiNextLevelType = YAML_DATATYPE_SCALAR; // a type, and still no value
    EXPECT_EQ(yaml_AnchorNodesClone(pstHandle, pstLoose, pstKey), YAML_OK);
    EXPECT_EQ(Below(*pstLoose), "");
    Hang(pstLoose, {Hang(Scalar("v"), {Scalar("w")})}); // a value that has a value
    EXPECT_EQ(yaml_AnchorNodesClone(pstHandle, pstKey, pstLoose), YAML_OK);
    EXPECT_EQ(Below(*pstKey) + Below(*FirstChild(*pstKey)), "vw");
    ExpectLog(BAD_STACK "2 16 There is a unknown data type when copy anchor node. (DataType=3)\n"
                        "2 1900000f C" NOT_IN_ANCHOR
                        "2 1900000f Failed to process sequence start event: c" NOT_IN_ANCHOR
                        "2 1900000f Failed to process map start event: c" NOT_IN_ANCHOR "2 1900000f C" NOT_IN_ANCHOR
                        "0 1900000a There is a same scalar in previous key list. (Scalar=k)\n"
                        "2 1900000f Can not merge a single scalar in sequence anchor to map. (Scalar=k)\n");
    YamlListNode *pstItem = Scalar("i"), *pstSeq = Seq({pstItem, Scalar("j")});
    EXPECT_EQ(yaml_SequenceAnchorCopy(pstHandle, pstItem, Seq({Scalar("1"), Scalar("2")}), 0), YAML_OK);
    EXPECT_EQ(Below(*pstSeq), "i12j"); // right behind the first
    EXPECT_EQ(yaml_Sequence2MapCopy(pstHandle, &pstItem, Seq({}), 0), YAML_OK);
    pstHandle->stLimits.ulCopyBytes = pstHandle->ulOwnBytes = 0; // without an alias at hand
    EXPECT_EQ(yaml_SingleNodeDup(pstHandle, pstItem), nullptr);
    ExpectLog("2 c The alias expansion is too large. (Alias=)\n");
}

// A key that repeats a merged one without a link to it, as a handler may find it in a tree made by hand.
TEST_F(HandMade, MarkedKeyFindsTheMergedOneByItsText)
{
    YamlListNode *pstOther = Scalar("o"), *pstMerged = Scalar("k"), *pstMarked = Scalar("k");
    const YamlListNode &stMap = *Map({pstOther, Hang(pstMerged, {Scalar("old")}), pstMarked});
    pstOther->uiFromAlias = pstMerged->uiFromAlias = pstMarked->uiSameWithAnchor = 1;
    EXPECT_EQ(yaml_SameKeyFindInAnchor(pstMarked), pstMerged);
    char acAnchor[] = "a";
    stEvent.data.sequence_start.anchor = reinterpret_cast<yaml_char_t *>(acAnchor); // is not kept
    for (const bool bIndex : {false, true}) {
        YamlListNode *pstCurrent = pstMarked;
        EXPECT_EQ(yaml_SeqStartProcess(&stEvent, YAML_SCALAR_EVENT, &pstCurrent, pstHandle), YAML_OK);
        EXPECT_EQ(pstCurrent, FirstChild(*pstMerged));
        EXPECT_EQ(pstMerged->uiNextLevelType, YAML_DATATYPE_SEQ);
        EXPECT_EQ(yaml_AnchorObjFind(pstHandle, "a"), nullptr);
        EXPECT_EQ(pstHandle->pstAnchorIndex != nullptr, bIndex);
        Base().ulFailAllocation = Base().ulAllocations + 4; // makes an index of anchors without slots
        EXPECT_EQ(yaml_AnchorRecord(pstHandle, "x", pstOther, YAML_DATATYPE_SCALAR), bIndex ? YAML_OK : YAML_ERR_NOMEM);
        ExpectLog(bIndex ? "" : NO_RECORD);
        pstHandle->uiEventDepth = 0;
    }
    EXPECT_EQ(Below(stMap), "okk");
}

TEST_F(HandMade, AliasesAtUnmarkedNodes)
{
    char acName[] = "a";
    YamlAnchorNode stAnchor = {};
    stAnchor.pcAnchorName = acName;
    stAnchor.pstAnchoredNode = Scalar("v");
    YamlListNode *pstKey = Scalar("k"), *pstTextless = Scalar("l"), *pstSeq = Seq({Scalar("i")});
    YamlListNode *pstMap = Map({pstKey, pstTextless}), *pstLoose = Scalar("o"), *pstCurrent = pstLoose;
    ZR_MemFree(std::exchange(pstTextless->pcValue, nullptr), yaml_MemHandleGet());
    yaml_EventStartSet(pstHandle, YAML_MAPPING_START_EVENT);
    EXPECT_EQ(yaml_AnchorNodesParse(pstHandle, &pstCurrent, &stAnchor, &uiFlag), YAML_ERR_EVENT);
    ExpectLog("2 1900000b It does not support an alias as a map key. (Alias=a)\n");
    for (YamlListNode *pst : {pstKey, pstTextless}) {
        pstCurrent = pst;
        pstMap->uiState = zryaml::NODE_OPEN;
        EXPECT_EQ(yaml_AnchorNodesParse(pstHandle, &pstCurrent, &stAnchor, &uiFlag), YAML_OK);
        EXPECT_EQ(Below(*pst), "v");
    }
    yaml_EventStartSet(pstHandle, YAML_SEQUENCE_START_EVENT);
    pstCurrent = pstSeq; // behind its elements
    EXPECT_EQ(yaml_AnchorNodesParse(pstHandle, &pstCurrent, &stAnchor, &uiFlag), YAML_OK);
    EXPECT_EQ(Below(*pstSeq), "iv");
}

TEST_F(HandMade, AnchorRecords)
{
    YamlListNode *pstNode = Scalar("n");
    EXPECT_EQ(yaml_AnchorRecord(pstHandle, nullptr, pstNode, YAML_DATATYPE_SCALAR), YAML_OK);
    for (const uint64_t ulFailed : {1U, 2U, 3U, 4U}) { // record, name, index, its slots
        Base().ulFailAllocation = Base().ulAllocations + ulFailed;
        EXPECT_EQ(yaml_AnchorRecord(pstHandle, "a", pstNode, YAML_DATATYPE_SCALAR), YAML_ERR_NOMEM);
        ExpectLog(ulFailed == 2 ? "2 c Failed to allocate memory to copy value.\n" : NO_RECORD);
        EXPECT_EQ(yaml_AnchorObjFind(pstHandle, "a"), nullptr);
    }
    for (const uint32_t uiType : {YAML_DATATYPE_MAP, YAML_DATATYPE_SCALAR})
        EXPECT_EQ(yaml_AnchorRecord(pstHandle, "a", pstNode, uiType), YAML_OK);
    EXPECT_FALSE(IsAlone(pstHandle->stOpenAnchorList));
    const YamlAnchorNode *pstFinished = yaml_AnchorObjFind(pstHandle, "a");
    yaml_AnchorRecordEnd(pstHandle, pstNode);
    EXPECT_TRUE(IsAlone(pstHandle->stOpenAnchorList));
    EXPECT_NE(yaml_AnchorObjFind(pstHandle, "a"), pstFinished);
    YamlList stHead;
    ListInit(stHead);
    YamlAnchorNode *pstForeign = yaml_AnchorNodeAlloc(pstHandle, "f"); // a list is released up to what is no record
    ListInsertAfter(stHead, pstForeign->stAnchorLink);
    pstForeign->uiMagic = 0;
    yaml_AnchorNodesRelease(&stHead);
    EXPECT_FALSE(IsAlone(stHead));
    ZR_MemFree(pstForeign->pcAnchorName, yaml_MemHandleGet());
    pstForeign->pcAnchorName = nullptr;
    pstForeign->uiMagic = YAML_NODE_MAGIC;
    yaml_AnchorNodesRelease(&stHead);
    EXPECT_TRUE(IsAlone(stHead));
}

TEST_F(HandMade, MergeTakesTheAnchorOfItsKeyIfThereIsARecord)
{
    YamlListNode *pstMerge = Scalar("<<"), *pstMap = Map({Scalar("a"), pstMerge});
    pstMerge->uiState |= zryaml::NODE_ANCHORED; // without a record
    YamlListNode *pstCurrent = pstMerge;
    EXPECT_EQ(yaml_AnchorInsertInMapWithoutMapNode(pstHandle, &pstCurrent, Map({Hang(Scalar("k"), {Scalar("v")})}), 0),
              YAML_OK);
    EXPECT_EQ(Below(*pstMap), "ak");
    EXPECT_STREQ(pstCurrent->pcValue, "v");
}

TEST_F(HandMade, ElementsAreNumberedWhenOthersComeAndGo)
{
    YamlListNode *pstList = Seq({Scalar("x"), Scalar("y"), Scalar("z")});
    const auto Paths = [&] {
        std::string text;
        for (const YamlListNode &stElement : Children(*pstList)) {
            char acPath[16];
            (void)ZRYAML_ValuePathGet(&stElement, sizeof(acPath), acPath);
            text += stElement.pcValue + std::string(acPath);
        }
        return text;
    };
    yaml_ListNodeFree(FirstChild(*pstList));
    EXPECT_EQ(Paths(), "y[0]z[1]");
    YamlListNode *pstSource = Seq({Scalar("p"), Scalar("q")});
    EXPECT_EQ(yaml_SequenceAnchorCopy(pstHandle, FirstChild(*pstList), pstSource, 0), YAML_OK);
    EXPECT_EQ(Paths(), "y[0]p[1]q[2]z[3]");
}

TEST_F(HandMade, LookupsOfOneComponent)
{
    YamlListNode *pstList = Seq({Scalar("x"), Scalar("y")});
    YamlListNode *pstMap = Map({Hang(Scalar("l"), {pstList}), Hang(Scalar("s"), {Scalar("v")})});
    YamlListNode *pstKey = yaml_PropertyFind(pstMap, "s", YAML_INDEX_NONE);
    ASSERT_NE(pstKey, nullptr);
    EXPECT_STREQ(pstKey->pcValue, "s");
    EXPECT_EQ(yaml_PropertyFindInMapList(&pstMap->stChildList, "l", 1), yaml_PropertyFindInSeqList(pstList, 1));
    EXPECT_EQ(Below(*pstList), "xy");
    EXPECT_STREQ(yaml_PropertyFindInSeqList(pstList, 1)->pcValue, "y");
    EXPECT_EQ(yaml_PropertyFindInScalarNode(pstKey, "v", YAML_INDEX_NONE), FirstChild(*pstKey));
    EXPECT_EQ(yaml_PropertyFindInScalarNode(pstKey, "w", YAML_INDEX_NONE), nullptr);
}

TEST_F(HandMade, LookupsOnBrokenNodes)
{
    YamlListNode *pstTextless = yaml_ListNodeAlloc(pstHandle), *pstKey = Scalar("k");
    pstTextless->uiDataType = YAML_DATATYPE_SCALAR;
    YamlListNode *pstMap = Map({pstTextless, Hang(pstKey, {Scalar("v")})});
    EXPECT_EQ(yaml_PropertyFindInMapList(&pstMap->stChildList, "k", YAML_INDEX_NONE), pstKey);
    EXPECT_EQ(yaml_ScalarNodeAddWithKeyRole(Scalar("m"), pstKey), YAML_OK);
    EXPECT_EQ(yaml_NodeValueGet(Scalar("x"), 0), nullptr);
    ExpectLog("2 19000004 There is not any data in the child list.\n");
    pstHandle->stRoot.uiDataType = YAML_DATATYPE_MAP; // and no map below
    char acPath[] = "k";
    uint32_t uiIndexed = 0;
    EXPECT_EQ(yaml_NodeFind(pstHandle, acPath, sizeof(acPath), &uiIndexed), nullptr);
    ExpectLog("2 19000002 The current file is begin with sequence, but the key is begin with map. (Key=k)\n");
    uint32_t uiIndex = 5;
    EXPECT_EQ(yaml_IndexGet("2147483648", &uiIndex), YAML_ERR_PARAM);
    EXPECT_EQ(uiIndex, 5U);
}

TEST_F(HandMade, DumpStepsOnBrokenNodes)
{
    char acText[100] = "";
    YamlListNode *pstKey = Scalar("k");
    EXPECT_EQ(yaml_DumpChildList(pstKey, 0, sizeof(acText), acText), -1);
    EXPECT_EQ(yaml_DumpMapList(pstKey, 0, 0, sizeof(acText), acText), -1);
    ExpectLog("2 19000004 The map list is empty. (Scalar=k)\n");
    EXPECT_EQ(yaml_DumpScalarNode(pstKey, 0, sizeof(acText), acText), 3);
    EXPECT_STREQ(acText, "k: ");
    std::string buffer(10, '~');
    EXPECT_EQ(yaml_SpacePrintWithNewLine(buffer.data(), 4, 3), -1);
    EXPECT_EQ(buffer, "~~~~~~~~~~");
    EXPECT_EQ(yaml_SpacePrintWithNewLine(buffer.data(), 5, 3), 4);
    EXPECT_EQ(buffer, "\n   ~~~~~~");
    EXPECT_EQ(yaml_StringTailSpaceCount("  ", 2), 1U);
}
