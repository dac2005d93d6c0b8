// SPDX-License-Identifier: Apache-2.0
// The syntax of key paths: on documents, and call by call on the parser.
#include "support/paths.h"

#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

namespace {

#define NO_DIGIT(text) "2 19000009 The index contains any not digital character. (Index=" text ")\n"
#define WRONG_NAME(text) "2 19000002 The format of key is wrong. (Key=" text ")\n"
#define WRONG_INDEX(text) "2 19000009 The index for sequence is wrong. (Index=" text ")\n"
#define LEAD_LARGE(text) "2 19000002 Failed to get sequence index from key. (Key=" text ")\n"

constexpr PathCase g_astMap[] = {
    {"=b", {"a.b", "{a}.b", "a.{b}"}},
    {"#q", {"a.c[1]", "a.c[01]", "a.c[0000000000000000000000001]"}},
    {"=r", {"a.c[2].r", "{a}.{c[2]}.r"}},
    {"#m2", {"n[1][0]", "{n[1]}[0]", "{n[1]}.[0]"}},
    {"#[]", {"{n[1]}"}},
    {"=k.d", {"k\\.d", "{k.d", "{k.d}", "{k\\.d}"}},
    {"=x", {"k\\.d.x", "{k.d}.x", "{k.d}x", "{k.d}{x}", "{k.d}.{x}"}},
    {"=l[1]", {"l\\[1\\]"}},
    {"=]z", {"]z"}},
    {"=w\\", {"w\\"}},
    {"=w\\x", {"w\\x"}},
    {"=a\\.b", {"a\\\\.b"}},
    {"=g", {"e}f.g", "e\\}f.g", "{e\\}f}.g"}},
    {"=[", {"\\["}},
    {"=.d", {"\\.d"}},
    {NOT_FOUND("w.b"), {"w\\.b"}},
    {NOT_FOUND(""), {"{}", "{", "a..b", ".a", "n[0][2147483647]"}},
    {NOT_FOUND("n"), {"n[2147483648]", "n[4294967294]"}},
    {LENGTH_0, {"a.", "{k.d}.", "a.c[1].", "n[1][0]."}},
    {"2 1900000c The current node is not sequence node but the sequence index is 0. (DataType=2)\n",
     {"{k.d}[0]", "a.c[1][0]"}},
    {"2 19000002 There is any other character after ']'.\n", {"a.c[1]x", "a.c[1]]", "n[0]x", "{n[0]x}"}},
    {"2 19000002 There are any other character after ']' except '.' or '['.\n", {"n[0][1]x", "n[0][1]]", "{n[0][1]}"}},
    {NO_DIGIT("~"), {"a.c[x]", "a.c[-1]", "a.c[ 1]", "a.c[+1]", "a.c[\xB2]", "n[0][1a]", "n[0][1a].x", "n[0][]"}},
    {NO_DIGIT("x]"), {"a.c[x].r"}},
    {WRONG_INDEX("[~"), {"a.c[]", "n[4294967295]", "n[4294967296]", "n[18446744073709551617]"}},
    {WRONG_INDEX("[9999999999]"), {"n[9999999999].x"}},
    {"2 19000002 Failed to get sequence index. (String=~)\n",
     {"n[0][2147483648]", "n[0][9999999999].x", "n[0][18446744073709551617]"}},
    {"2 19000002 The key only contains a '[', but without ']'.\n", {"n[0][1", "n[0][", "n[0][1\\]"}},
    {"2 19000009 The current key does not contains ']' for pair. (Key=c[~)\n", {"a.c[1"}},
    {"2 19000009 The current key contains '\\]' between '[' and ']'. (Key=c[~)\n", {"a.c[1\\]"}},
    {WRONG_NAME("a]z"), {"a]z"}},
    {WRONG_NAME("k]d"), {"{k]d}"}},
    {WRONG_NAME("a\\[1]"), {"a\\[1]", "a\\[1][0]"}},
};
constexpr PathCase g_astEmptyKey[] = {{"=b", {".a..b"}}, {"=", {"{}.a.{}", "{"}}};
constexpr PathCase g_astSeq[] = {
    {"=name", {"[0].name"}},
    {"#i1", {"[2][1]", "[2].[1]"}},
    {"#[]", {"[003]"}},
    {"2 19000002 Can not find ']' to pair with '['. (Key=[~)\n", {"[", "[0", "[2][", "[2][1"}},
    {"2 19000002 The key doesn't contain any digital character between '[' and ']'.\n",
     {"[a]", "[1.5]", "[-1]", "[1x"}},
    {"2 19000002 Failed to get legal sequence index from '[' and ']'.\n", {"[]", "[2][]"}},
    {"2 19000003 Can't find the specified value. (Index=2147483647)\n", {"[2147483647]"}},
    {LEAD_LARGE("[2147483648"), {"[2147483648]"}},
    {LEAD_LARGE("[9999999999"), {"[2][9999999999].x"}},
    {"2 19000002 The format of input key is wrong. (Key=~)\n", {"[0]x", "[2][1]]"}},
    {LENGTH_0, {"[0]."}},
};

using Parse = int32_t (*)(char *, uint32_t, char *, uint32_t *, uint32_t *);
const Parse ToDot = [](char *pcPath, uint32_t uiSize, char *pcName, uint32_t *puiLength, uint32_t *puiIndex) {
    return yaml_KeyStringGet(pcPath, '.', uiSize, pcName, puiLength, puiIndex);
};
const Parse Index = [](char *pcText, uint32_t, char *, uint32_t *puiLength, uint32_t *puiIndex) {
    return static_cast<int32_t>(yaml_ArrayIndexGet(pcText, puiLength, puiIndex));
};

constexpr uint32_t None = YAML_INDEX_NONE;
struct ParserCase {
    int iLine;
    Parse fnParse;
    const char *pcText;
    int32_t iResult;
    const char *pcName;       // "?" if none is stored
    uint32_t uiUsed, uiIndex; // added to the parsed length; stored
    const char *pcAfter;      // the text afterwards, with '_' for a NUL
    const char *pcLog;
};
const ParserCase g_astParser[] = {
    {__LINE__, yaml_KeyParse, "[12][3]", 3, "", 4, 12, "[12][3]", ""},
    {__LINE__, yaml_KeyParse, "[12]", 3, "", 5, 12, "[12]", ""},
    {__LINE__, yaml_KeyParse, "{k.d}.x", 3, "k.d", 6, None, "{k.d}.x", ""},
    {__LINE__, yaml_KeyParse, "{n[0].z}", 1, "n", 6, 0, "{n___.z}", ""},
    {__LINE__, yaml_KeyParseForSeq, "007]", 4, "", 5, 7, "007]", ""},
    {__LINE__, ToDot, "ab[3][4]", 2, "ab", 5, 3, "ab___[4]", ""},
    {__LINE__, ToDot, "a\\.b.c", 3, "a.b", 5, None, "a\\.b.c", ""},
    {__LINE__, ToDot, "a]z.c", -1, "a", 0, None, "a]z.c", WRONG_NAME("a]z")},
    {__LINE__, yaml_MetaChrProcess, "", 0, "", 1, None, "", ""},
    {__LINE__, yaml_MetaChrProcess, "\\", 1, "\\", 2, None, "\\", ""},
    {__LINE__, yaml_MetaChrProcess, "\\{\\}\\x", 4, "{}\\x", 7, None, "\\{\\}\\x", ""},
    {__LINE__, Index, "c[12]x", 0, "?", 4, 12, "c____x", ""},
    {__LINE__, Index, "c[]x", YAML_ERR_INDEX, "?", 0, None, "c[]x", WRONG_INDEX("[]x")},
    {__LINE__, Index, "c[4294967294]", 0, "?", 12, 4294967294, "c____________", ""},
};

} // namespace

