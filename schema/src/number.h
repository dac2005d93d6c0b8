// SPDX-License-Identifier: Apache-2.0
// Numbers as a document writes them, compared exactly: no digit is rounded away, and nothing is allocated.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zryaml::schema {

// A number that looks into the text it was read from. Its value is 0.DIGITS times ten to the power of the point.
class Number {
public:
    Number() noexcept = default; // zero
    // Of an integer or float of the core schema of YAML 1.2, which the text must be.
    explicit Number(std::string_view text) noexcept;

    // True for 3, 3.0 and 30e-1.
    [[nodiscard]] bool IsWhole() const noexcept;
    // As a count; the largest one for whatever is larger, 0 below zero.
    [[nodiscard]] uint64_t Count() const noexcept;
    // True if the number can divide: more than zero, finite, of 19 digits at most.
    [[nodiscard]] bool CanDivide() const noexcept { return !negative_ && Mantissa().value_or(0) != 0; }
    [[nodiscard]] bool IsMultipleOf(const Number &divisor) const noexcept;
    // Hands on what makes up the value, the same parts for equal numbers however written.
    template <class Take> void EachPart(Take take) const noexcept
    {
        take(static_cast<uint64_t>(form_) * 2 + (negative_ ? 1 : 0));
        take(static_cast<uint64_t>(point_));
        for (const char digit : Digits()) {
            if (digit != '.')
                take(static_cast<uint64_t>(digit));
        }
    }

    // No order where one of them is .nan.
    std::partial_ordering operator<=>(const Number &other) const noexcept;
    bool operator==(const Number &other) const noexcept { return (*this <=> other) == 0; }

private:
    enum class Form : uint8_t { Finite, Infinite, Nan };

    void DecimalSet(std::string_view text) noexcept;
    void BasedSet(std::string_view text) noexcept;
    // From the first digit that is not zero to the last, maybe with the point between; none for zero.
    [[nodiscard]] std::string_view Digits() const noexcept;
    [[nodiscard]] int64_t DigitCount() const noexcept;
    // The digits as a whole number, if it fits.
    [[nodiscard]] std::optional<uint64_t> Mantissa() const noexcept;
    [[nodiscard]] std::strong_ordering MagnitudeOrder(const Number &other) const noexcept;

    std::string_view digits_;
    std::array<char, 20> own_ = {}; // the decimal digits of a hexadecimal or octal number
    uint8_t ownLength_ = 0;         // 0: the digits are those of the text
    Form form_ = Form::Finite;
    bool negative_ = false; // never for zero
    int64_t point_ = 0;
};

} // namespace zryaml::schema
