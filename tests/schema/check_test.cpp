// SPDX-License-Identifier: Apache-2.0
// What a check says: the sentence for each keyword, its place, and that no mistake is told twice.
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "schema_support.h"

#include <zr_yaml_layers.h>

namespace {

struct SentenceCase {
    int line;
    const char *schema, *document, *problems;
};

// The document has what the schema is about under the key v, the schema holds for it.
constexpr SentenceCase g_sentences[] = {
    {__LINE__, "{type: integer}", "80a", "1:4 v: '80a' is not an integer\n"},
    {__LINE__, "{type: integer}", "'80'", "1:4 v: '80' is not an integer (without its quotes it is an integer)\n"},
    {__LINE__, "{type: integer}", "!!int '80'", ""},
    {__LINE__, "{type: integer}", "3.0", ""},
    {__LINE__, "{type: number}", "0x1F", ""},
    {__LINE__, "{type: string}", "2.1", "1:4 v: must be a string, is the number 2.1 (in quotes it is one: \"2.1\")\n"},
    {__LINE__, "{type: string}", "!!str 2.1", ""},
    {__LINE__, "{type: string}", "|\n    2", ""},
    {__LINE__, "{type: boolean}", "yes", "1:4 v: 'yes' is not a boolean (a boolean is written true or false)\n"},
    {__LINE__, "{type: string}", "", "1:3 v: must be a string, is empty\n"},
    {__LINE__, "{type: [object, 'null']}", "[1]", "1:4 v: must be a map or null, is a sequence\n"},
    {__LINE__, "{enum: [fast, safe, '1']}", "fsat", "1:4 v: must be one of fast, safe, '1' (did you mean 'fast'?)\n"},
    {__LINE__, "{enum: [fast, safe, '1']}", "1", "1:4 v: must be one of fast, safe, '1' (write it in quotes: \"1\")\n"},
    {__LINE__, "{const: [1, {a: b}]}", "[1.0, {a: c}]", "1:4 v: must be a sequence\n"},
    {__LINE__, "{maximum: 65535}", "65536", "1:4 v: must be at most 65535\n"},
    {__LINE__, "{minimum: 9007199254740993}", "9007199254740992", "1:4 v: must be at least 9007199254740993\n"},
    {__LINE__, "{exclusiveMaximum: 0.3}", "0.30", "1:4 v: must be less than 0.3\n"},
    {__LINE__, "{exclusiveMinimum: 0, maximum: .inf}", "-1e999", "1:4 v: must be greater than 0\n"},
    {__LINE__, "{minimum: 0}", ".nan", "1:4 v: must be at least 0\n"},
    {__LINE__, "{multipleOf: 0.01}", "4.35", ""},
    {__LINE__, "{multipleOf: 3}", "100000000000000000000000000001", "1:4 v: must be a multiple of 3\n"},
    {__LINE__, "{maxLength: 2}", "\xC3\xA4\xC3\xB6\xC3\xBC", "1:4 v: must have at most 2 characters, has 3\n"},
    {__LINE__, "{minLength: 1}", "''", "1:4 v: must not be empty\n"},
    {__LINE__, "{pattern: '^a+$'}", "ab", "1:4 v: 'ab' does not match the pattern '^a+$'\n"},
    {__LINE__, "{pattern: '^[(?*]+$'}", "'(?'", ""},
    {__LINE__, "{format: ipv4}", "1.2.3", "1:4 v: '1.2.3' is not an IPv4 address\n"},
    {__LINE__, "{format: date}", "2024-02-30", "1:4 v: '2024-02-30' is not a date such as 2024-02-29\n"},
    {__LINE__, "{format: regex}", "a(",
     "1:4 v: 'a(' is not a regular expression: missing closing parenthesis (at "
     "character 3)\n"},
    {__LINE__, "{format: postcode}", "x", ""},
    {__LINE__, "{maxItems: 1}", "[1, 2]", "1:4 v: must have at most 1 element, has 2\n"},
    {__LINE__, "{items: [true], additionalItems: false}", "[1, 2, 3]", "1:4 v: must have at most 1 element, has 3\n"},
    {__LINE__, "{uniqueItems: true}", "[1, {a: 1, b: 2}, 1.0, {b: 2, a: 1}, '1']",
     "1:22 v[2]: is the same as element 0; the elements must differ\n"
     "1:27 v[3]: is the same as element 1; the elements must differ\n"},
    {__LINE__, "{contains: {const: root}}", "[a]", "1:4 v: must have an element that is root\n"},
    {__LINE__, "{minProperties: 2}", "{a: 1}", "1:4 v: must have at least 2 keys, has 1\n"},
    {__LINE__, "{required: [b, a]}", "{b: 1}", "1:4 v: key 'a' is missing\n"},
    {__LINE__, "{additionalProperties: false, required: [port], properties: {port: {}, host: {}}}", "{prot: 1, x: 2}",
     "1:5 v: unknown key 'prot' (did you mean 'port'?)\n1:14 v: unknown key 'x'\n"},
    {__LINE__, "{properties: {a: false}}", "{a: 1}", "1:5 v: key 'a' is not allowed\n"},
    {__LINE__, "{propertyNames: {pattern: '^[a-z]'}}", "{A: 1}",
     "1:5 v: key 'A' does not match the pattern '^[a-z]'\n"},
    {__LINE__, "{dependencies: {a: [b]}}", "{a: 1}", "1:4 v: key 'b' is missing, which 'a' needs\n"},
    {__LINE__, "{not: {type: integer}}", "5", "1:4 v: must not be an integer\n"},
    {__LINE__, "{not: {required: [a]}}", "{a: 1}", "1:4 v: is what 'not' of the schema excludes\n"},
    {__LINE__, "{if: {required: [a]}, then: {required: [b]}}", "{a: 1}", "1:4 v: key 'b' is missing\n"},
    {__LINE__, "{oneOf: [{minimum: 1}, {minimum: 2}]}", "3",
     "1:4 v: fits choices 1 and 2 of 'oneOf' in the schema, must fit one only\n"},
    {__LINE__, "{anyOf: [{type: integer}, {type: 'null'}]}", "soon",
     "1:4 v: must be an integer or null, is the string 'soon'\n"},
    {__LINE__, "{anyOf: [{const: a}, {enum: [b, a]}]}", "c", "1:4 v: must be one of a, b\n"},
    // A scalar was not meant for the branch of maps, although that one would have fewer problems.
    {__LINE__, "{anyOf: [{type: object}, {type: string, pattern: '^a', maxLength: 1}]}", "bc",
     "1:4 v: must have at most 1 character, has 2\n1:4 v: 'bc' does not match the pattern '^a'\n"},
    {__LINE__,
     "{oneOf: [{properties: {k: {const: a}, p: {type: integer}}}, {properties: {k: {const: b}}, required: [x]}]}",
     "{k: a, p: x, q: y}", "1:14 v.p: 'x' is not an integer\n"},
    {__LINE__, "{oneOf: [{properties: {k: {const: a}}}, {allOf: [{properties: {k: {enum: [b, c]}}}]}]}", "{k: z}",
     "1:8 v.k: must be one of a, b, c\n"},
    // What two parts of a schema say in the same words is said once, and nothing more of a value of the wrong type.
    {__LINE__, "{allOf: [{type: string}, {type: string, minLength: 2}]}", "1",
     "1:4 v: must be a string, is the number 1 (in quotes it is one: \"1\")\n"},
    {__LINE__, "{enum: [a], type: string, pattern: '^b'}", "c", "1:4 v: must be a\n"},
};

} // namespace

