// SPDX-License-Identifier: Apache-2.0
// The syntax of key paths: on documents, through the walk that needs no formatting, and call by call on the parser.
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <cstring>

#include <gtest/gtest.h>

namespace {

constexpr const char *MapDocument = R"(a: {b: x, c: [p, q, {r: s}]}
k.d: {x: below}
l[1]: y
']z': y
'w\': y
'w\x': y
'a\.b': y
'e}f': {g: y}
'[': y
'.d': y
n: [[m0, m1], [m2]]
)";
constexpr const char *EmptyKeyDocument = "'': {a: {'': {b: y}}}\n";
constexpr const char *SeqDocument = "[{name: ann, v: [x, y]}, plain, [i0, i1], []]";

#define NOT_FOUND(name) "1 19000003 Can not find the yaml node with key. (Key=" name ")\n"
#define NO_DIGIT(text) "2 19000009 The index contains any not digital character. (Index=" text ")\n"
#define NO_SEQ(index) \
    "2 1900000c The current node is not sequence node but the sequence index is " index ". (DataType=2)\n"
#define NO_PAIR(text) "2 19000002 Can not find ']' to pair with '['. (Key=" text ")\n"
#define ALONE "2 19000002 The key only contains a '[', but without ']'.\n"
#define BEHIND_NAME "2 19000002 There is any other character after ']'.\n"
#define BEHIND_INDEX "2 19000002 There are any other character after ']' except '.' or '['.\n"
#define WRONG_NAME(text) "2 19000002 The format of key is wrong. (Key=" text ")\n"
#define WRONG_INDEX(text) "2 19000009 The index for sequence is wrong. (Index=" text ")\n"
#define LEAD_NO_DIGIT "2 19000002 The key doesn't contain any digital character between '[' and ']'.\n"
#define LEAD_EMPTY "2 19000002 Failed to get legal sequence index from '[' and ']'.\n"
#define LEAD_LARGE(text) "2 19000002 Failed to get sequence index from key. (Key=" text ")\n"
#define NO_CLOSE(text) "2 19000009 The current key does not contains ']' for pair. (Key=" text ")\n"
#define ESCAPED(text) "2 19000009 The current key contains '\\]' between '[' and ']'. (Key=" text ")\n"
#define TOO_LARGE(text) "2 19000002 Failed to get sequence index. (String=" text ")\n"
#define LENGTH_0 "2 19000002 The length of key is 0.\n"

