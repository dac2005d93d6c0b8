// SPDX-License-Identifier: Apache-2.0
// The C++ face: what typed reads take and refuse, absent against wrong, key paths with data in them, and walks.
#include <zr_base.h>
#include <zr_yaml.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace {

using namespace std::chrono;
using zryaml::Document;
using zryaml::Error;
using zryaml::Result;
using zryaml::Value;

Document Parsed(std::string_view svText)
{
    return Document::parse(svText, "conf.yaml").or_throw();
}

// A value as text, so that one table serves all types.
template <class T> std::string Text(const T &stValue)
{
    std::ostringstream out;
    if constexpr (std::is_floating_point_v<T>)
        out << std::hexfloat << (std::signbit(stValue) ? "-" : "") << std::abs(stValue);
    else if constexpr (sizeof(T) == 1)
        out << static_cast<int>(stValue);
    else
        out << stValue;
    return out.str();
}

template <class Rep, class Period> std::string Text(const duration<Rep, Period> &stValue)
{
    return Text(stValue.count());
}

template <class T> std::string Text(const std::vector<T> &values)
{
    std::string text;
    for (const T &stValue : values)
        text += Text(stValue) + ' ';
    return text;
}

// What a read gave: the value, or the line that the error makes.
template <class T> std::string Shown(const Result<T> &stResult)
{
    return stResult.has_value() ? Text(*stResult) : stResult.error().what();
}

template <class T> std::string Read(Value stValue)
{
    const Result<T> stRead = stValue.get<T>();
    return stRead.has_value() ? Text(*stRead) : stRead.error().message;
}

using Days = duration<int32_t, std::ratio<86400>>;
using Reader = std::string (*)(Value);

struct ReadCase {
    int iLine;
    Reader pRead;
    const char *pcText, *pcShown; // "is ..." stands for the refusal of the text
};
constexpr const char *g_pcNotWhole = "is not a whole number", *g_pcRange = "is out of range";
constexpr const char *g_pcNotNumber = "is not a number", *g_pcNotBool = "is not a boolean";
constexpr const char *g_pcNotDuration = "is not a duration", *g_pcFiner = "is finer than the unit it is read in";

