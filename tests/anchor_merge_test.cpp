// SPDX-License-Identifier: Apache-2.0
// Anchors, aliases and merge keys: which nodes are copies, where the keys of a merge go, what is noted and what is
// refused, what is counted, and what an expansion may cost.
#include "node_tree.h"
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <chrono>
#include <cstring>
#include <gtest/gtest.h>
#include <utility>

using namespace std::string_literals;

namespace {

struct AnchorMerge : testing::Test {
    void SetUp() override { Base().Reset(); }
    void TearDown() override
    {
        ZRYAML_DebugSwitchSet(0);
        EXPECT_EQ(Base().lBlocks, 0);
        Base().Reset();
    }
};

// The tree with its flags: a copy is followed by '*', a key that repeats a merged one by '!' and no value.
void FlagWrite(const YamlListNode &stNode, std::string &text)
{
    const std::string copy = stNode.uiFromAlias == 1 ? "*" : "";
    if (stNode.uiDataType == YAML_DATATYPE_SCALAR) {
        text += stNode.pcValue + copy;
        return;
    }
    const bool bMap = stNode.uiDataType == YAML_DATATYPE_MAP;
    const char *pcSeparator = "";
    text += bMap ? "{" : "[";
    for (const YamlListNode &stChild : zryaml::Children(stNode)) {
        text += std::exchange(pcSeparator, " ");
        if (!bMap) {
            FlagWrite(stChild, text);
            continue;
        }
        text += stChild.pcValue + (stChild.uiFromAlias == 1 ? "*"s : "") + (stChild.uiSameWithAnchor == 1 ? "!" : ":");
        if (const YamlListNode *pstValue = zryaml::FirstChild(stChild))
            FlagWrite(*pstValue, text);
    }
    text += (bMap ? "}" : "]") + copy;
}

std::string FlagText(const YamlHandle &stHandle)
{
    std::string text;
    FlagWrite(*zryaml::FirstChild(stHandle.stRoot), text);
    return text;
}

std::string Times(size_t ulTimes, const std::string &piece)
{
    std::string text;
    text.reserve(ulTimes * piece.size());
    while (ulTimes-- > 0)
        text += piece;
    return text;
}

std::string Numbered(size_t ulTimes, const std::string &before, const std::string &after)
{
    std::string text;
    for (size_t ul = 0; ul < ulTimes; ++ul)
        text += before + std::to_string(ul) + after;
    return text;
}

#define SKIPPED(key) "0 1900000a There is a same scalar in previous key list. (Scalar=" key ")\n"
#define OVERRIDDEN(key) "0 1900000a There is a same scalar in alias list. (Scalar=" key ")\n"

struct GoodCase {
    int iLine;
    std::string document;
    const char *pcFlags; // see FlagWrite
    const char *pcLog;   // notes only
};

#define BASE "b: &b {a: 1, b: 2}\n"
#define BASE_FLAGS "{b:{a:1 b:2} "

const GoodCase g_astGood[] = {
    // aliases
    {__LINE__, "a: &x 1\nb: *x", "{a:1 b:1*}", ""},
    {__LINE__, "a: &x 1\nb: &x 2\nc: *x", "{a:1 b:2 c:2*}", ""},
    {__LINE__, "a: &x 1\nb: {c: *x, d: &x 2}\ne: *x", "{a:1 b:{c:1* d:2} e:2*}", ""},
    {__LINE__, "a: &X 1\nb: &x 2\nc: *X", "{a:1 b:2 c:1*}", ""},
    {__LINE__, "a: &x 1\ns: &x [*x]\nt: *x", "{a:1 s:[1*] t:[1*]*}", ""}, // the open one is not found
    {__LINE__, "s: &x [&x 1, *x]\nt: *x", "{s:[1 1*] t:[1* 1*]*}", ""},   // the outer one ends last
    {__LINE__, "outer: &o {inner: &i {k: v}}\nx: *i\ny: *o", "{outer:{inner:{k:v}} x:{k*:v*}* y:{inner*:{k*:v*}*}*}",
     ""},
    {__LINE__, "&k key: v\nx: *k\ny: [*k]", "{key:v x:key* y:[key*]}", ""},
    {__LINE__, "&k key: &v val\nx: *k\ny: *v", "{key:val x:key* y:val*}", ""},
    {__LINE__, "m: &m {a: 1, b: 2}\nn: *m\nc: 3", "{m:{a:1 b:2} n:{a*:1* b*:2*}* c:3}", ""},
    {__LINE__, "l: &l [{name: a, port: 1}]\nl2: *l", "{l:[{name:a port:1}] l2:[{name*:a* port*:1*}*]*}", ""},
    {__LINE__, "n: &n [[1, 2], [3]]\ncopy: *n", "{n:[[1 2] [3]] copy:[[1* 2*]* [3*]*]*}", ""},
    {__LINE__, "- &a x\n- [*a, 1]\n- [1, *a]\n- [1, [*a]]", "[x [x* 1] [1 x*] [1 [x*]]]", ""},
    {__LINE__, "- &a [[], {}]\n- [*a, *a, 1]\n- {k: *a, l: 1}",
     "[[[] {}] [[[]* {}*]* [[]* {}*]* 1] {k:[[]* {}*]* l:1}]", ""},
    {__LINE__, "- &e ''\n- {k: *e}\n- &n\n- [*n]", "[ {k:*}  [*]]", ""},
    {__LINE__, "a: &x\nb: *x", "{a: b:*}", ""},
    // merges
    {__LINE__, BASE "m: {<<: *b, c: 3}", BASE_FLAGS "m:{a*:1* b*:2* c:3}}", ""},
    {__LINE__, BASE "m: {b: 0, <<: *b}", BASE_FLAGS "m:{b:0 a*:1*}}", SKIPPED("b")},
    {__LINE__, BASE "m: {z: 0, <<: *b, c: 3}", BASE_FLAGS "m:{z:0 a*:1* b*:2* c:3}}", ""},
    {__LINE__, BASE "m: {b: 0, a: 9, <<: *b, c: 3}", BASE_FLAGS "m:{b:0 a:9 c:3}}", SKIPPED("a") SKIPPED("b")},
    {__LINE__, BASE "m: {z: [0], <<: *b, c: 3}", BASE_FLAGS "m:{z:[0] a*:1* b*:2* c:3}}", ""},
    {__LINE__, BASE "m: {<<: *b, b: 3, c: 4}", BASE_FLAGS "m:{a*:1* b*:3 c:4 b!}}", OVERRIDDEN("b")},
    {__LINE__, BASE "m: {<<: *b, a: 3, c: 4, b: 5, d: 6}", BASE_FLAGS "m:{a*:3 c:4 b! b*:5 d:6 a!}}",
     OVERRIDDEN("a") OVERRIDDEN("b")},
    {__LINE__, BASE "m: {<<: *b, b: [1, 2]}", BASE_FLAGS "m:{a*:1* b*:[1 2] b!}}", OVERRIDDEN("b")},
    {__LINE__, BASE "m: {<<: *b, b: {x: 1}, c: 2}", BASE_FLAGS "m:{a*:1* b*:{x:1} c:2 b!}}", OVERRIDDEN("b")},
    {__LINE__, "b: &b {a: [1, {b: c}]}\nm: {<<: *b, a: 5}", "{b:{a:[1 {b:c}]} m:{a*:5 a!}}", OVERRIDDEN("a")},
    {__LINE__, BASE "m: {<<: *b, b: *b}", BASE_FLAGS "m:{a*:1* b*:{a*:1* b*:2*}* b!}}", OVERRIDDEN("b")},
    {__LINE__, BASE "o: &o {b: 9, d: 4}\nm: {<<: *b, <<: *o}", BASE_FLAGS "o:{b:9 d:4} m:{a*:1* b*:2* d*:4*}}",
     SKIPPED("b")},
    {__LINE__, BASE "o: &o {b: 9, d: 4}\nm: {<<: *b, b: 7, <<: *o}", BASE_FLAGS "o:{b:9 d:4} m:{a*:1* b*:7 d*:4* b!}}",
     OVERRIDDEN("b") SKIPPED("b")},
    {__LINE__, BASE "m: {<<: *b, <<: *b, <<: *b}", BASE_FLAGS "m:{a*:1* b*:2*}}",
     SKIPPED("a") SKIPPED("b") SKIPPED("a") SKIPPED("b")},
    {__LINE__, BASE "m: {'<<': *b, \"<\\x3C\": *b}", BASE_FLAGS "m:{a*:1* b*:2*}}", SKIPPED("a") SKIPPED("b")},
    {__LINE__, BASE "m: {<<: [*b]}\nn: {<<: {a: 1}}\no: {<<: x}",
     BASE_FLAGS "m:{<<:[{a*:1* b*:2*}*]} n:{<<:{a:1}} o:{<<:x}}", ""},
    {__LINE__, BASE "<<: *b\nb2: 3", BASE_FLAGS "a*:1* b2:3}", SKIPPED("b")},
    {__LINE__, BASE "m: &m {<<: *b, b: [3], a: 4}\nn: *m\no: {<<: *m, z: 0}",
     BASE_FLAGS "m:{a*:4 b*:[3] a! b!} n:{a*:4* b*:[3*]*}* o:{a*:4* b*:[3*]* z:0}}",
     OVERRIDDEN("b") OVERRIDDEN("a") SKIPPED("a") SKIPPED("b") SKIPPED("a") SKIPPED("b")},
    {__LINE__, "s: &s [{x: 1}, {y: 2}, {x: 3}]\nm: {<<: *s}", "{s:[{x:1} {y:2} {x:3}] m:{x*:1* y*:2*}}", SKIPPED("x")},
    {__LINE__, "s: &s [{x: 1, z: 5}]\nm: {<<: *s, w: 2}", "{s:[{x:1 z:5}] m:{x*:1* w:2}}", ""},
    {__LINE__, "s: &s [{}, {x: [1]}, {y: {}}]\nm: {y: 0, <<: *s, z: 1}", "{s:[{} {x:[1]} {y:{}}] m:{y:0 x*:[1*]* z:1}}",
     SKIPPED("y")},
    {__LINE__, "e: &e {}\nm: {z: 0, <<: *e, y: 1}\nn: {<<: *e, y: 1}", "{e:{} m:{z:0 y:1} n:{y:1}}", ""},
    {__LINE__, BASE "m: {<<: *b, &x a: &y 5, &z b: 6}\nn: [*x, *y, *z]", BASE_FLAGS "m:{a*:5 b! b*:6 a!} n:[a* 5* b*]}",
     OVERRIDDEN("a") OVERRIDDEN("b")},
    {__LINE__, "m: {&x <<: 1}\nn: *x", "{m:{<<:1} n:<<*}", ""}, // no merge: the key stays, and its anchor
};

struct BadCase {
    int iLine;
    std::string document;
    const char *pcLog; // without the last line
};

#define NOT_DEFINED(name) "2 19000013 The alias has not defined. (Alias=" name ")\n"

const BadCase g_astBad[] = {
    {__LINE__, "a: *x", NOT_DEFINED("x")},
    {__LINE__, "a: &x 1\nb: *X", NOT_DEFINED("X")},
    {__LINE__, "s: &s [1, *s]", NOT_DEFINED("s")},
    {__LINE__, "m: &m {a: {b: *m}}", NOT_DEFINED("m")},
    {__LINE__, "--- *x", NOT_DEFINED("x")},
    {__LINE__, "m: {*x : 1}", NOT_DEFINED("x")},
    {__LINE__, "v: &v 5\nm: {<<: *v}", "2 1900000b Can not merge mapping with a single scalar. (Scalar=5)\n"},
    {__LINE__, "&k v: 5\nm: {a: 1, <<: *k}", "2 1900000b Can not merge mapping with a single scalar. (Scalar=v)\n"},
    {__LINE__, "s: &s [1, 2]\nm: {<<: *s}", "2 1900000f Can not merge a single scalar to a map. (Scalar=1)\n"},
    {__LINE__, "s: &s [{a: 1}, x]\nm: {a: 1, <<: *s}",
     SKIPPED("a") "2 1900000f Can not merge a single scalar to a map. (Scalar=x)\n"},
    {__LINE__, "s: &s [[]]\nm: {<<: *s}", "2 1900000f Can not merge a sequence to a map.\n"},
    {__LINE__, "s: &s [{a: 1}, {}, [{b: 1}]]\nm: {<<: *s}", "2 1900000f Can not merge a sequence to a map.\n"},
    {__LINE__, BASE "m: {<<: *b, a: 5, a: 6}",
     OVERRIDDEN("a") "2 1900000a There is a same scalar in this list. (Scalar=a)\n"},
    {__LINE__, BASE "m: {a: 0, <<: *b, a: 5}",
     SKIPPED("a") "2 1900000a There is a same scalar in this list. (Scalar=a)\n"},
    {__LINE__, "b: &b {" + Numbered(30, "k", ": 1,") + "}\nm: {<<: *b, k7: 2, k7: 3}",
     OVERRIDDEN("k7") "2 1900000a There is a same scalar in this list. (Scalar=k7)\n"},
    {__LINE__, "m: {" + Numbered(30, "k", ": 1,") + "k29: 2}",
     "2 1900000a There is a same scalar in this list. (Scalar=k29)\n"},
    {__LINE__, "m: {<<: 1, <<: 2}", "2 1900000a There is a same scalar in this list. (Scalar=<<)\n"},
    {__LINE__, BASE "m: {<<: 1, <<: *b}", "2 1900000a There is a same scalar in this list. (Scalar=<<)\n"},
    {__LINE__, BASE "m: {*b : 1}", "2 1900000b It does not support an alias as a map key. (Alias=b)\n"},
    // anchors that are not kept take the older ones of their name along
    {__LINE__, BASE "m: {&x <<: *b}\nn: *x", NOT_DEFINED("x")},
    {__LINE__, BASE "m: {&b <<: *b}\nn: *b", "2 1900000b Can not merge mapping with a single scalar. (Scalar=<<)\n"},
    {__LINE__, "x: &x 1\n" BASE "y: &x [2]\nm: {&x <<: *b}\nn: *x", NOT_DEFINED("x")},
    {__LINE__, "x: &x 1\n" BASE "m: {<<: *b, a: &x {y: 1}}\nn: *x", OVERRIDDEN("a") NOT_DEFINED("x")},
    {__LINE__, BASE "m: &x {<<: *b, a: &x [1]}\nn: *x", OVERRIDDEN("a") NOT_DEFINED("x")},
};

// A document made by hand; its nodes are given back one by one, the youngest first.
struct ByHand {
    YamlHandle stHandle{};
    ByHand() { yaml_HandleInit(&stHandle); }
    YamlListNode *Node(uint32_t uiDataType)
    {
        YamlListNode *pstNode = yaml_ListNodeAlloc(&stHandle);
        pstNode->uiDataType = uiDataType;
        return pstNode;
    }
    ~ByHand()
    {
        while (stHandle.stRoot.stAllocLink.next != &stHandle.stRoot.stAllocLink)
            yaml_ListNodeFree(zryaml::NodeOf(stHandle.stRoot.stAllocLink.next, zryaml::NodeLink::Alloc));
    }
    ByHand(const ByHand &) = delete;
    ByHand &operator=(const ByHand &) = delete;
};

void KeyHang(YamlListNode &stMap, YamlListNode &stKey)
{
    stKey.pstFather = &stMap;
    stMap.uiNextLevelType = YAML_DATATYPE_SCALAR;
    zryaml::ListInsertAfter(*stMap.stChildList.prev, stKey.stChildLink);
}

// What the nodes and texts of a document count.
uint64_t Counted(const YamlHandle &stHandle)
{
    uint64_t ulBytes = sizeof(YamlHandle);
    for (const YamlListNode &stNode : zryaml::NodeRange(stHandle.stRoot.stAllocLink, zryaml::NodeLink::Alloc))
        ulBytes += sizeof(YamlListNode) + (stNode.pcValue != nullptr ? strlen(stNode.pcValue) + 1 : 0);
    return ulBytes;
}

std::string Laughs()
{
    std::string text = "l0: &l0 [lol]\n";
    for (int i = 1; i < 12; ++i) {
        const std::string before = "*l" + std::to_string(i - 1);
        text += "l" + std::to_string(i) + ": &l" + std::to_string(i) + " [" + Times(9, before + ", ") + "]\n";
    }
    return text;
}

} // namespace

