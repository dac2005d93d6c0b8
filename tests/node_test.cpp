// SPDX-License-Identifier: Apache-2.0
// Nodes, the handle and the pool, operation by operation: what each leaves in the records, and what it does when
// memory or a bounds-checked call fails it.
#include "node_tree.h"
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <cstring>
#include <gtest/gtest.h>
#include <thread>

namespace {

// A document made by hand; what a test put into it is released with it.
class Document {
public:
    Document()
    {
        EXPECT_EQ(yaml_MemInit(), 0U);
        m_pstHandle = static_cast<YamlHandle *>(ZR_MemAlloc(sizeof(YamlHandle), yaml_MemHandleGet()));
        yaml_HandleInit(m_pstHandle);
    }
    ~Document()
    {
        ZRYAML_HandleFree(m_pstHandle);
        EXPECT_EQ(Base().lBlocks, 0);
    }
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;
    [[nodiscard]] YamlHandle *Get() const { return m_pstHandle; }
    [[nodiscard]] YamlListNode *Scalar(const char *pcText) const { return yaml_ScalarNodeCreate(m_pstHandle, pcText); }
    [[nodiscard]] YamlListNode *Map() const
    {
        YamlListNode *pstMap = yaml_ListNodeAlloc(m_pstHandle);
        pstMap->uiDataType = YAML_DATATYPE_MAP;
        return pstMap;
    }
    [[nodiscard]] size_t Nodes() const
    {
        size_t ulNodes = 0;
        for (const YamlListNode &stNode : zryaml::NodeRange(m_pstHandle->stRoot.stAllocLink, zryaml::NodeLink::Alloc))
            ulNodes += zryaml::IsNode(stNode) ? size_t{1} : 0;
        return ulNodes;
    }

private:
    YamlHandle *m_pstHandle;
};

struct Fresh : testing::Test { // every test starts and ends with the switch off and nothing failing
    void SetUp() override { Base().Reset(); }
    void TearDown() override
    {
        ZRYAML_DebugSwitchSet(0);
        Base().Reset();
    }
};
struct Node : Fresh {};
struct Handle : Fresh {};
struct Pool : Fresh {};

bool IsAlone(const YamlList &stLink)
{
    return stLink.next == &stLink && stLink.prev == &stLink;
}

bool IsEmptyNode(const YamlListNode &stNode)
{
    return stNode.uiMagic == 0x123456FF && IsAlone(stNode.stChildLink) && IsAlone(stNode.stChildList) &&
           IsAlone(stNode.stSeqLink) && IsAlone(stNode.stAllocLink) && stNode.uiFromAlias == 0 &&
           stNode.uiSameWithAnchor == 0 && stNode.pstFather == nullptr && stNode.uiDataType == YAML_DATATYPE_NONE &&
           stNode.uiNextLevelType == YAML_DATATYPE_NONE && stNode.pcValue == nullptr;
}

void KeyHang(YamlListNode &stMap, YamlListNode &stKey)
{
    stKey.pstFather = &stMap;
    zryaml::ListInsertAfter(*stMap.stChildList.prev, stKey.stChildLink);
}

constexpr const char *g_pcSecure = "1 16 Secure check fail.\n";

} // namespace

TEST_F(Node, InitLeavesAnEmptyNode)
{
    for (const bool bFails : {false, true}) {
        YamlListNode stNode;
        memset(static_cast<void *>(&stNode), 0xA5, sizeof(stNode));
        Base().Reset();
        Base().bSecureCallsFail = bFails;
        yaml_NodeInit(&stNode);
        EXPECT_TRUE(IsEmptyNode(stNode));
        EXPECT_EQ(Base().LogText(), bFails ? g_pcSecure : "");
    }
}