constexpr size_t MaxPaths = 5;
struct PathCase { // paths with one outcome
    int iLine;
    const char *pcDocument;
    const char *pcText; // of the node found, "[]" for a sequence; NULL is nothing
    uint32_t uiIndexed;
    const char *pcLog;
    const char *apcPath[MaxPaths];
};
constexpr PathCase g_astPath[] = {
    {__LINE__, MapDocument, "b", 0, "", {"a.b", "{a}.b", "a.{b}"}},
    {__LINE__, MapDocument, "q", 1, "", {"a.c[1]", "a.c[01]", "a.c[0000000000000000000000001]"}},
    {__LINE__, MapDocument, "r", 0, "", {"a.c[2].r", "{a}.{c[2]}.r"}},
    {__LINE__, MapDocument, "m2", 1, "", {"n[1][0]", "{n[1]}[0]", "{n[1]}.[0]"}},
    {__LINE__, MapDocument, "m1", 1, "", {"n[0].[1]"}},
    {__LINE__, MapDocument, "k.d", 0, "", {"k\\.d", "{k.d", "{k.d}", "{k\\.d}"}},
    {__LINE__, MapDocument, "x", 0, "", {"k\\.d.x", "{k.d}.x", "{k.d}x", "{k.d}{x}", "{k.d}.{x}"}},
    {__LINE__, MapDocument, "l[1]", 0, "", {"l\\[1\\]"}},
    {__LINE__, MapDocument, "]z", 0, "", {"]z"}},
    {__LINE__, MapDocument, "w\\", 0, "", {"w\\"}},
    {__LINE__, MapDocument, "w\\x", 0, "", {"w\\x"}},
    {__LINE__, MapDocument, "a\\.b", 0, "", {"a\\\\.b"}},
    {__LINE__, MapDocument, "g", 0, "", {"e}f.g", "e\\}f.g", "{e\\}f}.g"}},
    {__LINE__, MapDocument, "[", 0, "", {"\\["}},
    {__LINE__, MapDocument, ".d", 0, "", {"\\.d"}},
    {__LINE__, MapDocument, nullptr, 0, NOT_FOUND("w.b"), {"w\\.b"}},
    {__LINE__, MapDocument, "[]", 1, "", {"{n[1]}"}},
    {__LINE__, MapDocument, nullptr, 0, LENGTH_0, {"{k.d}.", "a.", "a.c[1].", "n[1][0]."}},
    {__LINE__, MapDocument, nullptr, 0, NO_SEQ("0"), {"{k.d}[0]", "a.c[1][0]"}},
    {__LINE__, MapDocument, nullptr, 0, NOT_FOUND(""), {"{}", "{", "n[0][2147483647]", "a..b", ".a"}},
    {__LINE__, MapDocument, nullptr, 0, WRONG_NAME("k]d"), {"{k]d}"}},
    {__LINE__, MapDocument, nullptr, 0, BEHIND_INDEX, {"{n[0][1]}", "n[0][1]x", "n[0][1]]"}},
    {__LINE__, MapDocument, nullptr, 0, BEHIND_NAME, {"{n[0]x}", "a.c[1]x", "a.c[1]]", "n[0]x"}},
    {__LINE__, MapDocument, nullptr, 0, NO_DIGIT("x]"), {"a.c[x]", "a.c[x].r"}},
    {__LINE__, MapDocument, nullptr, 0, NO_DIGIT("-1]"), {"a.c[-1]"}},
    {__LINE__, MapDocument, nullptr, 0, NO_DIGIT(" 1]"), {"a.c[ 1]"}},
    {__LINE__, MapDocument, nullptr, 0, NO_DIGIT("+1]"), {"a.c[+1]"}},
    {__LINE__, MapDocument, nullptr, 0, WRONG_INDEX("[]"), {"a.c[]"}},
    {__LINE__, MapDocument, nullptr, 0, NO_CLOSE("c[1"), {"a.c[1"}},
    {__LINE__, MapDocument, nullptr, 0, ESCAPED("c[1\\]"), {"a.c[1\\]"}},
    {__LINE__, MapDocument, nullptr, 0, WRONG_NAME("a]z"), {"a]z"}},
    {__LINE__, MapDocument, nullptr, 0, WRONG_NAME("a\\[1]"), {"a\\[1]", "a\\[1][0]"}},
    {__LINE__, MapDocument, nullptr, 0, NO_DIGIT("1a]"), {"n[0][1a]"}},
    {__LINE__, MapDocument, nullptr, 0, NO_DIGIT("1a].x"), {"n[0][1a].x"}},
    {__LINE__, MapDocument, nullptr, 0, NO_DIGIT("]"), {"n[0][]"}},
    {__LINE__, MapDocument, nullptr, 0, ALONE, {"n[0][1", "n[0][", "n[0][1\\]"}},
    {__LINE__, MapDocument, nullptr, 0, NOT_FOUND("n"), {"n[2147483648]", "n[4294967294]"}},
    {__LINE__, MapDocument, nullptr, 0, WRONG_INDEX("[4294967295]"), {"n[4294967295]"}},
    {__LINE__, MapDocument, nullptr, 0, WRONG_INDEX("[4294967296]"), {"n[4294967296]"}},
    {__LINE__, MapDocument, nullptr, 0, WRONG_INDEX("[9999999999]"), {"n[9999999999].x"}},
    {__LINE__, MapDocument, nullptr, 0, WRONG_INDEX("[18446744073709551617]"), {"n[18446744073709551617]"}},
    {__LINE__, MapDocument, nullptr, 0, TOO_LARGE("2147483648]"), {"n[0][2147483648]"}},
    {__LINE__, MapDocument, nullptr, 0, TOO_LARGE("9999999999].x"), {"n[0][9999999999].x"}},
    {__LINE__, MapDocument, nullptr, 0, TOO_LARGE("18446744073709551617]"), {"n[0][18446744073709551617]"}},
    {__LINE__, EmptyKeyDocument, "b", 0, "", {".a..b"}},
    {__LINE__, EmptyKeyDocument, "", 0, "", {"{}.a.{}", "{"}},
    {__LINE__, SeqDocument, "name", 0, "", {"[0].name"}},
    {__LINE__, SeqDocument, "y", 1, "", {"[0].v[1]"}},
    {__LINE__, SeqDocument, "i1", 1, "", {"[2][1]", "[2].[1]"}},
    {__LINE__, SeqDocument, "[]", 1, "", {"[002]"}},
    {__LINE__, SeqDocument, nullptr, 0, NO_PAIR("["), {"[", "[2]["}},
    {__LINE__, SeqDocument, nullptr, 0, NO_PAIR("[0"), {"[0"}},
    {__LINE__, SeqDocument, nullptr, 0, NO_PAIR("[1"), {"[2][1"}},
    {__LINE__, SeqDocument, nullptr, 0, LEAD_NO_DIGIT, {"[a]", "[1.5]", "[-1]", "[1x"}},
    {__LINE__, SeqDocument, nullptr, 0, LEAD_EMPTY, {"[]", "[2][]"}},
    {__LINE__,
     SeqDocument,
     nullptr,
     0,
     "2 19000003 Can't find the specified value. (Index=2147483647)\n",
     {"[2147483647]"}},
    {__LINE__, SeqDocument, nullptr, 0, LEAD_LARGE("[2147483648"), {"[2147483648]"}},
    {__LINE__, SeqDocument, nullptr, 0, LEAD_LARGE("[4294967295"), {"[4294967295].x"}},
    {__LINE__, SeqDocument, nullptr, 0, LEAD_LARGE("[9999999999"), {"[2][9999999999]"}},
    {__LINE__, SeqDocument, nullptr, 0, "2 19000002 The format of input key is wrong. (Key=0]x)\n", {"[0]x"}},
    {__LINE__, SeqDocument, nullptr, 0, "2 19000002 The format of input key is wrong. (Key=1]])\n", {"[2][1]]"}},
    {__LINE__, SeqDocument, nullptr, 0, LENGTH_0, {"[0]."}},
};

