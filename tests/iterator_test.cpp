// SPDX-License-Identifier: Apache-2.0
// Iterators: the pairs they yield, what makes their creation fail, and that a step without a pair touches nothing.
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <cstring>

#include <gtest/gtest.h>

namespace {

constexpr const char *Document = R"(server:
  host: alpha
  limits:
    cpu: 2
  port: 8080
  tags: [a, b]
users:
  - name: ann
    role: admin
  - guest
  - name: bob
  - groups: [x]
  - {}
users2: [[{k: v}]]
deep: [[[{k: v}, {l: w, m: x}], [{n: y}]]]
em: {}
es: []
none: {m: {x: y}, s: [1], e: {}}
last: {m: {x: y}, s: [1], k: v}
skip: [x, [y], {}, {m: {x: y}}, {k: v}]
text: {empty: , nul: ~}
)";
constexpr const char *MergeDocument = R"(b: &b {k: 1, j: 2}
m: {<<: *b, k: 9, i: 3}
s: [{<<: *b, k: [9]}, {<<: *b, k: 8}]
)";
constexpr const char *SeqDocument = "[{a: {k: v}}, [{x: y}], {a: 1}]";

#define NO_STYLE(type) \
    "1 16 The node style below the destination is not map or sequence. (DataType=" type ")\n" NO_ITERATOR
#define NO_ITERATOR "2 19000003 Can not get the specified iterator.\n"

constexpr uint32_t Map = YAML_DATATYPE_MAP, Seq = YAML_DATATYPE_SEQ;
struct WalkCase {
    int iLine;
    const char *pcDocument, *pcPath;
    uint32_t uiType;
    const char *pcPairs; // NULL when there is no iterator
    const char *pcLog;
};
constexpr WalkCase g_astWalk[] = {
    {__LINE__, Document, "server", Map, "host=alpha port=8080 ", ""},
    {__LINE__, Document, "server.limits", Map, "cpu=2 ", ""},
    {__LINE__, Document, "server.tags", Seq, "", ""},
    {__LINE__, Document, "users", Seq, "name=ann name=bob ", ""},
    {__LINE__, Document, "deep[0]", Seq, "k=v l=w ", ""},
    {__LINE__, Document, "em", Map, "", ""},
    {__LINE__, Document, "es", Seq, "", ""},
    {__LINE__, Document, "none", Map, "", ""},
    {__LINE__, Document, "last", Map, "k=v ", ""},
    {__LINE__, Document, "skip", Seq, "k=v ", ""},
    {__LINE__, Document, "text", Map, "empty= nul=~ ", ""},
    {__LINE__, MergeDocument, "m", Map, "k=9 i=3 j=2 ", ""},
    {__LINE__, MergeDocument, "b", Map, "k=1 j=2 ", ""},
    {__LINE__, MergeDocument, "s", Seq, "k=8 ", ""},
    {__LINE__, SeqDocument, "[0].a", Map, "k=v ", ""},
    {__LINE__, Document, "server.host", 0, nullptr, NO_STYLE("2")},
    {__LINE__, Document, "users[0]", 0, nullptr, NO_STYLE("2")},
    {__LINE__, Document, "users[1]", 0, nullptr, NO_STYLE("3")},
    {__LINE__, Document, "users[4]", 0, nullptr, NO_STYLE("3")},
    {__LINE__, Document, "server.host.alpha", 0, nullptr, NO_STYLE("3")},
    {__LINE__, Document, "users2[0]", 0, nullptr, NO_ITERATOR},
    {__LINE__, SeqDocument, "[1]", 0, nullptr, NO_ITERATOR},
    {__LINE__, Document, "nothing", 0, nullptr, "1 19000003 Can not find the yaml node with key. (Key=nothing)\n"},
    {__LINE__, Document, "", 0, nullptr, "2 19000005 The input key is too long to format.\n"},
};

// Steps to the end and three times beyond it; the pairs as "key=value " each, or what was wrong.
std::string Walk(YamlIterator *pstIter)
{
    std::string pairs;
    YamlKeyValue stPair = {nullptr, nullptr};
    for (uint32_t uiResult = 0; (uiResult = yaml_NextKeyValueGet(pstIter, &stPair)) != YAML_ERR_ITER_END;) {
        if (uiResult != YAML_OK || pairs.size() > 1000)
            return "endless, or result " + std::to_string(uiResult);
        pairs += std::string(stPair.pcKey) + "=" + stPair.pcValue + " ";
    }
    const YamlIterator stEnd = *pstIter;
    const YamlKeyValue stKept = stPair;
    for (int i = 0; i < 3; ++i) {
        if (yaml_NextKeyValueGet(pstIter, &stPair) != YAML_ERR_ITER_END || stPair.pcKey != stKept.pcKey ||
            stPair.pcValue != stKept.pcValue || memcmp(pstIter, &stEnd, sizeof(stEnd)) != 0)
            return "changed at the end";
    }
    return pairs;
}

