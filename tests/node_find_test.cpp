// SPDX-License-Identifier: Apache-2.0
// The lookup of a node by key path: formatting and its limits, the walk, and each step of it on its own.
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <cstdarg>

#include <gtest/gtest.h>

namespace {

constexpr const char *MapDocument = R"(a:
  b: x
  c: [p, q, {r: s}]
  e: {}
n: [[m0, m1], [m2]]
mode: fast
z: []
)";
constexpr const char *SeqDocument = "[{name: ann, v: [x, y]}, plain, [i0, i1], []]";
constexpr const char *MergeDocument = "b: &b {k: [1], j: 2}\nm: {<<: *b, k: [7, 8]}\nn: {<<: *b, k: own}";

#define NOT_FOUND(name) "1 19000003 Can not find the yaml node with key. (Key=" name ")\n"
#define NO_SEQ(index, type) \
    "2 1900000c The current node is not sequence node but the sequence index is " index ". (DataType=" type ")\n"
#define NEXT_TYPE(type, key) \
    "2 1900000c The next node type is not sequence when find property in map list. (Type=" type ", Key=" key ")\n"
#define NOTHING_BELOW(text) "2 19000004 There is not any data below this branch. (NodeData=" text ")\n"
#define SEQ_EMPTY "2 19000004 The current sequence branch is empty.\n"
#define NO_INDEX "2 19000009 The array index has not been specified.\n"
#define NO_VALUE(index) "2 19000003 Can't find the specified value. (Index=" index ")\n"
#define MAP_PATH(path) \
    "2 19000002 The current file is begin with sequence, but the key is begin with map. (Key=" path ")\n"
#define TOO_LONG "2 19000005 The input key is too long to format.\n"