TEST_F(AnchorMerge, CopiesAreMarkedAndInTheirPlace)
{
    for (const GoodCase &stCase : g_astGood) {
        SCOPED_TRACE(stCase.iLine);
        Base().Reset();
        YamlHandle *pstHandle = TextFileLoad(stCase.document);
        ASSERT_NE(pstHandle, nullptr) << Base().LogText();
        EXPECT_EQ(TreeCheck(*pstHandle), "");
        EXPECT_EQ(FlagText(*pstHandle), stCase.pcFlags);
        EXPECT_EQ(Base().LogText(), stCase.pcLog);
        ZRYAML_HandleFree(pstHandle);
        EXPECT_EQ(Base().lBlocks, 0);
    }
}

TEST_F(AnchorMerge, RefusalsAreLogged)
{
    for (const BadCase &stCase : g_astBad) {
        SCOPED_TRACE(stCase.iLine);
        Base().Reset();
        EXPECT_EQ(TextFileLoad(stCase.document), nullptr);
        EXPECT_EQ(Base().LogText(), stCase.pcLog + "2 1900000f Parse file failed.\n"s);
        EXPECT_EQ(Base().lBlocks, 0);
    }
}

TEST_F(AnchorMerge, CountsCopiesAndTakesTheMergeKeyBack)
{
    struct Case {
        int iLine;
        const char *pcDocument;
        uint64_t ulReleased; // bytes of values that were overridden: they stay counted
    };
    constexpr Case g_astCase[] = {
        {__LINE__, "a: &name 1\nb: [*name, &other {x: y}, *other]", 0},
        {__LINE__, BASE "m: {<<: *b, c: 3}", 0},
        {__LINE__, BASE "m: {b: 0, <<: *b}", 0},
        {__LINE__, BASE "m: {&x <<: *b}", 0},
        {__LINE__, BASE "m: {<<: *b, b: 3}", sizeof(YamlListNode) + 2},
        {__LINE__, BASE "m: {<<: *b, b: *b}", sizeof(YamlListNode) + 2},
        {__LINE__, "b: &b {a: [1, 2]}\nm: {<<: *b, a: {}}", sizeof(YamlListNode)}, // the items stay
    };
    for (const uint32_t uiSwitch : {1U, 2U, 0U}) {
        ZRYAML_DebugSwitchSet(uiSwitch);
        for (const Case &stCase : g_astCase) {
            SCOPED_TRACE(stCase.iLine);
            YamlHandle *pstHandle = TextFileLoad(stCase.pcDocument);
            ASSERT_NE(pstHandle, nullptr) << Base().LogText();
            EXPECT_EQ(pstHandle->uiMemSize, uiSwitch == 1 ? Counted(*pstHandle) + stCase.ulReleased : 0);
            ZRYAML_HandleFree(pstHandle);
        }
    }
}

