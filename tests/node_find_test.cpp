// SPDX-License-Identifier: Apache-2.0
// The lookup of a node by key path: the walk and the longest path.
#include "support/paths.h"

#include <gtest/gtest.h>

namespace {

#define NO_SEQ "2 1900000c The current node is not sequence node but the sequence index is "
#define NEXT_TYPE(type, key) \
    "2 1900000c The next node type is not sequence when find property in map list. (Type=" type ", Key=" key ")\n"
#define NOTHING_BELOW(text) "2 19000004 There is not any data below this branch. (NodeData=" text ")\n"
#define MAP_EMPTY "0 0 The current map branch is empty.\n"
#define SEQ_EMPTY "2 19000004 The current sequence branch is empty.\n"
#define NO_INDEX "2 19000009 The array index has not been specified.\n"
#define NO_VALUE(index) "2 19000003 Can't find the specified value. (Index=" index ")\n"
#define MAP_PATH(path) \
    "kept 2 19000002 The current file is begin with sequence, but the key is begin with map. (Key=" path ")\n"

constexpr PathCase g_astMap[] = {
    {"=a", {"a"}},
    {"#p", {"a.c[0]"}},
    {"#q", {"a.c.x[1]"}},
    {"#m1", {"n[0][1]", "n[0].z[1]"}},
    {"=fast", {"mode.fast"}},
    {"#fast", {"mode.fast[9]"}},
    {NOT_FOUND("slow"), {"mode.slow"}},
    {NOT_FOUND("Mode"), {"Mode"}},
    {NOT_FOUND("c"), {"a.c[3]"}},
    {NOT_FOUND(""), {"n[0][2]"}},
    {NEXT_TYPE("2", "b") NOT_FOUND("b"), {"a.b[0]"}},
    {NEXT_TYPE("1", "a") NOT_FOUND("a"), {"a[0]"}},
    {MAP_EMPTY NOT_FOUND("z"), {"a.e.z"}},
    {NO_INDEX NOT_FOUND("x"), {"a.c.x", "n[0].x"}},
    {NO_SEQ "0. (DataType=2)\n", {"a.[0]"}},
    {NO_SEQ "3. (DataType=1)\n", {"a.c[2].[3]"}},
    {NO_SEQ "0. (DataType=1)\n", {"[0]"}},
    {NOTHING_BELOW("x") NOT_FOUND("y"), {"a.b.x.y"}},
    {NOTHING_BELOW("p") NOT_FOUND("y"), {"a.c[0].y"}},
    {NOT_FOUND("emp"), {"emp[0]"}},
    {SEQ_EMPTY NOT_FOUND("x"), {"emp.x[0]", "emp.x"}},
};
constexpr PathCase g_astSeq[] = {
    {"#plain", {"[1]"}},
    {"#{}", {"[0]"}},
    {"=v", {"[0].v"}},
    {"#y", {"[0].v[1]"}},
    {"2 1900000c The current level node is not sequence node.\n", {"[0][0]", "[1][0]"}},
    {NO_VALUE("4"), {"[4]"}},
    {NO_VALUE("5"), {"[2][5].x"}},
    {SEQ_EMPTY NO_VALUE("0"), {"[3][0]"}},
    {NOTHING_BELOW("plain") NOT_FOUND("x"), {"[1].x"}},
    {MAP_PATH("name"), {"name"}},
};
constexpr PathCase g_astEmpty[] = {{MAP_PATH("a"), {"a"}}, {SEQ_EMPTY NO_VALUE("12"), {"[12]"}}};
constexpr PathCase g_astEmptyMap[] = {{MAP_EMPTY NOT_FOUND("a"), {"a"}}};
constexpr PathCase g_astEmptySeq[] = {{SEQ_EMPTY NO_VALUE("0"), {"[0]"}}};
constexpr PathCase g_astMerge[] = {
    {"#8", {"m.k[1]"}},
    {"#1", {"b.k[0]"}},
    {NOT_FOUND("k"), {"b.k[1]"}},
    {"=own", {"n.k.own", "early.k.own"}},
    {"=2", {"n.j.2", "early.j.2"}},
};

// Trees that no load makes, on "a: [p, q, r]\nb: v\nc: {d: w}": what is done to the node at a path.
using Damage = void (*)(YamlListNode &);
const Damage Foreign = [](YamlListNode &stNode) { stNode.uiMagic = 0; };
const Damage Marked = [](YamlListNode &stNode) { stNode.uiSameWithAnchor = 1; };
const Damage UnknownType = [](YamlListNode &stNode) { stNode.uiDataType = YAML_DATATYPE_NONE; };
const Damage Childless = [](YamlListNode &stNode) {
    stNode.stChildList.next->prev = stNode.stChildList.next->next = stNode.stChildList.next;
    stNode.stChildList = {&stNode.stChildList, &stNode.stChildList};
};
struct DamageCase {
    Damage fnDamage;
    const char *pcAt;
    PathCase stPath;
};
const DamageCase g_astDamage[] = {
    {Foreign, "b", {NOT_FOUND("c"), {"c"}}},
    {Foreign, "a[1]", {NOT_FOUND("a"), {"a[1]", "a[2]"}}},
    {Foreign, "a[1]", {"1 16 Can't find the node with the index: 1\n" NOT_FOUND("x"), {"a.x[1]"}}},
    {Foreign, "b.v", {NOT_FOUND("v"), {"b.v"}}},
    {Marked, "b", {NOT_FOUND("b"), {"b"}}},
    {Childless, "b", {"2 19000004 The child list is empty when find property in map list.\n" NOT_FOUND("b"), {"b[0]"}}},
    {UnknownType, "c", {"2 16 Unknown data type.\n" NOT_FOUND("d"), {"c.d"}}},
};

} // namespace

