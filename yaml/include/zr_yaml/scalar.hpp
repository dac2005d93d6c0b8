// SPDX-License-Identifier: Apache-2.0
// Strict reading of one text as a value: the whole text or nothing, range-checked, whatever the locale. Part of
// zr_yaml.hpp, where Value::get() lists what is accepted.
#ifndef ZR_YAML_SCALAR_HPP
#define ZR_YAML_SCALAR_HPP

#include <charconv>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <ratio>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <vector>

namespace zryaml::detail {

template <class T, class... Others> inline constexpr bool is_one_of = (std::is_same_v<T, Others> || ...);

// The integers that count; bool and the character types are none.
template <class T>
inline constexpr bool is_integer = is_one_of<T, signed char, short, int, long, long long, unsigned char, unsigned short,
                                             unsigned, unsigned long, unsigned long long>;

template <class T> inline constexpr bool is_vector = false;
template <class T, class A> inline constexpr bool is_vector<std::vector<T, A>> = true;

// How a T is read: read() gives null, or what is wrong with the text; hint() says what would be right.
template <class T, class = void> struct Scalar {
    static constexpr bool readable = false;
};

inline constexpr const char *out_of_range = "is out of range";

// A whole number of either sign, before it is known whether its type can hold it.
struct Whole {
    bool negative = false;
    std::uint64_t magnitude = 0;
};

inline bool take_prefix(std::string_view &text, std::string_view prefix) noexcept
{
    const bool found = text.substr(0, prefix.size()) == prefix;
    if (found)
        text.remove_prefix(prefix.size());
    return found;
}

// True for a minus sign.
inline bool take_sign(std::string_view &text) noexcept
{
    return !take_prefix(text, "+") && take_prefix(text, "-");
}

inline std::errc take_digits(std::string_view &text, int base, std::uint64_t &number) noexcept
{
    const char *begin = text.data();
    const auto [end, code] = std::from_chars(begin, begin + text.size(), number, base);
    text.remove_prefix(static_cast<std::size_t>(end - begin));
    return code;
}

template <class T> const char *store(Whole whole, T &out) noexcept
{
    using Limits = std::numeric_limits<T>;
    constexpr auto max = static_cast<std::uint64_t>(Limits::max());
    // Two's complement has one more below zero than above.
    constexpr std::uint64_t min_magnitude = std::is_signed_v<T> ? max + 1 : 0;
    if (whole.magnitude > (whole.negative ? min_magnitude : max))
        return out_of_range;
    out = static_cast<T>(whole.negative ? 0 - whole.magnitude : whole.magnitude);
    return nullptr;
}

template <class T> struct Scalar<T, std::enable_if_t<is_integer<T>>> {
    static constexpr bool readable = true;
    static const char *read(std::string_view text, T &out) noexcept
    {
        Whole whole;
        whole.negative = take_sign(text);
        const int base = take_prefix(text, "0x") ? 16 : take_prefix(text, "0o") ? 8 : 10;
        const std::errc code = take_digits(text, base, whole.magnitude);
        if (code == std::errc::invalid_argument || !text.empty())
            return "is not a whole number";
        return code == std::errc() ? store(whole, out) : out_of_range;
    }
    static std::string hint()
    {
        using Limits = std::numeric_limits<T>;
        return "a whole number from " + std::to_string(Limits::min()) + " to " + std::to_string(Limits::max()) +
               " is expected, in decimal, 0x or 0o";
    }
};

template <> struct Scalar<bool> {
    static constexpr bool readable = true;
    static const char *read(std::string_view text, bool &out) noexcept
    {
        for (const std::string_view word : {"true", "True", "TRUE", "yes", "Yes", "YES", "on", "On", "ON"}) {
            if (text == word)
                return out = true, nullptr;
        }
        for (const std::string_view word : {"false", "False", "FALSE", "no", "No", "NO", "off", "Off", "OFF"}) {
            if (text == word)
                return out = false, nullptr;
        }
        return "is not a boolean";
    }
    static std::string hint() { return "true or false, yes or no, on or off is expected"; }
};

// long double is left out: its text form differs between machines.
template <class T> struct Scalar<T, std::enable_if_t<is_one_of<T, float, double>>> {
    static constexpr bool readable = true;
    static const char *read(std::string_view text, T &out) noexcept
    {
#if defined(__cpp_lib_to_chars)
        using Limits = std::numeric_limits<T>;
        const bool sign = !text.empty() && (text[0] == '+' || text[0] == '-');
        const bool negative = take_sign(text);
        if (text == ".inf" || text == ".Inf" || text == ".INF")
            return out = negative ? -Limits::infinity() : Limits::infinity(), nullptr;
        if (!sign && (text == ".nan" || text == ".NaN" || text == ".NAN"))
            return out = Limits::quiet_NaN(), nullptr;
        // from_chars takes a further minus sign and the words inf and nan as well.
        if (text.find_first_of("0123456789.") != 0)
            return "is not a number";
        const char *end = text.data() + text.size();
        const auto [stop, code] = std::from_chars(text.data(), end, out);
        if (code == std::errc::invalid_argument || stop != end)
            return "is not a number";
        if (code != std::errc())
            return out_of_range;
        out = negative ? -out : out;
        return nullptr;
#else
        static_assert(sizeof(T) == 0, "the standard library lacks std::from_chars for floating point");
#endif
    }
    static std::string hint()
    {
        return "a number such as -1.5, 2e-3, .inf or .nan is expected, within its type";
    }
};

template <class Rep, class Period> struct Scalar<std::chrono::duration<Rep, Period>> {
    static_assert(is_integer<Rep>, "durations are read into whole ticks, such as std::chrono::milliseconds");
    using Duration = std::chrono::duration<Rep, Period>;
    static constexpr bool readable = true;

    static const char *read(std::string_view text, Duration &out) noexcept
    {
        constexpr struct {
            std::string_view name;
            const char *(*scale)(Whole, Duration &);
        } units[] = {{"ns", scale<std::nano>},       {"us", scale<std::micro>},      {"ms", scale<std::milli>},
                     {"s", scale<std::ratio<1>>},    {"min", scale<std::ratio<60>>}, {"h", scale<std::ratio<3600>>},
                     {"d", scale<std::ratio<86400>>}};
        Whole whole;
        whole.negative = take_sign(text);
        const std::errc code = take_digits(text, 10, whole.magnitude);
        for (const auto &unit : units) {
            if (code != std::errc::invalid_argument && text == unit.name)
                return code == std::errc() ? unit.scale(whole, out) : out_of_range;
        }
        return "is not a duration";
    }
    static std::string hint() { return "a whole number with one unit is expected: ns, us, ms, s, min, h or d"; }

private:
    template <class Unit> static const char *scale(Whole whole, Duration &out) noexcept
    {
        using Factor = std::ratio_divide<Unit, typename Duration::period>;
        constexpr auto times = static_cast<std::uint64_t>(Factor::num);
        constexpr auto parts = static_cast<std::uint64_t>(Factor::den);
        if (whole.magnitude % parts != 0)
            return "is finer than the unit it is read in";
        whole.magnitude /= parts;
        if (whole.magnitude > std::numeric_limits<std::uint64_t>::max() / times)
            return out_of_range;
        whole.magnitude *= times;
        Rep count{};
        const char *problem = store(whole, count);
        out = Duration(count);
        return problem;
    }
};

} // namespace zryaml::detail

#endif
