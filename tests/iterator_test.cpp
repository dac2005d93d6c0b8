// SPDX-License-Identifier: Apache-2.0
// Iterators: the pairs they yield, what makes their creation fail, and that a step without a pair touches nothing.
#include "support/paths.h"

#include <cstring>

#include <gtest/gtest.h>

namespace {

constexpr const char *WalkDocument = R"(server: {host: alpha, limits: {cpu: 2}, port: 8080, tags: [a, b]}
users: [{name: ann, role: admin}, guest, {name: bob}, {groups: [x]}, {}]
users2: [[{k: v}]]
deep: [[[{k: v}, {l: w, m: x}], [{n: y}]]]
em: {}
es: []
last: {m: {x: y}, s: [1], e: {}, empty: , nul: ~}
skip: [x, [y], {}, {m: {x: y}}, {k: v}]
b: &b {k: 1, j: 2}
merged: {<<: *b, k: 9, i: 3}
mergedseq: [{<<: *b, k: [9]}, {<<: *b, k: 8}]
)";

#define NO_ITERATOR "2 19000003 Can not get the specified iterator.\n"
#define NO_STYLE(type) \
    "1 16 The node style below the destination is not map or sequence. (DataType=" type ")\n" NO_ITERATOR
#define BAD_CREATE "2 16 The parameter is invalid to get iterator.\n"
#define BAD_STEP "2 16 The input parameter is invalid to get key and value.\n"

struct WalkCase {
    const char *pcPath, *pcOutcome; // the type and the pairs, or the log
};
constexpr WalkCase g_astWalk[] = {
    {"server", "map host=alpha port=8080"},
    {"server.limits", "map cpu=2"},
    {"server.tags", "seq"},
    {"users", "seq name=ann name=bob"},
    {"deep[0]", "seq k=v l=w"},
    {"em", "map"},
    {"es", "seq"},
    {"last", "map empty= nul=~"},
    {"skip", "seq k=v"},
    {"merged", "map k=9 i=3 j=2"},
    {"mergedseq", "seq k=8"},
    {"server.host", NO_STYLE("2")},
    {"users[0]", NO_STYLE("2")},
    {"users[1]", NO_STYLE("3")},
    {"server.host.alpha", NO_STYLE("3")},
    {"users2[0]", NO_ITERATOR},
    {"nothing", NOT_FOUND("nothing")},
    {"", TOO_LONG},
};

// Steps to the end and three times beyond it, which changes nothing; " key=value" for each pair.
std::string Walk(YamlIterator *pstIter)
{
    std::string pairs;
    YamlKeyValue stPair = {nullptr, nullptr};
    for (uint32_t uiResult = 0; (uiResult = yaml_NextKeyValueGet(pstIter, &stPair)) != YAML_ERR_ITER_END;) {
        if (uiResult != YAML_OK || pairs.size() > 1000)
            return "endless, or result " + std::to_string(uiResult);
        pairs += std::string(" ") + stPair.pcKey + "=" + stPair.pcValue;
    }
    const auto [stEnd, stKept] = std::pair(*pstIter, stPair);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(yaml_NextKeyValueGet(pstIter, &stPair), YAML_ERR_ITER_END);
    EXPECT_EQ(memcmp(pstIter, &stEnd, sizeof(stEnd)), 0);
    EXPECT_TRUE(stPair.pcKey == stKept.pcKey && stPair.pcValue == stKept.pcValue);
    return pairs;
}

std::string WalkOutcome(YamlHandle *pstHandle, const char *pcPath)
{
    Base().Reset();
    YamlIterator *pstIter = yaml_IteratorCreate(pstHandle, "%s", pcPath);
    EXPECT_EQ(Base().ulAllocations, pstIter != nullptr ? 1U : 0U);
    if (pstIter == nullptr)
        return Base().LogText();
    EXPECT_EQ(pstIter->pstCurrNode, pstIter->pstFatherNode);
    std::string outcome = pstIter->uiIterType == YAML_DATATYPE_MAP ? "map" : "seq";
    outcome += Walk(pstIter) + Base().LogText();
    yaml_IteratorDestroy(pstIter);
    return outcome;
}

} // namespace

TEST(Iterator, YieldsScalarPairs)
{
    const Document stDocument(WalkDocument), stSeq("[{a: {k: v}}, [{x: y}], {a: 1}]");
    for (const WalkCase &stCase : g_astWalk)
        EXPECT_EQ(WalkOutcome(stDocument, stCase.pcPath), stCase.pcOutcome) << stCase.pcPath;
    EXPECT_EQ(WalkOutcome(stSeq, "[0].a"), "map k=v");
    EXPECT_EQ(WalkOutcome(stSeq, "[1]"), NO_ITERATOR);
}

