// SPDX-License-Identifier: Apache-2.0
// A document of 1 MB checked against a schema of 100 definitions, next to loading it.
#include <zr_yaml_schema.h>

#include "measure.h"
#include "suite.h"
#include "text.h"

#include <memory>
#include <stdexcept>

namespace zryaml::bench {

namespace {

constexpr uint32_t Definitions = 100;

std::string SchemaText()
{
    std::string text = "additionalProperties: false\nproperties:\n";
    for (uint32_t i = 0; i < Definitions; ++i)
        text += Printed("  group_%u: {type: array, items: {$ref: '#/definitions/server_%u'}}\n", i, i);
    text += "definitions:\n";
    for (uint32_t i = 0; i < Definitions; ++i)
        text += Printed("  server_%u:\n", i) + "    type: object\n"
                                               "    required: [name, port]\n"
                                               "    additionalProperties: false\n"
                                               "    properties:\n"
                                               "      name: {type: string, pattern: '^[a-z][a-z0-9-]*$'}\n"
                                               "      port: {type: integer, minimum: 1, maximum: 65535}\n"
                                               "      mode: {enum: [fast, safe, slow]}\n"
                                               "      weight: {type: number, multipleOf: 0.5}\n"
                                               "      tls: {type: boolean}\n"
                                               "      tags: {type: array, items: {type: string}, uniqueItems: true}\n"
                                               "      env: {type: object, additionalProperties: {type: string}}\n";
    return text;
}

std::string DocumentText()
{
    std::string text;
    for (uint32_t i = 0; i < Definitions; ++i) {
        text += Printed("group_%u:\n", i);
        for (uint32_t k = 0; k < 70; ++k)
            text += Printed("  - {name: server-%u, port: %u, mode: safe, weight: 1.5, tls: true,\n", k, 8000 + k) +
                    "     tags: [blue, green, red], env: {LOG_LEVEL: debug, REGION: north}}\n";
    }
    return text;
}

std::shared_ptr<YamlSchema> SchemaOf(const std::string &text)
{
    std::shared_ptr<YamlSchema> schema(ZRYAML_SchemaTextLoad(text.data(), text.size(), "schema", nullptr),
                                       ZRYAML_SchemaFree);
    if (schema == nullptr)
        throw std::runtime_error("the schema is refused");
    return schema;
}

const Suite added([](const Setting &) {
    const std::string text = DocumentText();
    const HandlePtr document = HandleOf(text);
    const auto Check = [schema = SchemaOf(SchemaText()), document] {
        if (ZRYAML_SchemaCheck(schema.get(), ZRYAML_RootGet(document.get()), nullptr) != YAML_OK)
            throw std::runtime_error("the document does not fit");
    };
    const auto Load = [text] { ZRYAML_HandleFree(ZRYAML_TextLoad(text.data(), text.size(), "document")); };
    PairAdd("schema/check of 1 MB, 100 definitions/loading it", {Repeated(Check)}, {Repeated(Load)});
});

} // namespace

} // namespace zryaml::bench