TEST_F(AnchorMerge, RecordsFinishInTheOrderOfTheirEnds)
{
    ASSERT_EQ(yaml_MemInit(), YAML_OK);
    ByHand stHand;
    YamlListNode *pstOuter = stHand.Node(YAML_DATATYPE_MAP);
    YamlListNode *pstInner = stHand.Node(YAML_DATATYPE_SEQ);
    YamlListNode *pstScalar = stHand.Node(YAML_DATATYPE_SCALAR);
    YamlHandle *pstHandle = &stHand.stHandle;
    EXPECT_EQ(yaml_AnchorRecord(pstHandle, nullptr, pstOuter, YAML_DATATYPE_MAP), YAML_OK);
    EXPECT_EQ(pstHandle->stOpenAnchorList.next, &pstHandle->stOpenAnchorList);
    EXPECT_EQ(yaml_AnchorObjFind(pstHandle, "x"), nullptr);

    const auto Find = [pstHandle](const char *pcName) {
        const YamlAnchorNode *pstAnchor = yaml_AnchorObjFind(pstHandle, pcName);
        return pstAnchor != nullptr ? pstAnchor->pstAnchoredNode : nullptr;
    };
    EXPECT_EQ(yaml_AnchorRecord(pstHandle, "x", pstOuter, YAML_DATATYPE_MAP), YAML_OK);
    EXPECT_EQ(yaml_AnchorRecord(pstHandle, "x", pstInner, YAML_DATATYPE_SEQ), YAML_OK);
    EXPECT_EQ(Find("x"), nullptr);
    EXPECT_EQ(yaml_AnchorRecord(pstHandle, "x", pstScalar, YAML_DATATYPE_SCALAR), YAML_OK);
    EXPECT_EQ(Find("x"), pstScalar);
    yaml_AnchorRecordEnd(pstHandle, pstScalar); // has no open one
    yaml_AnchorRecordEnd(pstHandle, pstInner);
    EXPECT_EQ(Find("x"), pstInner);
    EXPECT_EQ(Find("X"), nullptr);
    yaml_AnchorRecordEnd(pstHandle, pstOuter);
    EXPECT_EQ(Find("x"), pstOuter);
    EXPECT_EQ(pstHandle->stOpenAnchorList.next, &pstHandle->stOpenAnchorList);
    EXPECT_EQ(yaml_AnchorRecord(pstHandle, "open", pstOuter, YAML_DATATYPE_MAP), YAML_OK);
    yaml_AnchorListRealse(pstHandle);
    EXPECT_EQ(TreeCheck(*pstHandle), "");
    EXPECT_EQ(yaml_AnchorObjFind(pstHandle, "x"), nullptr);
}

