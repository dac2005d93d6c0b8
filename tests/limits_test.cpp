// SPDX-License-Identifier: Apache-2.0
// Limits that a host sets, and the guard in front of the parser.
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <gtest/gtest.h>

namespace {

struct LimitsRestore { // whatever a test sets ends with it
    YamlLimits stDefault;
    LimitsRestore() { ZRYAML_LimitsGet(&stDefault); }
    ~LimitsRestore() { EXPECT_EQ(ZRYAML_LimitsSet(&stDefault), YAML_OK); }
    LimitsRestore(const LimitsRestore &) = delete;
    LimitsRestore &operator=(const LimitsRestore &) = delete;
};

std::string Repeated(const char *pcPart, int iCount)
{
    std::string text;
    for (int i = 0; i < iCount; ++i)
        text += pcPart;
    return text;
}

std::string Directives(int iCount, const char *pcBreak)
{
    std::string text;
    for (int i = 0; i < iCount; ++i)
        text += "%TAG !t" + std::to_string(i) + "! tag:x," + pcBreak;
    return text + "---" + pcBreak + "{a: 1}" + pcBreak;
}

std::string Utf16(const std::string &text, bool bBigEndian)
{
    std::string wide = bBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char cChar : text)
        wide += bBigEndian ? std::string{'\0', cChar} : std::string{cChar, '\0'};
    return wide;
}

// The first error text of a load, empty if it succeeds.
std::string Refusal(const std::string &text)
{
    Base().Reset();
    YamlHandle *pstHandle = ZRYAML_TextLoad(text.data(), text.size(), "text");
    ZRYAML_HandleFree(pstHandle);
    EXPECT_EQ(Base().lBlocks, 0);
    return pstHandle != nullptr ? "" : Base().Texts(1).front();
}

} // namespace

TEST(Limits, AreCheckedAndKept)
{
    const LimitsRestore stRestore;
    EXPECT_EQ(stRestore.stDefault.uiDepth, 512U);
    EXPECT_EQ(stRestore.stDefault.ulCopyBytes, 256U << 20);
    YamlLimits stLimits = stRestore.stDefault;
    for (const uint32_t uiDepth : {0U, 513U}) {
        stLimits.uiDepth = uiDepth;
        EXPECT_EQ(ZRYAML_LimitsSet(&stLimits), YAML_ERR_PARAM);
    }
    EXPECT_EQ(ZRYAML_LimitsSet(nullptr), YAML_ERR_PARAM);
    ZRYAML_LimitsGet(nullptr);
    ZRYAML_LimitsGet(&stLimits);
    EXPECT_EQ(stLimits.uiDepth, 512U);
}

TEST(Limits, HoldAtTheirFigure)
{
    const LimitsRestore stRestore;
    const YamlLimits stLimits = {.uiDepth = 3, .uiDirectives = 2, .ulFileBytes = 200, .ulCopyBytes = 0};
    ASSERT_EQ(ZRYAML_LimitsSet(&stLimits), YAML_OK);
    const std::string padded = "{a: 1}" + std::string(194, ' ');
    const std::string list = "l: &l [" + Repeated("x,", 10) + "]\n";
    struct {
        int iLine;
        std::string text;
        const char *pcRefusal;
    } const astCases[] = {
        {__LINE__, "[[[x]]]", ""},
        {__LINE__, "[[[[x]]]]", "The collections are nested too deep. (Depth=4)"},
        {__LINE__, "[&a [[x]], *a]", ""},
        {__LINE__, "[&a [[x]], [*a]]", "The collections are nested too deep. (Depth=4)"},
        {__LINE__, padded, ""},
        {__LINE__, padded + " ", "The file is too large. (Limit=200)"},
        {__LINE__, Directives(2, "\n"), ""},
        {__LINE__, Directives(3, "\n"), "There are too many directives. (Limit=2)"},
        {__LINE__, list + "m: [" + Repeated("*l,", 16) + "]", ""}, // as many bytes as 16 times its own
        {__LINE__, list + "m: [" + Repeated("*l,", 32) + "]", "The alias expansion is too large. (Alias=l)"},
    };
    for (const auto &stCase : astCases) {
        SCOPED_TRACE(stCase.iLine);
        EXPECT_EQ(Refusal(stCase.text), stCase.pcRefusal);
        EXPECT_EQ(std::string(ZRYAML_LastErrorGet()->pcHint).find("limit u") != std::string::npos,
                  *stCase.pcRefusal != '\0');
    }
}

TEST(Limits, SkippedKeysAreChargedWithTheirText)
{
    const LimitsRestore stRestore;
    YamlLimits stLimits = stRestore.stDefault;
    stLimits.ulCopyBytes = 0;
    ASSERT_EQ(ZRYAML_LimitsSet(&stLimits), YAML_OK);
    const std::string base = "b: &b\n  ? " + std::string(5000, 'k') + "\n  : v\ns: &s [*b]\nm: {";
    for (const char *pcMerge : {"<<: *b,", "<<: *s,"}) {
        EXPECT_EQ(Refusal(base + Repeated(pcMerge, 10) + "}"), "");
        EXPECT_EQ(Refusal(base + Repeated(pcMerge, 90) + "}").substr(0, 33), "The alias expansion is too large.");
    }
}

// Wherever the directives stand and however their lines end; and nothing else is taken for one.
TEST(Limits, DirectivesAreSeenInEveryForm)
{
    constexpr char TooMany[] = "There are too many directives. (Limit=1000)";
    for (const char *pcBreak : {"\n", "\r", "\r\n", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
        SCOPED_TRACE(pcBreak);
        EXPECT_EQ(Refusal(Directives(1000, pcBreak)), "");
        EXPECT_EQ(Refusal(Directives(1001, pcBreak)), TooMany);
    }
    EXPECT_EQ(Refusal("\xEF\xBB\xBF" + Directives(1001, "\n")), TooMany);
    EXPECT_EQ(Refusal("a: 1\n...\n" + Directives(1001, "\n")), TooMany);
    for (const bool bBigEndian : {false, true}) {
        EXPECT_EQ(Refusal(Utf16(Directives(900, "\n"), bBigEndian)), "");
        EXPECT_EQ(Refusal(Utf16(Directives(1001, "\n"), bBigEndian)), TooMany);
    }
    const std::string directive = "%TAG !t! " + std::string(1024 - 9, 'x');
    EXPECT_EQ(Refusal(directive + "\n--- {a: 1}"), "");
    EXPECT_EQ(Refusal(directive + "x\n--- {a: 1}"), "The directive is too long. (Limit=1024)");
    EXPECT_EQ(Refusal(directive + std::string(100000, 'x')), "The directive is too long. (Limit=1024)");
    EXPECT_EQ(Refusal(Utf16(directive + "(x\n--- {a: 1}", false)), "The directive is too long. (Limit=1024)");
    EXPECT_EQ(Refusal("a: |\n" + Repeated("  %TAG in a text\n", 3000)), "");
    EXPECT_EQ(Refusal("a: \"" + Repeated("%TAG %TA ", 3000) + "\""), "");
}