const ReadCase g_astRead[] = {
    {__LINE__, Read<int8_t>, "-128", "-128"},
    {__LINE__, Read<int8_t>, "-129", g_pcRange},
    {__LINE__, Read<int8_t>, "127", "127"},
    {__LINE__, Read<int8_t>, "128", g_pcRange},
    {__LINE__, Read<uint8_t>, "255", "255"},
    {__LINE__, Read<uint8_t>, "256", g_pcRange},
    {__LINE__, Read<uint8_t>, "-1", g_pcRange},
    {__LINE__, Read<uint8_t>, "-0", "0"},
    {__LINE__, Read<int16_t>, "-32768", "-32768"},
    {__LINE__, Read<int16_t>, "-0x8001", g_pcRange},
    {__LINE__, Read<int16_t>, "32768", g_pcRange},
    {__LINE__, Read<uint16_t>, "65535", "65535"},
    {__LINE__, Read<uint16_t>, "65536", g_pcRange},
    {__LINE__, Read<int32_t>, "-2147483648", "-2147483648"},
    {__LINE__, Read<int32_t>, "-2147483649", g_pcRange},
    {__LINE__, Read<int32_t>, "2147483648", g_pcRange},
    {__LINE__, Read<uint32_t>, "0xFFFFffff", "4294967295"},
    {__LINE__, Read<uint32_t>, "4294967296", g_pcRange},
    {__LINE__, Read<int64_t>, "-9223372036854775808", "-9223372036854775808"},
    {__LINE__, Read<int64_t>, "-9223372036854775809", g_pcRange},
    {__LINE__, Read<long long>, "9223372036854775807", "9223372036854775807"},
    {__LINE__, Read<int64_t>, "9223372036854775808", g_pcRange},
    {__LINE__, Read<uint64_t>, "18446744073709551615", "18446744073709551615"},
    {__LINE__, Read<unsigned long long>, "18446744073709551616", g_pcRange},
    {__LINE__, Read<uint64_t>, "0o2000000000000000000000", g_pcRange},
    {__LINE__, Read<int>, "08", "8"},
    {__LINE__, Read<int>, "010", "10"},
    {__LINE__, Read<int>, "+5", "5"},
    {__LINE__, Read<int>, "-0x1f", "-31"},
    {__LINE__, Read<int>, "0o17", "15"},
    {__LINE__, Read<int>, "0o8", g_pcNotWhole},
    {__LINE__, Read<int>, "0o", g_pcNotWhole},
    {__LINE__, Read<int>, "0x", g_pcNotWhole},
    {__LINE__, Read<int>, "0xg", g_pcNotWhole},
    {__LINE__, Read<int>, "0x-5", g_pcNotWhole},
    {__LINE__, Read<int>, "0X5", g_pcNotWhole},
    {__LINE__, Read<int>, "+-5", g_pcNotWhole},
    {__LINE__, Read<int>, "--5", g_pcNotWhole},
    {__LINE__, Read<int>, "+", g_pcNotWhole},
    {__LINE__, Read<int>, "", g_pcNotWhole},
    {__LINE__, Read<int>, " 5", g_pcNotWhole},
    {__LINE__, Read<int>, "5 ", g_pcNotWhole},
    {__LINE__, Read<int>, "5k", g_pcNotWhole},
    {__LINE__, Read<int>, "99999999999999999999k", g_pcNotWhole},
    {__LINE__, Read<int>, "5.0", g_pcNotWhole},
    {__LINE__, Read<int>, "1_000", g_pcNotWhole},
    {__LINE__, Read<int>, "1,000", g_pcNotWhole},
    {__LINE__, Read<int>, "٣", g_pcNotWhole},
    {__LINE__, Read<int>, "true", g_pcNotWhole},
    {__LINE__, Read<bool>, "Yes", "1"},
    {__LINE__, Read<bool>, "ON", "1"},
    {__LINE__, Read<bool>, "false", "0"},
    {__LINE__, Read<bool>, "Off", "0"},
    {__LINE__, Read<bool>, "tRUE", g_pcNotBool},
    {__LINE__, Read<bool>, "y", g_pcNotBool},
    {__LINE__, Read<bool>, "1", g_pcNotBool},
    {__LINE__, Read<bool>, "", g_pcNotBool},
    {__LINE__, Read<bool>, "true ", g_pcNotBool},
    {__LINE__, Read<double>, "-0", "-0x0p+0"},
    {__LINE__, Read<double>, "+1.5", "0x1.8p+0"},
    {__LINE__, Read<double>, ".5", "0x1p-1"},
    {__LINE__, Read<double>, "5.", "0x1.4p+2"},
    {__LINE__, Read<double>, "010", "0x1.4p+3"},
    {__LINE__, Read<double>, "1.7976931348623157e308", "0x1.fffffffffffffp+1023"},
    {__LINE__, Read<double>, "1e400", g_pcRange},
    {__LINE__, Read<double>, "-1e400", g_pcRange},
    {__LINE__, Read<double>, "1e-400", g_pcRange},
    {__LINE__, Read<float>, "1e39", g_pcRange},
    {__LINE__, Read<float>, "0.1", "0x1.99999ap-4"},
    {__LINE__, Read<double>, "-.Inf", "-inf"},
    {__LINE__, Read<float>, "+.inf", "inf"},
    {__LINE__, Read<double>, ".NaN", "nan"},
    {__LINE__, Read<double>, "-.nan", g_pcNotNumber},
    {__LINE__, Read<double>, "inf", g_pcNotNumber},
    {__LINE__, Read<double>, "-inf", g_pcNotNumber},
    {__LINE__, Read<double>, "NAN", g_pcNotNumber},
    {__LINE__, Read<double>, "nan(1)", g_pcNotNumber},
    {__LINE__, Read<double>, "--1", g_pcNotNumber},
    {__LINE__, Read<double>, "+-1", g_pcNotNumber},
    {__LINE__, Read<double>, "0x10", g_pcNotNumber},
    {__LINE__, Read<double>, "1,5", g_pcNotNumber},
    {__LINE__, Read<double>, "1e", g_pcNotNumber},
    {__LINE__, Read<double>, ".", g_pcNotNumber},
    {__LINE__, Read<double>, "", g_pcNotNumber},
    {__LINE__, Read<double>, " 1", g_pcNotNumber},
    {__LINE__, Read<milliseconds>, "250ms", "250"},
    {__LINE__, Read<milliseconds>, "-5s", "-5000"},
    {__LINE__, Read<nanoseconds>, "1us", "1000"},
    {__LINE__, Read<seconds>, "2min", "120"},
    {__LINE__, Read<seconds>, "3h", "10800"},
    {__LINE__, Read<hours>, "2d", "48"},
    {__LINE__, Read<Days>, "48h", "2"},
    {__LINE__, Read<Days>, "47h", g_pcFiner},
    {__LINE__, Read<seconds>, "1500ms", g_pcFiner},
    {__LINE__, Read<seconds>, "3000ms", "3"},
    {__LINE__, Read<nanoseconds>, "106751d", "9223286400000000000"},
    {__LINE__, Read<nanoseconds>, "106752d", g_pcRange},
    {__LINE__, Read<nanoseconds>, "999999999999d", g_pcRange},
    {__LINE__, Read<seconds>, "99999999999999999999s", g_pcRange},
    {__LINE__, Read<duration<uint8_t>>, "256s", g_pcRange},
    {__LINE__, Read<duration<uint8_t>>, "-1s", g_pcRange},
    {__LINE__, Read<seconds>, "5", g_pcNotDuration},
    {__LINE__, Read<seconds>, "5m", g_pcNotDuration},
    {__LINE__, Read<seconds>, "5 s", g_pcNotDuration},
    {__LINE__, Read<seconds>, "1.5s", g_pcNotDuration},
    {__LINE__, Read<seconds>, "1h30min", g_pcNotDuration},
    {__LINE__, Read<seconds>, "s", g_pcNotDuration},
    {__LINE__, Read<seconds>, "0x5s", g_pcNotDuration},
    {__LINE__, Read<std::string>, " as it is ", " as it is "},
    {__LINE__, Read<std::string_view>, "", ""},
};