TEST(KeyPath, NamesANodeOfADocument)
{
    PathsCheck(MapDocument, g_astMap);
    PathsCheck("'': {a: {'': {b: y}}}\n", g_astEmptyKey);
    PathsCheck(SeqDocument, g_astSeq);
}

TEST(KeyPath, ParserCountsWhatItUses)
{
    for (const ParserCase &stCase : g_astParser) {
        SCOPED_TRACE(stCase.iLine);
        Base().Reset();
        std::string text = stCase.pcText;
        char acName[YAML_KEY_BUF_SIZE] = "?";
        uint32_t uiParsed = 100, uiIndex = None;
        EXPECT_EQ(stCase.fnParse(text.data(), sizeof(acName), acName, &uiParsed, &uiIndex), stCase.iResult);
        std::replace(text.begin(), text.end(), '\0', '_');
        EXPECT_STREQ(acName, stCase.pcName);
        EXPECT_EQ(uiParsed, 100 + stCase.uiUsed);
        EXPECT_EQ(uiIndex, stCase.uiIndex);
        EXPECT_EQ(text, stCase.pcAfter);
        EXPECT_EQ(Base().LogText(), stCase.pcLog);
    }
    uint32_t uiIndex = 5;
    EXPECT_EQ(yaml_IndexGet("2147483648", &uiIndex), YAML_ERR_PARAM);
    EXPECT_EQ(uiIndex, 5U);
}

// A name is cut to its buffer, with the whole of it counted; a refused copy is noted and the parser carries on.
TEST(KeyPath, NameBufferAndSecureCalls)
{
    char acText[] = "abc\\.def", acName[5] = "";
    uint32_t uiParsed = 0, uiIndex = None;
    EXPECT_GE(yaml_MetaChrProcess(acText, sizeof(acName), acName, &uiParsed, &uiIndex), 0);
    EXPECT_STREQ(acName, "abc.");
    EXPECT_EQ(uiParsed, strlen("abc\\.def") + 1);

    const Document stDocument(MapDocument);
    Base().bSecureCallsFail = true;
    EXPECT_STREQ(ZRYAML_PropertyGet(stDocument, "{a}.{b}"), "x");
    EXPECT_EQ(Base().LogText(), "1 16 Secure check fail.\n1 16 Secure check fail.\n");
}
