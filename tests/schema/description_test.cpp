// SPDX-License-Identifier: Apache-2.0
// A schema that is written from a description says of documents what the reading says.
#include <gtest/gtest.h>

#include "schema_support.h"
#include "support/bound_record.h"

namespace {

template <class Write> std::string Written(Write write)
{
    std::string text(write(&BoundRecord, 0, nullptr), '\0');
    (void)write(&BoundRecord, static_cast<uint32_t>(text.size() + 1), text.data());
    return text;
}

std::string Places(YamlProblems *problems)
{
    std::string places;
    for (uint32_t index = 0; const YamlProblem *problem = ZRYAML_ProblemGet(problems, index); ++index)
        places +=
            std::to_string(problem->uiLine) + ":" + std::to_string(problem->uiColumn) + " " + problem->pcPath + "\n";
    ZRYAML_ProblemsFree(problems);
    return places;
}

} // namespace

TEST(SchemaDescription, AgreesWithTheReading)
{
    const Loaded schema = SchemaTextLoad(Written(ZRYAML_RecordSchemaWrite));
    ASSERT_NE(schema.schema, nullptr) << schema.problems;
    for (const std::string &text :
         {Written(ZRYAML_RecordSampleWrite),
          std::string("servers:\n"
                      "  - {port: 80a, cores: [1, 2, 3, 4], mode: fst, colour: x}\n"
                      "  - {name: b, limits: {timeout: 1x, ratio: 2}, extra: 5, prio: 200, weight: ~}\n"
                      "ports: {http: [80], low: 6}\n"
                      "sink: {to: fil, path: /tmp/x}\n"
                      "sinks: [{to: net, port: 70000}, {to: file, path: x, more: 1}]\n"
                      "tree: {kids: [{kids: [{nam: deep}]}]}\n"
                      "names: {a: b}\n")}) {
        const DocumentPtr document = TextLoad(text);
        YamlProblems *checked = nullptr, *read = nullptr;
        Bound bound = {};
        (void)ZRYAML_SchemaCheck(schema.schema.get(), ZRYAML_RootGet(document.get()), &checked);
        (void)ZRYAML_RecordRead(document.get(), nullptr, &BoundRecord, &bound, &read);
        EXPECT_EQ(Places(checked), Places(read)) << text;
    }
}
