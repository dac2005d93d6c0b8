// SPDX-License-Identifier: Apache-2.0
// Numbers keep the digits that they were written with; only their form is made JSON's: no plus sign, no leading zeros,
// digits on both sides of a point, decimal instead of 0x and 0o.
#include "core_scalar.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace zryaml::cli {

namespace {

using std::string_view;

bool take(string_view &text, string_view prefix)
{
    const bool found = text.starts_with(prefix);
    text.remove_prefix(found ? prefix.size() : 0);
    return found;
}

string_view take_digits(string_view &text)
{
    const string_view digits = text.substr(0, text.find_first_not_of("0123456789"));
    text.remove_prefix(digits.size());
    return digits;
}

template <class Number> bool fits(string_view text, int base = 10)
{
    Number number{};
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    return code == std::errc() && end == text.data() + text.size();
}

struct Decimal { // [-+] whole . fraction e exponent
    bool negative = false, point = false, exponential = false;
    string_view whole, fraction, exponent; // the exponent with its sign

    static std::optional<Decimal> read(string_view text)
    {
        Decimal decimal;
        decimal.negative = take(text, "-");
        if (!decimal.negative)
            (void)take(text, "+");
        decimal.whole = take_digits(text);
        decimal.point = take(text, ".");
        decimal.fraction = decimal.point ? take_digits(text) : "";
        decimal.exponential = take(text, "e") || take(text, "E");
        decimal.exponent = text;
        bool exponent_right = text.empty();
        if (decimal.exponential) {
            (void)(take(text, "-") || take(text, "+"));
            exponent_right = !take_digits(text).empty() && text.empty();
        }
        const bool has_digits = !decimal.whole.empty() || !decimal.fraction.empty();
        return has_digits && exponent_right ? std::optional(decimal) : std::nullopt;
    }

    [[nodiscard]] std::string json() const
    {
        const size_t zeros = std::min(whole.find_first_not_of('0'), whole.size());
        std::string text = negative ? "-" : "";
        text += zeros == whole.size() ? "0" : whole.substr(zeros);
        if (!fraction.empty())
            text.append(".").append(fraction);
        if (exponential)
            text.append("e").append(exponent);
        return text;
    }
};

CoreScalar based_number(string_view digits, int base)
{
    std::uint64_t number = 0;
    const auto [end, code] = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    if (digits.empty() || end != digits.data() + digits.size())
        return {};
    return code == std::errc() ? CoreScalar{std::to_string(number)} : CoreScalar{"", true};
}

CoreScalar number_read(string_view text)
{
    if (text.starts_with("0x") || text.starts_with("0o"))
        return based_number(text.substr(2), text[1] == 'x' ? 16 : 8);
    const string_view unsigned_text = text.substr(text.starts_with('-') || text.starts_with('+') ? 1 : 0);
    if (unsigned_text == ".inf" || unsigned_text == ".Inf" || unsigned_text == ".INF" || text == ".nan" ||
        text == ".NaN" || text == ".NAN")
        return {"", true};
    const std::optional<Decimal> decimal = Decimal::read(text);
    if (!decimal)
        return {};
    std::string json = decimal->json();
    const bool is_float = decimal->point || decimal->exponential;
    double number = 0;
    const bool held = is_float ? std::from_chars(json.data(), json.data() + json.size(), number).ec == std::errc()
                               : fits<std::int64_t>(json) || fits<std::uint64_t>(json);
    return held ? CoreScalar{std::move(json)} : CoreScalar{"", true};
}

CoreScalar plain_read(string_view text)
{
    if (text.empty() || text == "~" || text == "null" || text == "Null" || text == "NULL")
        return {"null"};
    if (text == "true" || text == "True" || text == "TRUE")
        return {"true"};
    if (text == "false" || text == "False" || text == "FALSE")
        return {"false"};
    return number_read(text);
}

} // namespace

CoreScalar core_scalar(const Value &scalar)
{
    const std::uint32_t tag = ZRYAML_ValueTagGet(scalar.node());
    const bool plain = ZRYAML_ValueStyleGet(scalar.node()) <= YAML_STYLE_PLAIN; // none: a variable or an assignment
    const bool typed = tag == YAML_TAG_NONE ? plain : tag != YAML_TAG_STR;
    return typed ? plain_read(scalar.text().value_or("")) : CoreScalar{};
}

} // namespace zryaml::cli
