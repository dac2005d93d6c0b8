// SPDX-License-Identifier: Apache-2.0
// The typed reads of C: what they give, and what keeps the variable as it was and why.
#include "support/load_text.h"

#include <bit>

#include <gtest/gtest.h>

using TypedRead = Recorded;

TEST_F(TypedRead, GivesTheValueOrLeavesTheVariableAlone)
{
    enum { Int, Uint, Double, Bool, Duration, Size };
    constexpr uint64_t Kept = 0x7777777777777777U;
    struct {
        int kind;
        const char *path;
        uint32_t code;
        uint64_t value;
        const char *message;
    } const rows[] = {
        {Int, "n[0]", YAML_OK, static_cast<uint64_t>(-5), ""},
        {Uint, "n[1]", YAML_OK, 255, ""},
        {Double, "n[2]", YAML_OK, std::bit_cast<uint64_t>(0.25), ""},
        {Bool, "n[3]", YAML_OK, Kept >> 32 << 32 | 1, ""},
        {Duration, "n[4]", YAML_OK, 5'400'000'000'000, ""},
        {Size, "n[5]", YAML_OK, 1536, ""},
        {Uint, "n[0]", YAML_ERR_VALUE, Kept, "2:5: '-5' is out of range"},
        {Int, "n[4]", YAML_ERR_VALUE, Kept, "2:24: '1h30m' is not an integer"},
        {Int, "none", YAML_ERR_NOT_FOUND, Kept, nullptr},
        {Int, "n[6]", YAML_ERR_NOT_FOUND, Kept, nullptr},
        {Int, "empty.key", YAML_ERR_NOT_FOUND, Kept, nullptr},
        {Int, "empty", YAML_ERR_VALUE, Kept, "3:7: an empty value is not an integer"},
        {Int, "n", YAML_ERR_NOT_SCALAR, Kept, "2:4: n is a sequence, not a scalar"},
        {Int, "n[0].key", YAML_ERR_NODE_TYPE, Kept, nullptr},
        {Int, "n.key", YAML_ERR_NODE_TYPE, Kept, nullptr},
        {Int, "n[x]", YAML_ERR_INDEX, Kept, nullptr},
        {Int, "n]", YAML_ERR_KEY, Kept, nullptr},
    };
    YamlHandle *document = TextLoad("---\nn: [-5, 0xff, .25, on, 1h30m, 1.5KiB]\nempty:\n");
    for (const auto &row : rows) {
        Base().Reset();
        union {
            uint64_t bits = Kept;
            int64_t whole;
            double number;
            uint32_t flag;
        } value;
        const auto get = [&] {
            switch (row.kind) {
            case Int:
                return ZRYAML_IntGet(document, &value.whole, "%s", row.path);
            case Uint:
                return ZRYAML_UintGet(document, &value.bits, "%s", row.path);
            case Double:
                return ZRYAML_DoubleGet(document, &value.number, "%s", row.path);
            case Bool:
                return ZRYAML_BoolGet(document, &value.flag, "%s", row.path);
            case Duration:
                return ZRYAML_DurationGet(document, &value.whole, "%s", row.path);
            default:
                return ZRYAML_BytesGet(document, &value.bits, "%s", row.path);
            }
        };
        EXPECT_EQ(get(), row.code) << row.path;
        EXPECT_EQ(value.bits, row.value) << row.path;
        const YamlErrorInfo &error = *ZRYAML_LastErrorGet();
        EXPECT_STREQ(error.pcKeyPath, row.code != YAML_OK ? row.path : "");
        EXPECT_EQ(error.uiCode, row.code) << row.path;
        const bool logged = row.code != YAML_OK && row.code != YAML_ERR_NOT_FOUND;
        EXPECT_EQ(Base().log.size(), logged ? 1U : 0U) << row.path << Base().LogText();
        const std::string place = std::to_string(error.uiLine) + ":" + std::to_string(error.uiColumn) + ": ";
        EXPECT_TRUE(row.message == nullptr || row.code == YAML_OK || place + error.pcMessage == row.message)
            << row.path << " " << place << error.pcMessage;
    }
    EXPECT_EQ(ZRYAML_IntGet(document, nullptr, "n[0]"), YAML_ERR_PARAM);
    ZRYAML_HandleFree(document);
}
