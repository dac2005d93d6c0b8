// SPDX-License-Identifier: Apache-2.0
// Anchors, aliases and merge keys: which nodes are copies, where the keys of a merge go, what is noted and what is
// refused, what is counted, and what an expansion may cost.
#include "node_tree.h"
#include "support/load_text.h"
#include "support/recording_base.h"

#include <cstring>
#include <gtest/gtest.h>
#include <utility>
#include <yaml.h>

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

#define SKIPPED(key) "0 1900000a There is a same scalar in previous key list. (Scalar=" key ")\n"
#define OVERRIDDEN(key) "0 1900000a There is a same scalar in alias list. (Scalar=" key ")\n"
#define NOT_DEFINED(name) "2 19000013 The alias has not defined. (Alias=" name ")\n" PARSE_FAILED
#define SCALAR_MERGE(text) "2 1900000b Can not merge mapping with a single scalar. (Scalar=" text ")\n" PARSE_FAILED
#define SCALAR_ITEM(text) "2 1900000f Can not merge a single scalar to a map. (Scalar=" text ")\n" PARSE_FAILED
#define SEQUENCE_ITEM "2 1900000f Can not merge a sequence to a map.\n" PARSE_FAILED
#define ALIAS_KEY(name) "2 1900000b It does not support an alias as a map key. (Alias=" name ")\n" PARSE_FAILED
#define TWICE(key) "2 1900000a There is a same scalar in this list. (Scalar=" key ")\n" PARSE_FAILED

#define BASE "b: &b {a: 1, b: 2}\n"
#define BASE_FLAGS "{b:{a:1 b:2} "

struct DocumentCase {
    int iLine;
    std::string document;
    const char *pcResult; // the tree, see FlagWrite, and what is noted; or the log
};