TEST(SchemaCheck, Sentences)
{
    for (const SentenceCase &entry : g_sentences) {
        const Loaded schema = SchemaTextLoad(std::string("properties: {v: ") + entry.schema + "}\n");
        const DocumentPtr document = TextLoad(std::string("v: ") + entry.document + "\n");
        ASSERT_NE(document, nullptr) << "row at line " << entry.line;
        ASSERT_NE(schema.schema, nullptr) << "row at line " << entry.line << "\n" << schema.problems;
        EXPECT_EQ(Check(schema, ZRYAML_RootGet(document.get())).problems, entry.problems)
            << "row at line " << entry.line;
    }
}

TEST(SchemaCheck, MistakesComeInDocumentOrder)
{
    const Loaded schema =
        SchemaTextLoad("required: [name]\n"
                       "properties:\n"
                       "  servers: {items: {$ref: '#/definitions/server'}}\n"
                       "  name: {minLength: 1}\n"
                       "additionalProperties: false\n"
                       "definitions: {server: {required: [host], properties: {port: {maximum: 9}}}}\n");
    const DocumentPtr document = TextLoad("name: ''\n"
                                          "base: &base {port: 10}\n"
                                          "servers:\n"
                                          "- {<<: *base, host: b}\n"
                                          "- {port: 11}\n");
    ASSERT_NE(schema.schema, nullptr) << schema.problems;
    EXPECT_EQ(Check(schema, ZRYAML_RootGet(document.get())).problems,
              "1:7 name: must not be empty\n"
              "2:1 : unknown key 'base'\n"
              "4:8 servers[0].port: must be at most 9 from 2:20\n"
              "5:3 servers[1]: key 'host' is missing\n"
              "5:10 servers[1].port: must be at most 9\n");
}

