// SPDX-License-Identifier: Apache-2.0
// Reads texts as integers, booleans, durations and sizes. A whole number is collected without its sign and in 128 bits,
// so that whether it fits is decided in one place.
#include "../scalar_text.h"
#include "double_text.h"

#include <cstring>
#include <initializer_list>
#include <string_view>

namespace {

using namespace zryaml;

__extension__ using Wide = unsigned __int128; // __extension__: -Wpedantic

constexpr Wide Endless = Wide{1} << 120; // stands for all numbers from here on

struct Whole {
    bool negative = false;
    Wide magnitude = 0;
};

bool PrefixTake(std::string_view &text, std::string_view prefix) noexcept
{
    const size_t size = prefix.size(); // starts_with throws in theory, and so needs the C++ run-time library
    const bool found = text.size() >= size && std::string_view(text.data(), size) == prefix;
    if (found)
        text.remove_prefix(size);
    return found;
}

// True for a minus sign.
bool SignTake(std::string_view &text) noexcept
{
    return !PrefixTake(text, "+") && PrefixTake(text, "-");
}

unsigned DigitOf(char character) noexcept
{
    if (character >= '0' && character <= '9')
        return static_cast<unsigned>(character - '0');
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : UINT32_MAX;
}

// Takes the digits that a text begins with; false if there are none.
bool DigitsTake(std::string_view &text, unsigned base, Wide &number) noexcept
{
    size_t digits = 0;
    number = 0;
    for (; digits < text.size() && DigitOf(text[digits]) < base; ++digits)
        number = number < Endless / 16 ? number * base + DigitOf(text[digits]) : Endless;
    text.remove_prefix(digits);
    return digits > 0;
}

bool IsSigned(const YamlScalarType &type) noexcept
{
    return type.uiKind == YAML_KIND_INT || (type.uiKind == YAML_KIND_DURATION && type.bUnsigned == 0);
}

Fit WholeFit(const YamlScalarType &type, const Whole &whole, ScalarValue &value) noexcept
{
    const uint32_t bits = type.uiWidth * 8;
    const uint64_t most = UINT64_MAX >> (64 - bits + (IsSigned(type) ? 1 : 0));
    // Two's complement has one more below zero than above.
    const uint64_t least = IsSigned(type) ? most + 1 : 0;
    if (whole.magnitude > (whole.negative ? least : most))
        return Fit::OutOfRange;
    const auto magnitude = static_cast<uint64_t>(whole.magnitude);
    value.natural = whole.negative ? 0 - magnitude : magnitude;
    return Fit::Yes;
}

Fit IntegerParse(const YamlScalarType &type, std::string_view text, ScalarValue &value) noexcept
{
    Whole whole;
    whole.negative = SignTake(text);
    const unsigned base = PrefixTake(text, "0x") ? 16 : PrefixTake(text, "0o") ? 8 : 10;
    const bool found = DigitsTake(text, base, whole.magnitude);
    return found && text.empty() ? WholeFit(type, whole, value) : Fit::NoSuchValue;
}

Fit BoolParse(std::string_view text, ScalarValue &value) noexcept
{
    for (const std::string_view word : {"true", "True", "TRUE", "yes", "Yes", "YES", "on", "On", "ON"}) {
        if (text == word)
            return value.natural = 1, Fit::Yes;
    }
    for (const std::string_view word : {"false", "False", "FALSE", "no", "No", "NO", "off", "Off", "OFF"}) {
        if (text == word)
            return value.natural = 0, Fit::Yes;
    }
    return Fit::NoSuchValue;
}

struct Unit {
    std::string_view name;
    uint64_t size;
};
constexpr Unit DurationUnits[] = {
    // from the largest to the smallest, as they may follow each other; nanoseconds
    {"d", 86'400'000'000'000}, {"h", 3'600'000'000'000}, {"min", 60'000'000'000}, {"m", 60'000'000'000},
    {"s", 1'000'000'000},      {"ms", 1'000'000},        {"us", 1'000},           {"ns", 1},
};

// Takes one number with its unit, which must be smaller than the last one, and adds it.
bool PartTake(std::string_view &text, uint64_t &last, Wide &sum) noexcept
{
    Wide number = 0;
    if (!DigitsTake(text, 10, number))
        return false;
    size_t letters = 0;
    while (letters < text.size() && DigitOf(text[letters]) >= 10)
        ++letters;
    for (const Unit &unit : DurationUnits) {
        if (std::string_view(text.data(), letters) != unit.name || unit.size >= last)
            continue;
        text.remove_prefix(letters);
        last = unit.size;
        sum = number < Endless / unit.size && sum < Endless ? sum + number * unit.size : Endless;
        return true;
    }
    return false;
}

Fit DurationParse(const YamlScalarType &type, std::string_view text, ScalarValue &value) noexcept
{
    Whole whole;
    whole.negative = SignTake(text);
    uint64_t last = UINT64_MAX;
    do {
        if (!PartTake(text, last, whole.magnitude))
            return Fit::NoSuchValue;
    } while (!text.empty());
    if (whole.magnitude >= Endless)
        return Fit::OutOfRange;
    if (type.ulTick != 0) {
        const uint64_t parts = type.ulTickParts != 0 ? type.ulTickParts : 1;
        if (whole.magnitude >= Endless / parts)
            return Fit::OutOfRange;
        whole.magnitude *= parts;
        if (whole.magnitude % type.ulTick != 0)
            return Fit::TooFine;
        whole.magnitude /= type.ulTick;
    }
    return WholeFit(type, whole, value);
}

constexpr Unit ByteUnits[] = {
    {"", 1},
    {"B", 1},
    {"KiB", 1ULL << 10},
    {"MiB", 1ULL << 20},
    {"GiB", 1ULL << 30},
    {"TiB", 1ULL << 40},
    {"PiB", 1ULL << 50},
    {"EiB", 1ULL << 60},
    {"kB", 1'000},
    {"KB", 1'000},
    {"MB", 1'000'000},
    {"GB", 1'000'000'000},
    {"TB", 1'000'000'000'000},
    {"PB", 1'000'000'000'000'000},
    {"EB", 1'000'000'000'000'000'000},
};

// Takes the digits of a fraction of a unit; what they come to is added if it is whole.
bool FractionTake(std::string_view &text, Wide &digits, Wide &scale) noexcept
{
    const size_t before = text.size();
    const bool found = DigitsTake(text, 10, digits);
    scale = 1;
    for (size_t places = before - text.size(); places > 0; --places)
        scale = scale < Endless / 16 ? scale * 10 : Endless;
    for (; found && digits % 10 == 0 && scale % 10 == 0; digits /= 10)
        scale /= 10;
    return found;
}

Fit BytesParse(const YamlScalarType &type, std::string_view text, ScalarValue &value) noexcept
{
    Wide number = 0;
    Wide digits = 0;
    Wide scale = 1;
    if (!DigitsTake(text, 10, number) || (PrefixTake(text, ".") && !FractionTake(text, digits, scale)))
        return Fit::NoSuchValue;
    for (const Unit &unit : ByteUnits) {
        if (text != unit.name)
            continue;
        if (number >= Endless / unit.size)
            return Fit::OutOfRange;
        if (scale >= Endless / unit.size || digits * unit.size % scale != 0)
            return Fit::NoWholeByte;
        return WholeFit(type, {false, number * unit.size + digits * unit.size / scale}, value);
    }
    return Fit::NoSuchValue;
}

bool IsWidth(const YamlScalarType &type) noexcept
{
    const uint32_t width = type.uiWidth;
    if (type.uiKind == YAML_KIND_DOUBLE)
        return width == sizeof(float) || width == sizeof(double);
    return width == 1 || width == 2 || width == 4 || width == 8;
}

bool IsFinerThanNanoseconds(const YamlScalarType &type) noexcept
{
    return type.uiKind == YAML_KIND_DURATION && type.ulTick != 0 && type.ulTick < type.ulTickParts;
}

bool IsType(const YamlScalarType &type) noexcept
{
    return type.uiKind >= YAML_KIND_INT && type.uiKind <= YAML_KIND_BYTES && IsWidth(type) &&
           !IsFinerThanNanoseconds(type);
}

} // namespace

Fit zryaml::ScalarParse(const YamlScalarType &type, const char *text, ScalarValue &value) noexcept
{
    if (!IsType(type))
        return Fit::NoSuchType;
    switch (type.uiKind) {
    case YAML_KIND_DOUBLE:
        return NumberParse(text, type.uiWidth == sizeof(float), value.number);
    case YAML_KIND_BOOL:
        return BoolParse(text, value);
    case YAML_KIND_DURATION:
        return DurationParse(type, text, value);
    case YAML_KIND_BYTES:
        return BytesParse(type, text, value);
    default:
        return IntegerParse(type, text, value);
    }
}

void zryaml::ScalarStore(const YamlScalarType &type, ScalarValue value, void *variable) noexcept
{
    if (type.uiKind == YAML_KIND_DOUBLE && type.uiWidth == sizeof(float)) {
        const auto number = static_cast<float>(value.number);
        memcpy(variable, &number, sizeof(number));
        return;
    }
    const auto byte = static_cast<uint8_t>(value.natural);
    const auto half = static_cast<uint16_t>(value.natural);
    const auto word = static_cast<uint32_t>(value.natural);
    switch (type.uiWidth) {
    case 1:
        memcpy(variable, &byte, sizeof(byte));
        break;
    case 2:
        memcpy(variable, &half, sizeof(half));
        break;
    case 4:
        memcpy(variable, &word, sizeof(word));
        break;
    default:
        memcpy(variable, &value, sizeof(value));
        break;
    }
}

ScalarValue zryaml::ScalarLoad(const YamlScalarType &type, const void *variable) noexcept
{
    ScalarValue value = {};
    if (type.uiKind == YAML_KIND_DOUBLE && type.uiWidth == sizeof(float)) {
        float number = 0;
        memcpy(&number, variable, sizeof(number));
        value.number = static_cast<double>(number);
        return value;
    }
    memcpy(&value, variable, type.uiWidth); // little-endian or 8 bytes wide
    if constexpr (__BYTE_ORDER__ == __ORDER_BIG_ENDIAN__)
        value.natural >>= 64 - type.uiWidth * 8;
    const uint32_t unused = 64 - type.uiWidth * 8;
    if (IsSigned(type)) {
        const uint64_t bits = value.natural << unused;
        value.whole = static_cast<int64_t>(bits) >> unused;
    }
    return value;
}

bool zryaml::ScalarIsLess(const YamlScalarType &type, ScalarValue left, ScalarValue right) noexcept
{
    if (type.uiKind == YAML_KIND_DOUBLE)
        return left.number < right.number;
    return IsSigned(type) ? left.whole < right.whole : left.natural < right.natural;
}

uint32_t ZRYAML_ScalarRead(const YamlScalarType *pstType, const char *pcText, void *pvValue)
{
    if (pstType == nullptr || pcText == nullptr || pvValue == nullptr)
        return YAML_ERR_PARAM;
    ScalarValue value = {};
    const Fit fit = ScalarParse(*pstType, pcText, value);
    if (fit != Fit::Yes)
        return fit == Fit::NoSuchType && !(IsFinerThanNanoseconds(*pstType) && IsWidth(*pstType)) ? YAML_ERR_PARAM
                                                                                                  : YAML_ERR_VALUE;
    ScalarStore(*pstType, value, pvValue);
    return YAML_OK;
}
