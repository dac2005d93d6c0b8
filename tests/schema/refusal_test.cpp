// SPDX-License-Identifier: Apache-2.0
// Schemas that are refused, with their places; hostile schemas and documents; memory that runs short.
#include <chrono>
#include <fstream>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include "schema_support.h"
#include "support/short_memory.h"

namespace {

struct RefusalCase {
    int line;
    const char *schema, *problems;
};
constexpr RefusalCase g_refusals[] = {
    {__LINE__, "", "0:0 : the schema is empty: it must be a map, true or false\n"},
    {__LINE__, "[1]", "1:1 : must be a map or a boolean, is a sequence\n"},
    {__LINE__, "{type: integr, maxLength: -1, required: a}",
     "1:8 type: must be one of array, boolean, integer, 'null', number, object, string (did you mean 'integer'?)\n"
     "1:27 maxLength: must be at least 0\n"
     "1:41 required: must be a sequence, is the string 'a'\n"},
    {__LINE__, "{items: {items: [{pattern: 'a('}]}}",
     "1:28 items.items[0].pattern: 'a(' is not a regular expression: missing closing parenthesis (at character 3)\n"},
    {__LINE__, "{$schema: 'https://json-schema.org/draft/2020-12/schema'}",
     "1:11 $schema: the schema is one of draft 2020-12, and only draft-07 is understood (draft-07 is named "
     "\"http://json-schema.org/draft-07/schema#\")\n"},
    {__LINE__, "{$schema: 'http://json-schema.org/draft-04/schema#'}",
     "1:11 $schema: the schema is one of draft-04, and only draft-07 is understood (draft-07 is named "
     "\"http://json-schema.org/draft-07/schema#\")\n"},
    {__LINE__, "{$ref: '#'}", "1:1 : leads back to itself without going into the value\n"},
    {__LINE__,
     "{definitions: {a: {$ref: '#/definitions/b'}, b: {anyOf: [{$ref: '#/definitions/a'}]}}, $ref: '#/definitions/a'}",
     "1:19 definitions.a: leads back to itself without going into the value\n"},
    {__LINE__, "{properties: {a: {$ref: '#/definitions/prot'}}, definitions: {port: {}}}",
     "1:25 properties.a.$ref: refers to '#/definitions/prot', but there is no 'prot' (did you mean 'port'?)\n"},
    {__LINE__, "{$ref: '#/x', x: {type: 5}}",
     "1:25 x.type: must be one of array, boolean, integer, 'null', number, object, string\n"},
    {__LINE__, "{items: {$ref: 'other.json'}}",
     "1:16 items.$ref: refers to 'other.json', which is not below the schema's own folder\n"},
    {__LINE__, "{items: {$ref: 'http://h/other.json'}}",
     "1:16 items.$ref: refers to 'http://h/other.json', which is not at hand: nothing is fetched\n"},
    // A text has no folder, also where its $id looks as if it had.
    {__LINE__, "{$id: 'http://h/a.json', items: {$ref: 'CMakeLists.txt'}}",
     "1:40 items.$ref: refers to 'CMakeLists.txt', which is not at hand: nothing is fetched\n"},
    {__LINE__, "{multipleOf: 12345678901234567891}", "1:14 multipleOf: must be a finite number of 19 digits at most\n"},
    {__LINE__, "{pattern: '(?R)'}",
     "1:11 pattern: '(?R)' is not a regular expression: a group of this kind is none of ECMA 262\n"},
};

std::string Repeated(const std::string &text, int times)
{
    std::string all;
    for (int time = 0; time < times; ++time)
        all += text;
    return all;
}

// Schemas d0 to dN, of which each one but the last holds others.
std::string Chain(int last, const std::string &before, int copies)
{
    std::string text = "$ref: '#/definitions/d0'\ndefinitions:\n";
    for (int at = 0; at < last; ++at)
        text += "  d" + std::to_string(at) + ": {" + before + ": [" +
                Repeated("{$ref: '#/definitions/d" + std::to_string(at + 1) + "'},", copies) + "]}\n";
    return text + "  d" + std::to_string(last) + ": {}\n";
}

} // namespace

TEST(SchemaRefusal, NamesThePlace)
{
    for (const RefusalCase &entry : g_refusals) {
        const Loaded schema = SchemaTextLoad(entry.schema);
        EXPECT_EQ(schema.schema, nullptr) << "row at line " << entry.line;
        EXPECT_EQ(schema.problems, entry.problems) << "row at line " << entry.line;
    }
}

TEST(SchemaRefusal, FilesBelowTheFolderOnly)
{
    const TemporaryFolder outside;
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path / "sub dir");
    std::ofstream(outside.path / "secret.json") << "{}";
    std::filesystem::create_symlink(outside.path / "secret.json", folder.path / "link.json");
    std::ofstream(folder.path / "sub dir/port.yaml")
        << "{type: integer, maximum: 9, not: {$ref: '../zero.json#/zero'}}";
    std::ofstream(folder.path / "zero.json") << "{\"zero\": {\"const\": 0}}";
    EXPECT_EQ(mkfifo((folder.path / "pipe.json").c_str(), 0600), 0); // nobody writes into it
    const std::string main = folder.path / "main.json";
    const struct {
        std::string reference, problem;
    } rows[] = {
        {"sub%20dir/port.yaml", ""},
        {"link.json", ", which is not below the schema's own folder\n"},
        {"../" + outside.path.filename().string() + "/secret.json", ", which is not below the schema's own folder\n"},
        {(outside.path / "secret.json").string(), ", which is not below the schema's own folder\n"},
        {"none.json", ", which is not there\n"},
        {"pipe.json", ", which is not there\n"},
    };
    for (const auto &row : rows) {
        std::ofstream(main) << "{\"items\": {\"$ref\": \"" << row.reference << "\"}}";
        const Loaded schema = SchemaFileLoad(main);
        EXPECT_TRUE(schema.problems.ends_with(row.problem)) << row.reference << ": " << schema.problems;
        EXPECT_EQ(schema.schema != nullptr, row.problem.empty()) << schema.problems;
        if (schema.schema != nullptr) {
            EXPECT_EQ(Check(schema, ZRYAML_RootGet(TextLoad("[5, 10, 0]").get())).problems,
                      "1:5 [1]: must be at most 9\n1:9 [2]: must not be 0\n");
        }
    }
}