constexpr size_t MaxPaths = 4;
struct PathCase { // paths with one outcome
    int iLine;
    const char *pcDocument;
    const char *pcText; // of the node found, "{}" or "[]" for a collection; NULL is nothing
    uint32_t uiIndexed; // when found
    const char *pcLog;
    const char *apcPath[MaxPaths];
};
constexpr PathCase g_astPath[] = {
    {__LINE__, MapDocument, "a", 0, "", {"a"}},
    {__LINE__, MapDocument, "b", 0, "", {"a.b"}},
    {__LINE__, MapDocument, "p", 1, "", {"a.c[0]"}},
    {__LINE__, MapDocument, "{}", 1, "", {"a.c[2]"}},
    {__LINE__, MapDocument, "r", 0, "", {"a.c[2].r"}},
    {__LINE__, MapDocument, nullptr, 0, NOT_FOUND("c"), {"a.c[3]"}},
    {__LINE__, MapDocument, nullptr, 0, NEXT_TYPE("2", "b") NOT_FOUND("b"), {"a.b[0]"}},
    {__LINE__, MapDocument, nullptr, 0, "0 0 The current map branch is empty.\n" NOT_FOUND("z"), {"a.e.z"}},
    {__LINE__, MapDocument, nullptr, 0, NEXT_TYPE("1", "a") NOT_FOUND("a"), {"a[0]"}},
    {__LINE__, MapDocument, nullptr, 0, NO_INDEX NOT_FOUND("x"), {"a.c.x"}},
    {__LINE__, MapDocument, "q", 1, "", {"a.c.x[1]"}},
    {__LINE__, MapDocument, "m1", 1, "", {"n[0][1]", "n[0].z[1]"}},
    {__LINE__, MapDocument, nullptr, 0, NOT_FOUND(""), {"n[0][2]"}},
    {__LINE__, MapDocument, nullptr, 0, NO_INDEX NOT_FOUND("z"), {"n[0].z"}},
    {__LINE__, MapDocument, nullptr, 0, NO_SEQ("0", "2"), {"a.[0]"}},
    {__LINE__, MapDocument, nullptr, 0, NO_SEQ("3", "1"), {"a.c[2].[3]"}},
    {__LINE__, MapDocument, nullptr, 0, NO_SEQ("0", "1"), {"[0]"}},
    {__LINE__, MapDocument, "fast", 0, "", {"mode.fast"}},
    {__LINE__, MapDocument, nullptr, 0, NOT_FOUND("slow"), {"mode.slow"}},
    {__LINE__, MapDocument, nullptr, 0, NOT_FOUND("Mode"), {"Mode"}},
    {__LINE__, MapDocument, nullptr, 0, NOTHING_BELOW("x") NOT_FOUND("y"), {"a.b.x.y"}},
    {__LINE__, MapDocument, nullptr, 0, NOTHING_BELOW("p") NOT_FOUND("y"), {"a.c[0].y"}},
    {__LINE__, MapDocument, nullptr, 0, NOT_FOUND("z"), {"z[0]"}},
    {__LINE__, MapDocument, nullptr, 0, SEQ_EMPTY NOT_FOUND("x"), {"z.x[0]", "z.x"}},
    {__LINE__, MapDocument, nullptr, 0, "2 19000002 The length of key is 0.\n", {"a."}},
    {__LINE__, MapDocument, nullptr, 0, TOO_LONG, {""}},
    {__LINE__, SeqDocument, "plain", 1, "", {"[1]"}},
    {__LINE__, SeqDocument, "{}", 1, "", {"[0]"}},
    {__LINE__, SeqDocument, "v", 0, "", {"[0].v"}},
    {__LINE__, SeqDocument, "y", 1, "", {"[0].v[1]"}},
    {__LINE__, SeqDocument, "i1", 1, "", {"[2][1]"}},
    {__LINE__,
     SeqDocument,
     nullptr,
     0,
     "2 1900000c The current level node is not sequence node.\n",
     {"[0][0]", "[1][0]"}},
    {__LINE__, SeqDocument, nullptr, 0, NO_VALUE("4"), {"[4]"}},
    {__LINE__, SeqDocument, nullptr, 0, NO_VALUE("5"), {"[2][5].x"}},
    {__LINE__, SeqDocument, nullptr, 0, SEQ_EMPTY NO_VALUE("0"), {"[3][0]"}},
    {__LINE__, SeqDocument, nullptr, 0, NOTHING_BELOW("plain") NOT_FOUND("x"), {"[1].x"}},
    {__LINE__, SeqDocument, nullptr, 0, NO_INDEX NOT_FOUND("x"), {"[2].x"}},
    {__LINE__, SeqDocument, nullptr, 0, MAP_PATH("name"), {"name"}},
    {__LINE__, SeqDocument, nullptr, 0, TOO_LONG, {""}},
    {__LINE__, "", nullptr, 0, MAP_PATH("a"), {"a"}},
    {__LINE__, "", nullptr, 0, SEQ_EMPTY NO_VALUE("12"), {"[12]"}},
    {__LINE__,
     "",
     nullptr,
     0,
     "2 19000002 The key doesn't contain any digital character between '[' and ']'.\n",
     {"[x]"}},
    {__LINE__, "{}", nullptr, 0, "0 0 The current map branch is empty.\n" NOT_FOUND("a"), {"a"}},
    {__LINE__, "[]", nullptr, 0, SEQ_EMPTY NO_VALUE("0"), {"[0]"}},
    {__LINE__, MergeDocument, "8", 1, "", {"m.k[1]"}},
    {__LINE__, MergeDocument, "1", 1, "", {"b.k[0]"}},
    {__LINE__, MergeDocument, nullptr, 0, NOT_FOUND("k"), {"b.k[1]"}},
    {__LINE__, MergeDocument, "own", 0, "", {"n.k.own"}},
    {__LINE__, MergeDocument, "2", 0, "", {"n.j.2"}},
};

YamlListNode *Lookup(YamlHandle *pstHandle, uint32_t *puiIndexed, const char *pcKeyFormat, ...) ZRYAML_PRINTF(3, 4);
YamlListNode *Lookup(YamlHandle *pstHandle, uint32_t *puiIndexed, const char *pcKeyFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    YamlListNode *pstNode = yaml_NodeGetByKey(pstHandle, puiIndexed, pcKeyFormat, stArgs);
    va_end(stArgs);
    return pstNode;
}

const char *NodeText(const YamlListNode *pstNode)
{
    if (pstNode == nullptr || pstNode->uiDataType == YAML_DATATYPE_SCALAR)
        return pstNode == nullptr ? nullptr : pstNode->pcValue;
    return pstNode->uiDataType == YAML_DATATYPE_SEQ ? "[]" : "{}";
}