const DocumentCase g_astDocument[] = {
    // aliases
    {__LINE__, "a: &x 1\nb: *x", "{a:1 b:1*}"},
    {__LINE__, "a: &x 1\nb: {c: *x, d: &x 2}\ne: *x", "{a:1 b:{c:1* d:2} e:2*}"},
    {__LINE__, "a: &X 1\nb: &x 2\nc: *X", "{a:1 b:2 c:1*}"},
    {__LINE__, "a: &x 1\ns: &x [*x]\nt: *x", "{a:1 s:[1*] t:[1*]*}"}, // the open one is not found
    {__LINE__, "s: &x [&x 1, *x]\nt: *x", "{s:[1 1*] t:[1* 1*]*}"},   // the outer one ends last
    {__LINE__, "outer: &o {inner: &i {k: v}}\nx: *i\ny: *o", "{outer:{inner:{k:v}} x:{k*:v*}* y:{inner*:{k*:v*}*}*}"},
    {__LINE__, "&k key: &v val\nx: *k\ny: [*k]\nz: *v", "{key:val x:key* y:[key*] z:val*}"},
    {__LINE__, "- &k key\n- &l {&m map: [1]}\n- [*k, *m, *l]", "[key {map:[1]} [key* map* {map*:[1*]*}*]]"},
    {__LINE__, "m: &m {a: 1, b: 2}\nn: *m\nc: 3", "{m:{a:1 b:2} n:{a*:1* b*:2*}* c:3}"},
    {__LINE__, "l: &l [{name: a, port: 1}]\nl2: *l", "{l:[{name:a port:1}] l2:[{name*:a* port*:1*}*]*}"},
    {__LINE__, "n: &n [[1, 2], [3]]\ncopy: *n", "{n:[[1 2] [3]] copy:[[1* 2*]* [3*]*]*}"},
    {__LINE__, "- &a x\n- [*a, 1]\n- [1, *a]\n- [1, [*a]]", "[x [x* 1] [1 x*] [1 [x*]]]"},
    {__LINE__, "- &a [[], {}]\n- [*a, *a, 1]\n- {k: *a, l: 1}",
     "[[[] {}] [[[]* {}*]* [[]* {}*]* 1] {k:[[]* {}*]* l:1}]"},
    {__LINE__, "- &e ''\n- {k: *e}\n- &n\n- [*n]", "[ {k:*}  [*]]"},
    {__LINE__, "a: &x 1\nb: *X", NOT_DEFINED("X")},
    {__LINE__, "s: &s [1, *s]", NOT_DEFINED("s")},
    {__LINE__, "m: &m {a: {b: *m}}", NOT_DEFINED("m")},
    {__LINE__, "--- *x", NOT_DEFINED("x")},
    {__LINE__, "m: {*x : 1}", NOT_DEFINED("x")},
    {__LINE__, BASE "m: {*b : 1}", ALIAS_KEY("b")},
    {__LINE__, BASE "m: {a: 1, *b : 1}", ALIAS_KEY("b")},
    // merges
    {__LINE__, BASE "m: {<<: *b, c: 3}", BASE_FLAGS "m:{a*:1* b*:2* c:3}}"},
    {__LINE__, BASE "m: {b: 0, <<: *b}", BASE_FLAGS "m:{b:0 a*:1*}}" SKIPPED("b")},
    {__LINE__, BASE "m: {z: [0], <<: *b, c: 3}", BASE_FLAGS "m:{z:[0] a*:1* b*:2* c:3}}"},
    {__LINE__, BASE "m: {b: 0, a: 9, <<: *b, c: 3}", BASE_FLAGS "m:{b:0 a:9 c:3}}" SKIPPED("a") SKIPPED("b")},
    {__LINE__, BASE "m: {<<: *b, b: 3, c: 4}", BASE_FLAGS "m:{a*:1* b*:3 c:4 b!}}" OVERRIDDEN("b")},
    {__LINE__, BASE "m: {<<: *b, a: 3, c: 4, b: 5, d: 6}",
     BASE_FLAGS "m:{a*:3 c:4 b! b*:5 d:6 a!}}" OVERRIDDEN("a") OVERRIDDEN("b")},
    {__LINE__, BASE "m: {<<: *b, a: [1, 2], b: {x: 1}, c: 2}",
     BASE_FLAGS "m:{a*:[1 2] b! b*:{x:1} c:2 a!}}" OVERRIDDEN("a") OVERRIDDEN("b")},
    {__LINE__, BASE "m: {<<: *b, a: [], b: {}, c: 2}",
     BASE_FLAGS "m:{a*:[] b! b*:{} c:2 a!}}" OVERRIDDEN("a") OVERRIDDEN("b")},
    {__LINE__, "b: &b {a: [1, {b: c}]}\nm: {<<: *b, a: 5}", "{b:{a:[1 {b:c}]} m:{a*:5 a!}}" OVERRIDDEN("a")},
    {__LINE__, BASE "m: {<<: *b, b: *b}", BASE_FLAGS "m:{a*:1* b*:{a*:1* b*:2*}* b!}}" OVERRIDDEN("b")},
    {__LINE__, BASE "o: &o {b: 9, d: 4}\nm: {<<: *b, b: 7, <<: *o}",
     BASE_FLAGS "o:{b:9 d:4} m:{a*:1* b*:7 d*:4* b!}}" OVERRIDDEN("b") SKIPPED("b")},
    {__LINE__, BASE "m: {'<<': *b, <<: *b, \"<\\x3C\": *b}",
     BASE_FLAGS "m:{a*:1* b*:2*}}" SKIPPED("a") SKIPPED("b") SKIPPED("a") SKIPPED("b")},
    {__LINE__, BASE "m: {<<: [*b]}\nn: {<<: {a: 1}}\no: {&x <<: }\np: *x",
     BASE_FLAGS "m:{<<:[{a*:1* b*:2*}*]} n:{<<:{a:1}} o:{<<:} p:<<*}"}, // no merge: the key stays, and its anchor
    {__LINE__, BASE "<<: *b\nb2: 3", BASE_FLAGS "a*:1* b2:3}" SKIPPED("b")},
    {__LINE__, BASE "m: &m {<<: *b, b: [3], a: 4}\nn: *m\no: {<<: *m, z: 0}",
     BASE_FLAGS "m:{a*:4 b*:[3] a! b!} n:{a*:4* b*:[3*]*}* o:{a*:4* b*:[3*]* z:0}}" OVERRIDDEN("b") OVERRIDDEN("a")
         SKIPPED("a") SKIPPED("b") SKIPPED("a") SKIPPED("b")},
    {__LINE__, "b: &b {<<: 1, a: 2}\nm: {<<: *b, <<: *b}",
     "{b:{<<:1 a:2} m:{<<*:1* a*:2*}}" OVERRIDDEN("<<") SKIPPED("<<") SKIPPED("a")},
    {__LINE__, "s: &s [{x: 1, z: 5}, {y: 2}, {x: 3}]\nm: {<<: *s, w: 2}",
     "{s:[{x:1 z:5} {y:2} {x:3}] m:{x*:1* y*:2* w:2}}" SKIPPED("x")},
    {__LINE__, "s: &s [{}, {x: [1]}, {y: {}}]\nm: {y: 0, <<: *s, z: 1}",
     "{s:[{} {x:[1]} {y:{}}] m:{y:0 x*:[1*]* z:1}}" SKIPPED("y")},
    {__LINE__, "e: &e {}\nm: {z: 0, <<: *e, y: 1}\nn: {<<: *e}\no: 1", "{e:{} m:{z:0 y:1} n:{} o:1}"},
    {__LINE__, "e: &e []\nm: {<<: *e}\nn: [{<<: *e}, x, {<<: *e, y: 1}]", "{e:[] m:{} n:[{} x {y:1}]}"},
    {__LINE__, BASE "m: {<<: *b, &x a: &y 5, &z b: 6}\nn: [*x, *y, *z]",
     BASE_FLAGS "m:{a*:5 b! b*:6 a!} n:[a* 5* b*]}" OVERRIDDEN("a") OVERRIDDEN("b")},
    {__LINE__, "v: &v 5\nm: {<<: *v}", SCALAR_MERGE("5")},
    {__LINE__, "&k v: 5\nm: {a: 1, <<: *k}", SCALAR_MERGE("v")},
    {__LINE__, "s: &s [1, 2]\nm: {<<: *s}", SCALAR_ITEM("1")},
    {__LINE__, "s: &s [{a: 1}, x]\nm: {a: 1, <<: *s}", SKIPPED("a") SCALAR_ITEM("x")},
    {__LINE__, "s: &s [{a: 1}, {}, [{b: 1}]]\nm: {<<: *s}", SEQUENCE_ITEM},
    {__LINE__, BASE "m: {<<: *b, a: 5, a: 6}", OVERRIDDEN("a") TWICE("a")},
    {__LINE__, BASE "m: {a: 0, <<: *b, a: 5}", SKIPPED("a") TWICE("a")},
    {__LINE__, "b: &b {" + Numbered(30, "k", ": 1,") + "}\nm: {<<: *b, k7: 2, k7: 3}", OVERRIDDEN("k7") TWICE("k7")},
    {__LINE__, BASE "m: {<<: 1, <<: *b}", TWICE("<<")},
    // anchors that are not kept take the older ones of their name along
    {__LINE__, "x: &x 1\n" BASE "y: &x [2]\nm: {&x <<: *b}\nn: *x", NOT_DEFINED("x")},
    {__LINE__, BASE "m: {&b <<: *b}\nn: *b", SCALAR_MERGE("<<")},
    {__LINE__, "x: &x 1\n" BASE "m: {<<: *b, a: &x {y: 1}}\nn: *x", OVERRIDDEN("a") NOT_DEFINED("x")},
    {__LINE__, BASE "m: &x {<<: *b, a: &x [1]}\nn: *x", OVERRIDDEN("a") NOT_DEFINED("x")},
    {__LINE__, BASE "m: &x {q: {&x <<: *b}}\nn: *x", NOT_DEFINED("x")},
};