constexpr std::string_view g_svConf = "servers:\n"
                                      "  - {host: a, port: 80}\n"
                                      "  - {host: b, port: 8O80}\n"
                                      "env:\n"
                                      "name: zr\n"
                                      "grid: [[1, 2], [], [3]]\n"
                                      "bad: [[1], [2, x]]\n";

struct AnswerCase {
    int iLine;
    std::string (*pAsk)(const Document &);
    const char *pcAnswer; // the value or the whole error line
};
#define ASK(stRead) []([[maybe_unused]] const Document &doc) { return Shown(stRead); }
const AnswerCase g_astAnswer[] = {
    {__LINE__, ASK(doc["servers"][0]["port"].get<int>()), "80"},
    {__LINE__, ASK(doc["servers"][0]["port"].get_or(1)), "80"},
    {__LINE__, ASK(doc["servers"][1]["port"].get_or(1)),
     "conf.yaml:3:21: \"8O80\" is not a whole number (servers[1].port)"},
    {__LINE__, ASK(doc["servers"][1]["port"].get<int>().value_or(1)),
     "conf.yaml:3:21: \"8O80\" is not a whole number (servers[1].port)"},
    {__LINE__, ASK(doc["servers"][0]["tls"].get_or(1)), "1"},
    {__LINE__, ASK(doc["servers"][0]["tls"].get<int>().value_or(1)), "1"},
    {__LINE__, ASK(doc["servers"][2]["port"].get_or(1)), "1"},
    {__LINE__, ASK(doc["env"]["PATH"].get_or("/bin")), "/bin"},
    {__LINE__, ASK(doc["env"][0].get_or<uint8_t>(7)), "7"},
    {__LINE__, ASK(doc["env"].get_or(1)), "conf.yaml:4:5: \"\" is not a whole number (env)"},
    {__LINE__, ASK(doc["servers"][0]["tls"]["key"][3].get<int>()),
     "conf.yaml:2:5: there is no key \"tls\" (servers[0].tls.key[3])"},
    {__LINE__, ASK(doc["servers"][2].get<int>()), "conf.yaml:2:3: there is no element 2 (servers[2])"},
    {__LINE__, ASK(doc["servers"][-1].get_or(1)),
     "conf.yaml:2:3: the key path is malformed: an index is negative (servers[-1])"},
    {__LINE__, ASK(doc["no"][-1].get_or(1)), "conf.yaml:1:1: the key path is malformed: an index is negative (no[-1])"},
    {__LINE__, ASK(doc["servers"][4294967296U].get_or(5)), "5"},
    {__LINE__, ASK(doc["no"]["a.b"][""].get<int>()), "conf.yaml:1:1: there is no key \"no\" (no.a\\.b.{})"},
    {__LINE__, ASK(doc["name"]["x"].get_or(1)),
     "conf.yaml:5:7: no key \"x\": the value above it is a scalar, not a map (name.x)"},
    {__LINE__, ASK(doc["servers"]["x"].get_or(1)),
     "conf.yaml:2:3: no key \"x\": the value above it is a sequence, not a map (servers.x)"},
    {__LINE__, ASK(doc[0].get_or(1)), "conf.yaml:1:1: no element 0: the value above it is a map, not a sequence ([0])"},
    {__LINE__, ASK(doc["servers"].get_or("x")), "conf.yaml:2:3: the value is a sequence, not a scalar (servers)"},
    {__LINE__, ASK(doc.at("a..b[").get_or(1)),
     "conf.yaml:1:1: the key path is malformed: an index is not a number from 0 on (a..b[)"},
    {__LINE__, ASK(doc["grid"][0].get<std::vector<int>>()), "1 2 "},
    {__LINE__, ASK(doc["grid"].get<std::vector<std::vector<int>>>()), "1 2   3  "},
    {__LINE__, ASK(doc["bad"].get<std::vector<std::vector<int>>>()),
     "conf.yaml:7:16: \"x\" is not a whole number (bad[1][1])"},
    {__LINE__, ASK(doc["name"].get<std::vector<int>>()), "conf.yaml:5:7: the value is a scalar, not a sequence (name)"},
    {__LINE__, ASK(doc["no"].get_or(std::vector<int>{4})), "4 "},
    {__LINE__, ASK(Result<bool>(doc["name"].expect(zryaml::Type::map).error())),
     "conf.yaml:5:7: the value is a scalar, not a map (name)"},
    {__LINE__, ASK(Result<bool>(doc["no"].expect(zryaml::Type::none).error())),
     "conf.yaml:1:1: there is no key \"no\" (no)"},
    {__LINE__, ASK(Value().get<int>()), "there is no value"},
};
#undef ASK