TEST_F(AnchorMerge, DroppedAnchorsLeaveTheOthersToBeFound)
{
    std::string document = "anchors:\n";
    std::string drops = "b: &b {k: 1}\ndrops:\n";
    std::string aliases = "aliases:\n";
    std::string expected;
    for (uint32_t ui = 0; ui < 90; ++ui) {
        const std::string name = "n" + std::to_string(ui);
        document += "- &" + name + " " + name + "\n";
        (ui % 3 != 0 ? drops : aliases) += ui % 3 != 0 ? "- {&" + name + " <<: *b}\n" : "- *" + name + "\n";
        expected += ui % 3 != 0 ? "" : (ui > 0 ? "," : "") + ("\"" + name + "\"");
    }
    YamlHandle *pstHandle = TextFileLoad(document + drops + aliases);
    ASSERT_NE(pstHandle, nullptr) << Base().LogText();
    EXPECT_NE(TreeText(*pstHandle).find("\"aliases\":[" + expected + "]"), std::string::npos);
    ZRYAML_HandleFree(pstHandle);
    EXPECT_EQ(TextFileLoad(document + drops + "c: *n1\n"), nullptr);
    EXPECT_EQ(Base().Texts(2).front(), "The alias has not defined. (Alias=n1)");
}

TEST_F(AnchorMerge, FailuresThatNoFileCauses)
{
    ASSERT_EQ(yaml_MemInit(), YAML_OK);
    ByHand stHand;
    YamlHandle *pstHandle = &stHand.stHandle;
    YamlListNode *pstMap = stHand.Node(YAML_DATATYPE_MAP);
    YamlListNode *pstKey = yaml_ScalarNodeCreate(pstHandle, "k");
    YamlListNode *pstLoose = yaml_ScalarNodeCreate(pstHandle, "l");
    YamlListNode *pstTarget = stHand.Node(YAML_DATATYPE_MAP);
    KeyHang(*pstMap, *pstKey);
    uint32_t uiFlag = 1;
    YamlAnchorNode stAnchor = {};
    stAnchor.pstAnchoredNode = pstMap;
    YamlListNode *pstCurrent = pstTarget;
    EXPECT_EQ(yaml_AnchorNodesParse(pstHandle, &pstCurrent, &stAnchor, &uiFlag), YAML_ERR_PARAM);
    pstCurrent = pstTarget;
    EXPECT_EQ(yaml_AnchorNodesClone(pstHandle, pstLoose, pstKey), YAML_ERR_PARAM);
    EXPECT_EQ(yaml_MapAnchorCopy(pstHandle, &pstCurrent, pstMap, 1), YAML_ERR_PARSE);
    EXPECT_EQ(pstCurrent, pstTarget); // not written back
    EXPECT_EQ(yaml_ScalarNodeAddWithKeyRole(pstLoose, yaml_ScalarNodeCreate(pstHandle, "alone")), YAML_ERR_PARSE);
    pstKey->uiSameWithAnchor = 1;
    EXPECT_EQ(yaml_SameKeyFindInAnchor(pstKey), nullptr);
    EXPECT_EQ(yaml_ScalarNodeAddInMap(pstLoose, pstKey, &uiFlag), YAML_ERR_PARSE);
    EXPECT_EQ(uiFlag, 0U);
    EXPECT_EQ(Base().LogText(),
              "2 16 There is an invalid event in the event stack.\n"
              "2 16 There is a unknown data type when copy anchor node. (DataType=3)\n"
              "2 1900000f Can not merge a single scalar in sequence anchor to map. (Scalar=k)\n"
              "2 1900000f The father node is NULL.\n"
              "2 1900000f Can not find node in anchor but the current father node has been set as same node with "
              "anchor. (Scalar=k)\n");
}

