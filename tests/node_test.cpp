// SPDX-License-Identifier: Apache-2.0
// Nodes, the handle and the pool, operation by operation, where whole documents do not show what each leaves behind.
#include "node_tree.h"
#include "support/load_text.h"
#include "support/recording_base.h"

#include <cstring>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

struct Node : testing::Test { // with an empty document; what a test puts into it is released with it
    void SetUp() override
    {
        Base().Reset();
        pstHandle = TextFileLoad("");
        ASSERT_NE(pstHandle, nullptr);
    }
    void TearDown() override
    {
        ZRYAML_DebugSwitchSet(0);
        EXPECT_EQ(Base().LogText(), "");
        Base().Reset();
        ZRYAML_HandleFree(pstHandle);
        EXPECT_EQ(Base().lBlocks, 0);
    }
    [[nodiscard]] YamlListNode *Scalar(const char *pcText) const { return yaml_ScalarNodeCreate(pstHandle, pcText); }
    [[nodiscard]] std::string Nodes() const // the all-nodes list
    {
        std::string text;
        for (const YamlListNode &stNode : zryaml::NodeRange(pstHandle->stRoot.stAllocLink, zryaml::NodeLink::Alloc))
            text += stNode.pcValue != nullptr ? stNode.pcValue : "-";
        return text;
    }
    YamlHandle *pstHandle = nullptr;
};
struct Pool : testing::Test {};

bool IsAlone(const YamlList &stLink)
{
    return stLink.next == &stLink && stLink.prev == &stLink;
}

void KeyHang(YamlListNode &stMap, YamlListNode &stKey)
{
    stKey.pstFather = &stMap;
    zryaml::ListInsertAfter(*stMap.stChildList.prev, stKey.stChildLink);
}

// Of the map and of each key and its value, whether it is the first child.
std::string FirstText(const YamlHandle &stHandle)
{
    const YamlListNode &stMap = *zryaml::FirstChild(stHandle.stRoot);
    std::string text = std::to_string(yaml_FirstNodeCheck(&stMap));
    for (const YamlListNode &stKey : zryaml::Children(stMap))
        text += std::to_string(yaml_FirstNodeCheck(&stKey)) +
                std::to_string(yaml_FirstNodeCheck(zryaml::FirstChild(stKey)));
    return text;
}

} // namespace

TEST_F(Node, InitLeavesAnEmptyDocument)
{
    YamlHandle stHandle;
    for (const uint32_t uiSwitch : {0U, 1U, 2U}) {
        memset(static_cast<void *>(&stHandle), 0xA5, sizeof(stHandle));
        ZRYAML_DebugSwitchSet(uiSwitch);
        yaml_HandleInit(&stHandle);
        const YamlListNode &stRoot = stHandle.stRoot;
        EXPECT_EQ(TreeCheck(stHandle) + TreeText(stHandle), "");
        EXPECT_TRUE(IsAlone(stRoot.stChildLink) && IsAlone(stRoot.stSeqLink) && IsAlone(stRoot.stAllocLink));
        EXPECT_EQ(stRoot.uiMagic, 0x123456FFU);
        EXPECT_EQ(stRoot.uiFromAlias + stRoot.uiSameWithAnchor, 0U);
        EXPECT_EQ(stRoot.uiDataType, YAML_DATATYPE_NONE);
        EXPECT_EQ(stRoot.uiNextLevelType, YAML_DATATYPE_NONE);
        EXPECT_EQ(stHandle.uiParseTime + stHandle.uiQueryCount + stHandle.ulQueryTimeTotal, 0U);
        EXPECT_EQ(stHandle.uiMemSize, uiSwitch == 1 ? sizeof(YamlHandle) : 0);
    }
}

TEST_F(Node, ReleasedOneIsOutOfItsListsAndItsChildrenAreFree)
{
    YamlListNode *pstMap = Scalar("m"), *pstA = Scalar("a"), *pstB = Scalar("b"), *pstC = Scalar("c");
    for (YamlListNode *pstKey : {pstA, pstB, pstC})
        KeyHang(*pstMap, *pstKey);
    EXPECT_EQ(Nodes(), "cbam");
    yaml_ListNodeFree(pstB);
    EXPECT_EQ(pstA->stChildLink.next, &pstC->stChildLink);
    EXPECT_EQ(pstC->stChildLink.prev, &pstA->stChildLink);
    yaml_ListNodeFree(pstMap);
    EXPECT_TRUE(IsAlone(pstA->stChildLink) && IsAlone(pstC->stChildLink));
    EXPECT_EQ(Nodes(), "ca"); // they stay with the document
}

TEST_F(Node, ScalarIsMadeWholeOrNotAtAll)
{
    for (const char *pcLog :
         {"2 c Allocate memory for list node failed.\n", "2 c Failed to allocate memory to copy value.\n"}) {
        Base().ulFailAllocation = Base().ulAllocations + (pcLog[4] == 'A' ? 1 : 2);
        EXPECT_EQ(Scalar("x"), nullptr);
        EXPECT_EQ(Base().LogText(), pcLog);
        EXPECT_EQ(Nodes(), "");
        Base().Reset();
    }
}