struct PathCase {
    int iLine;
    Value stFound;
    const char *pcText; // of the scalar, or the problem of the path, or "absent"
};

std::string Answer(const Value &stValue)
{
    const auto stRead = stValue.get<std::string>();
    if (stRead.has_value())
        return *stRead;
    const Error &stError = stRead.error();
    const std::string prefix = "the key path is malformed: ";
    return stError.is_absent() ? "absent"
                               : stError.message.substr(stError.message.find(prefix) == 0 ? prefix.size() : 0);
}

// Paths with arguments, and what they find.
std::vector<PathCase> PathCases(const Document &doc)
{
    return {
        {__LINE__, doc.at("a.b[0]"), "p"},
        {__LINE__, doc.at("a.b[1][1]"), "r"},
        {__LINE__, doc.at("a.b[{}][{}]", 1, 0U), "q"},
        {__LINE__, doc["a"]["b"].at("[1][{}]", int8_t{1}), "r"},
        {__LINE__, doc.at("a.c\\.d"), "dot"},
        {__LINE__, doc.at("a.{c.d}"), "dot"},
        {__LINE__, doc.at("{}.{}", "a", std::string("c.d")), "dot"},
        {__LINE__, doc.at("a.{c.{}}", "d"), "dot"},
        {__LINE__, doc.at("a.{}", "{}"), "braces"},
        {__LINE__, doc.at("a.\\{}"), "braces"},
        {__LINE__, doc.at("{}.\\{\\}", "a"), "braces"},
        {__LINE__, doc.at("a.x{}", 1), "one"},
        {__LINE__, doc.at("a.{}1", std::string_view("x")), "one"},
        {__LINE__, doc.at("a.{}"), "empty"},
        {__LINE__, doc.at("a.{}", ""), "empty"},
        {__LINE__, doc.at("%s%n"), "percent"},
        {__LINE__, doc.at("{}", "%s%n"), "percent"},
        {__LINE__, doc.at("{}", "a.x1"), "absent"},
        {__LINE__, doc.at("a.b[9]"), "absent"},
        {__LINE__, doc.at("a.{}", std::string_view("x1\0", 3)), "absent"},
        {__LINE__, doc.at(""), "the value is a map, not a scalar"},
        {__LINE__, doc.at("a."), "a key is missing after the last '.'"},
        {__LINE__, doc.at("a.b.[0]"), "a '[' stands after a '.'"},
        {__LINE__, doc.at("a]"), "a ']' stands where no index begins"},
        {__LINE__, doc.at("{a"), "a '{' is not closed"},
        {__LINE__, doc.at("{a}b"), "something else than '.' or '[' stands behind a bracket or brace"},
        {__LINE__, doc.at("{a[0]}"), "a bracket or brace stands inside braces without a backslash"},
        {__LINE__, doc.at("a.b[1"), "an index is not closed by ']'"},
        {__LINE__, doc.at("a.b[]"), "an index is not a number from 0 on"},
        {__LINE__, doc.at("a.b[99999999999999999999]"), "an index is not a number from 0 on"},
        {__LINE__, doc.at("a.b[{}]", -1), "an index is not a number from 0 on"},
        {__LINE__, doc.at("a.b[{}]", "1"), "an index is given by a text"},
        {__LINE__, doc.at("a.b[{}{}]", 1, 1), "an index is not closed by ']'"},
        {__LINE__, doc.at("a.{}.{}", "b"), "there are fewer arguments than placeholders"},
        {__LINE__, doc.at("a.b[{}][{}]", 1), "there are fewer arguments than placeholders"},
        {__LINE__, doc.at("a.x1", "b"), "there are more arguments than placeholders"},
        {__LINE__, doc.at("no.{}", "b", 1), "there are more arguments than placeholders"},
    };
}