TEST_F(AnchorMerge, ExpansionIsBounded)
{
    struct Case {
        int iLine;
        std::string document;
        const char *pcAlias; // where it is refused; NULL when it loads
    };
    const std::string list = "[" + Numbered(1000, "v", ",") + "]";
    const Case astCase[] = {
        {__LINE__, Laughs(), "l6"},
        {__LINE__, "b: &base {" + Numbered(10000, "k", ": ,") + "}\nm:\n" + Times(30000, " <<: *base\n"), "base"},
        {__LINE__, "b: &base {" + Numbered(10000, "k", ": ,") + "}\nm:\n" + Times(30000, "- <<: *base\n"), "base"},
        {__LINE__, "s: &many [" + Times(50000, "{},") + "]\nm:\n" + Times(50000, " <<: *many\n"), "many"},
        {__LINE__, "t: &text " + std::string(1 << 20, 'x') + "\nl:\n" + Times(100000, "- *text\n"), "text"},
        {__LINE__, "b: &base {" + Numbered(100, "k", ": v,") + "}\n" + Numbered(2000, "s", ": {<<: *base, x: 1}\n"),
         nullptr},
        {__LINE__, "l: &list " + list + "\nm: [" + Times(500, "*list,") + "]\n", nullptr},
    };
    for (const Case &stCase : astCase) {
        SCOPED_TRACE(stCase.iLine);
        Base().Reset();
        Base().bKeepNotes = false;
        const auto stStart = std::chrono::steady_clock::now();
        YamlHandle *pstHandle = TextFileLoad(stCase.document);
        EXPECT_EQ(pstHandle != nullptr, stCase.pcAlias == nullptr);
        ZRYAML_HandleFree(pstHandle);
        const std::chrono::duration<double> stTime = std::chrono::steady_clock::now() - stStart;
        EXPECT_LT(stTime.count(), 30.0); // seconds, with sanitizers; far from what an unbounded one takes
        const std::string alias = stCase.pcAlias != nullptr ? stCase.pcAlias : "";
        const std::string log = "2 c The alias expansion is too large. (Alias=" + alias + ")\n";
        if (!alias.empty())
            EXPECT_EQ(Base().LogText().substr(0, log.size()), log);
        else
            EXPECT_EQ(Base().LogText(), "");
    }
}

TEST_F(AnchorMerge, ExpansionMayTakeExactlyItsBound)
{
    constexpr uint64_t Text = 1 << 20;
    constexpr uint64_t Own = 5 * sizeof(YamlListNode) + 2 + Text + 1 + 2; // map, "t", text, "l", sequence
    constexpr uint64_t Bound = (uint64_t{256} << 20) + 16 * Own;
    constexpr uint64_t Most = Bound / (sizeof(YamlListNode) + Text + 1);
    const std::string text(Text, 'x');
    for (const uint64_t ulAliases : {Most, Most + 1}) {
        Base().Reset();
        YamlHandle *pstHandle = TextFileLoad("t: &t " + text + "\nl: [" + Times(ulAliases, "*t,") + "]");
        EXPECT_EQ(pstHandle != nullptr, ulAliases == Most) << Base().LogText();
        ZRYAML_HandleFree(pstHandle);
    }
}
