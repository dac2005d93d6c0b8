// SPDX-License-Identifier: Apache-2.0
// Exact decimals. Zeros at both ends are cut off when a number is read, so each value has one form and two numbers
// compare digit by digit.
#include "number.h"

#include <algorithm>
#include <charconv>

namespace zryaml::schema {

namespace {

constexpr int64_t LargestExponent = 1'000'000'000'000'000; // beyond it every exponent counts as this one

bool SignTake(std::string_view &text) noexcept
{
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    return negative;
}

// Reads "e-12"; 0 if there is none.
int64_t ExponentRead(std::string_view text) noexcept
{
    text.remove_prefix(text.empty() ? 0 : 1);
    const bool negative = SignTake(text);
    int64_t exponent = 0;
    for (const char digit : text)
        exponent = std::min(exponent * 10 + (digit - '0'), LargestExponent);
    return negative ? -exponent : exponent;
}

uint64_t MultiplyMod(uint64_t a, uint64_t b, uint64_t modulus) noexcept
{
    __extension__ using Wide = unsigned __int128;
    return static_cast<uint64_t>(static_cast<Wide>(a) * b % modulus);
}

uint64_t PowerOfTenMod(int64_t exponent, uint64_t modulus) noexcept
{
    uint64_t power = 1 % modulus;
    for (uint64_t factor = 10 % modulus; exponent != 0; exponent /= 2) {
        if (exponent % 2 != 0)
            power = MultiplyMod(power, factor, modulus);
        factor = MultiplyMod(factor, factor, modulus);
    }
    return power;
}

} // namespace

Number::Number(std::string_view text) noexcept
{
    const bool isBased = text.starts_with("0x") || text.starts_with("0o");
    negative_ = !isBased && SignTake(text);
    const char last = text.back(); // of .inf and .nan a letter
    if (isBased)
        BasedSet(text);
    else if ((last >= '0' && last <= '9') || last == '.')
        DecimalSet(text);
    else
        form_ = last == 'f' || last == 'F' ? Form::Infinite : Form::Nan;
}

// Of "12", "1.5e3", ".5" and "1.", without a sign.
void Number::DecimalSet(std::string_view text) noexcept
{
    const size_t mantissaLength = std::min(text.find_first_of("eE"), text.size());
    const std::string_view mantissa = text.substr(0, mantissaLength);
    const size_t first = mantissa.find_first_not_of("0.");
    if (first == std::string_view::npos) { // zero
        negative_ = false;
        return;
    }
    digits_ = mantissa.substr(first, mantissa.find_last_not_of("0.") + 1 - first);
    const size_t pointPlace = std::min(mantissa.find('.'), mantissa.size());
    const auto beforePoint = static_cast<int64_t>(pointPlace) - static_cast<int64_t>(first);
    point_ = ExponentRead(text.substr(mantissaLength)) + (first > pointPlace ? beforePoint + 1 : beforePoint);
}

// Of "0x1F" and "0o17".
void Number::BasedSet(std::string_view text) noexcept
{
    uint64_t whole = 0;
    const auto read = std::from_chars(text.data() + 2, text.data() + text.size(), whole, text[1] == 'x' ? 16 : 8);
    if (read.ec != std::errc()) { // too large for every bound that could be meant
        form_ = Form::Infinite;
        return;
    }
    char *const end = std::to_chars(own_.data(), own_.data() + own_.size(), whole).ptr;
    point_ = whole == 0 ? 0 : end - own_.data();
    const auto *last = end;
    while (last != own_.data() && last[-1] == '0')
        --last;
    ownLength_ = static_cast<uint8_t>(last - own_.data());
}

std::string_view Number::Digits() const noexcept
{
    return ownLength_ != 0 ? std::string_view(own_.data(), ownLength_) : digits_;
}

int64_t Number::DigitCount() const noexcept
{
    const std::string_view digits = Digits();
    return static_cast<int64_t>(digits.size()) - (digits.find('.') != std::string_view::npos ? 1 : 0);
}

std::optional<uint64_t> Number::Mantissa() const noexcept
{
    if (form_ != Form::Finite || DigitCount() > 19)
        return std::nullopt;
    uint64_t mantissa = 0; // 19 nines fit
    for (const char digit : Digits()) {
        if (digit != '.')
            mantissa = mantissa * 10 + static_cast<uint64_t>(digit - '0');
    }
    return mantissa;
}

bool Number::IsWhole() const noexcept
{
    return form_ == Form::Finite && point_ >= DigitCount();
}

uint64_t Number::Count() const noexcept
{
    const int64_t zeros = point_ - DigitCount();
    const std::optional<uint64_t> mantissa = Mantissa();
    if (negative_ || form_ == Form::Nan)
        return 0;
    if (!mantissa || zeros > 19)
        return UINT64_MAX;
    uint64_t count = *mantissa;
    for (int64_t zero = 0; zero < zeros; ++zero) {
        if (count > UINT64_MAX / 10)
            return UINT64_MAX;
        count *= 10;
    }
    return count;
}

bool Number::IsMultipleOf(const Number &divisor) const noexcept
{
    const std::optional<uint64_t> modulus = divisor.Mantissa();
    if (form_ != Form::Finite || !modulus || *modulus == 0)
        return false;
    if (Digits().empty())
        return true;
    // Neither mantissa ends with a zero, so nothing makes up for a power of ten that the divisor has more.
    const int64_t zeros = (point_ - DigitCount()) - (divisor.point_ - divisor.DigitCount());
    if (zeros < 0)
        return false;
    uint64_t rest = 0;
    for (const char digit : Digits()) {
        if (digit != '.')
            rest = (MultiplyMod(rest, 10, *modulus) + static_cast<uint64_t>(digit - '0') % *modulus) % *modulus;
    }
    return MultiplyMod(rest, PowerOfTenMod(zeros, *modulus), *modulus) == 0;
}

std::strong_ordering Number::MagnitudeOrder(const Number &other) const noexcept
{
    const std::string_view own = Digits();
    const std::string_view others = other.Digits();
    if (own.empty() || others.empty())
        return others.empty() <=> own.empty();
    if (point_ != other.point_)
        return point_ <=> other.point_;
    const char *left = own.data();
    const char *right = others.data();
    const char *const leftEnd = left + own.size();
    const char *const rightEnd = right + others.size();
    for (;; ++left, ++right) {
        if (left != leftEnd && *left == '.')
            ++left;
        if (right != rightEnd && *right == '.')
            ++right;
        if (left == leftEnd || right == rightEnd)
            return (left != leftEnd) <=> (right != rightEnd);
        if (*left != *right)
            return *left <=> *right;
    }
}

std::partial_ordering Number::operator<=>(const Number &other) const noexcept
{
    if (form_ == Form::Nan || other.form_ == Form::Nan)
        return std::partial_ordering::unordered;
    if (negative_ != other.negative_)
        return other.negative_ <=> negative_;
    const std::strong_ordering order =
        form_ != Form::Finite || other.form_ != Form::Finite ? form_ <=> other.form_ : MagnitudeOrder(other);
    return negative_ ? 0 <=> order : order;
}

} // namespace zryaml::schema