using Parse = int32_t (*)(char *, uint32_t, char *, uint32_t *, uint32_t *);
int32_t ToDot(char *pcPath, uint32_t uiSize, char *pcName, uint32_t *puiLen, uint32_t *puiIndex)
{
    return yaml_KeyStringGet(pcPath, '.', uiSize, pcName, puiLen, puiIndex);
}
int32_t ToBrace(char *pcPath, uint32_t uiSize, char *pcName, uint32_t *puiLen, uint32_t *puiIndex)
{
    return yaml_KeyStringGet(pcPath, '}', uiSize, pcName, puiLen, puiIndex);
}

constexpr uint32_t None = YAML_INDEX_NONE;
struct ParserCase {
    int iLine;
    Parse fnParse;
    const char *pcText;
    int32_t iResult;
    const char *pcName;
    uint32_t uiUsed, uiIndex; // added to the parsed length; stored
    const char *pcAfter;      // the text afterwards, with '_' for a NUL
    const char *pcLog;
};
const ParserCase g_astParser[] = {
    {__LINE__, yaml_KeyParse, "a.b", 1, "a", 2, None, "a.b", ""},
    {__LINE__, yaml_KeyParse, "[12].x", 3, "", 5, 12, "[12].x", ""},
    {__LINE__, yaml_KeyParse, "[12][3]", 3, "", 4, 12, "[12][3]", ""},
    {__LINE__, yaml_KeyParse, "[12]", 3, "", 5, 12, "[12]", ""},
    {__LINE__, yaml_KeyParse, "{k.d", 3, "k.d", 5, None, "{k.d", ""},
    {__LINE__, yaml_KeyParse, "{k.d}x", 3, "k.d", 5, None, "{k.d}x", ""},
    {__LINE__, yaml_KeyParse, "{k.d}", 3, "k.d", 6, None, "{k.d}", ""},
    {__LINE__, yaml_KeyParse, "{k.d}.x", 3, "k.d", 6, None, "{k.d}.x", ""},
    {__LINE__, yaml_KeyParse, "{n[0].z}", 1, "n", 6, 0, "{n___.z}", ""},
    {__LINE__, yaml_KeyParseForSeq, "007]", 4, "", 5, 7, "007]", ""},
    {__LINE__, yaml_KeyParseForSeq, "7][8]", 2, "", 2, 7, "7][8]", ""},
    {__LINE__, yaml_KeyParseForSeq, "]", -1, "", 0, None, "]", NO_DIGIT("]")},
    {__LINE__, yaml_KeyParseForSeq, "", -1, "", 0, None, "", ALONE},
    {__LINE__, ToDot, "ab[3].c", 2, "ab", 6, 3, "ab___.c", ""},
    {__LINE__, ToDot, "ab[3][4]", 2, "ab", 5, 3, "ab___[4]", ""},
    {__LINE__, ToDot, "a\\.b.c", 3, "a.b", 5, None, "a\\.b.c", ""},
    {__LINE__, ToDot, ".c", 0, "", 1, None, ".c", ""},
    {__LINE__, ToDot, "a]z.c", -1, "", 0, None, "a]z.c", WRONG_NAME("a]z")},
    {__LINE__, ToBrace, "a\\}b}c", 3, "a}b", 5, None, "a\\}b}c", ""},
    {__LINE__, yaml_MetaChrProcess, "", 0, "", 1, None, "", ""},
    {__LINE__, yaml_MetaChrProcess, "]", 1, "]", 2, None, "]", ""},
    {__LINE__, yaml_MetaChrProcess, "\\", 1, "\\", 2, None, "\\", ""},
    {__LINE__, yaml_MetaChrProcess, "\\{\\}\\x", 4, "{}\\x", 7, None, "\\{\\}\\x", ""},
    {__LINE__, yaml_MetaChrProcess, "[5]", 0, "", 4, 5, "___", ""},
};