YamlListNode *NodeAt(YamlHandle *pstHandle, std::string path)
{
    uint32_t uiIndexed = 0;
    return yaml_NodeFind(pstHandle, path.data(), static_cast<uint32_t>(path.size() + 1), &uiIndexed);
}

class Iterator : public testing::Test {
protected:
    void SetUp() override
    {
        m_pstHandle = TextFileLoad(Document);
        ASSERT_NE(m_pstHandle, nullptr);
        m_lBlocks = Base().lBlocks;
        Base().Reset();
    }
    void TearDown() override
    {
        EXPECT_EQ(Base().lBlocks, m_lBlocks);
        ZRYAML_HandleFree(m_pstHandle);
        Base().Reset();
    }
    YamlHandle *m_pstHandle = nullptr;
    int64_t m_lBlocks = 0;
};

} // namespace

TEST(IteratorWalk, YieldsScalarPairs)
{
    for (const WalkCase &stCase : g_astWalk) {
        SCOPED_TRACE(stCase.iLine);
        YamlHandle *pstHandle = TextFileLoad(stCase.pcDocument);
        ASSERT_NE(pstHandle, nullptr);
        Base().Reset();
        YamlIterator *pstIter = yaml_IteratorCreate(pstHandle, "%s", stCase.pcPath);
        EXPECT_EQ(Base().LogText(), stCase.pcLog);
        EXPECT_EQ(Base().ulAllocations, stCase.pcPairs != nullptr ? 1U : 0U);
        ASSERT_EQ(pstIter != nullptr, stCase.pcPairs != nullptr);
        if (pstIter != nullptr) {
            EXPECT_EQ(pstIter->uiMagic, YAML_NODE_MAGIC);
            EXPECT_EQ(pstIter->uiIterType, stCase.uiType);
            EXPECT_EQ(pstIter->pstCurrNode, pstIter->pstFatherNode);
            EXPECT_EQ(Walk(pstIter), stCase.pcPairs);
            EXPECT_EQ(pstIter->pstCurrNode == pstIter->pstFatherNode, *stCase.pcPairs == '\0');
            EXPECT_EQ(Base().LogText(), "");
        }
        yaml_IteratorDestroy(pstIter);
        ZRYAML_HandleFree(pstHandle);
        EXPECT_EQ(Base().lBlocks, 0);
    }
}

TEST_F(Iterator, RefusesBadArguments)
{
    // The compiler does not look at the format here.
    YamlIterator *(*const fnCreate)(YamlHandle *, const char *, ...) = yaml_IteratorCreate;
    EXPECT_EQ(yaml_IteratorCreate(nullptr, "server"), nullptr);
    EXPECT_EQ(fnCreate(m_pstHandle, nullptr), nullptr);
    EXPECT_EQ(Base().LogText(), "2 16 The parameter is invalid to get iterator.\n"
                                "2 16 The parameter is invalid to get iterator.\n");
    Base().Reset();
    Base().ulFailAllocation = 1;
    EXPECT_EQ(yaml_IteratorCreate(m_pstHandle, "server"), nullptr);
    EXPECT_EQ(Base().LogText(),
              "2 c Failed to alloc memory for create iterator. (Size=" + std::to_string(sizeof(YamlIterator)) + ")\n");

    Base().Reset();
    const char *pcKept = "kept";
    YamlKeyValue stPair = {pcKept, pcKept};
    YamlIterator stForeign = {0x123456FE, YAML_DATATYPE_MAP, nullptr, nullptr};
    EXPECT_EQ(yaml_NextKeyValueGet(nullptr, &stPair), YAML_ERR_PARAM);
    EXPECT_EQ(yaml_NextKeyValueGet(&stForeign, nullptr), YAML_ERR_PARAM);
    EXPECT_EQ(yaml_NextKeyValueGet(&stForeign, &stPair), YAML_ERR_PARAM);
    EXPECT_EQ(Base().LogText(), "2 16 The input parameter is invalid to get key and value.\n"
                                "2 16 The input parameter is invalid to get key and value.\n"
                                "2 16 The input iterator is invalid.\n");
    Base().Reset();
    YamlIterator stMap = {YAML_NODE_MAGIC, YAML_DATATYPE_SCALAR, nullptr, NodeAt(m_pstHandle, "users[0]")};
    EXPECT_EQ(yaml_KeyValueGet(YAML_DATATYPE_NONE, stMap.pstFatherNode, &stMap, &stPair), YAML_ERR_PARAM);
    EXPECT_EQ(yaml_NextKeyValueGet(&stMap, &stPair), YAML_ERR_PARAM);
    EXPECT_EQ(stPair.pcKey, pcKept);
    EXPECT_EQ(stPair.pcValue, pcKept);
    yaml_IteratorDestroy(nullptr);
    yaml_IteratorDestroy(&stForeign);
    EXPECT_EQ(stForeign.uiMagic, 0x123456FEU);
    EXPECT_EQ(Base().LogText(), "");
}

