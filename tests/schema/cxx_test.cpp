// SPDX-License-Identifier: Apache-2.0
// The C++ face: schema and problems as values.
#include <gtest/gtest.h>
#include <zr_yaml/schema.hpp>

TEST(SchemaCxx, LoadsChecksAndRefuses)
{
    zryaml::Result<zryaml::Schema, zryaml::Problems> loaded =
        zryaml::Schema::parse("{properties: {port: {maximum: 9}}, required: [port]}", "schema.yaml");
    ASSERT_TRUE(loaded) << loaded.error().what();
    const zryaml::Schema schema = *std::move(loaded);

    const zryaml::Document good = zryaml::Document::parse("port: 9", "good.yaml").value();
    EXPECT_TRUE(schema.check(good).empty());
    const zryaml::Document bad = zryaml::Document::parse("{a: {port: 80}}", "bad.yaml").value();
    EXPECT_EQ(schema.check(bad)[0].what(), "bad.yaml:1:1: error: key 'port' is missing");
    const zryaml::Problems problems = schema.check(bad["a"]);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].code, YAML_ERR_RANGE);
    EXPECT_EQ(problems[0].path, "a.port");
    const zryaml::Document empty = zryaml::Document::parse("", "empty.yaml").value();
    EXPECT_EQ(schema.check(empty)[0].source, "empty.yaml");

    EXPECT_EQ(zryaml::Schema::parse("{$ref: '#'}").error()[0].code, YAML_ERR_SCHEMA);
    EXPECT_EQ(zryaml::Schema::load("/nowhere/schema.json").error()[0].code, YAML_ERR_PARAM);
    EXPECT_EQ(zryaml::Schema::load(std::string("a\0b", 3)).error()[0].code, YAML_ERR_PARAM);
}