TEST(SchemaRefusal, HostileOnesEndSoon)
{
    const std::string deep = Repeated("[", 500) + "x" + Repeated("]", 500);
    const std::string tree =
        "$ref: '#/definitions/t'\ndefinitions:\n  t: {anyOf: [{type: array, items: {$ref: '#/definitions/t'}}, "
        "{type: array, items: {anyOf: [{$ref: '#/definitions/t'}]}}]}\n";
    const struct {
        int line;
        std::string schema, document, problem;
    } rows[] = {
        {__LINE__, Chain(3000, "allOf", 1), "{}", "more than 100 schemas hold for one value, each through the other\n"},
        {__LINE__, Chain(40, "allOf", 2), "{}", "the check was given up: the schema makes it too costly\n"},
        {__LINE__, tree, deep, "the check was given up: the schema makes it too costly\n"},
        {__LINE__,
         "definitions: {t: {items: " + Repeated("{allOf: [", 50) + "{$ref: '#/definitions/t'}" + Repeated("]}", 50) +
             "}}\n$ref: '#/definitions/t'\n",
         deep, "the check was given up here: schema and document lead too deep\n"},
        {__LINE__,
         "items: {anyOf: [{type: 'null'}, {$ref: '#/definitions/d0'}]}\n" +
             Chain(9, "type: integer, allOf", 60).substr(sizeof("$ref: '#/definitions/d0'")),
         "[x]", "must be an integer or null, is the string 'x'\n"},
        {__LINE__, "{items: {pattern: '^(a|b)*$'}}", "[" + Repeated("ab", 25000) + "]", ""},
        {__LINE__, "{items: {pattern: '^(a+)+[bc]$'}}", "[" + Repeated("a", 40) + "]",
         "cannot be checked: the pattern '^(a+)+[bc]$' takes too long\n"},
        {__LINE__, "{items: {pattern: 'a*[bc]'}}", "[" + Repeated("a", 1000000) + "]",
         "cannot be checked: the pattern 'a*[bc]' takes too long\n"},
        {__LINE__, "{pattern: '" + Repeated("(", 8000) + Repeated(")", 8000) + "'}", "{}",
         "parentheses are too deeply nested (at character 252)\n"},
    };
    for (const auto &row : rows) {
        const auto start = std::chrono::steady_clock::now();
        const Loaded schema = SchemaTextLoad(row.schema);
        const DocumentPtr document = TextLoad(row.document);
        const std::string said =
            schema.schema != nullptr ? Check(schema, ZRYAML_RootGet(document.get())).problems : schema.problems;
        EXPECT_TRUE(row.problem.empty() ? said.empty() : said.ends_with(row.problem))
            << "row at line " << row.line << "\n"
            << said;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60)) << "row at line " << row.line;
    }
}

TEST(SchemaRefusal, ArgumentsThatAreMissing)
{
    YamlProblems *problems = nullptr;
    EXPECT_EQ(ZRYAML_SchemaLoad(nullptr, &problems), nullptr);
    EXPECT_EQ(Lines(problems), "0:0 : the path of the schema is missing\n");
    EXPECT_EQ(ZRYAML_SchemaCheck(nullptr, nullptr, nullptr), YAML_ERR_PARAM);
    ZRYAML_SchemaFree(nullptr);
}

TEST(SchemaRefusal, ShortMemoryIsSaid)
{
    if (!CanBeShort)
        GTEST_SKIP() << "the sanitizer's operator new is in place";
    const DocumentPtr document = TextLoad("{a: [abc, abd, 5], c: 1}");
    const std::string text =
        "{properties: {a: {items: {pattern: '^ab[c]$'}, uniqueItems: true}, b: {$ref: '#'}}, required: "
        "[b], additionalProperties: false}";
    bool isEnough = false;
    for (size_t news = 0; !isEnough; ++news) {
        YamlProblems *problems = nullptr;
        uint32_t code = YAML_ERR_NOMEM;
        {
            const ShortMemory memory(news);
            const SchemaPtr schema(ZRYAML_SchemaTextLoad(text.data(), text.size(), "", &problems));
            if (schema != nullptr)
                code = ZRYAML_SchemaCheck(schema.get(), ZRYAML_RootGet(document.get()), &problems);
        }
        isEnough = code != YAML_ERR_NOMEM;
        EXPECT_EQ(ZRYAML_ProblemGet(problems, 0)->uiCode, isEnough ? YAML_ERR_MISSING_KEY : YAML_ERR_NOMEM) << news;
        ZRYAML_ProblemsFree(problems);
    }
}
