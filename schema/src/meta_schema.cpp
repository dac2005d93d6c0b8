// SPDX-License-Identifier: Apache-2.0
// The meta-schema of draft-07: a frame, and what each keyword says of itself.
#include "build.h"

#include "keyword.h"

namespace zryaml::schema {

std::string MetaSchemaText()
{
    std::string text = std::string(R"({"$schema": ")") + MetaSchemaUri + R"(#", "$id": ")" + MetaSchemaUri + R"(#",
"title": "Core schema meta-schema",
"definitions": {
    "schemaArray": {"type": "array", "minItems": 1, "items": {"$ref": "#"}},
    "nonNegativeInteger": {"type": "integer", "minimum": 0},
    "nonNegativeIntegerDefault0": {"allOf": [{"$ref": "#/definitions/nonNegativeInteger"}, {"default": 0}]},
    "simpleTypes": {"enum": ["array", "boolean", "integer", "null", "number", "object", "string"]},
    "stringArray": {"type": "array", "items": {"type": "string"}, "uniqueItems": true, "default": []}
},
"type": ["object", "boolean"],
"default": true,
"properties": {
)";
    const char *separator = "";
    for (const Keyword &keyword : Keywords()) {
        text.append(separator).append("\"").append(keyword.name).append("\": ").append(keyword.meta);
        separator = ",\n";
    }
    return text += "}}\n";
}

} // namespace zryaml::schema
