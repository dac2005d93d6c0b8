// SPDX-License-Identifier: Apache-2.0
// The types of the core schema of YAML 1.2. What else the library reads a text as is decided by the program that asks.
#include <initializer_list>
#include <string_view>
#include <zr_yaml_scalar.h>

namespace {

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> words) noexcept
{
    for (const std::string_view word : words) {
        if (text == word)
            return true;
    }
    return false;
}

bool Take(std::string_view &text, char one, char other) noexcept
{
    const bool found = !text.empty() && (text.front() == one || text.front() == other);
    text.remove_prefix(found ? 1 : 0);
    return found;
}

// How many digits of a base there were.
size_t DigitsTake(std::string_view &text, std::string_view digits = "0123456789") noexcept
{
    size_t count = 0;
    while (count < text.size() && digits.find(text[count]) != std::string_view::npos)
        ++count;
    text.remove_prefix(count);
    return count;
}

// Digits, with a point before, between or behind them, and an exponent.
uint32_t DecimalTag(std::string_view text) noexcept
{
    uint32_t tag = YAML_TAG_INT;
    size_t digits = DigitsTake(text);
    if (Take(text, '.', '.')) {
        tag = YAML_TAG_FLOAT;
        digits += DigitsTake(text);
    }
    bool whole = digits != 0;
    if (Take(text, 'e', 'E')) {
        tag = YAML_TAG_FLOAT;
        Take(text, '-', '+');
        whole = DigitsTake(text) != 0 && whole;
    }
    return whole && text.empty() ? tag : YAML_TAG_STR;
}

uint32_t BasedTag(std::string_view text, std::string_view digits) noexcept
{
    text.remove_prefix(2);
    return DigitsTake(text, digits) != 0 && text.empty() ? YAML_TAG_INT : YAML_TAG_STR;
}

uint32_t NumberTag(std::string_view text) noexcept
{
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'o'))
        return BasedTag(text, text[1] == 'x' ? "0123456789abcdefABCDEF" : "01234567");
    if (IsOneOf(text, {".nan", ".NaN", ".NAN"}))
        return YAML_TAG_FLOAT;
    Take(text, '-', '+');
    return IsOneOf(text, {".inf", ".Inf", ".INF"}) ? YAML_TAG_FLOAT : DecimalTag(text);
}

} // namespace

uint32_t ZRYAML_PlainTagGet(const char *pcText, size_t ulLength)
{
    if (pcText == nullptr)
        return YAML_TAG_NONE;
    const std::string_view text(pcText, ulLength);
    if (text.empty() || IsOneOf(text, {"~", "null", "Null", "NULL"}))
        return YAML_TAG_NULL;
    if (IsOneOf(text, {"true", "True", "TRUE", "false", "False", "FALSE"}))
        return YAML_TAG_BOOL;
    return NumberTag(text);
}

uint32_t ZRYAML_CoreTagGet(const YamlListNode *pstValue)
{
    const char *text = ZRYAML_ValueTextGet(pstValue);
    if (text == nullptr)
        return YAML_TAG_NONE;
    const uint32_t written = ZRYAML_ValueTagGet(pstValue);
    const bool isPlain = ZRYAML_ValueStyleGet(pstValue) <= YAML_STYLE_PLAIN; // none: a variable or an assignment
    if (written == YAML_TAG_STR || (written == YAML_TAG_NONE && !isPlain))
        return YAML_TAG_STR;
    const uint32_t plain = ZRYAML_PlainTagGet(text, std::string_view(text).size());
    return plain == YAML_TAG_INT && written == YAML_TAG_FLOAT ? YAML_TAG_FLOAT : plain;
}
