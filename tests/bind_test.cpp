// SPDX-License-Identifier: Apache-2.0
// Records read from documents: what they hold, every problem at its place, and that a record is complete or untouched.
#include "support/bound_record.h"
#include "support/load_text.h"

#include <cstring>
#include <map>
#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace {

using std::string;

// All problems, a line each, as they print without the file's name.
string Printed(YamlProblems *problems)
{
    char *text = nullptr;
    size_t size = 0;
    FILE *file = open_memstream(&text, &size);
    ZRYAML_ProblemsPrint(problems, file);
    (void)fclose(file);
    ZRYAML_ProblemsFree(problems);
    const std::unique_ptr<char, decltype(&free)> owner(text, free);
    return {text, size};
}

string TreeText(const Tree &tree)
{
    string text = tree.name != nullptr ? tree.name : "";
    for (uint32_t index = 0; index < tree.kids_count; ++index)
        text += "(" + TreeText(tree.kids[index]) + ")";
    return text;
}

string Text(const char *text)
{
    return text != nullptr ? text : "-";
}

string Shown(const Bound &bound)
{
    std::ostringstream out;
    const auto limits = [&out](const Limits &limit) {
        out << " " << limit.memory << "B/" << limit.timeout << "ns/" << limit.ratio;
    };
    for (uint32_t index = 0; index < bound.servers_count; ++index) {
        const Server &server = bound.servers[index];
        out << Text(server.name) << ":" << server.port << (server.tls ? " tls" : "");
        for (size_t core = 0; core < server.cores_count; ++core)
            out << " #" << server.cores[core];
        out << " " << int{server.prio} << " " << server.mode << " " << Text(server.note);
        limits(server.limits);
        if (server.extra != nullptr)
            limits(*server.extra);
        out << (server.weight != nullptr ? " " + std::to_string(*server.weight) : "") << "\n";
    }
    for (uint32_t index = 0; index < bound.ports_count; ++index)
        out << bound.ports[index].key << "=" << bound.ports[index].value << " ";
    const auto sink = [&out](const Sink &to) {
        if (to.kind == 0)
            out << "file " << Text(to.u.file.path) << " ";
        else
            out << "net " << to.u.net.host << ":" << to.u.net.port << " ";
    };
    sink(bound.sink);
    for (uint32_t index = 0; index < bound.sinks_count; ++index)
        sink(bound.sinks[index]);
    out << TreeText(bound.tree);
    for (uint32_t index = 0; index < bound.delays_count; ++index)
        out << " " << bound.delays[index];
    for (uint32_t index = 0; index < bound.names_count; ++index)
        out << " " << bound.names[index];
    out << " " << std::hex << bound.colour << "\n";
    return out.str();
}

// The record, with notes, or the problems; a record that is refused must be as it was.
string BoundInC(YamlHandle *document)
{
    Bound bound = {}, before = {};
    bound.colour = before.colour = 0xC0FFEE;
    YamlProblems *problems = nullptr;
    const uint32_t code = ZRYAML_RecordRead(document, nullptr, &BoundRecord, &bound, &problems);
    EXPECT_EQ(ZRYAML_LastErrorGet()->uiCode, code);
    EXPECT_EQ(ZRYAML_RecordRead(document, nullptr, &BoundRecord, &before, nullptr), code);
    const string told = Printed(problems);
    if (code == YAML_OK)
        return told + Shown(bound);
    before.colour = 0xC0FFEE;
    Bound untouched = {};
    untouched.colour = 0xC0FFEE;
    EXPECT_EQ(memcmp(&bound, &untouched, sizeof(bound)), 0) << told;
    return told;
}

struct Bind : Recorded {};

struct BindCase {
    int line;
    const char *document, *outcome;
};