struct IndexCase {
    int iLine;
    const char *pcText;
    uint32_t uiResult, uiLength, uiIndex;
    const char *pcAfter, *pcLog;
};
constexpr IndexCase g_astIndex[] = {
    {__LINE__, "abc", 0, 0, None, "abc", ""},
    {__LINE__, "a\\[1\\]", 0, 0, None, "a\\[1\\]", ""},
    {__LINE__, "c[12]x", 0, 4, 12, "c____x", ""},
    {__LINE__, "[0]", 0, 3, 0, "___", ""},
    {__LINE__, "c[]x", YAML_ERR_INDEX, 0, None, "c[]x", WRONG_INDEX("[]x")},
    {__LINE__, "c[4294967294]", 0, 12, 4294967294, "c____________", ""},
    {__LINE__, "c[4294967295]", YAML_ERR_INDEX, 0, None, "c[4294967295]", WRONG_INDEX("[4294967295]")},
};

std::string Visible(const std::string &text)
{
    std::string visible = text;
    for (char &c : visible)
        c = c == '\0' ? '_' : c;
    return visible;
}

const char *NodeText(const YamlListNode *pstNode)
{
    if (pstNode == nullptr)
        return nullptr;
    return pstNode->uiDataType == YAML_DATATYPE_SEQ ? "[]" : pstNode->pcValue;
}

} // namespace

TEST(KeyPath, NamesANodeOfADocument)
{
    for (const PathCase &stCase : g_astPath) {
        SCOPED_TRACE(stCase.iLine);
        YamlHandle *pstHandle = TextFileLoad(stCase.pcDocument);
        ASSERT_NE(pstHandle, nullptr);
        for (size_t ul = 0; ul < MaxPaths && stCase.apcPath[ul] != nullptr; ++ul) {
            SCOPED_TRACE(stCase.apcPath[ul]);
            Base().Reset();
            std::string path = stCase.apcPath[ul];
            const auto uiLength = static_cast<uint32_t>(path.size() + 1);
            uint32_t uiIndexed = 7;
            EXPECT_STREQ(NodeText(yaml_NodeFind(pstHandle, path.data(), uiLength, &uiIndexed)), stCase.pcText);
            EXPECT_EQ(uiIndexed, stCase.uiIndexed);
            EXPECT_EQ(Base().LogText(), stCase.pcLog);
        }
        ZRYAML_HandleFree(pstHandle);
    }
}