TEST(Iterator, RefusesBadArguments)
{
    const Document stDocument(WalkDocument);
    // The compiler does not look at the format here.
    YamlIterator *(*const fnCreate)(YamlHandle *, const char *, ...) = yaml_IteratorCreate;
    EXPECT_EQ(yaml_IteratorCreate(nullptr, "server"), nullptr);
    EXPECT_EQ(fnCreate(stDocument, nullptr), nullptr);
    EXPECT_EQ(Base().LogText(), BAD_CREATE BAD_CREATE);
    Base().Reset();
    Base().ulFailAllocation = 1;
    EXPECT_EQ(yaml_IteratorCreate(stDocument, "server"), nullptr);
    EXPECT_EQ(Base().LogText(),
              "2 c Failed to alloc memory for create iterator. (Size=" + std::to_string(sizeof(YamlIterator)) + ")\n");

    Base().Reset();
    const char *pcKept = "kept";
    YamlKeyValue stPair = {pcKept, pcKept};
    YamlIterator stForeign = {0x123456FE, YAML_DATATYPE_MAP, nullptr, nullptr};
    EXPECT_EQ(yaml_NextKeyValueGet(nullptr, &stPair), YAML_ERR_PARAM);
    EXPECT_EQ(yaml_NextKeyValueGet(&stForeign, nullptr), YAML_ERR_PARAM);
    EXPECT_EQ(yaml_NextKeyValueGet(&stForeign, &stPair), YAML_ERR_PARAM);
    yaml_IteratorDestroy(nullptr);
    yaml_IteratorDestroy(&stForeign);
    EXPECT_EQ(Base().LogText(), BAD_STEP BAD_STEP "2 16 The input iterator is invalid.\n");
    YamlIterator stOther = {YAML_NODE_MAGIC, YAML_DATATYPE_SCALAR, nullptr, NodeAt(stDocument, "users[0]")};
    EXPECT_EQ(yaml_NextKeyValueGet(&stOther, &stPair), YAML_ERR_PARAM);
    EXPECT_TRUE(stPair.pcKey == pcKept && stPair.pcValue == pcKept);
}

TEST(Iterator, TwoWalksAreIndependentAndOutliveTheDocument)
{
    const int64_t lBlocks = Base().lBlocks;
    YamlHandle *pstHandle = TextFileLoad(WalkDocument);
    ZRYAML_DebugSwitchSet(1);
    YamlIterator *pstFirst = yaml_IteratorCreate(pstHandle, "%s.limits", "server");
    YamlIterator *pstSecond = yaml_IteratorCreate(pstHandle, "server.limits");
    ASSERT_TRUE(pstFirst != nullptr && pstSecond != nullptr);
    EXPECT_EQ(Walk(pstFirst), " cpu=2");
    EXPECT_EQ(Walk(pstSecond), " cpu=2");
    ZRYAML_DebugSwitchSet(0);
    EXPECT_EQ(pstHandle->uiQueryCount, 0U);
    EXPECT_EQ(pstHandle->uiMemSize, 0U);
    ZRYAML_HandleFree(pstHandle);
    yaml_IteratorDestroy(pstSecond);
    yaml_IteratorDestroy(pstFirst);
    EXPECT_EQ(Base().lBlocks, lBlocks);
}

// A walk ends at a record that is no node, and a container that is none is refused.
TEST(Iterator, StopsAtWhatIsNoNode)
{
    const struct {
        const char *pcForeign, *pcPath, *pcOutcome;
    } astCases[] = {
        {"server.port", "server", "map host=alpha"},
        {"server.host", "server", "map"},
        {"users[2]", "users", "seq name=ann"},
        {"users[0].name", "users", "seq name=bob"},
    };
    const Document stDocument(WalkDocument);
    for (const auto &stCase : astCases) {
        YamlListNode *pstForeign = NodeAt(stDocument, stCase.pcForeign);
        pstForeign->uiMagic = 0;
        EXPECT_EQ(WalkOutcome(stDocument, stCase.pcPath), stCase.pcOutcome) << stCase.pcForeign;
        pstForeign->uiMagic = YAML_NODE_MAGIC;
    }
    NodeAt(stDocument, "users[0]")->pstFather->uiMagic = 0;
    EXPECT_EQ(WalkOutcome(stDocument, "users"), NO_ITERATOR);
}
