// SPDX-License-Identifier: Apache-2.0
// The C++ face: what typed reads take and refuse, absent against wrong, key paths with data in them, walks, and all of
// it when memory is short.
#include <zr_base.h>
#include <zr_yaml.hpp>

#include <gtest/gtest.h>

#include "support/short_memory.h"

#include <cfloat>
#include <cmath>
#include <csignal>
#include <cstring>

extern "C" __attribute__((weak)) void __gcov_exit(void); // writes down what ran; there with --coverage only

namespace {

using namespace std::chrono;
using zryaml::Document;
using zryaml::Result;
using zryaml::Value;
using Days = duration<int32_t, std::ratio<86400>>;

Document Parsed(std::string_view svText)
{
    return Document::parse(svText, "c.yml").or_throw();
}

template <class T> void Gives(std::initializer_list<std::pair<const char *, T>> stCases)
{
    for (const auto &[pcText, stExpected] : stCases) {
        const Document stDocument = Parsed("[\"" + std::string(pcText) + "\"]");
        const Result<T> stRead = stDocument[0].get<T>();
        bool bSame = stRead.has_value() && *stRead == stExpected;
        if constexpr (std::is_floating_point_v<T>) // -0 and 0 differ, and not-a-number is itself
            bSame = stRead.has_value() && memcmp(&*stRead, &stExpected, sizeof(T)) == 0;
        EXPECT_TRUE(bSame) << pcText << __PRETTY_FUNCTION__;
    }
}

template <class T> void Refuses(const char *pcWhy, std::initializer_list<const char *> stTexts)
{
    for (const std::string text : stTexts) {
        const Document stDocument = Parsed("[\"" + text + "\"]");
        const Result<T> stRead = stDocument[0].get<T>();
        EXPECT_EQ(stRead.has_value() ? "" : stRead.error().message, '"' + text + "\" " + pcWhy) << __PRETTY_FUNCTION__;
    }
}

constexpr const char *g_pcRange = "is out of range", *g_pcFine = "is finer than the unit it is read in";
template <class T> void HasLimits(const char *pcBelow, const char *pcLeast, const char *pcMost, const char *pcAbove)
{
    Gives<T>({{pcLeast, std::numeric_limits<T>::min()}, {pcMost, std::numeric_limits<T>::max()}});
    Refuses<T>(g_pcRange, {pcBelow, pcAbove});
}

TEST(Cxx, ReadsTheWholeTextOrNothing)
{
    HasLimits<int8_t>("-129", "-128", "127", "128");
    HasLimits<uint8_t>("-1", "-0", "255", "256");
    HasLimits<int16_t>("-0x8001", "-32768", "0x7fff", "32768");
    HasLimits<uint16_t>("-1", "0", "65535", "65536");
    HasLimits<int32_t>("-2147483649", "-2147483648", "2147483647", "2147483648");
    HasLimits<uint32_t>("-1", "+0", "0xFFFFffff", "4294967296");
    HasLimits<int64_t>("-9223372036854775809", "-9223372036854775808", "9223372036854775807", "9223372036854775808");
    HasLimits<long long>("-0x8000000000000001", "-0x8000000000000000", "9223372036854775807", "9223372036854775808");
    HasLimits<uint64_t>("-1", "0o0", "18446744073709551615", "0o2000000000000000000000");
    HasLimits<unsigned long long>("-1", "0x0", "0xffffffffffffffff", "18446744073709551616");
    Gives<int>({{"08", 8}, {"010", 10}, {"+5", 5}, {"-0x1f", -31}, {"0o17", 15}});
    Refuses<int>("is not a whole number", {"0o8", "0o", "0x", "0xg", "0x-5", "0X5", "+-5", "--5", "+", "", " 5", "5 ",
                                           "5k", "99999999999999999999k", "5.0", "1_000", "1,000", "٣", "true"});
    Gives<bool>({{"Yes", true}, {"ON", true}, {"true", true}, {"false", false}, {"Off", false}, {"NO", false}});
    Refuses<bool>("is not a boolean", {"tRUE", "y", "1", "", "true "});
    Gives<double>({{"-0", -0.0}, {"+1.5", 1.5}, {".5", 0.5}, {"5.", 5}, {"010", 10}});
    Gives<double>({{"1.7976931348623157e308", DBL_MAX}, {"-.Inf", -INFINITY}, {".INF", INFINITY}});
    Gives<double>({{".nan", NAN}, {".NaN", NAN}, {".NAN", NAN}});
    Gives<float>({{"0.1", 0.1F}, {"+.inf", INFINITY}});
    Refuses<double>(g_pcRange, {"1e400", "-1e400", "1e-400"});
    Refuses<float>(g_pcRange, {"1e39"});
    Refuses<double>("is not a number", {"-.nan", "+.NAN", "inf", "-inf", "NAN", "nan(1)", "--1", "+-1", "0x10", "1,5",
                                        "1e", ".", "", " 1", "1 "});
    Gives<milliseconds>({{"250ms", 250ms}, {"-5s", -5s}});
    Gives<nanoseconds>({{"1us", 1us}, {"106751d", 106751 * 24h}});
    Gives<seconds>({{"2min", 2min}, {"3h", 3h}, {"3000ms", 3s}});
    Gives<hours>({{"2d", 48h}});
    Gives<Days>({{"48h", Days(2)}});
    Refuses<Days>(g_pcFine, {"47h"});
    Refuses<seconds>(g_pcFine, {"1500ms"});
    Refuses<nanoseconds>(g_pcRange, {"106752d", "999999999999d"});
    Refuses<seconds>(g_pcRange, {"99999999999999999999s"});
    Refuses<duration<uint8_t>>(g_pcRange, {"256s", "-1s"});
    Refuses<seconds>("is not a duration", {"5", "5m", "5 s", "1.5s", "1h30min", "s", "0x5s"});
    Gives<std::string>({{" as it is ", " as it is "}});
    Gives<std::string_view>({{"", ""}});
}

// What a read gave: the value, or the line that the error makes.
template <class T> std::string Shown(const Result<T> &stResult)
{
    if (!stResult.has_value())
        return stResult.error().what();
    if constexpr (std::is_arithmetic_v<T>)
        return std::to_string(*stResult);
    else if constexpr (std::is_convertible_v<T, std::string>)
        return *stResult;
    else
        return std::to_string(stResult->size()) + " elements";
}

// Each allocation on the way to an answer fails once, and the exception leaves nothing behind.
template <class Ask> void AnswerCheck(int iLine, const char *pcAnswer, const Ask &fnAsk)
{
    std::string answer = "none";
    for (size_t ulNews = 0; answer == "none" && ulNews < 200; ++ulNews) {
        try {
            const ShortMemory stShort(ulNews);
            answer = fnAsk();
        } catch (const std::bad_alloc &) {
        }
    }
    EXPECT_EQ(answer, pcAnswer) << iLine;
}
#define ASK(stRead, pcAnswer) AnswerCheck(__LINE__, pcAnswer, [&] { return Shown(stRead); })

TEST(Cxx, TellsAbsentFromWrong)
{
    const Document doc = Parsed("servers:\n  - {host: a, port: 80}\n  - {host: b, port: 8O80}\nenv:\nname: zr\n"
                                "grid: [[1, 2], [], [3]]\nbad: [[1], [2, x]]\n");
    ASK(doc["servers"][0]["port"].get<int>(), "80");
    ASK(doc["servers"][0]["port"].get_or(1), "80");
    ASK(doc["servers"][1]["port"].get_or(1), "c.yml:3:21: \"8O80\" is not a whole number (servers[1].port)");
    ASK(doc["servers"][0]["tls"].get_or(1), "1");
    ASK(doc["servers"][2]["port"].get_or(1), "1");
    ASK(doc["env"]["PATH"].get_or("/bin"), "/bin");
    ASK(doc["env"][0].get_or<uint8_t>(7), "7");
    ASK(doc["env"].get_or(1), "c.yml:4:5: \"\" is not a whole number (env)");
    ASK(doc["servers"][0]["tls"]["key"][3].get<int>(), "c.yml:2:5: there is no key \"tls\" (servers[0].tls.key[3])");
    ASK(doc["servers"][2].get<int>(), "c.yml:2:3: there is no element 2 (servers[2])");
    ASK(doc["servers"][-1].get_or(1), "c.yml:2:3: the key path is malformed: an index is negative (servers[-1])");
    ASK(doc["no"][-1].get_or(1), "c.yml:1:1: the key path is malformed: an index is negative (no[-1])");
    ASK(doc["servers"][4294967296U].get_or(5), "5");
    ASK(doc["no"]["a.b"][""].get<int>(), "c.yml:1:1: there is no key \"no\" (no.a\\.b.{})");
    ASK(doc["name"]["x"].get_or(1), "c.yml:5:7: no key \"x\": the value above it is a scalar, not a map (name.x)");
    ASK(doc["servers"]["x"].get_or(1),
        "c.yml:2:3: no key \"x\": the value above it is a sequence, not a map (servers.x)");
    ASK(doc[0].get_or(1), "c.yml:1:1: no element 0: the value above it is a map, not a sequence ([0])");
    ASK(doc["servers"].get_or("x"), "c.yml:2:3: the value is a sequence, not a scalar (servers)");
    ASK(doc.at("a..b[").get_or(1), "c.yml:1:1: the key path is malformed: an index is not a number from 0 on (a..b[)");
    using Lists = std::vector<std::vector<int>>;
    ASK(doc["grid"].get<Lists>(), "3 elements");
    EXPECT_EQ(doc["grid"].get<Lists>().value(), (Lists{{1, 2}, {}, {3}}));
    ASK(doc["bad"].get<Lists>(), "c.yml:7:16: \"x\" is not a whole number (bad[1][1])");
    ASK(doc["name"].get<std::vector<int>>(), "c.yml:5:7: the value is a scalar, not a sequence (name)");
    ASK(doc["no"].get_or(Lists{{4}}), "1 elements");
    ASK(doc["name"].expect(zryaml::Type::map), "c.yml:5:7: the value is a scalar, not a map (name)");
    ASK(doc["servers"].expect(zryaml::Type::sequence), "2 elements");
    ASK(doc["no"].expect(zryaml::Type::none), "c.yml:1:1: there is no key \"no\" (no)");
    ASK(doc["name"].expect(zryaml::Type::none), "c.yml:5:7: the value is a scalar, not absent (name)");
    ASK(doc["name"].at("", 1).get<int>(),
        "c.yml:5:7: the key path is malformed: there are more arguments than placeholders (name)");
    ASK(Value().get<int>(), "there is no value");
    const Document empty = Parsed("");
    ASK(empty.root().get_or(3), "3");
    // A text is cut before a character, not inside; one that is no text at all, in front.
    const std::string head(59, 'k');
    EXPECT_EQ(doc[head + "\xC3\xA9\xC3\xA9"].get<int>().error().message, "there is no key \"" + head + "...\"");
    EXPECT_EQ(doc[std::string(61, '\x80')].get<int>().error().message, "there is no key \"...\"");
}

TEST(Cxx, PutsArgumentsIntoPathsAsData)
{
    const Document doc = Parsed("a: {b: [p, [q, r]], c.d: dot, '{}': braces, x1: one, '': empty}\n'%s%n': percent\n");
    const auto Finds = [](const std::string &text, std::initializer_list<Value> stValues) {
        for (const Value &stValue : stValues) {
            const auto stRead = stValue.get<std::string>().value_or("absent");
            EXPECT_EQ(stRead.has_value() ? *stRead : stRead.error().message, text);
        }
    };
    Finds("p", {doc.at("a.b[0]")});
    Finds("r", {doc.at("a.b[1][1]"), doc["a"]["b"].at("[1][{}]", int8_t{1})});
    Finds("q", {doc.at("a.b[{}][{}]", 1, 0U)});
    Finds("dot",
          {doc.at("a.c\\.d"), doc.at("a.{c.d}"), doc.at("{}.{}", "a", std::string("c.d")), doc.at("a.{c.{}}", "d")});
    Finds("braces", {doc.at("a.{}", "{}"), doc.at("a.\\{}"), doc.at("{}.\\{\\}", "a")});
    Finds("one", {doc.at("a.x{}", 1), doc.at("a.{}1", std::string_view("x"))});
    Finds("empty", {doc.at("a.{}"), doc.at("a.{}", "")});
    Finds("percent", {doc.at("%s%n"), doc.at("{}", "%s%n")});
    Finds("absent", {doc.at("{}", "a.x1"), doc.at("a.b[9]"), doc.at("a.{}", std::string_view("x1\0", 3))});
    Finds("the value is a map, not a scalar", {doc.at("")});
    const auto Breaks = [Finds](const std::string &problem, std::initializer_list<Value> stValues) {
        Finds("the key path is malformed: " + problem, stValues);
    };
    Breaks("a key is missing after the last '.'", {doc.at("a.")});
    Breaks("a '[' stands after a '.'", {doc.at("a.b.[0]")});
    Breaks("a ']' stands where no index begins", {doc.at("a]")});
    Breaks("a '{' is not closed", {doc.at("{a")});
    Breaks("something else than '.' or '[' stands behind a bracket or brace", {doc.at("{a}b")});
    Breaks("a bracket or brace stands inside braces without a backslash", {doc.at("{a[0]}")});
    Breaks("an index is not closed by ']'", {doc.at("a.b[1"), doc.at("a.b[{}{}]", 1, 1)});
    Breaks("an index is not a number from 0 on",
           {doc.at("a.b[]"), doc.at("a.b[99999999999999999999]"), doc.at("a.b[{}]", -1)});
    Breaks("an index is given by a text", {doc.at("a.b[{}]", "1")});
    Breaks("there are fewer arguments than placeholders", {doc.at("a.{}.{}", "b"), doc.at("a.b[{}][{}]", 1)});
    Breaks("there are more arguments than placeholders", {doc.at("a.x1", "b"), doc.at("no.{}", "b", 1)});
    for (const char *pcKey : {"a.b", "a[0]", "[0]", "{a}", "{}", "{{", "}", "]", ".", "%d%s%n", "", " ", "a\\", "a\\.b",
                              "\\", "\\\\{", "é", "a:b"}) {
        SCOPED_TRACE(pcKey);
        const Document stDocument = Parsed("{'" + std::string(pcKey) + "': {in: [x]}, a: {b: [y]}, a.in: z}");
        const Value stBelow = stDocument.at("{}.in[{}]", pcKey, 0);
        EXPECT_EQ(stBelow.text(), "x");
        EXPECT_EQ(stDocument[pcKey]["in"][0].node(), stBelow.node());
        const bool bPath = *pcKey == '\0' || std::string_view(pcKey).back() != '\\';
        EXPECT_EQ(stDocument.at(stBelow.path()).node() == stBelow.node(), bPath);
        EXPECT_TRUE(stDocument.at("a.{}", pcKey).get<int>().error().is_absent());
    }
}

// A path never means one value here and another one in C.
TEST(Cxx, ReadsPathsAsTheCInterfaceDoes)
{
    constexpr std::string_view svLetters = "{ab.[]}\\0";
    const Document stDocument = Parsed("{a: {a: x, b: [p, [q]]}, b: [{a: 1}], 'a.b': {'a[0]': 2}, '': {'': 4}, ']': 5, "
                                       "'{': 6, 'a{b': 7, '{}': 8, 'a]': 9}");
    const uint32_t uiLevel = ZR_LogLevelGet();
    ZR_LogLevelSet(UINT32_MAX); // C logs each path that leads nowhere
    size_t ulFound = 0;
    for (size_t ulPath = 0; ulPath < 59049; ++ulPath) { // up to five letters
        std::string path;
        for (size_t ul = ulPath; ul > 0; ul /= svLetters.size())
            path += svLetters[ul % svLetters.size()];
        const Value stFound = stDocument.at(path);
        const YamlListNode *pstInC = ZRYAML_PathFind(stDocument.handle(), path.c_str());
        ulFound += stFound && pstInC != nullptr ? 1U : 0U;
        EXPECT_TRUE(!stFound || pstInC == nullptr || stFound.node() == pstInC) << path;
    }
    ZR_LogLevelSet(uiLevel);
    EXPECT_GT(ulFound, 15U);
}

// A value as text. On the way, every value leads back to itself by its path, its number and its key.
std::string Tree(const Document &stDocument, const Value &stValue)
{
    EXPECT_EQ(stDocument.at(stValue.path()).node(), stValue.node()) << stValue.path();
    std::string text;
    size_t ulIndex = 0;
    auto stItem = stValue.items().begin();
    for (const Value &stBelow : stValue) {
        EXPECT_EQ(stValue[ulIndex].node(), stValue.is_sequence() ? stBelow.node() : nullptr);
        text += ulIndex++ == 0 ? "" : ",";
        if (stValue.is_map()) {
            const auto [key, stSame] = *stItem++;
            EXPECT_EQ(stSame.node(), stBelow.node());
            EXPECT_EQ(stValue[key].node(), stBelow.node());
            text += std::string(key) + ":";
        }
        text += Tree(stDocument, stBelow);
    }
    EXPECT_EQ(stItem, stValue.items().end());
    EXPECT_EQ(stValue.size(), ulIndex);
    EXPECT_EQ(stValue.empty(), ulIndex == 0);
    return stValue.is_map()        ? '{' + text + '}'
           : stValue.is_sequence() ? '[' + text + ']'
                                   : std::string(stValue.text().value_or(""));
}

TEST(Cxx, WalksMapsAndSequencesAsTheyRead)
{
    constexpr std::pair<const char *, const char *> astCase[] = {
        {"", ""},
        {"{}", "{}"},
        {"[[], {}, [x, {a: []}]]", "[[],{},[x,{a:[]}]]"},
        {"b: &b {x: 1, y: 2}\nm: {<<: *b, y: [3], z: 4}", "{b:{x:1,y:2},m:{x:1,y:[3],z:4}}"},
        {"b: &b {x: 1}\nm: {x: 0, <<: *b}\nn: *b", "{b:{x:1},m:{x:0},n:{x:1}}"},
        {"b: &b {x: 1, y: 2, z: 3}\nm: &m {<<: *b, x: a, y: b, z: c}\nn: {<<: *m, y: d}\ns: [*m, *b]",
         "{b:{x:1,y:2,z:3},m:{x:a,y:b,z:c},n:{x:a,y:d,z:c},s:[{x:a,y:b,z:c},{x:1,y:2,z:3}]}"},
        {"s: &s [{x: 1}, {y: 2, x: 9}]\nm: {<<: *s, x: o, '': e}", "{s:[{x:1},{y:2,x:9}],m:{x:o,:e,y:2}}"}};
    for (const auto &[pcDocument, pcTree] : astCase) {
        const Document stDocument = Parsed(pcDocument);
        EXPECT_EQ(Tree(stDocument, stDocument.root()), pcTree);
    }
}

TEST(Cxx, MovesDocumentsAndKeepsValues)
{
    Document stFirst = Parsed("a: text");
    const Value stValue = stFirst["a"];
    Document stSecond = std::move(stFirst);
    EXPECT_EQ(stFirst.at("a").get<int>().error().message, "there is no document"); // NOLINT: that it has moved
    EXPECT_EQ(stSecond["a"].node(), stValue.node());
    stFirst = Parsed("b: 2");
    std::swap(stFirst, stSecond);
    EXPECT_EQ(stFirst["a"].text(), "text");
    EXPECT_STREQ(stSecond.name(), "c.yml");
}

TEST(Cxx, CarriesErrorsOfLoads)
{
    const zryaml::Error stError = Document::parse("a: 1\nb: 2\n\na: 3\n", "c.yml").error();
    EXPECT_EQ(stError.what(), "c.yml:4:1: There is a same scalar in this list. (Scalar=a)");
    EXPECT_EQ(stError.code, YAML_ERR_SAME);
    EXPECT_EQ(std::pair(stError.first_line, stError.first_column), std::pair(1U, 1U));
    const zryaml::Error stOther = Document::parse("a: \"b", "x\n\x7F").error();
    EXPECT_FALSE(stOther.hint.empty());
    EXPECT_EQ(stOther.what().rfind("x??:", 0), 0U);
    EXPECT_EQ(Document::parse("a: 1\na: 2\n").error().what(), "2:1: There is a same scalar in this list. (Scalar=a)");
    EXPECT_EQ(Document::load("/nonexistent.yaml").error().file, "/nonexistent.yaml");
    EXPECT_FALSE(Document::load("/nonexistent.yaml").error().is_absent());
    EXPECT_EQ(Document::load(std::string("/\0x", 3)).error().message, "the path holds a NUL character");
}

TEST(Cxx, ThrowsOnlyWhenAskedTo)
{
    const Document stDocument = Parsed("[300]");
    EXPECT_EQ(stDocument[0].get<int>().or_throw(), 300);
    try {
        (void)stDocument[0].get<uint8_t>().or_throw();
        FAIL() << "nothing was thrown";
    } catch (const zryaml::Exception &stException) {
        EXPECT_STREQ(stException.what(), "c.yml:1:2: \"300\" is out of range ([0])");
        EXPECT_EQ(stException.error().hint, "a whole number from 0 to 255 is expected, in decimal, 0x or 0o");
    }
    (void)std::signal(SIGABRT, [](int) { __gcov_exit != nullptr ? __gcov_exit() : void(); });
    EXPECT_DEATH((void)stDocument[1].get<int>().value(), "there is no element 1");
    EXPECT_DEATH((void)stDocument[0].get<int>().error(), "holds a value");
}

} // namespace