TEST(SchemaCheck, EmptyDocumentIsAnEmptyMap)
{
    const Loaded schema = SchemaTextLoad("{type: object, required: [a]}");
    const DocumentPtr document = TextLoad("# nothing\n");
    EXPECT_EQ(Check(schema, ZRYAML_RootGet(document.get())).problems, "0:0 : key 'a' is missing\n");
    YamlProblems *problems = nullptr;
    EXPECT_EQ(ZRYAML_SchemaCheck(schema.schema.get(), &document->stRoot, &problems), YAML_ERR_SCHEMA);
    EXPECT_STREQ(ZRYAML_ProblemGet(problems, 0)->pcSource, "doc.yaml");
    ZRYAML_ProblemsFree(problems);
}

TEST(SchemaCheck, LayersAreNamed)
{
    const YamlLayer layers[] = {{YAML_LAYER_TEXT, 0, "base.yaml", "{a: x, b: 1}", 12, nullptr},
                                {YAML_LAYER_TEXT, 0, "site.yaml", "\n{b: y, c: 1}", 13, nullptr},
                                {YAML_LAYER_ASSIGNMENT, 0, "--set", "d=z", 0, nullptr}};
    const DocumentPtr document(ZRYAML_LayersLoad(layers, 3, nullptr, nullptr));
    ASSERT_NE(document, nullptr);
    const Loaded schema =
        SchemaTextLoad("properties: {a: &i {type: integer}, b: *i, d: *i}\nadditionalProperties: false");
    YamlProblems *problems = nullptr;
    EXPECT_EQ(ZRYAML_SchemaCheck(schema.schema.get(), ZRYAML_RootGet(document.get()), &problems), YAML_ERR_SCHEMA);
    std::string sources;
    for (uint32_t index = 0; index < ZRYAML_ProblemCountGet(problems); ++index)
        sources += std::string(ZRYAML_ProblemGet(problems, index)->pcSource) + ":" +
                   std::to_string(ZRYAML_ProblemGet(problems, index)->uiLine) + " ";
    ZRYAML_ProblemsFree(problems);
    EXPECT_EQ(sources, "base.yaml:1 site.yaml:2 site.yaml:2 --set d:0 ");
}

TEST(SchemaCheck, ManyProblemsEndWithTheirNumber)
{
    std::string text = "a:\n";
    for (int line = 0; line < 12000; ++line)
        text += "- x\n";
    const Loaded schema = SchemaTextLoad("properties: {a: {items: {type: integer}}}");
    const DocumentPtr document = TextLoad(text);
    YamlProblems *problems = nullptr;
    EXPECT_EQ(ZRYAML_SchemaCheck(schema.schema.get(), ZRYAML_RootGet(document.get()), &problems), YAML_ERR_SCHEMA);
    ASSERT_EQ(ZRYAML_ProblemCountGet(problems), YAML_PROBLEM_MAX + 1);
    EXPECT_NE(std::string(ZRYAML_ProblemGet(problems, YAML_PROBLEM_MAX)->pcMessage).find("11000"), std::string::npos);
    ZRYAML_ProblemsFree(problems);
}

TEST(SchemaCheck, ThreadsShareSchemaAndDocument)
{
    const Loaded schema = SchemaTextLoad("{additionalProperties: {pattern: '^(a|b)*$', uniqueItems: true}}");
    const DocumentPtr document = TextLoad("{a: abab, b: [1, 2, 1], c: abc}");
    std::vector<std::thread> threads;
    std::vector<std::string> said(4);
    for (std::string &text : said)
        threads.emplace_back([&] {
            for (int time = 0; time < 50; ++time)
                text = Check(schema, ZRYAML_RootGet(document.get())).problems;
        });
    for (std::thread &thread : threads)
        thread.join();
    for (const std::string &text : said)
        EXPECT_EQ(text, "1:21 b[2]: is the same as element 0; the elements must differ\n"
                        "1:28 c: 'abc' does not match the pattern '^(a|b)*$'\n");
}