// Damage done by hand to the node at a path of "a: [p, q, r]\nb: v\nc: {d: w}".
using Damage = void (*)(YamlListNode &);
const Damage Foreign = [](YamlListNode &stNode) { stNode.uiMagic = 0; };
const Damage Marked = [](YamlListNode &stNode) { stNode.uiSameWithAnchor = 1; };
const Damage UnknownType = [](YamlListNode &stNode) { stNode.uiDataType = YAML_DATATYPE_NONE; };
const Damage NoText = [](YamlListNode &stNode) {
    ZR_MemFree(stNode.pcValue, g_pstYamlMemHandle);
    stNode.pcValue = nullptr;
};
const Damage NoChild = [](YamlListNode &stNode) {
    stNode.stChildList.next->prev = stNode.stChildList.next->next = stNode.stChildList.next;
    stNode.stChildList = {&stNode.stChildList, &stNode.stChildList};
};
struct DamageCase {
    int iLine;
    Damage fnDamage;
    const char *pcAt, *pcPath, *pcText, *pcLog;
};
const DamageCase g_astDamage[] = {
    {__LINE__, Foreign, "b", "a", "a", ""},
    {__LINE__, Foreign, "b", "b", nullptr, NOT_FOUND("b")},
    {__LINE__, Foreign, "b", "c", nullptr, NOT_FOUND("c")},
    {__LINE__, Foreign, "a[1]", "a[0]", "p", ""},
    {__LINE__, Foreign, "a[1]", "a[1]", nullptr, NOT_FOUND("a")},
    {__LINE__, Foreign, "a[1]", "a[2]", nullptr, NOT_FOUND("a")},
    {__LINE__, Foreign, "a[1]", "a.x[1]", nullptr, "1 16 Can't find the node with the index: 1\n" NOT_FOUND("x")},
    {__LINE__, Foreign, "b.v", "b.v", nullptr, NOT_FOUND("v")},
    {__LINE__, NoText, "b", "b", nullptr, NOT_FOUND("b")},
    {__LINE__, NoText, "b", "c.d", "d", ""},
    {__LINE__, Marked, "b", "b", nullptr, NOT_FOUND("b")},
    {__LINE__, NoChild, "b", "b[0]", nullptr,
     "2 19000004 The child list is empty when find property in map list.\n" NOT_FOUND("b")},
    {__LINE__, NoChild, "b", "b.v", nullptr, NOTHING_BELOW("b") NOT_FOUND("v")},
    {__LINE__, UnknownType, "c", "c.d", nullptr, "2 16 Unknown data type.\n" NOT_FOUND("d")},
};

} // namespace

TEST(NodeFind, FindsWhatThePathNames)
{
    for (const PathCase &stCase : g_astPath) {
        SCOPED_TRACE(stCase.iLine);
        YamlHandle *pstHandle = TextFileLoad(stCase.pcDocument);
        ASSERT_NE(pstHandle, nullptr);
        for (size_t ul = 0; ul < MaxPaths && stCase.apcPath[ul] != nullptr; ++ul) {
            SCOPED_TRACE(stCase.apcPath[ul]);
            Base().Reset();
            uint32_t uiIndexed = 0;
            EXPECT_STREQ(NodeText(Lookup(pstHandle, &uiIndexed, "%s", stCase.apcPath[ul])), stCase.pcText);
            EXPECT_EQ(uiIndexed, stCase.uiIndexed);
            EXPECT_EQ(Base().LogText(), stCase.pcLog);
            EXPECT_EQ(Base().ulAllocations, 0U);
        }
        ZRYAML_HandleFree(pstHandle);
    }
}

TEST(NodeFind, FormatsThePath)
{
    YamlHandle *pstHandle = TextFileLoad("a: {b: [p, q]}\n'50%': r\n");
    ASSERT_NE(pstHandle, nullptr);
    uint32_t uiIndexed = 0;
    EXPECT_STREQ(NodeText(Lookup(pstHandle, &uiIndexed, "a.b[1]")), "q");
    EXPECT_STREQ(NodeText(Lookup(pstHandle, &uiIndexed, "%c.%s[%u]", 'a', "b", 1U)), "q");
    EXPECT_STREQ(NodeText(Lookup(pstHandle, &uiIndexed, "50%%")), "50%");
    EXPECT_STREQ(NodeText(Lookup(pstHandle, &uiIndexed, "%s", "50%")), "50%");
    Base().Reset();
    const char *pcEmpty = "";
    EXPECT_EQ(Lookup(pstHandle, &uiIndexed, "%s%s", pcEmpty, pcEmpty), nullptr);
    EXPECT_EQ(Base().LogText(), TOO_LONG);
    ZRYAML_HandleFree(pstHandle);
}

