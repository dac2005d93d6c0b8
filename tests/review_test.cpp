// SPDX-License-Identifier: Apache-2.0
// What is told of documents that load and probably mean something else.
#include "support/load_text.h"

#include <zr_yaml_problem.h>

namespace {

struct Review {
    int iLine; // of this file
    const char *pcText;
    const char *pcTold; // place, path and hint of each problem
};

constexpr Review g_astReview[] = {
    {__LINE__, "a: [x, -1]\nb: |\n  x\n  -y\nc: 'x\n  -y'\nd: x\n  --y\n-e: x\n", ""},
    {__LINE__, "run: docker run\n  -it image\n", ""}, // options of a command
    {__LINE__, "list:\n  -a\n  -b\n  - c\n  -d\n",
     "3:3 list: write '- b' if it is an element\n5:3 list: write '- d' if it is an element\n"},
    {__LINE__, "list:\n  - a\n    -b\n", "3:5 list[0]: write '- b' if it is an element\n"},
    {__LINE__, "b: &b {k: 1}\nm: {<<: *b, k: 2}\nl: [*b,\n  # -z\n  w\n  -v]",
     "6:3 l[1]: write '- v]' if it is an element\n"},
    {__LINE__, "m: {<<: {a: 1}, b: 2}\nl:\n -x\n -y\nn: {<<: [a]}\n'<<': {}\n",
     "1:5 m.<<: write its keys here, or give it an anchor elsewhere and write '<<: *name'\n"
     "4:2 l: write '- y' if it is an element\n"
     "5:5 n.<<: write a line '<<: *name' for each of its elements\n"},
    {__LINE__, "a: [1", "1:4 : a ']' is missing\n"},
};

std::string Told(const YamlProblems *pstProblems)
{
    std::string told;
    for (uint32_t ui = 0; ui < ZRYAML_ProblemCountGet(pstProblems); ++ui) {
        const YamlProblem &st = *ZRYAML_ProblemGet(pstProblems, ui);
        told +=
            std::to_string(st.uiLine) + ":" + std::to_string(st.uiColumn) + " " + st.pcPath + ": " + st.pcHint + "\n";
    }
    return told;
}

TEST(Review, WarnsOfWhatIsProbablyNotMeant)
{
    for (const Review &st : g_astReview) {
        const testing::ScopedTrace trace(__FILE__, st.iLine, st.pcText);
        YamlProblems *pstOfText = nullptr, *pstOfFile = nullptr;
        ZRYAML_HandleFree(ZRYAML_TextReview(st.pcText, strlen(st.pcText), "doc", &pstOfText));
        EXPECT_EQ(Told(pstOfText), st.pcTold);
        const TempFile stFile(st.pcText);
        YamlHandle *pstHandle = ZRYAML_FileReview(stFile.Path(), &pstOfFile);
        EXPECT_EQ(Told(pstOfFile), st.pcTold);
        if (pstOfFile != nullptr) {
            EXPECT_STREQ(ZRYAML_ProblemGet(pstOfFile, 0)->pcSource, stFile.Path());
        }
        ZRYAML_HandleFree(pstHandle);
        ZRYAML_ProblemsFree(pstOfText);
        ZRYAML_ProblemsFree(pstOfFile);
    }
}

} // namespace
