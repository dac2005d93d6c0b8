// SPDX-License-Identifier: Apache-2.0
// Numbers with a fraction, whatever the locale. The digits of most are few enough to be computed without a rounding
// error; the C library reads the rest.
#include "double_text.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <locale.h>
#include <string_view>

namespace {

using namespace zryaml;

struct Digits {
    uint64_t value = 0;   // the first 19 of them
    int32_t exponent = 0; // of ten, by which the value is to be multiplied
    bool all = true;      // the value holds all of them
    bool zero = true;     // all of them are 0
};

// Takes digits; behind the point they also count down the exponent.
size_t DigitsTake(const char *&text, bool fraction, Digits &digits) noexcept
{
    const char *begin = text;
    for (; *text >= '0' && *text <= '9'; ++text) {
        const auto digit = static_cast<uint64_t>(*text - '0');
        digits.zero = digits.zero && digit == 0;
        if (digits.value > (UINT64_MAX - 9) / 10) {
            digits.all = false;
            continue;
        }
        digits.value = digits.value * 10 + digit;
        digits.exponent -= fraction ? 1 : 0;
    }
    return static_cast<size_t>(text - begin);
}

// True if a number follows up to the end: digits, point and digits, exponent.
bool NumberTake(const char *text, Digits &digits) noexcept
{
    size_t count = DigitsTake(text, false, digits);
    if (*text == '.')
        count += DigitsTake(++text, true, digits);
    if (count == 0)
        return false;
    if (*text == 'e' || *text == 'E') {
        ++text;
        const bool negative = *text == '-';
        text += *text == '-' || *text == '+' ? 1 : 0;
        const char *begin = text;
        int32_t exponent = 0;
        for (; *text >= '0' && *text <= '9'; ++text)
            exponent = exponent < 100'000 ? exponent * 10 + (*text - '0') : exponent;
        if (text == begin)
            return false;
        digits.exponent += negative ? -exponent : exponent;
    }
    return *text == '\0';
}

constexpr double PowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

double Magnitude(const char *text, const Digits &digits, bool single) noexcept
{
    const int32_t exponent = digits.exponent;
    if (digits.all && !single && digits.value <= uint64_t{1} << 53 && exponent >= -22 && exponent <= 22) {
        const auto value = static_cast<double>(digits.value); // it and the power are exact, so one rounding is left
        return exponent < 0 ? value / PowersOfTen[-exponent] : value * PowersOfTen[exponent];
    }
    const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr); // takes no memory
    const double number = single ? static_cast<double>(strtof_l(text, nullptr, plain)) : strtod_l(text, nullptr, plain);
    freelocale(plain);
    return number;
}

} // namespace

Fit zryaml::NumberParse(const char *text, bool single, double &number) noexcept
{
    const bool sign = *text == '+' || *text == '-';
    const bool negative = *text == '-';
    text += sign ? 1 : 0;
    const std::string_view word = text;
    if (word == ".inf" || word == ".Inf" || word == ".INF") {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        return number = negative ? -infinity : infinity, Fit::Yes;
    }
    if (!sign && (word == ".nan" || word == ".NaN" || word == ".NAN"))
        return number = std::numeric_limits<double>::quiet_NaN(), Fit::Yes;
    Digits digits;
    if (!NumberTake(text, digits))
        return Fit::NoSuchValue;
    const double magnitude = Magnitude(text, digits, single);
    if (std::isinf(magnitude) || (magnitude == 0 && !digits.zero))
        return Fit::OutOfRange;
    number = negative ? -magnitude : magnitude;
    return Fit::Yes;
}

void zryaml::NumberWrite(double number, bool single, char (&text)[32]) noexcept
{
    if (!std::isfinite(number)) {
        (void)snprintf(text, sizeof(text), "%s", std::isnan(number) ? ".nan" : number < 0 ? "-.inf" : ".inf");
        return;
    }
    const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t own = uselocale(plain);
    double again = 0;
    for (int precision = single ? 6 : 15; precision <= 17; ++precision) {
        (void)snprintf(text, sizeof(text), "%.*g", precision, number);
        if (NumberParse(text, single, again) == Fit::Yes && again == number)
            break;
    }
    (void)uselocale(own);
    freelocale(plain);
}