struct WalkCase {
    int iLine;
    const char *pcDocument, *pcTree;
};
constexpr WalkCase g_astWalk[] = {
    {__LINE__, "", ""},
    {__LINE__, "{}", "{}"},
    {__LINE__, "[[], {}, [x, {a: []}]]", "[[],{},[x,{a:[]}]]"},
    {__LINE__, "b: &b {x: 1, y: 2}\nm: {<<: *b, y: [3], z: 4}", "{b:{x:1,y:2},m:{x:1,y:[3],z:4}}"},
    {__LINE__, "b: &b {x: 1}\nm: {x: 0, <<: *b}\nn: *b", "{b:{x:1},m:{x:0},n:{x:1}}"},
    {__LINE__, "b: &b {x: 1, y: 2, z: 3}\nm: &m {<<: *b, x: a, y: b, z: c}\nn: {<<: *m, y: d}\ns: [*m, *b]",
     "{b:{x:1,y:2,z:3},m:{x:a,y:b,z:c},n:{x:a,y:d,z:c},s:[{x:a,y:b,z:c},{x:1,y:2,z:3}]}"},
    {__LINE__, "s: &s [{x: 1}, {y: 2, x: 9}]\nm: {<<: *s, x: o, '': e}", "{s:[{x:1},{y:2,x:9}],m:{x:o,:e,y:2}}"},
};