TEST(KeyPath, ParserCountsWhatItUses)
{
    for (const ParserCase &stCase : g_astParser) {
        SCOPED_TRACE(stCase.iLine);
        Base().Reset();
        std::string text = stCase.pcText;
        char acName[YAML_KEY_BUF_SIZE] = "?";
        uint32_t uiParsed = 100;
        uint32_t uiIndex = None;
        EXPECT_EQ(stCase.fnParse(text.data(), sizeof(acName), acName, &uiParsed, &uiIndex), stCase.iResult);
        if (stCase.iResult >= 0) {
            EXPECT_STREQ(acName, stCase.pcName);
        }
        EXPECT_EQ(uiParsed, 100 + stCase.uiUsed);
        EXPECT_EQ(uiIndex, stCase.uiIndex);
        EXPECT_EQ(Visible(text), stCase.pcAfter);
        EXPECT_EQ(Base().LogText(), stCase.pcLog);
    }
}

TEST(KeyPath, IndexIsCutOffItsName)
{
    for (const IndexCase &stCase : g_astIndex) {
        SCOPED_TRACE(stCase.iLine);
        Base().Reset();
        std::string text = stCase.pcText;
        uint32_t uiLength = 10;
        uint32_t uiIndex = None;
        EXPECT_EQ(yaml_ArrayIndexGet(text.data(), &uiLength, &uiIndex), stCase.uiResult);
        EXPECT_EQ(uiLength, 10 + stCase.uiLength);
        EXPECT_EQ(uiIndex, stCase.uiIndex);
        EXPECT_EQ(Visible(text), stCase.pcAfter);
        EXPECT_EQ(Base().LogText(), stCase.pcLog);
    }
}

TEST(KeyPath, DigitsAndNumbers)
{
    Base().Reset();
    EXPECT_EQ(yaml_IsDigitalString("", 0), 1U);
    EXPECT_EQ(yaml_IsDigitalString("x", 0), 1U);
    EXPECT_EQ(yaml_IsDigitalString("09x", 2), 1U);
    EXPECT_EQ(Base().LogText(), "");
    EXPECT_EQ(yaml_IsDigitalString("09x]", 3), 0U);
    EXPECT_EQ(yaml_IsDigitalString("\xB2", 1), 0U);
    EXPECT_EQ(Base().LogText(), NO_DIGIT("09x]") NO_DIGIT("\xB2"));

    Base().Reset();
    uint32_t uiIndex = 5;
    EXPECT_EQ(yaml_IndexGet("2147483648", &uiIndex), YAML_ERR_PARAM);
    EXPECT_EQ(yaml_IndexGet("99999999999999999999", &uiIndex), YAML_ERR_PARAM);
    EXPECT_EQ(uiIndex, 5U);
    EXPECT_EQ(yaml_IndexGet("2147483647", &uiIndex), YAML_OK);
    EXPECT_EQ(uiIndex, 2147483647U);
    EXPECT_EQ(yaml_IndexGet("000", &uiIndex), YAML_OK);
    EXPECT_EQ(uiIndex, 0U);
    EXPECT_EQ(Base().LogText(), "");
}

// A name is cut to its buffer, with the whole of it counted; a refused copy is noted and the parser carries on.
TEST(KeyPath, NameBufferAndSecureCalls)
{
    Base().Reset();
    char acText[] = "abc\\.def";
    char acName[5] = "";
    uint32_t uiParsed = 0;
    uint32_t uiIndex = None;
    EXPECT_GE(yaml_MetaChrProcess(acText, sizeof(acName), acName, &uiParsed, &uiIndex), 0);
    EXPECT_STREQ(acName, "abc.");
    EXPECT_EQ(uiParsed, strlen("abc\\.def") + 1);

    YamlHandle *pstHandle = TextFileLoad(MapDocument);
    Base().Reset();
    Base().bSecureCallsFail = true;
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "a.b"), "x");
    EXPECT_EQ(Base().LogText(), "1 16 Secure check fail.\n1 16 Secure check fail.\n");
    ZRYAML_HandleFree(pstHandle);
    Base().Reset();
}