TEST_F(Node, AllocatedOnesAreOnTheFrontOfTheList)
{
    const Document stDocument;
    YamlListNode *pstFirst = yaml_ListNodeAlloc(stDocument.Get());
    YamlListNode *pstSecond = yaml_ListNodeAlloc(stDocument.Get());
    const YamlList &stHead = stDocument.Get()->stRoot.stAllocLink;
    EXPECT_EQ(stHead.next, &pstSecond->stAllocLink);
    EXPECT_EQ(stHead.next->next, &pstFirst->stAllocLink);
    EXPECT_EQ(stHead.prev, &pstFirst->stAllocLink);
    yaml_ListNodeFree(pstSecond);
    EXPECT_EQ(stHead.next, &pstFirst->stAllocLink);
    EXPECT_EQ(stDocument.Nodes(), 1U);
}

TEST_F(Node, ReleasedOneIsOutOfItsListsAndItsChildrenAreFree)
{
    const Document stDocument;
    YamlListNode *pstMap = stDocument.Map();
    YamlListNode *apstKey[] = {stDocument.Scalar("a"), stDocument.Scalar("b"), stDocument.Scalar("c")};
    for (YamlListNode *pstKey : apstKey)
        KeyHang(*pstMap, *pstKey);
    yaml_ListNodeFree(apstKey[1]);
    EXPECT_EQ(apstKey[0]->stChildLink.next, &apstKey[2]->stChildLink);
    EXPECT_EQ(apstKey[2]->stChildLink.prev, &apstKey[0]->stChildLink);
    EXPECT_EQ(stDocument.Nodes(), 3U);

    yaml_ListNodeFree(pstMap);
    EXPECT_TRUE(IsAlone(apstKey[0]->stChildLink));
    EXPECT_TRUE(IsAlone(apstKey[2]->stChildLink));
    EXPECT_EQ(stDocument.Nodes(), 2U); // they stay with the document
}

TEST_F(Node, TextIsCopiedAndCountedByFlagAndSwitch)
{
    struct Case {
        uint32_t uiSwitch, uiFlag, uiCounted;
    };
    for (const Case &stCase : {Case{0, 1, 0}, Case{1, 1, 6}, Case{1, 0, 0}, Case{1, 2, 0}, Case{2, 1, 0}}) {
        SCOPED_TRACE(testing::Message() << stCase.uiSwitch << "," << stCase.uiFlag);
        ZRYAML_DebugSwitchSet(0);
        const Document stDocument;
        ZRYAML_DebugSwitchSet(stCase.uiSwitch);
        const char *pcText = "hello";
        char *pcCopy = yaml_ValueDup(stDocument.Get(), stCase.uiFlag, pcText);
        EXPECT_STREQ(pcCopy, pcText);
        EXPECT_NE(pcCopy, pcText);
        EXPECT_EQ(stDocument.Get()->uiMemSize, stCase.uiCounted);
        ZR_MemFree(pcCopy, yaml_MemHandleGet());
    }
}

TEST_F(Node, RefusedCopyIsLoggedAndStillGiven)
{
    const Document stDocument;
    Base().Reset();
    Base().bSecureCallsFail = true;
    const YamlListNode *pstNode = stDocument.Scalar("text");
    ASSERT_NE(pstNode, nullptr);
    EXPECT_STREQ(pstNode->pcValue, "text");
    EXPECT_EQ(Base().LogText(), std::string(g_pcSecure) + g_pcSecure); // the node, the text
}

TEST_F(Node, ScalarIsMadeWholeOrNotAtAll)
{
    const Document stDocument;
    const char *const apcLog[] = {"2 c Allocate memory for list node failed.\n",
                                  "2 c Failed to allocate memory to copy value.\n"};
    for (uint64_t ul = 0; ul < std::size(apcLog); ++ul) {
        Base().Reset();
        Base().ulFailAllocation = ul + 1;
        EXPECT_EQ(stDocument.Scalar("x"), nullptr);
        EXPECT_EQ(Base().LogText(), apcLog[ul]);
        EXPECT_EQ(Base().lBlocks, 1); // the handle
        EXPECT_EQ(stDocument.Nodes(), 0U);
    }
    Base().Reset();
    const YamlListNode *pstNode = stDocument.Scalar("");
    ASSERT_NE(pstNode, nullptr);
    EXPECT_STREQ(pstNode->pcValue, "");
    EXPECT_EQ(pstNode->uiDataType, YAML_DATATYPE_SCALAR);
    EXPECT_EQ(pstNode->uiNextLevelType, YAML_DATATYPE_NONE);
    EXPECT_EQ(pstNode->pstFather, nullptr);
}

