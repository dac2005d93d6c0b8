// SPDX-License-Identifier: Apache-2.0
// How a scalar was written: its style and, where the file says one, its core tag. The text is the same with any of
// them; callers that must tell 1 from "1" ask here.
#include "parse_internal.h"

#include <yaml.h>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

struct TagName {
    std::string_view text;
    uint32_t tag;
};
constexpr TagName TagNames[] = {
    {"!", YAML_TAG_STR}, // "not to be resolved", which makes a scalar a text
    {YAML_STR_TAG, YAML_TAG_STR},
    {YAML_INT_TAG, YAML_TAG_INT},
    {YAML_FLOAT_TAG, YAML_TAG_FLOAT},
    {YAML_BOOL_TAG, YAML_TAG_BOOL},
    {YAML_NULL_TAG, YAML_TAG_NULL},
};

// libyaml's styles have the numbers that ours have.
static_assert(YAML_PLAIN_SCALAR_STYLE == YAML_STYLE_PLAIN && YAML_SINGLE_QUOTED_SCALAR_STYLE == YAML_STYLE_SINGLE &&
              YAML_DOUBLE_QUOTED_SCALAR_STYLE == YAML_STYLE_DOUBLE && YAML_LITERAL_SCALAR_STYLE == YAML_STYLE_LITERAL &&
              YAML_FOLDED_SCALAR_STYLE == YAML_STYLE_FOLDED);

uint32_t TagOf(std::string_view text) noexcept
{
    for (const TagName &name : TagNames) {
        if (text == name.text)
            return name.tag;
    }
    return YAML_TAG_NONE;
}

} // namespace

void zryaml::parse::ScalarTagSet(YamlListNode &node, const char *tag) noexcept
{
    StateSet(node, NODE_TAG_MASK, NODE_TAG_SHIFT, TagOf(tag));
}

uint32_t ZRYAML_ValueStyleGet(const YamlListNode *pstValue)
{
    return pstValue == nullptr ? YAML_STYLE_NONE : StateGet(*pstValue, NODE_STYLE_MASK, NODE_STYLE_SHIFT);
}

uint32_t ZRYAML_ValueTagGet(const YamlListNode *pstValue)
{
    return pstValue == nullptr ? YAML_TAG_NONE : StateGet(*pstValue, NODE_TAG_MASK, NODE_TAG_SHIFT);
}