// What the nodes and texts of a document count, as text.
std::string CountText(const YamlHandle &stHandle)
{
    uint64_t ulBytes = sizeof(YamlHandle);
    for (const YamlListNode &stNode : zryaml::NodeRange(stHandle.stRoot.stAllocLink, zryaml::NodeLink::Alloc))
        ulBytes += sizeof(YamlListNode) + (stNode.pcValue != nullptr ? strlen(stNode.pcValue) + 1 : 0);
    return std::to_string(static_cast<int64_t>(stHandle.uiMemSize) - static_cast<int64_t>(ulBytes));
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
    for (const DocumentCase &stCase : g_astDocument)
        EXPECT_EQ(DocumentRead(stCase.document, FlagText), stCase.pcResult) << stCase.iLine;
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
        {__LINE__, BASE "m: {b: 0, <<: *b}", 0},
        {__LINE__, BASE "m: {&x <<: *b}", 0},
        {__LINE__, BASE "m: {<<: *b, b: *b}", sizeof(YamlListNode) + 2},
        {__LINE__, "b: &b {a: [1, 2]}\nm: {<<: *b, a: {}}", sizeof(YamlListNode)}, // the items stay
    };
    Base().bKeepNotes = false;
    ZRYAML_DebugSwitchSet(1);
    for (const Case &stCase : g_astCase)
        EXPECT_EQ(DocumentRead(stCase.pcDocument, CountText), std::to_string(stCase.ulReleased)) << stCase.iLine;
}