TEST_F(Node, SameTextIsFoundByMode)
{
    struct Case {
        int iLine;
        const char *pcListed; // NULL: a node without a text
        uint32_t uiFromAlias, uiMode;
        bool bSame;
    };
    constexpr Case g_astCase[] = {
        {__LINE__, "a", 0, 0, true},      {__LINE__, "a", 1, 0, false},     {__LINE__, "a", 0, 1, false},
        {__LINE__, "a", 1, 1, true},      {__LINE__, "a", 0, 2, true},      {__LINE__, "a", 1, 2, true},
        {__LINE__, "a", 1, 77, true},     {__LINE__, "A", 0, 0, false},     {__LINE__, "ab", 0, 2, false},
        {__LINE__, "", 0, 2, false},      {__LINE__, nullptr, 0, 0, false}, {__LINE__, nullptr, 1, 1, false},
        {__LINE__, nullptr, 0, 2, false},
    };
    const Document stDocument;
    const YamlListNode *pstCandidate = stDocument.Scalar("a");
    for (const Case &stCase : g_astCase) {
        SCOPED_TRACE(stCase.iLine);
        YamlListNode *pstListed = stCase.pcListed != nullptr ? stDocument.Scalar(stCase.pcListed) : stDocument.Map();
        pstListed->uiFromAlias = stCase.uiFromAlias;
        const uint32_t uiExpected = stCase.bSame ? YAML_ERR_SAME : YAML_OK;
        EXPECT_EQ(yaml_ScalarSameCheck(pstListed, pstCandidate, stCase.uiMode), uiExpected);

        YamlListNode *pstMap = stDocument.Map();
        EXPECT_EQ(yaml_ListSameScalarCheck(&pstMap->stChildList, stCase.uiMode, pstCandidate), YAML_OK);
        KeyHang(*pstMap, *stDocument.Scalar("other"));
        KeyHang(*pstMap, *pstListed);
        EXPECT_EQ(yaml_ListSameScalarCheck(&pstMap->stChildList, stCase.uiMode, pstCandidate), uiExpected);
        zryaml::NodeOf(pstMap->stChildList.next, zryaml::NodeLink::Child)->uiMagic = 0; // there the list ends
        EXPECT_EQ(yaml_ListSameScalarCheck(&pstMap->stChildList, stCase.uiMode, pstCandidate), YAML_OK);
    }
    EXPECT_EQ(Base().LogText(), "");
}

TEST_F(Node, FirstOfItsFather)
{
    YamlHandle *pstHandle = TextFileLoad("{a: [x], b: {c: 1}, d: 2}");
    ASSERT_NE(pstHandle, nullptr);
    YamlListNode *pstMap = zryaml::FirstChild(pstHandle->stRoot);
    EXPECT_EQ(yaml_FirstNodeCheck(pstMap), 1U);
    std::string firsts;
    for (const YamlListNode &stKey : zryaml::Children(*pstMap)) {
        EXPECT_EQ(yaml_FirstNodeCheck(zryaml::FirstChild(stKey)), 1U); // a sequence, a map, a scalar
        firsts += yaml_FirstNodeCheck(&stKey) == 1 ? stKey.pcValue : "-";
    }
    EXPECT_EQ(firsts, "a--");
    ZRYAML_HandleFree(pstHandle);
}