// The longest path has 1023 bytes, as the format itself and as what an argument brings in.
TEST(NodeFind, LongestPath)
{
    const std::string name(YAML_KEY_BUF_SIZE - 1, 'k');
    YamlHandle *pstHandle = TextFileLoad("? " + name + "\n: v\n");
    ASSERT_NE(pstHandle, nullptr);
    struct {
        std::string path;
        const char *pcText, *pcLog;
    } const astCases[] = {
        {name, name.c_str(), ""},
        {name + "k", nullptr, TOO_LONG},
        {std::string(5000, 'k'), nullptr, TOO_LONG},
        {"x[" + std::string(YAML_KEY_BUF_SIZE - 4, '0') + "]", nullptr, NOT_FOUND("x")}, // 1023 bytes too
    };
    // The compiler does not look at the format here.
    YamlListNode *(*const fnLookup)(YamlHandle *, uint32_t *, const char *, ...) = Lookup;
    for (const auto &stCase : astCases) {
        for (const char *pcFormat : {stCase.path.c_str(), "%s"}) {
            SCOPED_TRACE(pcFormat);
            Base().Reset();
            uint32_t uiIndexed = 0;
            EXPECT_STREQ(NodeText(fnLookup(pstHandle, &uiIndexed, pcFormat, stCase.path.c_str())), stCase.pcText);
            EXPECT_EQ(Base().LogText(), stCase.pcLog);
        }
    }
    ZRYAML_HandleFree(pstHandle);
}

TEST(NodeFind, StopsAtWhatIsNoNode)
{
    for (const DamageCase &stCase : g_astDamage) {
        SCOPED_TRACE(stCase.iLine);
        YamlHandle *pstHandle = TextFileLoad("a: [p, q, r]\nb: v\nc: {d: w}");
        ASSERT_NE(pstHandle, nullptr);
        uint32_t uiIndexed = 0;
        stCase.fnDamage(*Lookup(pstHandle, &uiIndexed, "%s", stCase.pcAt));
        Base().Reset();
        EXPECT_STREQ(NodeText(Lookup(pstHandle, &uiIndexed, "%s", stCase.pcPath)), stCase.pcText);
        EXPECT_EQ(Base().LogText(), stCase.pcLog);
        ZRYAML_HandleFree(pstHandle);
    }
}

// The flag is stored with every walk, but not when the path cannot even begin; lengths are counted down.
TEST(NodeFind, StepsByHand)
{
    YamlHandle *pstHandle = TextFileLoad(SeqDocument);
    ASSERT_NE(pstHandle, nullptr);
    Base().Reset();
    uint32_t uiIndexed = 7;
    char acMapPath[] = "name";
    EXPECT_EQ(yaml_NodeFind(pstHandle, acMapPath, sizeof(acMapPath), &uiIndexed), nullptr);
    EXPECT_EQ(uiIndexed, 7U);
    char acMissing[] = "[9]";
    EXPECT_EQ(yaml_NodeFind(pstHandle, acMissing, sizeof(acMissing), &uiIndexed), nullptr);
    EXPECT_EQ(uiIndexed, 0U);

    uint32_t uiRemain = 0;
    YamlListNode *pstMap = Lookup(pstHandle, &uiIndexed, "[0]");
    YamlListNode *pstTop = pstMap->pstFather;
    struct {
        int iLine;
        const char *pcPath, *pcText;
        uint32_t uiRemain;
    } const astChain[] = {{__LINE__, "1]", "plain", 1}, {__LINE__, "2][1]", "i1", 1}, {__LINE__, "0].v[1]", "y", 5}};
    for (const auto &stCase : astChain) {
        SCOPED_TRACE(stCase.iLine);
        std::string path = stCase.pcPath;
        uiRemain = static_cast<uint32_t>(path.size() + 1);
        uiIndexed = 0;
        EXPECT_STREQ(NodeText(yaml_SeqNodeFindByKey(pstTop, path.data(), &uiRemain, &uiIndexed)), stCase.pcText);
        EXPECT_EQ(uiRemain, stCase.uiRemain);
        EXPECT_EQ(uiIndexed, 1U);
    }

    char acPath[] = "v[1]";
    uiIndexed = 0;
    EXPECT_STREQ(NodeText(yaml_NodeFindByKey(pstMap, acPath, sizeof(acPath), &uiIndexed)), "y");
    EXPECT_EQ(uiIndexed, 1U);
    ZRYAML_HandleFree(pstHandle);
}
