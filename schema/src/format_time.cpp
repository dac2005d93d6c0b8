// SPDX-License-Identifier: Apache-2.0
// Dates and times of RFC 3339.
#include "format.h"

#include <algorithm>
#include <optional>

namespace zryaml::schema {

namespace {

constexpr bool IsDigit(char character) noexcept
{
    return character >= '0' && character <= '9';
}

// Takes a number of so many digits, up to a largest one.
std::optional<int> NumberTake(std::string_view &text, size_t digits, int largest) noexcept
{
    if (text.size() < digits || !std::ranges::all_of(text.substr(0, digits), IsDigit))
        return std::nullopt;
    int number = 0;
    for (const char digit : text.substr(0, digits))
        number = number * 10 + (digit - '0');
    text.remove_prefix(digits);
    return number <= largest ? std::optional(number) : std::nullopt;
}

bool Take(std::string_view &text, std::string_view anyOf) noexcept
{
    const bool found = !text.empty() && anyOf.find(text.front()) != std::string_view::npos;
    text.remove_prefix(found ? 1 : 0);
    return found;
}

int DaysOf(int year, int month) noexcept
{
    const bool isLeap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    if (month == 2)
        return isLeap ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

bool FractionTake(std::string_view &text) noexcept
{
    if (!Take(text, "."))
        return true;
    const size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    text.remove_prefix(digits);
    return digits > 0;
}

// Takes "Z" or "+01:00"; the minutes that it is ahead of UTC.
std::optional<int> ZoneTake(std::string_view &text) noexcept
{
    if (Take(text, "Zz"))
        return 0;
    const bool isBehind = text.starts_with('-');
    if (!Take(text, "+-"))
        return std::nullopt;
    const std::optional<int> hours = NumberTake(text, 2, 23);
    const bool colon = Take(text, ":");
    const std::optional<int> minutes = NumberTake(text, 2, 59);
    if (!hours || !colon || !minutes)
        return std::nullopt;
    const int ahead = *hours * 60 + *minutes;
    return isBehind ? -ahead : ahead;
}

} // namespace

bool IsDate(std::string_view text)
{
    const std::optional<int> year = NumberTake(text, 4, 9999);
    const bool first = Take(text, "-");
    const std::optional<int> month = NumberTake(text, 2, 12);
    const bool second = Take(text, "-");
    const std::optional<int> day = NumberTake(text, 2, 31);
    return year && first && month && second && day && text.empty() && *month > 0 && *day > 0 &&
           *day <= DaysOf(*year, *month);
}

bool IsTime(std::string_view text)
{
    const std::optional<int> hour = NumberTake(text, 2, 23);
    const bool first = Take(text, ":");
    const std::optional<int> minute = NumberTake(text, 2, 59);
    const bool second = Take(text, ":");
    const std::optional<int> seconds = NumberTake(text, 2, 60);
    if (!hour || !first || !minute || !second || !seconds || !FractionTake(text))
        return false;
    const std::optional<int> ahead = ZoneTake(text);
    if (!ahead || !text.empty())
        return false;
    constexpr int Day = 24 * 60;
    const int utc = (*hour * 60 + *minute - *ahead + Day) % Day;
    return *seconds < 60 || utc == Day - 1; // a leap second ends a day
}

bool IsDateTime(std::string_view text)
{
    constexpr size_t DateLength = 10;
    return text.size() > DateLength && (text[DateLength] == 'T' || text[DateLength] == 't') &&
           IsDate(text.substr(0, DateLength)) && IsTime(text.substr(DateLength + 1));
}

} // namespace zryaml::schema