TEST_F(Node, TypeBelowIsFixedByTheFirstChild)
{
    const Document stDocument;
    YamlListNode *pstFather = stDocument.Map();
    YamlListNode *pstChild = stDocument.Scalar("a");
    yaml_FatherNodeNextLevelTypeSet(pstChild, YAML_DATATYPE_MAP);
    EXPECT_EQ(pstFather->uiNextLevelType, YAML_DATATYPE_NONE);
    EXPECT_EQ(pstChild->uiNextLevelType, YAML_DATATYPE_NONE);
    pstChild->pstFather = pstFather;
    yaml_FatherNodeNextLevelTypeSet(pstChild, YAML_DATATYPE_SEQ);
    EXPECT_EQ(pstFather->uiNextLevelType, YAML_DATATYPE_SEQ);
    yaml_FatherNodeNextLevelTypeSet(pstChild, YAML_DATATYPE_SCALAR);
    EXPECT_EQ(pstFather->uiNextLevelType, YAML_DATATYPE_SEQ);
}

TEST_F(Handle, InitMakesAnEmptyDocument)
{
    for (const uint32_t uiSwitch : {0U, 1U, 2U}) {
        for (const bool bFails : {false, true}) {
            YamlHandle stHandle;
            memset(static_cast<void *>(&stHandle), 0xA5, sizeof(stHandle));
            Base().Reset();
            Base().bSecureCallsFail = bFails;
            ZRYAML_DebugSwitchSet(uiSwitch);
            yaml_HandleInit(&stHandle);
            EXPECT_TRUE(IsEmptyNode(stHandle.stRoot));
            EXPECT_EQ(TreeCheck(stHandle), "");
            EXPECT_EQ(yaml_CurrEventGet(&stHandle), 0U);
            EXPECT_EQ(stHandle.uiParseTime + stHandle.uiQueryCount + stHandle.ulQueryTimeTotal, 0U);
            EXPECT_EQ(stHandle.uiMemSize, uiSwitch == 1 ? sizeof(YamlHandle) : 0);
            EXPECT_EQ(Base().LogText(), bFails ? std::string(g_pcSecure) + g_pcSecure : ""); // handle, root
        }
    }
}

TEST_F(Handle, CountsRecordAndTextOfEachScalar)
{
    ZRYAML_DebugSwitchSet(1);
    const Document stDocument;
    (void)stDocument.Scalar("four");
    (void)stDocument.Map();
    EXPECT_EQ(stDocument.Get()->uiMemSize, sizeof(YamlHandle) + 2 * sizeof(YamlListNode) + 5);
}

TEST_F(Handle, EventStackHoldsFiveHundredAndTwelve)
{
    const Document stDocument;
    YamlHandle *pstHandle = stDocument.Get();
    yaml_EventEndSet(pstHandle); // nothing open: ignored
    EXPECT_EQ(pstHandle->uiEventDepth, 0U);
    yaml_EventStartSet(pstHandle, 9);
    yaml_EventStartSet(pstHandle, 7);
    EXPECT_EQ(yaml_CurrEventGet(pstHandle), 7U);
    yaml_EventEndSet(pstHandle);
    EXPECT_EQ(yaml_CurrEventGet(pstHandle), 9U);
    EXPECT_EQ(pstHandle->auiEventStack[1], 0U);

    while (pstHandle->uiEventDepth < YAML_EVENT_STACK_SIZE - 1)
        yaml_EventStartSet(pstHandle, 7);
    yaml_EventStartSet(pstHandle, 9); // the 512th
    yaml_EventStartSet(pstHandle, 7); // ignored
    EXPECT_EQ(pstHandle->uiEventDepth, 512U);
    EXPECT_EQ(yaml_CurrEventGet(pstHandle), 9U);
    EXPECT_EQ(pstHandle->uiParseTime, 0U); // what stands behind the stack
    while (pstHandle->uiEventDepth > 0)
        yaml_EventEndSet(pstHandle);
    for (const uint32_t uiEvent : pstHandle->auiEventStack)
        EXPECT_EQ(uiEvent, 0U);
}