std::string TreeInC(const YamlListNode *pstValue)
{
    const uint32_t uiType = ZRYAML_ValueTypeGet(pstValue);
    if (uiType == YAML_DATATYPE_SCALAR)
        return ZRYAML_ValueTextGet(pstValue);
    std::string text;
    YamlChild stChild{};
    while (ZRYAML_ChildNextGet(pstValue, &stChild) == YAML_OK)
        text += (stChild.uiIndex > 0 ? "," : "") + (stChild.pcKey != nullptr ? std::string(stChild.pcKey) + ":" : "") +
                TreeInC(stChild.pstValue);
    return uiType == YAML_DATATYPE_NONE ? text : uiType == YAML_DATATYPE_MAP ? '{' + text + '}' : '[' + text + ']';
}

std::string TreeInCxx(const Value &stValue)
{
    std::string text;
    for (auto [key, stBelow] : stValue.items())
        text += (text.empty() ? "" : ",") + std::string(key) + ":" + TreeInCxx(stBelow);
    if (stValue.is_map())
        return '{' + text + '}';
    for (const Value &stElement : stValue)
        text += (text.empty() ? "" : ",") + TreeInCxx(stElement);
    return stValue.is_sequence() ? '[' + text + ']' : std::string(stValue.text().value_or(""));
}

// Every value leads back to itself by its path, its index or its key.
void BackCheck(const Document &stDocument, const Value &stValue)
{
    EXPECT_EQ(stDocument.at(stValue.path()).node(), stValue.node()) << stValue.path();
    size_t ulIndex = 0;
    for (const Value &stElement : stValue) {
        EXPECT_EQ(stValue[ulIndex].node(), stValue.is_sequence() ? stElement.node() : nullptr);
        ++ulIndex;
        BackCheck(stDocument, stElement);
    }
    for (auto [key, stBelow] : stValue.items())
        EXPECT_EQ(stValue[key].node(), stBelow.node());
    EXPECT_EQ(stValue.size(), ulIndex);
    EXPECT_EQ(stValue.empty(), ulIndex == 0);
}

} // namespace

TEST(Cxx, ReadsTheWholeTextOrNothing)
{
    for (const ReadCase &stCase : g_astRead) {
        SCOPED_TRACE(stCase.iLine);
        const std::string text = stCase.pcText;
        const Document stDocument = Parsed("[\"" + text + "\"]");
        const bool bRefused = std::string_view(stCase.pcShown).substr(0, 3) == "is ";
        EXPECT_EQ(stCase.pRead(stDocument[0]), bRefused ? '"' + text + "\" " + stCase.pcShown : stCase.pcShown);
    }
}

TEST(Cxx, TellsAbsentFromWrong)
{
    const Document stDocument = Parsed(g_svConf);
    for (const AnswerCase &stCase : g_astAnswer) {
        SCOPED_TRACE(stCase.iLine);
        EXPECT_EQ(stCase.pAsk(stDocument), stCase.pcAnswer);
    }
    const Document stEmpty = Parsed("");
    EXPECT_EQ(stEmpty.root().get_or(3).value(), 3);

    const std::string key = std::string(59, 'k') + "\xC3\xA9\xC3\xA9"; // cut before a character, not inside
    EXPECT_EQ(stDocument[key].get<int>().error().message, "there is no key \"" + key.substr(0, 59) + "...\"");
}