TEST_F(Node, SameTextIsFoundByMode)
{
    struct {
        int iLine;
        const char *pcListed; // NULL: a node without a text
        uint32_t uiFromAlias, uiMode;
        bool bSame;
    } const astCase[] = {
        {__LINE__, "a", 0, 0, true},  {__LINE__, "a", 1, 0, false},  {__LINE__, "a", 0, 1, false},
        {__LINE__, "a", 1, 1, true},  {__LINE__, "a", 0, 2, true},   {__LINE__, "a", 1, 77, true},
        {__LINE__, "A", 0, 0, false}, {__LINE__, "ab", 0, 2, false}, {__LINE__, nullptr, 0, 2, false},
    };
    const YamlListNode *pstCandidate = Scalar("a");
    for (const auto &stCase : astCase) {
        YamlListNode *pstListed = stCase.pcListed != nullptr ? Scalar(stCase.pcListed) : yaml_ListNodeAlloc(pstHandle);
        YamlListNode &stMap = *yaml_ListNodeAlloc(pstHandle);
        pstListed->uiFromAlias = stCase.uiFromAlias;
        EXPECT_EQ(yaml_ListSameScalarCheck(&stMap.stChildList, stCase.uiMode, pstCandidate), YAML_OK);
        KeyHang(stMap, *Scalar("other"));
        KeyHang(stMap, *pstListed);
        EXPECT_EQ(yaml_ListSameScalarCheck(&stMap.stChildList, stCase.uiMode, pstCandidate),
                  stCase.bSame ? YAML_ERR_SAME : YAML_OK)
            << stCase.iLine;
        zryaml::NodeOf(stMap.stChildList.next, zryaml::NodeLink::Child)->uiMagic = 0; // there the list ends
        EXPECT_EQ(yaml_ListSameScalarCheck(&stMap.stChildList, stCase.uiMode, pstCandidate), YAML_OK);
    }
}

TEST_F(Node, FirstOneOfItsFatherFixesTheTypeBelow)
{
    EXPECT_EQ(DocumentRead("{a: [x], b: {c: 1}, d: 2}", FirstText), "1110101");
    YamlListNode *pstFather = Scalar("f"), *pstChild = Scalar("c");
    for (const uint32_t uiType : {YAML_DATATYPE_MAP, YAML_DATATYPE_SEQ, YAML_DATATYPE_SCALAR}) {
        yaml_FatherNodeNextLevelTypeSet(pstChild, uiType); // the first time it has no father
        EXPECT_EQ(pstFather->uiNextLevelType, uiType == YAML_DATATYPE_MAP ? YAML_DATATYPE_NONE : YAML_DATATYPE_SEQ);
        pstChild->pstFather = pstFather;
    }
    EXPECT_EQ(pstChild->uiNextLevelType, YAML_DATATYPE_NONE);
}

TEST_F(Node, EventStackHoldsFiveHundredAndTwelve)
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

namespace {

#define CHECK_OR_RETURN(condition)                                                          \
    if (!(condition)) {                                                                     \
        fprintf(stderr, "line %d: %s\n%s", __LINE__, #condition, Base().LogText().c_str()); \
        return 1;                                                                           \
    }

// Runs in a process of its own, since the pool is made once. 0 when all is well.
int FirstLoads()
{
    ZRYAML_HandleFree(nullptr);
    CHECK_OR_RETURN(g_pstYamlMemHandle == nullptr && yaml_MemHandleGet() == nullptr);
    CHECK_OR_RETURN(ZRYAML_FileLoad(nullptr) == nullptr && Base().uiBaseInitCalls == 0);
    Base().uiBaseInitResult = 77;
    CHECK_OR_RETURN(DocumentRead("a: 1") == "2 4d Failed to initialize base module.\n");
    CHECK_OR_RETURN(g_pstYamlMemHandle == nullptr && Base().uiBaseInitCalls == 1 && Base().uiHandleInitCalls == 0);
    Base().Reset();
    Base().bHandleInitFails = true;
    CHECK_OR_RETURN(DocumentRead("a: 1") == "2 19000006 Failed to initialize memory pool.\n");
    CHECK_OR_RETURN(g_pstYamlMemHandle == nullptr && Base().uiBaseInitCalls == 2 && Base().uiHandleInitCalls == 1);
    Base().Reset();
    for (const uint32_t uiResult : {0U, 77U}) { // the second load finds the pool
        Base().uiBaseInitResult = uiResult;
        CHECK_OR_RETURN(DocumentRead("a: 1") == R"({"a":"1"})");
        CHECK_OR_RETURN(g_pstYamlMemHandle != nullptr && yaml_MemHandleGet() == g_pstYamlMemHandle);
        CHECK_OR_RETURN(Base().uiBaseInitCalls == 3 && Base().uiHandleInitCalls == 2);
    }
    return 0;
}

int FirstLoadsAtOnce()
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([] { ZRYAML_HandleFree(TextFileLoad("a: 1")); });
    for (std::thread &stThread : threads)
        stThread.join();
    CHECK_OR_RETURN(Base().uiBaseInitCalls == 1 && Base().uiHandleInitCalls == 1);
    CHECK_OR_RETURN(Base().LogText().empty() && Base().lBlocks == 0);
    return 0;
}

} // namespace

TEST_F(Pool, IsMadeOnceAndAFailureIsTriedAgain)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process that has not loaded anything
    EXPECT_EXIT(exit(FirstLoads()), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(exit(FirstLoadsAtOnce()), testing::ExitedWithCode(0), "");
}