TEST_F(Handle, FreeReturnsLooseNodesToo)
{
    ZRYAML_HandleFree(nullptr);
    {
        const Document stDocument; // checks the blocks when it goes
        YamlListNode *pstMap = stDocument.Map();
        KeyHang(*pstMap, *stDocument.Scalar("in the map"));
        (void)stDocument.Scalar("nowhere");
        EXPECT_EQ(Base().lBlocks, 6);
    }
    EXPECT_EQ(Base().LogText(), "");
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
    CHECK_OR_RETURN(g_pstYamlMemHandle == nullptr && yaml_MemHandleGet() == nullptr);
    CHECK_OR_RETURN(g_bYamlDebugSwitch == 0 && yaml_IsDebugSwitchOpen() == 0);
    CHECK_OR_RETURN(ZRYAML_FileLoad(nullptr) == nullptr && Base().uiBaseInitCalls == 0);

    Base().Reset();
    Base().uiBaseInitResult = 77;
    CHECK_OR_RETURN(TextFileLoad("a: 1") == nullptr && g_pstYamlMemHandle == nullptr);
    CHECK_OR_RETURN(Base().LogText() == "2 4d Failed to initialize base module.\n");
    CHECK_OR_RETURN(Base().uiBaseInitCalls == 1 && Base().uiHandleInitCalls == 0);

    Base().Reset();
    Base().bHandleInitFails = true;
    CHECK_OR_RETURN(TextFileLoad("a: 1") == nullptr && g_pstYamlMemHandle == nullptr);
    CHECK_OR_RETURN(Base().LogText() == "2 19000006 Failed to initialize memory pool.\n");
    CHECK_OR_RETURN(Base().uiBaseInitCalls == 2 && Base().uiHandleInitCalls == 1);
    CHECK_OR_RETURN(yaml_MemInit() == YAML_ERR_POOL && Base().uiHandleInitCalls == 2);

    for (int i = 0; i < 2; ++i) { // the second finds the pool
        Base().Reset();
        Base().uiBaseInitResult = i == 0 ? 0 : 77;
        YamlHandle *pstHandle = TextFileLoad("a: 1");
        CHECK_OR_RETURN(pstHandle != nullptr && Base().LogText().empty());
        CHECK_OR_RETURN(g_pstYamlMemHandle != nullptr && yaml_MemHandleGet() == g_pstYamlMemHandle);
        CHECK_OR_RETURN(Base().uiBaseInitCalls == 4 && Base().uiHandleInitCalls == 3);
        ZRYAML_HandleFree(pstHandle);
    }
    return 0;
}

int FirstLoadsAtOnce()
{
    std::vector<std::thread> threads;
    std::vector<YamlHandle *> handles(8);
    for (YamlHandle *&pstHandle : handles)
        threads.emplace_back([&pstHandle] { pstHandle = TextFileLoad("a: 1"); });
    for (std::thread &stThread : threads)
        stThread.join();
    CHECK_OR_RETURN(Base().uiBaseInitCalls == 1 && Base().uiHandleInitCalls == 1);
    for (YamlHandle *pstHandle : handles) {
        CHECK_OR_RETURN(pstHandle != nullptr && TreeText(*pstHandle) == R"({"a":"1"})");
        ZRYAML_HandleFree(pstHandle);
    }
    CHECK_OR_RETURN(Base().lBlocks == 0);
    return 0;
}

} // namespace

TEST_F(Pool, IsMadeOnceAndAFailureIsTriedAgain)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process that has not loaded anything
    EXPECT_EXIT(exit(FirstLoads()), testing::ExitedWithCode(0), "");
}

TEST_F(Pool, IsMadeOnceByThreadsThatLoadAtOnce)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(exit(FirstLoadsAtOnce()), testing::ExitedWithCode(0), "");
}