TEST_F(Iterator, TwoWalksAreIndependentAndOutliveTheDocument)
{
    ZRYAML_DebugSwitchSet(1);
    YamlIterator *pstFirst = yaml_IteratorCreate(m_pstHandle, "%s.limits", "server");
    YamlIterator *pstSecond = yaml_IteratorCreate(m_pstHandle, "server.limits");
    ASSERT_TRUE(pstFirst != nullptr && pstSecond != nullptr);
    EXPECT_EQ(Walk(pstFirst), "cpu=2 ");
    EXPECT_EQ(Walk(pstSecond), "cpu=2 ");
    ZRYAML_DebugSwitchSet(0);
    EXPECT_EQ(m_pstHandle->uiQueryCount, 0U);
    EXPECT_EQ(m_pstHandle->uiMemSize, 0U);
    ZRYAML_HandleFree(m_pstHandle);
    yaml_IteratorDestroy(pstSecond);
    yaml_IteratorDestroy(pstFirst);
    EXPECT_EQ(Base().lBlocks, 0);
    SetUp();
}

// A walk ends at a record that is no node, and a container that is none is refused.
TEST_F(Iterator, StopsAtWhatIsNoNode)
{
    struct {
        int iLine;
        const char *pcForeign, *pcPath, *pcPairs;
    } const astCases[] = {
        {__LINE__, "server.limits", "server", "host=alpha "},
        {__LINE__, "server.port", "server", "host=alpha "},
        {__LINE__, "server.host", "server", ""},
        {__LINE__, "users[2]", "users", "name=ann "},
        {__LINE__, "users[0].name", "users", "name=bob "},
        {__LINE__, "users[0]", "users", ""},
    };
    for (const auto &stCase : astCases) {
        SCOPED_TRACE(stCase.iLine);
        YamlIterator *pstIter = yaml_IteratorCreate(m_pstHandle, "%s", stCase.pcPath);
        ASSERT_NE(pstIter, nullptr);
        YamlListNode *pstForeign = NodeAt(m_pstHandle, stCase.pcForeign);
        pstForeign->uiMagic = 0;
        EXPECT_EQ(Walk(pstIter), stCase.pcPairs);
        pstForeign->uiMagic = YAML_NODE_MAGIC;
        yaml_IteratorDestroy(pstIter);
    }
    EXPECT_EQ(Base().LogText(), "");

    YamlListNode *pstKey = NodeAt(m_pstHandle, "users");
    YamlListNode *pstSeq = NodeAt(m_pstHandle, "users[0]")->pstFather;
    EXPECT_EQ(yaml_IteratorGetByNode(pstKey), pstSeq);
    pstSeq->uiMagic = 0;
    EXPECT_EQ(yaml_IteratorGetByNode(pstKey), nullptr);
    pstSeq->uiMagic = YAML_NODE_MAGIC;
    YamlListNode stEmpty;
    yaml_NodeInit(&stEmpty);
    EXPECT_EQ(Base().LogText(), NO_ITERATOR);
    Base().Reset();
    for (const uint32_t uiType : {YAML_DATATYPE_SEQ, YAML_DATATYPE_MAP}) {
        stEmpty.uiNextLevelType = uiType;
        EXPECT_EQ(yaml_IteratorGetByNode(&stEmpty), nullptr);
    }
    EXPECT_EQ(Base().LogText(), NO_ITERATOR NO_ITERATOR);
}

// Each step starts at the node that it is given.
TEST_F(Iterator, StepsByHand)
{
    YamlKeyValue stPair = {nullptr, nullptr};
    YamlListNode *pstUsers = NodeAt(m_pstHandle, "users[0]")->pstFather;
    YamlIterator stSeq = {YAML_NODE_MAGIC, Seq, pstUsers, pstUsers};
    EXPECT_EQ(yaml_FirstSeqNodeGet(&stSeq, &stPair), YAML_OK);
    EXPECT_STREQ(stPair.pcValue, "ann");
    EXPECT_EQ(yaml_NextKeyValueGetInSeq(NodeAt(m_pstHandle, "users[1]"), &stSeq, &stPair), YAML_OK);
    EXPECT_STREQ(stPair.pcValue, "bob");
    EXPECT_EQ(stSeq.pstCurrNode, NodeAt(m_pstHandle, "users[2]"));
    EXPECT_EQ(yaml_KeyValueGet(Seq, stSeq.pstCurrNode, &stSeq, &stPair), YAML_ERR_ITER_END);

    YamlListNode *pstServer = NodeAt(m_pstHandle, "server.host")->pstFather;
    YamlIterator stMap = {YAML_NODE_MAGIC, Map, pstServer, pstServer};
    EXPECT_EQ(yaml_FirstMapNodeGet(&stMap, &stPair), YAML_OK);
    EXPECT_EQ(stMap.pstCurrNode, NodeAt(m_pstHandle, "server.host"));
    EXPECT_EQ(yaml_NextKeyValueGetInMap(NodeAt(m_pstHandle, "server.limits"), &stMap, &stPair), YAML_OK);
    EXPECT_STREQ(stPair.pcKey, "port");
    EXPECT_EQ(yaml_KeyValueGet(Map, stMap.pstCurrNode, &stMap, &stPair), YAML_ERR_ITER_END);
}
