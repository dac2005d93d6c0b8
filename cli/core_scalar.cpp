// SPDX-License-Identifier: Apache-2.0
// Numbers keep the digits that they were written with; only their form is made JSON's: no plus sign, no leading zeros,
// digits on both sides of a point, decimal instead of 0x and 0o.
#include "core_scalar.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <zr_yaml_scalar.h>

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

template <class Number> bool fits(string_view text)
{
    Number number{};
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), number);
    return code == std::errc() && end == text.data() + text.size();
}

// [-+] whole . fraction e exponent, as JSON writes it
std::string json_of(string_view text)
{
    std::string json = take(text, "-") ? "-" : "";
    (void)take(text, "+");
    string_view whole = take_digits(text);
    whole.remove_prefix(std::min(whole.find_first_not_of('0'), whole.size()));
    json += whole.empty() ? "0" : whole;
    const string_view fraction = take(text, ".") ? take_digits(text) : "";
    if (!fraction.empty())
        json.append(".").append(fraction);
    return json.append(text);
}

CoreScalar based_number(string_view text)
{
    std::uint64_t number = 0;
    const auto code = std::from_chars(text.data() + 2, text.data() + text.size(), number, text[1] == 'x' ? 16 : 8).ec;
    return code == std::errc() ? CoreScalar{std::to_string(number)} : CoreScalar{"", true};
}

CoreScalar integer(string_view text)
{
    if (text.starts_with("0x") || text.starts_with("0o"))
        return based_number(text);
    std::string json = json_of(text);
    return fits<std::int64_t>(json) || fits<std::uint64_t>(json) ? CoreScalar{std::move(json)} : CoreScalar{"", true};
}

CoreScalar floating(string_view text)
{
    std::string json = json_of(text);
    return fits<double>(json) ? CoreScalar{std::move(json)} : CoreScalar{"", true}; // .inf and .nan do not
}

} // namespace

CoreScalar core_scalar(const Value &scalar)
{
    const string_view text = scalar.text().value_or("");
    switch (ZRYAML_CoreTagGet(scalar.node())) {
    case YAML_TAG_NULL:
        return {"null"};
    case YAML_TAG_BOOL:
        return {text.front() == 't' || text.front() == 'T' ? "true" : "false"};
    case YAML_TAG_INT:
        return integer(text);
    case YAML_TAG_FLOAT:
        return floating(text);
    default:
        return {};
    }
}

} // namespace zryaml::cli
