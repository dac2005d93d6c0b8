// SPDX-License-Identifier: Apache-2.0
// Documents whose nodes are easily hung in the wrong place, and constructs that are refused wherever they stand.
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <gtest/gtest.h>

namespace {

struct ShapeCase {
    int iLine;
    const char *pcDocument, *pcTree;
};
constexpr ShapeCase g_astShape[] = {
    {__LINE__, "", ""},
    {__LINE__, "# nothing but a comment\n", ""},
    {__LINE__, "{}", "{}"},
    {__LINE__, "[]", "[]"},
    {__LINE__, "[[{a: 1}, x]]", R"([[{"a":"1"},"x"]])"},
    {__LINE__, "[[[1], x], y]", R"([[["1"],"x"],"y"])"},
    {__LINE__, "[[], {a: 1}]", R"([[],{"a":"1"}])"},
    {__LINE__, "[&a [], *a]", R"([[],[]])"},
    {__LINE__, "[&a x, [], *a]", R"(["x",[],"x"])"},
    {__LINE__, "[[], [], x, {}, y]", R"([[],[],"x",{},"y"])"},
    {__LINE__, "{a: {}, b: 1}", R"({"a":{},"b":"1"})"},
    {__LINE__, "{a: [], b: 1}", R"({"a":[],"b":"1"})"},
    {__LINE__, "{a: {b: {}, c: 1}, d: 2}", R"({"a":{"b":{},"c":"1"},"d":"2"})"},
    {__LINE__, "[{}, {}]", R"([{},{}])"},
    {__LINE__, "[{}, x]", R"([{},"x"])"},
    {__LINE__, "{l: &l [[1, 2], x], m: *l}", R"({"l":[["1","2"],"x"],"m":[["1","2"],"x"]})"},
    {__LINE__, "- &k key\n- a\n- *k\n- [*k, b]\n", R"(["key","a","key",["key","b"]])"},
    {__LINE__, "&k key: v\nx: *k\ny: [*k, *k]\n", R"({"key":"v","x":"key","y":["key","key"]})"},
    {__LINE__, "&k key: [v]\nx: *k\n", R"({"key":["v"],"x":"key"})"},
    {__LINE__, "e: &e {}\nm: {<<: *e, a: 1}", R"({"e":{},"m":{"a":"1"}})"},
    {__LINE__, "e: &e {}\nm: {<<: *e}\nn: 1", R"({"e":{},"m":{},"n":"1"})"},
    {__LINE__, "e: &e []\nm: {<<: *e}\nn: [{<<: *e}, x]", R"({"e":[],"m":{},"n":[{},"x"]})"},
    {__LINE__, "b: &b {a: 1, b: 2}\nm: {<<: *b, b: [1], c: 2}",
     R"({"b":{"a":"1","b":"2"},"m":{"a":"1","b":["1"],"c":"2"}})"},
    {__LINE__, "b: &b {a: 1, b: 2}\nm: {<<: *b, b: {}, c: 2}",
     R"({"b":{"a":"1","b":"2"},"m":{"a":"1","b":{},"c":"2"}})"},
    {__LINE__, "b: &b {a: 1}\nm: {x: 0, <<: *b}\nn: 1", R"({"b":{"a":"1"},"m":{"x":"0","a":"1"},"n":"1"})"},
    {__LINE__, "b: &b {a: 1, b: 2, c: 3}\nm: &m {<<: *b, a: x, y: 0, b: z}\nn: *m",
     R"({"b":{"a":"1","b":"2","c":"3"},"m":{"a":"x","y":"0","b":"z","c":"3"},)"
     R"("n":{"a":"x","y":"0","b":"z","c":"3"}})"},
    {__LINE__, "b: &b {a: {k: v}, b: 2}\no: &o [7]\nm: {<<: *b, a: *o, c: 3}",
     R"({"b":{"a":{"k":"v"},"b":"2"},"o":["7"],"m":{"a":["7"],"c":"3","b":"2"}})"},
    {__LINE__, "b: &b {<<: 1, a: 2}\nm: {<<: *b, <<: *b}\nn: {<<: *b, <<: x}",
     R"({"b":{"<<":"1","a":"2"},"m":{"<<":"1","a":"2"},"n":{"<<":"x","a":"2"}})"},
    {__LINE__, "s: &s [{x: 1}, {}, {y: 2, z: 9}, {x: 3}]\nm: {<<: *s}",
     R"({"s":[{"x":"1"},{},{"y":"2","z":"9"},{"x":"3"}],"m":{"x":"1","y":"2"}})"},
    {__LINE__, "b: &b {a: 1}\nm: {<<: [*b]}\nn: {<<: {a: 1}}\no: {<<: }",
     R"({"b":{"a":"1"},"m":{"<<":[{"a":"1"}]},"n":{"<<":{"a":"1"}},"o":{"<<":""}})"},
    {__LINE__, "[a, {b: [c, {d: []}, [[]]]}, [], {e: {f: {}}}, g]",
     R"(["a",{"b":["c",{"d":[]},[[]]]},[],{"e":{"f":{}}},"g"])"},
};

struct RefusalCase {
    int iLine;
    const char *pcDocument;
    uint32_t uiCode;
    const char *pcLog; // the first record of level 2
};
constexpr RefusalCase g_astRefusal[] = {
    {__LINE__, "scalar", YAML_ERR_EVENT, "Unknown last event when add scalar data. (Event=0)"},
    {__LINE__, "---\n...", YAML_ERR_EVENT, "Unknown last event when add scalar data. (Event=0)"},
    {__LINE__, "{a: 1, [b]: c}", YAML_ERR_EVENT, "It does not support appearing a sequence event after map event."},
    {__LINE__, "{[b]: c}", YAML_ERR_EVENT, "It does not support appearing a sequence event after map event."},
    {__LINE__, "{x: &x 1, a: *x, {b: c}: d}", YAML_ERR_EVENT, "It does not support continuous map events."},
    {__LINE__, "[{a: {}, {b: c}: d}]", YAML_ERR_EVENT, "It does not support continuous map events."},
    {__LINE__, "{x: &x 1, y: {a: 1, *x : c}}", YAML_ERR_EVENT, "It does not support an alias as a map key. (Alias=x)"},
    {__LINE__, "{x: &x {}, y: {*x : c}}", YAML_ERR_EVENT, "It does not support an alias as a map key. (Alias=x)"},
    {__LINE__, "{a: 1, b: 2, a: 3}", YAML_ERR_SAME, "There is a same scalar in this list. (Scalar=a)"},
    {__LINE__, "b: &b {a: 1}\nm: {<<: *b, a: 5, a: 6}", YAML_ERR_SAME,
     "There is a same scalar in this list. (Scalar=a)"},
    {__LINE__, "{a: 1}\n---\n{b: 1}", YAML_ERR_PARSE,
     "There are more than one document signs in file which is not support."},
    {__LINE__, "s: &s [1, *s]", YAML_ERR_ALIAS, "The alias has not defined. (Alias=s)"},
    {__LINE__, "m: {<<: *b}", YAML_ERR_ALIAS, "The alias has not defined. (Alias=b)"},
    {__LINE__, "v: &v 5\nm: {<<: *v}", YAML_ERR_EVENT, "Can not merge mapping with a single scalar. (Scalar=5)"},
    {__LINE__, "m: {&x <<: *x}", YAML_ERR_EVENT, "Can not merge mapping with a single scalar. (Scalar=<<)"},
    {__LINE__, "s: &s [1, 2]\nm: {<<: *s}", YAML_ERR_PARSE, "Can not merge a single scalar to a map. (Scalar=1)"},
    {__LINE__, "s: &s [{a: 1}, [b]]\nm: {<<: *s}", YAML_ERR_PARSE, "Can not merge a sequence to a map."},
    {__LINE__, "b: &x {a: 1}\nm: {&x <<: *x}\nn: *x", YAML_ERR_EVENT,
     "Can not merge mapping with a single scalar. (Scalar=<<)"},
    {__LINE__, "b: &b {a: 1}\nm: {&x <<: *b}\nn: *x", YAML_ERR_ALIAS, "The alias has not defined. (Alias=x)"},
    {__LINE__, "o: &x 1\nb: &b {a: 1}\nm: {&x <<: *b}\nn: *x", YAML_ERR_ALIAS, "The alias has not defined. (Alias=x)"},
    {__LINE__, "o: &x 1\nb: &b {a: 1}\nm: {<<: *b, a: &x [1]}\nn: *x", YAML_ERR_ALIAS,
     "The alias has not defined. (Alias=x)"},
    {__LINE__, "b: &b {a: 1}\nm: &x {q: {&x <<: *b}}\nn: *x", YAML_ERR_ALIAS, "The alias has not defined. (Alias=x)"},
    {__LINE__, "a: \"x\\0y\"", YAML_ERR_EVENT, "The scalar holds a NUL character which is not supported."},
    {__LINE__, "\"x\\0y\": a", YAML_ERR_EVENT, "The scalar holds a NUL character which is not supported."},
};

} // namespace

