// SPDX-License-Identifier: Apache-2.0
// What a keyword means stands in one line here; a line more, and the meta-schema and each check know it.
#include "keyword.h"

#include <array>

namespace zryaml::schema {

namespace {

constexpr const char *Self = R"({"$ref": "#"})";
constexpr const char *SelfList = R"({"$ref": "#/definitions/schemaArray"})";
constexpr const char *SelfMap = R"({"type": "object", "additionalProperties": {"$ref": "#"}, "default": {}})";
constexpr const char *Count = R"({"$ref": "#/definitions/nonNegativeInteger"})";
constexpr const char *CountFrom0 = R"({"$ref": "#/definitions/nonNegativeIntegerDefault0"})";
constexpr const char *Numeric = R"({"type": "number"})";
constexpr const char *Text = R"({"type": "string"})";
constexpr const char *Flag = R"({"type": "boolean", "default": false})";
constexpr const char *Anything = "true";

// What decides about a value comes first.
constexpr std::array Table = {
    Keyword{"$id", R"({"type": "string", "format": "uri-reference"})"},
    Keyword{"$schema", R"({"type": "string", "format": "uri"})"},
    Keyword{"$ref", R"({"type": "string", "format": "uri-reference"})"},
    Keyword{"$comment", Text},
    Keyword{"title", Text},
    Keyword{"description", Text},
    Keyword{"default", Anything},
    Keyword{"readOnly", Flag},
    Keyword{"writeOnly", Flag},
    Keyword{"examples", R"({"type": "array", "items": true})"},
    Keyword{"contentMediaType", Text},
    Keyword{"contentEncoding", Text},
    Keyword{"definitions", SelfMap, Holds::SchemaMap},

    Keyword{"type",
            R"({"anyOf": [{"$ref": "#/definitions/simpleTypes"}, {"type": "array",
            "items": {"$ref": "#/definitions/simpleTypes"}, "minItems": 1, "uniqueItems": true}]})",
            Holds::Nothing, TypeCompile},
    Keyword{"const", Anything, Holds::Nothing, ConstCompile},
    Keyword{"enum", R"({"type": "array", "items": true})", Holds::Nothing, EnumCompile},

    Keyword{"multipleOf", R"({"type": "number", "exclusiveMinimum": 0})", Holds::Nothing, MultipleOfCompile},
    Keyword{"maximum", Numeric, Holds::Nothing, MaximumCompile},
    Keyword{"exclusiveMaximum", Numeric, Holds::Nothing, ExclusiveMaximumCompile},
    Keyword{"minimum", Numeric, Holds::Nothing, MinimumCompile},
    Keyword{"exclusiveMinimum", Numeric, Holds::Nothing, ExclusiveMinimumCompile},

    Keyword{"maxLength", Count, Holds::Nothing, MaxLengthCompile},
    Keyword{"minLength", CountFrom0, Holds::Nothing, MinLengthCompile},
    Keyword{"pattern", R"({"type": "string", "format": "regex"})", Holds::Nothing, PatternCompile},
    Keyword{"format", Text, Holds::Nothing, FormatCompile},

    Keyword{"maxItems", Count, Holds::Nothing, MaxItemsCompile},
    Keyword{"minItems", CountFrom0, Holds::Nothing, MinItemsCompile},
    Keyword{"uniqueItems", Flag, Holds::Nothing, UniqueItemsCompile},
    Keyword{"items", R"({"anyOf": [{"$ref": "#"}, {"$ref": "#/definitions/schemaArray"}], "default": true})",
            Holds::SchemaOrList, ItemsCompile},
    Keyword{"additionalItems", Self, Holds::Schema, AdditionalItemsCompile},
    Keyword{"contains", Self, Holds::Schema, ContainsCompile},

    Keyword{"maxProperties", Count, Holds::Nothing, MaxPropertiesCompile},
    Keyword{"minProperties", CountFrom0, Holds::Nothing, MinPropertiesCompile},
    Keyword{"required", R"({"$ref": "#/definitions/stringArray"})", Holds::Nothing, RequiredCompile},
    Keyword{"properties", SelfMap, Holds::SchemaMap, PropertiesCompile},
    Keyword{"patternProperties",
            R"({"type": "object", "additionalProperties": {"$ref": "#"}, "propertyNames": {"format": "regex"},
            "default": {}})",
            Holds::SchemaMap, PatternPropertiesCompile},
    Keyword{"additionalProperties", Self, Holds::Schema, AdditionalPropertiesCompile},
    Keyword{"propertyNames", Self, Holds::Schema, PropertyNamesCompile},
    Keyword{"dependencies",
            R"({"type": "object", "additionalProperties": {"anyOf": [{"$ref": "#"},
            {"$ref": "#/definitions/stringArray"}]}})",
            Holds::SchemaMap, DependenciesCompile},

    Keyword{"if", Self, Holds::Schema, IfCompile},
    Keyword{"then", Self, Holds::Schema}, // part of "if"
    Keyword{"else", Self, Holds::Schema},
    Keyword{"allOf", SelfList, Holds::SchemaList, AllOfCompile},
    Keyword{"anyOf", SelfList, Holds::SchemaList, AnyOfCompile},
    Keyword{"oneOf", SelfList, Holds::SchemaList, OneOfCompile},
    Keyword{"not", Self, Holds::Schema, NotCompile},
};

} // namespace

std::span<const Keyword> Keywords() noexcept
{
    return Table;
}

} // namespace zryaml::schema