const BindCase Cases[] = {
    {__LINE__, "", "file -  c0ffee\n"},
    {__LINE__, "servers: ~\nports:\nsink:\ntree: ~\nnames:\n", "file -  c0ffee\n"},
    {__LINE__,
     "x-base: &b {port: 1234, tls: yes}\nservers:\n"
     "  - {<<: *b, name: a, cores: [1, 2, 0x3], mode: fast, limits: {memory: 1MiB, ratio: 0.5},\n"
     "     extra: {timeout: 5m}, note: '~', weight: -4}\n"
     "  - {name: ~, prt: 99, limits: , note: ~, prio: -128}\n"
     "ports: {http: 80, https: 443}\nsink: {to: net, host: h, port: 5}\n"
     "sinks: [{to: file, path: ''}, {more: 8, host: h2, to: net}]\n"
     "tree: {name: top, kids: [{name: k, kids: [{name: deep}]}, {}]}\n"
     "delays: [1s, 1h, -5ns]\nnames: [a, '8080', ]\ncolour: '#fff'\n",
     "doc:5:15: note: servers[1]: key 'prt' is called 'port' now\n"
     "a:1234 tls #1 #2 #3 0 0 ~ 1048576B/1000000000ns/0.5 65536B/300000000000ns/0 -4\n"
     "~:99 -128 7 - 65536B/1000000000ns/0\n"
     "http=80 https=443 net h:5 file  net h2:0 top(k(deep))() 1000000000 3600000000000 -5 a 8080 fff\n"},
    // Twelve mistakes of twelve kinds.
    {__LINE__,
     "servers:\n"
     "  - {port: 80a, cores: [1, 2, 3, 4], mode: fst, nmae: x}\n"
     "  - name: b\n"
     "    limits: {memory: 2GiB, timeout: 1us, ratio: .nan}\n"
     "    extra: 5\n"
     "    prio: 200\n"
     "ports: {http: [80], low: 6}\n"
     "sink: {to: fil, path: /tmp/x}\n",
     "doc:2:5: error: servers[0]: missing key 'name'\n"
     "doc:2:12: error: servers[0].port: '80a' is not an integer\n"
     "doc:2:12: note: an integer from 1 to 65535 is expected\n"
     "doc:2:24: error: servers[0].cores: the sequence has 4 elements, at most 3 may be there\n"
     "doc:2:44: error: servers[0].mode: 'fst' is not one of fast, safe\n"
     "doc:2:44: note: did you mean 'fast'?\n"
     "doc:2:49: error: servers[0]: unknown key 'nmae'\n"
     "doc:2:49: note: did you mean 'name'?\n"
     "doc:4:22: error: servers[1].limits.memory: '2GiB' is greater than 1GiB\n"
     "doc:4:37: error: servers[1].limits.timeout: '1us' is less than 1ms\n"
     "doc:4:49: error: servers[1].limits.ratio: '.nan' is in no range\n"
     "doc:4:49: note: 0 to 1 is allowed\n"
     "doc:5:12: error: servers[1].extra: the value is a scalar, not a map\n"
     "doc:6:11: error: servers[1].prio: '200' is out of range\n"
     "doc:6:11: note: an integer from -128 to 127 is expected\n"
     "doc:7:15: error: ports.http: the value is a sequence, not a scalar\n"
     "doc:7:26: error: ports.low: '6' is less than 7\n"
     "doc:8:12: error: sink.to: 'fil' is not one of file, net\n"
     "doc:8:12: note: did you mean 'file'?\n"},
    {__LINE__,
     "servers: []\nsink: {path: p}\nsinks: [{host: h2, to: ''}, {to: net}, 5, {to: []}]\n"
     "tree: {name: [], kids: [{kids: [{nam: deep}]}]}\ndelays: [2h]\nnames: {}\ncolour: fff\nx-any: 1\n",
     "doc:1:10: error: servers: the sequence has 0 elements, at least 1 must be there\n"
     "doc:2:7: error: sink: missing key 'to'\n"
     "doc:3:24: error: sinks[0].to: '' is not one of file, net\n"
     "doc:3:29: error: sinks[1]: missing key 'host'\n"
     "doc:3:40: error: sinks[2]: the value is a scalar, not a map\n"
     "doc:3:48: error: sinks[3].to: the value is a sequence, not a scalar\n"
     "doc:4:14: error: tree.name: the value is a sequence, not a scalar\n"
     "doc:4:34: error: tree.kids[0].kids[0]: unknown key 'nam'\n"
     "doc:4:34: note: did you mean 'name'?\n"
     "doc:5:10: error: delays[0]: '2h' is greater than 1h\n"
     "doc:6:8: error: names: the value is a map, not a sequence\n"
     "doc:7:9: error: colour: a colour begins with #\n"},
    // A check of the whole record, an old key beside the new one, and values that an alias and a merge brought.
    {__LINE__,
     "x-p: &p {port: 80, tls: on}\nx-w: &w heavy\nservers: [{name: a, <<: *p}, {name: b, prt: 1, port: 2, weight: "
     "*w}]\n",
     "doc:3:11: error: servers[0]: port 80 is not for tls\n"
     "doc:3:40: note: servers[1]: key 'prt' is called 'port' now\n"
     "doc:3:48: error: servers[1]: 'prt' and 'port' name the same value\n"
     "doc:3:65: error: servers[1].weight: 'heavy' is not an integer\n"
     "doc:3:65: note: an integer from -5 to 2147483647 is expected\n"
     "doc:2:6: note: it is written here\n"},
    {__LINE__, "[1]", "doc:1:1: error: the value is a sequence, not a map\n"},
};

} // namespace

