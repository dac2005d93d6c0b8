// SPDX-License-Identifier: Apache-2.0
// What was probably meant.
#include <gtest/gtest.h>

#include <zr_yaml_problem.h>

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
