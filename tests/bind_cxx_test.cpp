// SPDX-License-Identifier: Apache-2.0
// C++ types read from documents: every kind of member, and the same problems as in C, word for word.
#include "support/bound_record.h"
#include "support/load_text.h"
#include "support/short_memory.h"

#include <zr_yaml/bind.hpp>

#include <gtest/gtest.h>

namespace cxx {

using std::string;

enum class Mode { fast, safe = 7 };
ZRYAML_ENUM(Mode, fast, safe)

struct Limits {
    uint64_t memory = 65536;
    std::chrono::nanoseconds timeout{1'000'000'000};
    float ratio = 0;
};
struct File {
    string path;
};
struct Net {
    string host;
    uint16_t port = 0;
};
struct Tree {
    string name;
    std::vector<Tree> kids;
};
ZRYAML_FIELDS(Tree, name, kids)

struct Machine { // a base, so that members have another offset than in it
    int8_t prio = 0;
    virtual ~Machine() = default;
};
struct Padding {
    uint64_t words[3];
};
struct Server : Padding, Machine {
    string name;
    uint16_t port = 8080;
    bool tls = false;
    std::vector<uint32_t> cores;
    Mode mode = Mode::safe;
    Limits limits;
    std::optional<Limits> extra;
    std::optional<string> note;
    std::unique_ptr<int> weight; // makes it move-only
};
struct Colour {
    uint32_t rgb = 0;
};
using Sink = std::variant<File, Net>;
struct Bound {
    std::vector<Server> servers;
    std::map<string, uint16_t> ports;
    Sink sink;
    std::vector<Sink> sinks;
    Tree tree;
    std::vector<std::chrono::nanoseconds> delays;
    std::vector<string> names;
    Colour colour;
};

template <class T> struct Range {
    T low{}, high{};
};
template <class T>
ZRYAML_FIELDS(Range<T>, low, high)

struct Any {
    std::variant<int, string, bool, std::vector<int>, std::map<string, int>, Tree> value;
    std::pair<int, string> pair;
    std::tuple<int, bool, Range<double>> tuple;
    std::array<int, 2> array{};
    std::unordered_map<string, std::vector<Range<int>>> ranges;
    std::vector<bool> flags;
    std::vector<std::vector<std::optional<int>>> grid;
    std::chrono::minutes minutes{};
    zryaml::Bytes bytes;
};
ZRYAML_FIELDS(Any, value, pair, tuple, array, ranges, flags, grid, minutes, bytes)

} // namespace cxx

namespace zryaml {

template <> struct Fields<cxx::Limits> {
    using T = cxx::Limits;
    static constexpr auto fields()
    {
        return zryaml::fields(field<&T::memory>("memory").bytes().max("1GiB"),
                              field<&T::timeout>("timeout").min("1ms").doc("until it gives up"),
                              field<&T::ratio>("ratio").min("0").max("1"));
    }
};
template <> struct Fields<cxx::File> {
    static constexpr auto fields() { return zryaml::fields(field<&cxx::File::path>("path").required()); }
};
template <> struct Fields<cxx::Net> {
    static constexpr bool ignore_unknown = true;
    static constexpr auto fields()
    {
        return zryaml::fields(field<&cxx::Net::host>("host").required(), field<&cxx::Net::port>("port"));
    }
};
template <> struct Fields<cxx::Server> {
    using T = cxx::Server;
    static constexpr const char *doc = "one machine";
    static constexpr auto fields()
    {
        return zryaml::fields(field<&T::name>("name").required().doc("name of the host"),
                              field<&T::port>("port").min("1").old_key("prt"), field<&T::tls>("tls"),
                              field<&T::cores>("cores").max_count(3).max("63"), field<&T::prio>("prio"),
                              field<&T::mode>("mode"), field<&T::limits>("limits"), field<&T::extra>("extra"),
                              field<&T::note>("note"), field<&T::weight>("weight").min("-5"));
    }
    static std::string check(const T &server)
    {
        return server.tls && server.port == 80 ? "port 80 is not for tls" : "";
    }
};
template <> struct Convert<cxx::Colour> {
    static Result<cxx::Colour> read(const Value &value)
    {
        const std::string text(value.text().value_or(""));
        if (text.substr(0, 1) == "#")
            return cxx::Colour{static_cast<uint32_t>(std::stoul(text.substr(1), nullptr, 16))};
        Error error;
        error.message = "a colour begins with #";
        return error;
    }
};
template <> struct Fields<cxx::Bound> {
    using T = cxx::Bound;
    static constexpr auto fields()
    {
        return zryaml::fields(field<&T::servers>("servers").min_count(1), field<&T::ports>("ports").min("7"),
                              field<&T::sink>("sink").chosen_by("to", "file", "net"), field<&T::sinks>("sinks"),
                              field<&T::tree>("tree"), field<&T::delays>("delays").max("1h"), field<&T::names>("names"),
                              field<&T::colour>("colour"));
    }
};

} // namespace zryaml

namespace {

using zryaml::Document;

struct BindCxx : Recorded {};

std::string InC(const Document &document)
{
    Bound bound = {};
    YamlProblems *list = nullptr;
    (void)ZRYAML_RecordRead(document.handle(), nullptr, &BoundRecord, &bound, &list);
    const std::string told = zryaml::Problems(list).what();
    ZRYAML_ProblemsFree(list);
    return told;
}

struct W {
    int a0, a1, a2, a3, a4, a5, a6, a7, a8, a9, b0, b1, b2, b3, b4, b5, b6, b7, b8, b9, c0, c1, c2, c3, c4, c5, c6, c7,
        c8, c9, d0, d1, d2, d3, d4, d5, d6, d7, d8, d9, e0, e1, e2, e3, e4, e5, e6, e7, e8, e9, f0, f1, f2, f3, f4, f5,
        f6, f7, f8, f9, g0, g1, g2, g3;
};
ZRYAML_FIELDS(W, a0, a1, a2, a3, a4, a5, a6, a7, a8, a9, b0, b1, b2, b3, b4, b5, b6, b7, b8, b9, c0, c1, c2, c3, c4, c5,
              c6, c7, c8, c9, d0, d1, d2, d3, d4, d5, d6, d7, d8, d9, e0, e1, e2, e3, e4, e5, e6, e7, e8, e9, f0, f1,
              f2, f3, f4, f5, f6, f7, f8, f9, g0, g1, g2, g3)

} // namespace

TEST_F(BindCxx, FillsMembersOfEveryKind)
{
    const Document doc =
        Document::parse("servers:\n  - {name: a, cores: [1, 0x3], mode: fast, limits: {ratio: 0.5}, weight: -4,\n"
                        "     prio: -7, note: hi}\n  - {name: b, prt: 99, extra: {timeout: 2m}, note: ~}\n"
                        "ports: {http: 80}\nsink: {to: net, host: h}\nsinks: [{path: p}]\n"
                        "tree: {kids: [{kids: [{name: deep}]}]}\ndelays: [1ms]\nnames: [x]\ncolour: '#ff'\n")
            .or_throw();
    zryaml::Problems notes;
    const auto bound = zryaml::bind<cxx::Bound>(doc, &notes);
    ASSERT_TRUE(bound) << bound.error().what();
    EXPECT_EQ(notes.what(), InC(doc).substr(0, notes.what().size()));
    const cxx::Server &a = bound->servers[0], &b = bound->servers[1];
    EXPECT_TRUE(a.cores == (std::vector<uint32_t>{1, 3}) && a.mode == cxx::Mode::fast && a.limits.ratio == 0.5F);
    EXPECT_TRUE(*a.weight == -4 && a.prio == -7 && a.note == "hi" && a.port == 8080 && !a.extra);
    EXPECT_TRUE(b.port == 99 && b.extra->timeout == std::chrono::minutes(2) && !b.note && b.mode == cxx::Mode::safe);
    EXPECT_TRUE(std::get<cxx::Net>(bound->sink).host == "h" && std::get<cxx::File>(bound->sinks[0]).path == "p");
    EXPECT_TRUE(bound->ports.at("http") == 80 && bound->tree.kids[0].kids[0].name == "deep");
    EXPECT_TRUE(bound->delays[0].count() == 1'000'000 && bound->names[0] == "x" && bound->colour.rgb == 255);

    const auto wide = zryaml::bind<W>(Document::parse("{a0: 1, g3: 64}").or_throw());
    EXPECT_TRUE(wide && wide->a0 == 1 && wide->g3 == 64);
    const auto numbers = zryaml::bind<std::vector<int>>(Document::parse("[1, 2]").or_throw());
    EXPECT_TRUE(numbers && numbers->size() == 2);
}

TEST_F(BindCxx, ReadsContainersAndVariants)
{
    struct {
        const char *document;
        size_t alternative;
        const char *problems;
    } const rows[] = {
        {"{value: 7, pair: [1, x], tuple: [2, on, {low: 1.5}], array: [3, 4], flags: [on, off],\n"
         "ranges: {a: [{low: 1}], b: []}, grid: [[1, ~], []], minutes: 2h, bytes: 1KiB}",
         0, ""},
        {"value: yes", 2, ""},
        {"value: text", 1, ""},
        {"value: [1]", 3, ""},
        {"value: {a: 1}", 4, ""},
        {"value: {name: a, kids: []}", 5, ""},
        {"value: {}", 0, "doc:1:8: error: value: the value fits more than one alternative\n"},
        {"value: {name: a, kids: [1, 2, 3, 4]}", 0, // a map of integers has fewer problems
         "doc:1:15: error: value.name: 'a' is not an integer\n"
         "doc:1:15: note: an integer from -2147483648 to 2147483647 is expected\n"
         "doc:1:24: error: value.kids: the value is a sequence, not a scalar\n"},
        {"{pair: [1], tuple: [x, maybe, []], array: [1, 2, 3], flags: [7], minutes: 30s, bytes: 1.5,\n"
         "ranges: {a: 1, b: [{lo: 1}]}, grid: [1]}",
         0,
         "doc:1:8: error: pair: the sequence has 1 element, not 2\n"
         "doc:1:21: error: tuple[0]: 'x' is not an integer\n"
         "doc:1:21: note: an integer from -2147483648 to 2147483647 is expected\n"
         "doc:1:24: error: tuple[1]: 'maybe' is not a boolean\n"
         "doc:1:24: note: true or false, yes or no, on or off is expected\n"
         "doc:1:31: error: tuple[2]: the value is a sequence, not a map\n"
         "doc:1:43: error: array: the sequence has 3 elements, not 2\n"
         "doc:1:61: error: flags: '7' is not a boolean\n"
         "doc:1:75: error: minutes: '30s' is finer than the unit it is read in\n"
         "doc:1:75: note: a duration such as 500ms, 10s or 1h30m is expected\n"
         "doc:1:87: error: bytes: '1.5' is no whole number of bytes\n"
         "doc:1:87: note: a size such as 512, 64KiB or 1.5GB is expected\n"
         "doc:2:13: error: ranges.a: the value is a scalar, not a sequence\n"
         "doc:2:21: error: ranges.b[0]: unknown key 'lo'\n"
         "doc:2:21: note: did you mean 'low'?\n"
         "doc:2:38: error: grid[0]: the value is a scalar, not a sequence\n"},
    };
    for (const auto &row : rows) {
        const Document doc = Document::parse(row.document, "doc").or_throw();
        const auto any = zryaml::bind<cxx::Any>(doc);
        EXPECT_EQ(any ? "" : any.error().what(), row.problems);
        EXPECT_TRUE(!any || any->value.index() == row.alternative) << row.document;
    }
    const Document doc = Document::parse("{a: 1}", "doc").or_throw();
    EXPECT_EQ(zryaml::bind<cxx::Any>(doc["b"]["c"]).error()[0].path, "b.c");
}

TEST_F(BindCxx, TellsWhatCTellsWordForWord)
{
    const Document doc =
        Document::parse("x-p: &p {port: 80, tls: on}\n"
                        "servers: [{name: a, <<: *p}, {name: b, prt: 1, port: 2, cores: [1, 2, 3, 4]}]\n"
                        "sink: {to: fil, path: p}\ndelays: [2h]\nnames: {}\ncolour: fff\n",
                        "doc")
            .or_throw();
    EXPECT_EQ(zryaml::bind<cxx::Bound>(doc).error().what(), InC(doc));
}

TEST_F(BindCxx, WritesASampleWithTheInitialValues)
{
    const std::string sample = zryaml::sample<cxx::Bound>(), limits = zryaml::sample<cxx::Limits>();
    EXPECT_EQ(limits, "# size such as 64KiB, at most 1GiB\nmemory: 64KiB\n# until it gives up\n"
                      "# duration such as 10s, at least 1ms\ntimeout: 1s\n# number, 0 to 1\nratio: 0\n");
    for (const std::string &text : {sample, "{servers: [" + std::string("{name: a}]}")}) {
        const auto bound = zryaml::bind<cxx::Bound>(Document::parse(text).or_throw());
        EXPECT_TRUE(bound) << text << bound.error().what();
    }
    EXPECT_TRUE(zryaml::bind<cxx::Any>(Document::parse(zryaml::sample<cxx::Any>()).or_throw()));
    const Document schema = Document::parse(zryaml::schema<cxx::Any>()).or_throw();
    EXPECT_TRUE(schema["properties"]["ranges"].exists());
    EXPECT_EQ(schema["properties"]["tuple"]["type"][0].get_or("").value(), "array");
    EXPECT_NE(zryaml::environment<cxx::Bound>("X_").find("X_SERVERS__0__MODE  # one of fast, safe, default safe\n"),
              std::string::npos);
}

TEST_F(BindCxx, SaysSoWhereMemoryIsShort)
{
    const Document doc = Document::parse("servers: [{name: a name that is no short one, weight: 1, extra: {}}]\n"
                                         "ports: {http: 80}\ntree: {kids: [{name: x}]}\n")
                             .or_throw();
    bool done = !CanBeShort;
    for (size_t news = 0; !done; ++news) {
        try {
            const ShortMemory memory(news);
            const auto bound = zryaml::bind<cxx::Bound>(doc);
            done = bound.has_value();
            ASSERT_TRUE(done || bound.error()[0].code == YAML_ERR_NOMEM) << bound.error().what();
        } catch (const std::bad_alloc &) { // of the error itself
        }
    }
}
