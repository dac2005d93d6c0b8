// SPDX-License-Identifier: Apache-2.0
// Documents whose nodes are easily hung in the wrong place, and constructs that are refused wherever they stand.
// Aliases and merges have tables of their own.
#include "support/load_text.h"
#include "support/recording_base.h"

#include <gtest/gtest.h>

namespace {

#define NO_ROOT "2 1900000b Unknown last event when add scalar data. (Event=0)\n" PARSE_FAILED
#define SEQ_KEY "2 1900000b It does not support appearing a sequence event after map event.\n" PARSE_FAILED
#define MAP_KEY "2 1900000b It does not support continuous map events.\n" PARSE_FAILED
#define TWICE(key) "2 1900000a There is a same scalar in this list. (Scalar=" key ")\n" PARSE_FAILED
#define NUL_CHARACTER "2 1900000b The scalar holds a NUL character which is not supported.\n" PARSE_FAILED

struct ShapeCase {
    int iLine;
    std::string document;
    const char *pcResult; // the tree, or the log
};
const ShapeCase g_astShape[] = {
    {__LINE__, "{}", "{}"},
    {__LINE__, "[]", "[]"},
    {__LINE__, "a: 1\nb: {c: 2}\nd: [x, y]", R"({"a":"1","b":{"c":"2"},"d":["x","y"]})"},
    {__LINE__, "[[{a: 1}, x]]", R"([[{"a":"1"},"x"]])"},
    {__LINE__, "[[[1, 2], x], y, {a: 1, b: {a: 2}}, {b: 2}]",
     R"([[["1","2"],"x"],"y",{"a":"1","b":{"a":"2"}},{"b":"2"}])"},
    {__LINE__, "[[], [], x, {}, y, {}, {}, {a: 1}]", R"([[],[],"x",{},"y",{},{},{"a":"1"}])"},
    {__LINE__, "[{}, []]", "[{},[]]"},
    {__LINE__, "{a: {}, b: 1, c: [], d: {e: {}, f: 1}, g: 2}",
     R"({"a":{},"b":"1","c":[],"d":{"e":{},"f":"1"},"g":"2"})"},
    {__LINE__, "[a, {b: [c, {d: []}, [[]]]}, [], {e: {f: {}}}, g]",
     R"(["a",{"b":["c",{"d":[]},[[]]]},[],{"e":{"f":{}}},"g"])"},
    {__LINE__, "scalar", NO_ROOT},
    {__LINE__, "---\n---\n", NO_ROOT},
    {__LINE__, "{[b]: c}", SEQ_KEY},
    {__LINE__, "{a: 1, [b]: c}", SEQ_KEY},
    {__LINE__, "[{a: [], [b]: c}]", SEQ_KEY},
    {__LINE__, "{{a: 1}: b}", MAP_KEY},
    {__LINE__, "{x: &x 1, a: *x, {b: c}: d}", MAP_KEY},
    {__LINE__, "[{a: {}, {b: c}: d}]", MAP_KEY},
    {__LINE__, "{a: 1, b: 2, a: 3}", TWICE("a")},
    {__LINE__, "m: {" + Numbered(30, "k", ": 1,") + "k29: 2}", TWICE("k29")},
    {__LINE__, "a: \"x\\0y\"", NUL_CHARACTER},
    {__LINE__, "\"x\\0y\": a", NUL_CHARACTER},
};

} // namespace

TEST(TreeShape, MirrorsTheDocumentOrIsRefused)
{
    Base().Reset();
    for (const ShapeCase &stCase : g_astShape)
        EXPECT_EQ(DocumentRead(stCase.document), stCase.pcResult) << stCase.iLine;
}