TEST(NodeFind, FindsWhatThePathNames)
{
    PathsCheck(MapDocument, g_astMap);
    PathsCheck(SeqDocument, g_astSeq);
    PathsCheck("", g_astEmpty);
    PathsCheck("{}", g_astEmptyMap);
    PathsCheck("[]", g_astEmptySeq);
    PathsCheck("b: &b {k: [1], j: 2}\nm: {<<: *b, k: [7, 8]}\nn: {<<: *b, k: own}\nearly: {k: own, <<: *b}",
               g_astMerge);
}

TEST(NodeFind, StopsAtWhatIsNoNode)
{
    for (const DamageCase &stCase : g_astDamage) {
        const Document stDocument("a: [p, q, r]\nb: v\nc: {d: w}");
        stCase.fnDamage(*NodeAt(stDocument, stCase.pcAt));
        PathsCheck(stDocument, {&stCase.stPath, 1});
    }
}

// The longest path has 1023 bytes, as the format itself and as what an argument brings in.
TEST(NodeFind, LongestPath)
{
    const std::string name(YAML_KEY_BUF_SIZE - 1, 'k');
    const Document stDocument(("? " + name + "\n: v\n").c_str());
    const struct {
        std::string path, outcome;
    } astCases[] = {
        {name, "v"},
        {name + "k", TOO_LONG},
        {name + name, TOO_LONG},
        {name.substr(1), "1 19000003 Can not find the yaml node with key. (Key=" + name.substr(1) + ")\n"},
        {"x[" + std::string(YAML_KEY_BUF_SIZE - 4, '0') + "]", NOT_FOUND("x")}, // 1023 bytes too
    };
    // The compiler does not look at the format here.
    char *(*const fnGet)(YamlHandle *, const char *, ...) = ZRYAML_PropertyGet;
    for (const auto &stCase : astCases) {
        for (const char *pcFormat : {stCase.path.c_str(), "%s"}) {
            Base().Reset();
            const char *pcText = fnGet(stDocument, pcFormat, stCase.path.c_str());
            EXPECT_EQ((pcText != nullptr ? pcText : "") + Base().LogText(), stCase.outcome) << pcFormat;
        }
    }
}
