// SPDX-License-Identifier: Apache-2.0
// The list of problems: what it keeps, what it says of the rest, how it prints, and "did you mean".
#include "support/load_text.h"

#include <zr_yaml_problem.h>

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

struct Problem : Recorded {
    ~Problem() override { ZRYAML_ProblemsFree(list); }
    std::string Printed() const
    {
        char *text = nullptr;
        size_t size = 0;
        FILE *file = open_memstream(&text, &size);
        ZRYAML_ProblemsPrint(list, file);
        (void)fclose(file);
        const std::unique_ptr<char, decltype(&free)> owner(text, free);
        return {text, size};
    }
    YamlProblems *list = nullptr;
};

} // namespace

TEST_F(Problem, PrintsPlacesHintsAndNothingThatSteersATerminal)
{
    const YamlProblem rows[] = {
        {YAML_PROBLEM_ERROR, YAML_ERR_VALUE, 3, 11, 0, 0, "a\x1b.yaml", "s[0].port", "'8\n\xc2\x9b\xd8\x9c\xff' is bad",
         nullptr},
        {YAML_PROBLEM_WARNING, YAML_ERR_SAME, 4, 1, 2, 1, "b.yaml", "", "repeated", "remove one"},
        {YAML_PROBLEM_NOTE, YAML_ERR_VALUE, 0, 0, 0, 0, "", "x", "fine", ""},
    };
    for (const YamlProblem &row : rows)
        EXPECT_EQ(ZRYAML_ProblemReport(&list, &row), YAML_OK);
    EXPECT_EQ(ZRYAML_ProblemReport(nullptr, &rows[0]), YAML_OK);
    EXPECT_EQ(ZRYAML_ProblemReport(&list, nullptr), YAML_ERR_PARAM);
    EXPECT_EQ(Printed(), "a\\x1b.yaml:3:11: error: s[0].port: '8\\n\\u009b\\u061c\\xff' is bad\n"
                         "b.yaml:4:1: warning: repeated\nb.yaml:4:1: note: remove one\n"
                         "b.yaml:2:1: note: the first one is here\nconfiguration: note: x: fine\n");
}

TEST_F(Problem, OfAHostHasThePlaceOfItsValueAndOutlivesIt)
{
    const std::string text = "a:\n  - {b.c: 7}\n";
    YamlHandle *document = ZRYAML_TextLoad(text.data(), text.size(), "host.yaml");
    const YamlProblem first = {};
    EXPECT_EQ(ZRYAML_ProblemReport(&list, &first), YAML_OK);
    EXPECT_EQ(
        ZRYAML_ProblemAdd(list, YAML_PROBLEM_ERROR, ZRYAML_ValueFind(document, "a[0].b\\.c"), "%d is %s", 7, "odd"),
        YAML_OK);
    EXPECT_EQ(ZRYAML_ProblemAdd(list, 3, nullptr, "x"), YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_ProblemAdd(nullptr, 0, nullptr, "x"), YAML_ERR_PARAM);
    ZRYAML_HandleFree(document);
    EXPECT_EQ(Printed(), "configuration: error: \nhost.yaml:2:11: error: a[0].b\\.c: 7 is odd\n");
}

TEST_F(Problem, ListSaysHowManyItLeavesOut)
{
    const YamlProblem row = {YAML_PROBLEM_WARNING, YAML_ERR_VALUE, 1, 1, 0, 0, "f", "p", "m", "h"};
    for (uint32_t number = 0; number < YAML_PROBLEM_MAX; ++number)
        ASSERT_EQ(ZRYAML_ProblemReport(&list, &row), YAML_OK);
    EXPECT_EQ(ZRYAML_ProblemCountGet(list), YAML_PROBLEM_MAX);
    EXPECT_EQ(ZRYAML_ProblemGet(list, YAML_PROBLEM_MAX), nullptr);
    for (const char *expected : {"1 more problem is not listed", "2 more problems are not listed"}) {
        ASSERT_EQ(ZRYAML_ProblemReport(&list, &row), YAML_OK);
        EXPECT_EQ(ZRYAML_ProblemCountGet(list), YAML_PROBLEM_MAX + 1);
        EXPECT_STREQ(ZRYAML_ProblemGet(list, YAML_PROBLEM_MAX)->pcMessage, expected);
        EXPECT_EQ(ZRYAML_ProblemGet(list, YAML_PROBLEM_MAX)->uiLevel, YAML_PROBLEM_WARNING);
    }
}

TEST_F(Problem, ListIsShorterWhereMemoryIsShort)
{
    const YamlProblem row = {YAML_PROBLEM_ERROR, YAML_ERR_VALUE, 1, 1, 0, 0, "f", "p", "m", "h"};
    for (uint32_t failing = 1; failing <= 4; ++failing) {
        Base().Reset();
        Base().ulFailAllocation = failing;
        uint32_t result = YAML_OK;
        for (int time = 0; time < 3; ++time)
            result = ZRYAML_ProblemReport(&list, &row);
        EXPECT_EQ(result, YAML_ERR_NOMEM);
        const uint32_t count = ZRYAML_ProblemCountGet(list);
        EXPECT_EQ(count, failing < 4 ? 1U : 2U);
        EXPECT_EQ(ZRYAML_ProblemGet(list, count - 1)->uiCode, YAML_ERR_NOMEM);
        ZRYAML_ProblemsFree(list);
        list = nullptr;
    }
}

TEST(NearestText, IsTheOneThatIsClearlyNearest)
{
    const char *const names[] = {"port", "part", "timeout", "protocol", "a"};
    const struct {
        int line;
        const char *text, *nearest;
    } rows[] = {
        {__LINE__, "prot", "port"},
        {__LINE__, "pxrt", nullptr},
        {__LINE__, "PORT", "port"},
        {__LINE__, "tiemout", "timeout"},
        {__LINE__, "protocoll", "protocol"},
        {__LINE__, "b", nullptr},
        {__LINE__, "", nullptr},
        {__LINE__, "tmot", nullptr},
        {__LINE__, "timeuot", "timeout"},
        {__LINE__, "A", "a"},
    };
    for (const auto &row : rows) {
        const char *nearest = ZRYAML_NearestTextGet(row.text, names, 5);
        EXPECT_STREQ(nearest, row.nearest) << "line " << row.line;
    }
    YamlHandle *document = ZRYAML_TextLoad("b: &b {port: 1}\nm: {<<: *b, port: 2, path: 3}\n", 46, nullptr);
    EXPECT_STREQ(ZRYAML_NearestKeyGet(ZRYAML_ValueFind(document, "m"), "prot"), "port");
    EXPECT_EQ(ZRYAML_NearestKeyGet(ZRYAML_ValueFind(document, "m.path"), "prot"), nullptr);
    ZRYAML_HandleFree(document);
}
