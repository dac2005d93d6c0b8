// SPDX-License-Identifier: Apache-2.0
// What a document remembers of how its scalars were written.
#include "support/load_text.h"

#include <gtest/gtest.h>

using ScalarForm = Recorded;

TEST_F(ScalarForm, IsThatOfTheFileAlsoInCopies)
{
    constexpr std::tuple<const char *, uint32_t, uint32_t> Scalars[] = {
        {"1", YAML_STYLE_PLAIN, YAML_TAG_NONE},
        {"'1'", YAML_STYLE_SINGLE, YAML_TAG_NONE},
        {"\"1\"", YAML_STYLE_DOUBLE, YAML_TAG_NONE},
        {"|\n  1", YAML_STYLE_LITERAL, YAML_TAG_NONE},
        {">\n  1", YAML_STYLE_FOLDED, YAML_TAG_NONE},
        {"", YAML_STYLE_PLAIN, YAML_TAG_NONE},
        {"!!str 1", YAML_STYLE_PLAIN, YAML_TAG_STR},
        {"! 1", YAML_STYLE_PLAIN, YAML_TAG_STR},
        {"!!int '1'", YAML_STYLE_SINGLE, YAML_TAG_INT},
        {"!!float 1", YAML_STYLE_PLAIN, YAML_TAG_FLOAT},
        {"!c!bool y", YAML_STYLE_PLAIN, YAML_TAG_BOOL},
        {"!<tag:yaml.org,2002:null> ~", YAML_STYLE_PLAIN, YAML_TAG_NULL},
        {"!other 1", YAML_STYLE_PLAIN, YAML_TAG_NONE},
        {"!!str {}", YAML_STYLE_NONE, YAML_TAG_NONE},
    };
    std::string text = "%TAG !c! tag:yaml.org,2002:\n---\na: &a\n";
    for (const auto &[written, style, tag] : Scalars)
        text += std::string("- ") + written + "\n";
    YamlHandle *handle = TextLoad(text + "b: *a\n");
    for (const char *key : {"a", "b"}) {
        uint32_t element = 0;
        for (const auto &[written, style, tag] : Scalars) {
            const YamlListNode *value = ZRYAML_ValueFind(handle, "%s[%u]", key, element++);
            EXPECT_EQ(ZRYAML_ValueStyleGet(value), style) << key << ' ' << written;
            EXPECT_EQ(ZRYAML_ValueTagGet(value), tag) << key << ' ' << written;
        }
    }
    EXPECT_EQ(ZRYAML_ValueStyleGet(nullptr) + ZRYAML_ValueTagGet(nullptr), 0U);
    ZRYAML_HandleFree(handle);
}