TEST_F(AnchorMerge, DroppedAnchorsLeaveTheOthersToBeFound)
{
    std::string anchors = "anchors:\n", drops = "b: &b {k: 1}\ndrops:\n", aliases = "aliases:\n", expected;
    for (int i = 0; i < 600; ++i) {
        const std::string name = "n" + std::to_string(i);
        anchors += "- &" + name + " " + name + "\n";
        if (i % 3 != 0) {
            drops += "- {&" + name + " <<: *b}\n";
            continue;
        }
        aliases += "- *" + name + "\n";
        expected += " " + name + "*";
    }
    const std::string text = DocumentRead(anchors + drops + aliases, FlagText);
    EXPECT_NE(text.find(" aliases:[" + expected.substr(1) + "]}"), std::string::npos) << text;
    EXPECT_EQ(DocumentRead(anchors + drops + "c: *n1\n"), NOT_DEFINED("n1"));
}

TEST_F(AnchorMerge, FailuresThatNoFileCauses)
{
    YamlHandle *pstHandle = TextFileLoad("m: {k: 1}");
    ASSERT_NE(pstHandle, nullptr);
    YamlListNode &stMap = *zryaml::FirstChild(*zryaml::FirstChild(*zryaml::FirstChild(pstHandle->stRoot)));
    YamlListNode &stKey = *zryaml::FirstChild(stMap);
    YamlListNode *pstLoose = yaml_ScalarNodeCreate(pstHandle, "l");
    YamlListNode *pstTarget = yaml_ListNodeAlloc(pstHandle);
    pstTarget->uiDataType = YAML_DATATYPE_MAP;
    yaml_ListNodeFree(zryaml::FirstChild(stKey)); // a key without its value
    stKey.uiNextLevelType = YAML_DATATYPE_NONE;
    stKey.uiSameWithAnchor = 1; // with no key that it could be the same as
    YamlAnchorNode stAnchor = {};
    stAnchor.pstAnchoredNode = &stMap;
    yaml_event_t stEvent = {};
    YamlListNode *pstCurrent = pstTarget;
    uint32_t uiFlag = 1;
    EXPECT_EQ(yaml_AnchorNodesParse(pstHandle, &pstCurrent, &stAnchor, &uiFlag), YAML_ERR_PARAM);
    EXPECT_EQ(yaml_AnchorNodesClone(pstHandle, pstLoose, &stKey), YAML_ERR_PARAM);
    EXPECT_EQ(yaml_ScalarNodeAddWithKeyRole(pstLoose, pstLoose), YAML_ERR_PARSE);
    EXPECT_EQ(yaml_ScalarNodeAddInMap(pstLoose, &stKey, &uiFlag), YAML_ERR_PARSE);
    EXPECT_EQ(uiFlag, 0U);
    pstCurrent = &stKey;
    EXPECT_EQ(yaml_SeqStartProcess(&stEvent, YAML_SCALAR_EVENT, &pstCurrent, pstHandle), YAML_ERR_PARSE);
    EXPECT_EQ(yaml_MapStartProcess(&stEvent, YAML_SCALAR_EVENT, &pstCurrent, pstHandle), YAML_ERR_PARSE);
    EXPECT_EQ(yaml_AnchorInsertInMap(pstHandle, &pstCurrent, pstLoose, 1), YAML_ERR_PARSE);
    EXPECT_EQ(pstCurrent, &stKey);
    stKey.uiSameWithAnchor = 0;
    pstCurrent = pstTarget;
    EXPECT_EQ(yaml_MapAnchorCopy(pstHandle, &pstCurrent, &stMap, 1), YAML_ERR_PARSE);
    EXPECT_EQ(pstCurrent, pstTarget); // not written back
#define NOT_FOUND \
    "an not find node in anchor but the current father node has been set as same node with anchor. (Scalar=k)\n"
    EXPECT_EQ(Base().LogText(),
              "2 16 There is an invalid event in the event stack.\n"
              "2 16 There is a unknown data type when copy anchor node. (DataType=3)\n"
              "2 1900000f The father node is NULL.\n"
              "2 1900000f C" NOT_FOUND "2 1900000f Failed to process sequence start event: c" NOT_FOUND
              "2 1900000f Failed to process map start event: c" NOT_FOUND "2 1900000f C" NOT_FOUND
              "2 1900000f Can not merge a single scalar in sequence anchor to map. (Scalar=k)\n");
    ZRYAML_HandleFree(pstHandle);
}