TEST_F(Bind, ReadsARecordOrTellsEveryProblem)
{
    for (const BindCase &row : Cases) {
        YamlHandle *document = ZRYAML_TextLoad(row.document, strlen(row.document), "doc");
        EXPECT_EQ(BoundInC(document), row.outcome) << __FILE__ << ":" << row.line;
        ZRYAML_HandleFree(document);
    }
}

TEST_F(Bind, LeavesNothingBehindWhereMemoryIsShort)
{
    const char *text = Cases[2].document;
    YamlHandle *document = ZRYAML_TextLoad(text, strlen(text), "doc");
    uint32_t code = YAML_ERR_NOMEM;
    for (uint64_t refused = 1; code == YAML_ERR_NOMEM; ++refused) {
        const int64_t blocks = Base().lBlocks;
        Base().Reset();
        Base().ulFailAllocation = refused;
        Bound bound = {};
        const Bound untouched = {};
        YamlProblems *problems = nullptr;
        code = ZRYAML_RecordRead(document, nullptr, &BoundRecord, &bound, &problems);
        Base().ulFailAllocation = 0;
        ZRYAML_ProblemsFree(problems);
        EXPECT_TRUE(code == YAML_OK ? bound.servers_count == 2 : code == YAML_ERR_NOMEM) << refused << " " << code;
        if (code != YAML_OK) {
            EXPECT_EQ(Base().lBlocks, blocks) << refused;
            EXPECT_EQ(memcmp(&bound, &untouched, sizeof(bound)), 0) << refused;
        }
    }
    ZRYAML_HandleFree(document);
}

TEST_F(Bind, GivesDefaultsOfTheDocumentsOwn)
{
    string sample(300, ' ');
    sample.resize(ZRYAML_RecordSampleWrite(&DefaultsRecord, 300, sample.data()));
    for (const string &text : {string(), string("{port: 80}"), sample}) {
        YamlHandle *document = ZRYAML_TextLoad(text.data(), text.size(), "doc");
        for (const uint64_t refused : {1U, 2U, 0U}) { // the plan, and the text of the default
            Base().Reset();
            Base().ulFailAllocation = refused;
            Net net = {};
            const uint32_t code = ZRYAML_RecordRead(document, nullptr, &DefaultsRecord, &net, nullptr);
            Base().ulFailAllocation = 0;
            if (code == YAML_OK)
                EXPECT_TRUE(net.host == string("a: #b") && net.port == 80) << text;
            else
                EXPECT_TRUE(refused != 0 && code == YAML_ERR_NOMEM && net.host == nullptr) << text;
        }
        ZRYAML_HandleFree(document);
    }
}