TEST(Cxx, PutsArgumentsIntoPathsAsData)
{
    const Document stPaths = Parsed("a: {b: [p, [q, r]], c.d: dot, '{}': braces, x1: one, '': empty}\n"
                                    "'%s%n': percent\n");
    for (const PathCase &stCase : PathCases(stPaths)) {
        SCOPED_TRACE(stCase.iLine);
        EXPECT_EQ(Answer(stCase.stFound), stCase.pcText);
    }
    for (const char *pcKey : {"a.b", "a[0]", "[0]", "{a}", "{}", "{{", "}", "]", ".", "%d%s%n", "", " ", "a\\", "a\\.b",
                              "\\", "\\\\{", "é", "a:b"}) {
        SCOPED_TRACE(pcKey);
        const Document stDocument = Parsed("{'" + std::string(pcKey) + "': {in: [x]}, a: {b: [y]}, a.in: z}");
        const Value stBelow = stDocument.at("{}.in[{}]", pcKey, 0);
        EXPECT_EQ(stBelow.text(), "x");
        EXPECT_EQ(stDocument[pcKey]["in"][0].node(), stBelow.node());
        const bool bPath = *pcKey == '\0' || std::string_view(pcKey).back() != '\\';
        EXPECT_EQ(stDocument.at(stBelow.path()).node() == stBelow.node(), bPath);
        EXPECT_EQ(stDocument.at("a.{}", pcKey).get<int>().error().is_absent(), true);
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
        if (!stFound || pstInC == nullptr)
            continue;
        ++ulFound;
        EXPECT_EQ(stFound.node(), pstInC) << path;
    }
    ZR_LogLevelSet(uiLevel);
    EXPECT_GT(ulFound, 15U);
}

TEST(Cxx, WalksTheTreeThatCWalks)
{
    for (const WalkCase &stCase : g_astWalk) {
        SCOPED_TRACE(stCase.iLine);
        const Document stDocument = Parsed(stCase.pcDocument);
        EXPECT_EQ(TreeInC(ZRYAML_RootGet(stDocument.handle())), stCase.pcTree);
        EXPECT_EQ(TreeInCxx(stDocument.root()), stCase.pcTree);
        BackCheck(stDocument, stDocument.root());
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
    EXPECT_STREQ(stSecond.name(), "conf.yaml");
}

TEST(Cxx, CarriesErrorsOfLoads)
{
    const Error stError = Document::parse("a: 1\nb: 2\n\na: 3\n", "conf.yaml").error();
    EXPECT_EQ(stError.what(), "conf.yaml:4:1: There is a same scalar in this list. (Scalar=a)");
    EXPECT_EQ(stError.code, YAML_ERR_SAME);
    EXPECT_EQ(stError.first_line, 1U);
    EXPECT_EQ(stError.first_column, 1U);
    EXPECT_FALSE(Document::parse("a: \"b", "x\ny").error().hint.empty());
    EXPECT_EQ(Document::parse("a: \"b", "x\ny").error().what().rfind("x?y:", 0), 0U);
    const std::string missing = "/nonexistent.yaml";
    EXPECT_EQ(Document::load(missing).error().file, missing);
    EXPECT_FALSE(Document::load(missing).error().is_absent());
    EXPECT_FALSE(Document::load(std::string("/\0x", 3)).has_value());
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
        EXPECT_STREQ(stException.what(), "conf.yaml:1:2: \"300\" is out of range ([0])");
        EXPECT_EQ(stException.error().hint, "a whole number from 0 to 255 is expected, in decimal, 0x or 0o");
    }
    EXPECT_DEATH((void)stDocument[1].get<int>().value(), "there is no element 1");
    EXPECT_DEATH((void)stDocument[0].get<int>().error(), "holds a value");
}