TEST_F(AnchorMerge, ExpansionIsBounded)
{
    const std::string wide = "b: &base {" + Numbered(10000, "k", ": ,") + "}\nm:\n";
    constexpr uint64_t Text = 1 << 20;
    constexpr uint64_t Own = 5 * sizeof(YamlListNode) + 2 + Text + 1 + 2; // map, "t", text, "l", sequence
    constexpr uint64_t Most = ((uint64_t{256} << 20) + 16 * Own) / (sizeof(YamlListNode) + Text + 1);
    const std::string text = "t: &text " + std::string(Text, 'x') + "\nl: [";
    struct Case {
        int iLine;
        std::string document;
        const char *pcAlias; // where it is refused; "" when it loads
    };
    const Case astCase[] = {
        {__LINE__, Laughs(), "l6"},
        {__LINE__, wide + Times(30000, " <<: *base\n"), "base"},
        {__LINE__, wide + Times(30000, "- <<: *base\n"), "base"},
        {__LINE__, "s: &many [" + Times(50000, "{},") + "]\nm:\n" + Times(50000, " <<: *many\n"), "many"},
        {__LINE__, "s: &some [" + Times(50000, "{k: },") + "]\nm:\n" + Times(50000, " <<: *some\n"), "some"},
        {__LINE__, text + Times(Most, "*text,") + "]", ""},
        {__LINE__, text + Times(Most + 1, "*text,") + "]", "text"},
        {__LINE__, "b: &b {" + Numbered(100, "k", ": v,") + "}\n" + Numbered(2000, "s", ": {<<: *b, x: 1}\n"), ""},
        {__LINE__, "l: &l [" + Numbered(1000, "v", ",") + "]\nm: [" + Times(500, "*l,") + "]\n", ""},
    };
    Base().bKeepNotes = false;
    for (const Case &stCase : astCase) {
        const std::string log = DocumentRead(stCase.document, [](const YamlHandle &) { return ""s; });
        const std::string refusal = "2 c The alias expansion is too large. (Alias="s + stCase.pcAlias + ")\n";
        EXPECT_EQ(log.substr(0, refusal.size()), *stCase.pcAlias != '\0' ? refusal : "") << stCase.iLine;
    }
}