TEST_F(Bind, NamesMistakesOfTheHost)
{
    YamlHandle *document = ZRYAML_TextLoad("", 0, "doc");
    for (uint32_t index = 0; index < WrongRecordCount; ++index) {
        Server server = {};
        YamlProblems *problems = nullptr;
        EXPECT_EQ(ZRYAML_RecordRead(document, nullptr, WrongRecords[index].record, &server, &problems), YAML_ERR_PARAM);
        EXPECT_EQ(Printed(problems), string("configuration: error: the description of Server is wrong: ") +
                                         WrongRecords[index].sentence + "\n");
    }
    EXPECT_EQ(ZRYAML_RecordRead(document, nullptr, nullptr, nullptr, nullptr), YAML_ERR_PARAM);
    ZRYAML_HandleFree(document);
}

TEST_F(Bind, WritesASampleThatReadsAgainASchemaAndVariables)
{
    const auto written = [](auto write) {
        string text(write(uint32_t{0}, nullptr), '\0');
        string small(text.size() / 2, '\0');
        EXPECT_EQ(write(static_cast<uint32_t>(text.size()) + 1, text.data()), text.size());
        EXPECT_EQ(write(static_cast<uint32_t>(small.size()) + 1, small.data()), text.size());
        EXPECT_EQ(small, text.substr(0, small.size()));
        return text;
    };
    const string sample = written([](auto... buffer) { return ZRYAML_RecordSampleWrite(&BoundRecord, buffer...); });
    // Once as it is, and once with all examples.
    string examples;
    std::istringstream lines(sample);
    for (string line; std::getline(lines, line); examples += line + "\n") {
        const size_t at = line.find("# ");
        if (at != string::npos && (line.find(':') < line.find(", each") || line[at + 2] == ' ') &&
            line.substr(at + 2, 6) != "colour")
            line.erase(at, 2);
    }
    for (const string &text : {sample, examples}) {
        YamlHandle *document = TextLoad(text);
        Bound bound = {};
        YamlProblems *problems = nullptr;
        EXPECT_EQ(ZRYAML_RecordRead(document, nullptr, &BoundRecord, &bound, &problems), YAML_OK)
            << text << Printed(problems);
        ZRYAML_HandleFree(document);
    }
    EXPECT_NE(sample.find("    # name of the host\n    # text, required\n    name: ''\n"), string::npos) << sample;

    YamlHandle *schema =
        TextLoad(written([](auto... buffer) { return ZRYAML_RecordSchemaWrite(&BoundRecord, buffer...); }));
    const char *const server = "properties.servers.items";
    for (const auto &[path, value] :
         std::map<string, string>{{"$schema", "http://json-schema.org/draft-07/schema#"},
                                  {"additionalProperties", "false"},
                                  {"properties.servers.minItems", "1"},
                                  {string(server) + ".description", "one machine"},
                                  {string(server) + ".required[0]", "name"},
                                  {string(server) + ".properties.port.minimum", "1"},
                                  {string(server) + ".properties.port.default", "8080"},
                                  {string(server) + ".properties.prio.minimum", "-128"},
                                  {string(server) + ".properties.mode.enum[1]", "safe"},
                                  {string(server) + ".properties.extra.type[1]", "null"},
                                  {string(server) + ".properties.cores.items.maximum", "63"},
                                  {"properties.sink.anyOf[1].properties.to.const", "net"},
                                  {"properties.tree.properties.kids.items.$ref", "#/properties/tree"},
                                  {"properties.delays.items.pattern", "^[+-]?([0-9]+(d|h|min|m|s|ms|us|ns))+$"}})
        EXPECT_STREQ(ZRYAML_PropertyGet(schema, "%s", path.c_str()), value.c_str()) << path;
    ZRYAML_HandleFree(schema);

    const string variables =
        written([](auto... buffer) { return ZRYAML_RecordEnvironmentWrite(&BoundRecord, "APP_", buffer...); });
    for (const char *line :
         {"APP_SERVERS__0__PORT  # integer, at least 1, default 8080\n",
          "APP_SERVERS__0__NAME  # text, required: name of the host\n", "APP_PORTS__KEY  # integer, at least 7\n",
          "APP_SINK__TO  # one of file, net\n", "APP_SERVERS__0__EXTRA__RATIO  # number, 0 to 1\n"})
        EXPECT_NE(variables.find(line), string::npos) << variables;
}