TEST(TreeShape, MirrorsTheDocument)
{
    for (const ShapeCase &stCase : g_astShape) {
        SCOPED_TRACE(stCase.iLine);
        YamlHandle *pstHandle = TextFileLoad(stCase.pcDocument);
        ASSERT_NE(pstHandle, nullptr) << Base().LogText();
        EXPECT_EQ(TreeCheck(*pstHandle), "");
        EXPECT_EQ(TreeText(*pstHandle), stCase.pcTree);
        ZRYAML_HandleFree(pstHandle);
        EXPECT_EQ(Base().lBlocks, 0);
    }
}

TEST(TreeShape, RefusesWhatItCannotHold)
{
    for (const RefusalCase &stCase : g_astRefusal) {
        SCOPED_TRACE(stCase.iLine);
        Base().Reset();
        EXPECT_EQ(TextFileLoad(stCase.pcDocument), nullptr);
        std::vector<LogRecord> errors;
        for (const LogRecord &stRecord : Base().log) {
            if (stRecord.uiLevel == 2)
                errors.push_back(stRecord);
        }
        ASSERT_EQ(errors.size(), 2U) << Base().LogText();
        EXPECT_EQ(errors[0].uiCode, stCase.uiCode);
        EXPECT_EQ(errors[0].text, stCase.pcLog);
        EXPECT_EQ(errors[1].uiCode, YAML_ERR_PARSE);
        EXPECT_EQ(errors[1].text, "Parse file failed.");
        EXPECT_EQ(Base().lBlocks, 0);
    }
}
