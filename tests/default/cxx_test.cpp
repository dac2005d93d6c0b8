// SPDX-License-Identifier: Apache-2.0
// The C++ face: what typed reads take and refuse, absent against wrong, key paths with data in them, walks, and all of
// it when memory is short.
#include <zr_yaml.hpp>

#include <gtest/gtest.h>

#include "support/short_memory.h"

#include <csignal>

extern "C" __attribute__((weak)) void __gcov_exit(void); // writes down what ran; there with --coverage only

namespace {

using namespace std::chrono;
using zryaml::Document;
using zryaml::Result;
using zryaml::Value;

Document Parsed(std::string_view svText)
{
    return Document::parse(svText, "c.yml").or_throw();
}

// What a read gave: the value, or the line that the error makes.
template <class T> std::string Shown(const Result<T> &stResult)
{
    if (!stResult.has_value())
        return stResult.error().what();
    if constexpr (std::is_arithmetic_v<T>)
        return std::to_string(*stResult);
    else if constexpr (requires { stResult->count(); })
        return std::to_string(stResult->count());
    else if constexpr (std::is_convertible_v<T, std::string_view>)
        return std::string(*stResult);
    else
        return std::to_string(stResult->size()) + " elements";
}

constexpr const char *g_pcRange = "is out of range";

// Each text, read as a T, gives the value, or is refused with the words, which then begin with "is".
template <class T> void Reads(const std::string &outcome, std::initializer_list<std::string> stTexts)
{
    for (const std::string &text : stTexts) {
        const Document stDocument = Parsed("[\"" + text + "\"]");
        const std::string refusal = "c.yml:1:2: \"" + text + "\" " + outcome + " ([0])";
        EXPECT_EQ(Shown(stDocument[0].get<T>()), outcome.starts_with("is") ? refusal : outcome) << __PRETTY_FUNCTION__;
    }
}

template <class... Integer> void ReadsUpToItsLimits()
{
    const auto Check = [](auto tLimit) {
        std::string text = (tLimit == 0 ? "-" : "") + std::to_string(tLimit);
        Reads<decltype(tLimit)>(std::to_string(tLimit), {text});
        ++text.back(); // farther from zero by one: no limit ends with 9
        Reads<decltype(tLimit)>(g_pcRange, {text});
    };
    (Check(std::numeric_limits<Integer>::min()), ...);
    (Check(std::numeric_limits<Integer>::max()), ...);
}

TEST(Cxx, ReadsTheWholeTextOrNothing)
{
    ReadsUpToItsLimits<signed char, short, int, long, long long>();
    ReadsUpToItsLimits<unsigned char, unsigned short, unsigned, unsigned long, unsigned long long>();
    Reads<int>("10", {"10", "010", "+10", "0xA", "0x0a", "0o12"});
    Reads<int>("-31", {"-31", "-0x1f", "-0o37"});
    Reads<int>("is not a whole number", {"0o8", "0o", "0x", "0x-5", "0X5", "+-5", "--5", "+", "", " 5", "5 ", "5k",
                                         "99999999999999999999k", "5.0", "1_000", "٣", "true"});
    Reads<bool>("1", {"true", "True", "TRUE", "yes", "Yes", "YES", "on", "On", "ON"});
    Reads<bool>("0", {"false", "False", "FALSE", "no", "No", "NO", "off", "Off", "OFF"});
    Reads<bool>("is not a boolean", {"tRUE", "y", "1", "", "true "});
    Reads<double>("-0.500000", {"-.5", "-0.5", "-5e-1"});
    Reads<double>("16777217.000000", {"16777217", "016777217.", "+1.6777217e7"}); // no float
    Reads<double>("-inf", {"-.inf", "-.Inf", "-.INF"});
    Reads<float>("inf", {".inf", "+.Inf"});
    Reads<float>("nan", {".nan", ".NaN", ".NAN"});
    Reads<float>(g_pcRange, {"1e39", "-1e39", "1e-99"});
    Reads<double>("is not a number", {"-.nan", "+.NAN", "inf", "-inf", "NAN", "nan(1)", "--1", "+-1", "0x10", "1,5",
                                      "1e", ".", "", " 1", "1 "});
    Reads<nanoseconds>("86400000000000",
                       {"86400000000000ns", "86400000000us", "86400000ms", "86400s", "1440min", "24h"});
    Reads<days>("-2", {"-2d", "-48h", "-172800s"});
    Reads<days>("is finer than the unit it is read in", {"47h", "-1ns"});
    Reads<duration<uint64_t>>("18446744073709551600", {"307445734561825860min"}); // the last before the next
    Reads<duration<uint64_t>>(g_pcRange, {"307445734561825861min", "99999999999999999999s", "-1s"});
    Reads<seconds>("is not a duration", {"5", "5m", "5 s", "1.5s", "1h30min", "s", "0x5s", ""});
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
    ASK(doc["servers"][0]["port"].get_or(1), "80");
    ASK(doc["servers"][1]["port"].get_or(1), "c.yml:3:21: \"8O80\" is not a whole number (servers[1].port)");
    ASK(doc["servers"][4294967296U].get_or(1), "1");
    ASK(doc["env"]["PATH"].get_or("/bin"), "/bin");
    ASK(doc["env"].get_or(1), "c.yml:4:5: \"\" is not a whole number (env)");
    ASK(doc["servers"][2]["tls"][3].get<int>(), "c.yml:2:3: there is no element 2 (servers[2].tls[3])");
    ASK(doc["no"]["a.b"][""].get<int>(), "c.yml:1:1: there is no key \"no\" (no.a\\.b.{})");
    ASK(doc["no"][-1].get_or(1), "c.yml:1:1: the key path is malformed: an index is negative (no[-1])");
    ASK(doc.at("a..b[").get_or(1), "c.yml:1:1: the key path is malformed: an index is not a number from 0 on (a..b[)");
    ASK(doc["name"]["x"].get_or(1), "c.yml:5:7: no key \"x\": the value above it is a scalar, not a map (name.x)");
    ASK(doc[0].get_or(1), "c.yml:1:1: no element 0: the value above it is a map, not a sequence ([0])");
    ASK(doc["servers"].get_or(1), "c.yml:2:3: the value is a sequence, not a scalar (servers)");
    using Lists = std::vector<std::vector<int>>;
    EXPECT_EQ(doc["grid"].get<Lists>().value(), (Lists{{1, 2}, {}, {3}}));
    ASK(doc["bad"].get<Lists>(), "c.yml:7:16: \"x\" is not a whole number (bad[1][1])");
    ASK(doc["name"].get<Lists>(), "c.yml:5:7: the value is a scalar, not a sequence (name)");
    ASK(doc["name"].expect(zryaml::Type::none), "c.yml:5:7: the value is a scalar, not absent (name)");
    ASK(doc["no"].expect(zryaml::Type::none), "c.yml:1:1: there is no key \"no\" (no)");
    ASK(doc["grid"].expect(zryaml::Type::sequence), "3 elements");
    ASK(Value().get<int>(), "there is no value");
    // A text is cut before a character, not inside; one that is no text at all, in front.
    const std::string head(58, 'k');
    EXPECT_EQ(doc[head + "\xC3\xA9"].get<int>().error().message, "there is no key \"" + head + "\xC3\xA9\"");
    EXPECT_EQ(doc[head + "k\xC3\xA9"].get<int>().error().message, "there is no key \"" + head + "k...\"");
    EXPECT_EQ(doc[std::string(61, '\x80')].get<int>().error().message, "there is no key \"...\"");
}

#define BROKEN "the key path is malformed: "

TEST(Cxx, PutsArgumentsIntoPathsAsData)
{
    const Document doc = Parsed("a: {b: [p, [q, r]], c.d: dot, '{}': braces, x1: one, '': empty}");
    const std::pair<std::string, std::vector<Value>> astCase[] = {
        {"r", {doc.at("a.b[1][1]"), doc["a"]["b"].at("[1][{}]", int8_t{1}), doc.at("a.b[{}][{}]", 1, 1U)}},
        {"dot", {doc.at("a.c\\.d"), doc.at("{}.{}", "a", std::string("c.d")), doc.at("a.{c.{}}", "d")}},
        {"braces", {doc.at("a.{}", "{}"), doc.at("a.\\{}"), doc.at("{}.\\{\\}", "a")}},
        {"one", {doc.at("a.x{}", 1), doc.at("a.{}1", std::string_view("x"))}},
        {"empty", {doc.at("a.{}"), doc.at("a.{}", "")}},
        {"absent", {doc.at("{}", "a.x1"), doc.at("a.{}", std::string_view("x1\0", 3)), doc.at("a.b[9]")}},
        {"the value is a map, not a scalar", {doc.at("")}},
        {BROKEN "a key is missing after the last '.'", {doc.at("a.")}},
        {BROKEN "a '[' stands after a '.'", {doc.at("a.b.[0]")}},
        {BROKEN "a ']' stands where no index begins", {doc.at("a]"), doc.at("{a]}")}},
        {BROKEN "a '{' is not closed", {doc.at("{a")}},
        {BROKEN "something else than '.' or '[' stands behind a bracket or brace", {doc.at("{a}b")}},
        {BROKEN "a bracket or brace stands inside braces without a backslash", {doc.at("{a[0]}"), doc.at("{a{}")}},
        {BROKEN "an index is not closed by ']'", {doc.at("a.b[1"), doc.at("a.b[{}{}]", 1, 1)}},
        {BROKEN "an index is not a number from 0 on", {doc.at("a.b[99999999999999999999]"), doc.at("a.b[{}]", -1)}},
        {BROKEN "an index is given by a text", {doc.at("a.b[{}]", "1")}},
        {BROKEN "there are fewer arguments than placeholders", {doc.at("a.{}.{}", "b"), doc.at("a.b[{}][{}]", 1)}},
        {BROKEN "there are more arguments than placeholders", {doc.at("a.x1", "b"), doc["a"].at("", 1)}}};
    for (const auto &[outcome, values] : astCase) {
        for (const Value &stValue : values) {
            const Result<std::string> stRead = stValue.get_or("absent");
            EXPECT_EQ(stRead.has_value() ? *stRead : stRead.error().message, outcome) << stValue.path();
        }
    }
}

// Each text with its path. On the way, every value leads back to itself by its path and its key.
std::string Texts(const Document &doc, const Value &stValue)
{
    EXPECT_EQ(doc.at(stValue.path()).node(), stValue.node()) << stValue.path();
    EXPECT_EQ(stValue.empty(), stValue.size() == 0);
    std::string texts = stValue.text() ? stValue.path() + '=' + std::string(*stValue.text()) + ' ' : "";
    for (const Value &stBelow : stValue)
        texts += Texts(doc, stBelow);
    for (auto stItem = stValue.items().begin(); stItem != stValue.items().end();) {
        const auto [key, stBelow] = *stItem++;
        EXPECT_TRUE(stValue[key].node() == stBelow.node() && stValue.at("{}", key).node() == stBelow.node()) << key;
    }
    return texts;
}

TEST(Cxx, WalksMapsAndSequencesAsTheyRead)
{
    const Document doc =
        Parsed("b: &b {x: 1, y: 2}\nm: {y: [3, [], {}, [4]], <<: *b, z: 5}\n"
               "k: {a.b: [6], '[0': {']': 7}, '{a}': [8], '{}': 9, '': {'': 10}, '\\{': [11], 'a\\': 12}");
    EXPECT_EQ(Texts(doc, doc.root()), "b.x=1 b.y=2 m.y[0]=3 m.y[3][0]=4 m.x=1 m.z=5 k.a\\.b[0]=6 k.\\[0.\\]=7 "
                                      "k.\\{a\\}[0]=8 k.\\{\\}=9 k.{}.{}=10 k.\\\\{[0]=11 k.a\\=12 ");
    EXPECT_EQ(doc["m"].size(), 3U);
}

TEST(Cxx, CarriesErrorsOfLoads)
{
    const zryaml::Error stError = Document::parse("{a: 1,\n a: 2}", "c.yml").error();
    EXPECT_EQ(stError.what(), "c.yml:2:2: There is a same scalar in this list. (Scalar=a)");
    EXPECT_EQ(std::tuple(stError.code, stError.first_line, stError.first_column), std::tuple(YAML_ERR_SAME, 1U, 2U));
    EXPECT_EQ(Document::parse("{a: 1,\n a: 2}").error().what(), stError.what().substr(strlen("c.yml:")));
    const zryaml::Error stOther = Document::parse("a: \"b", "x\n\x7F").error();
    EXPECT_EQ(stOther.what().substr(0, 9) + stOther.hint, "x??:1:4: the quote that is opened here is not closed");
    EXPECT_EQ(Document::load("/no").error().what(), "/no: Failed to get real path. (InputFile=/no)");
    EXPECT_EQ(Document::load(std::string("/\0x", 3)).error().message, "the path holds a NUL character");
    Document stFirst = Parsed("");
    EXPECT_EQ(stFirst["a"].get<int>().error().what(), "c.yml: the document is empty (a)");
    EXPECT_EQ(stFirst["a"].get_or(3).value(), 3);
    EXPECT_STREQ(stFirst.name(), "c.yml");
    const Document stSecond = std::move(stFirst);
    EXPECT_EQ(stFirst.at("a").get<int>().error().what(), "there is no document (a)"); // NOLINT: that it has moved
}

TEST(Cxx, ThrowsOnlyWhenAskedTo)
{
    const Document doc = Parsed("[300]");
    try {
        (void)doc[0].get<uint8_t>().or_throw();
        FAIL() << "nothing was thrown";
    } catch (const zryaml::Exception &stException) {
        EXPECT_STREQ(stException.what(), "c.yml:1:2: \"300\" is out of range ([0])");
        EXPECT_EQ(stException.error().hint, "a whole number from 0 to 255 is expected, in decimal, 0x or 0o");
    }
    (void)std::signal(SIGABRT, [](int) { __gcov_exit != nullptr ? __gcov_exit() : void(); });
    EXPECT_DEATH((void)doc[1].get<int>().value(), "there is no element 1");
    EXPECT_DEATH((void)doc[0].get<int>().error(), "holds a value");
}

} // namespace
