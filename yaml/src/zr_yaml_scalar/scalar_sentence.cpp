// SPDX-License-Identifier: Apache-2.0
// What a person is told about a text that is no value of a type, and values written as texts.
#include "../scalar_text.h"
#include "double_text.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>

namespace {

using namespace zryaml;

__extension__ using Wide = unsigned __int128; // __extension__: -Wpedantic

constexpr const char *KindNames[] = {"a value",   "an integer", "an integer", "a number",
                                     "a boolean", "a duration", "a size"};

constexpr int QuoteLongest = 60; // bytes of a text that are shown

// How many bytes of a text are quoted: all, or as many characters as fit.
int QuotedSize(const char *text) noexcept
{
    const size_t size = strnlen(text, QuoteLongest + 1);
    if (size <= QuoteLongest)
        return static_cast<int>(size);
    int end = QuoteLongest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;
    return end;
}

// What holds for texts of this kind; NULL for integers, whose hint names their limits.
const char *FixedHint(uint32_t kind) noexcept
{
    switch (kind) {
    case YAML_KIND_DOUBLE:
        return "a number such as 2, -1.5 or 2e-3 is expected";
    case YAML_KIND_BOOL:
        return "true or false, yes or no, on or off is expected";
    case YAML_KIND_DURATION:
        return "a duration such as 500ms, 10s or 1h30m is expected";
    case YAML_KIND_BYTES:
        return "a size such as 512, 64KiB or 1.5GB is expected";
    default:
        return nullptr;
    }
}

struct Unit {
    const char *name;
    uint64_t size;
};
constexpr Unit DurationUnits[] = {
    {"d", 86'400'000'000'000},
    {"h", 3'600'000'000'000},
    {"m", 60'000'000'000},
    {"s", 1'000'000'000},
    {"ms", 1'000'000},
    {"us", 1'000},
    {"ns", 1},
};
constexpr Unit ByteUnits[] = {
    {"EiB", 1ULL << 60},
    {"PiB", 1ULL << 50},
    {"TiB", 1ULL << 40},
    {"GiB", 1ULL << 30},
    {"MiB", 1ULL << 20},
    {"KiB", 1ULL << 10},
    {"", 1},
};

// Writes a magnitude in the largest unit that leaves no remainder.
template <size_t Count>
uint32_t UnitWrite(const Unit (&units)[Count], bool negative, Wide magnitude, uint32_t size, char *text) noexcept
{
    const Unit *unit = magnitude == 0 ? &units[Count - 1] : units;
    while (magnitude % unit->size != 0)
        ++unit;
    const auto number = static_cast<uint64_t>(magnitude / unit->size);
    return static_cast<uint32_t>(snprintf(text, size, "%s%" PRIu64 "%s", negative ? "-" : "", number, unit->name));
}

uint32_t DurationWrite(const YamlScalarType &type, ScalarValue value, uint32_t size, char *text) noexcept
{
    const bool negative = type.bUnsigned == 0 && value.whole < 0;
    const uint64_t ticks = negative ? 0 - value.natural : value.natural;
    const uint64_t tick = type.ulTick != 0 ? type.ulTick : 1;
    const uint64_t parts = type.ulTick != 0 && type.ulTickParts != 0 ? type.ulTickParts : 1;
    return UnitWrite(DurationUnits, negative, Wide{ticks} * tick / parts, size, text);
}

uint32_t Explain(const YamlScalarType &type, Fit fit, const char *text, uint32_t size, char *sentence) noexcept
{
    const int quoted = QuotedSize(text);
    const char *cut = text[quoted] != '\0' ? "..." : "";
    const auto say = [&](const char *what, const char *name) {
        return static_cast<uint32_t>(snprintf(sentence, size, "'%.*s%s' %s%s", quoted, text, cut, what, name));
    };
    switch (fit) {
    case Fit::Yes:
        return static_cast<uint32_t>(snprintf(sentence, size, "%s", ""));
    case Fit::NoSuchValue:
        if (*text == '\0')
            return static_cast<uint32_t>(
                snprintf(sentence, size, "an empty value is not %s", ScalarKindName(type.uiKind)));
        return say("is not ", ScalarKindName(type.uiKind));
    case Fit::OutOfRange:
        return say("is out of range", "");
    case Fit::TooFine:
        return say("is finer than the unit it is read in", "");
    case Fit::NoWholeByte:
        return say("is no whole number of bytes", "");
    default:
        return static_cast<uint32_t>(snprintf(sentence, size, "%s",
                                              type.uiKind == YAML_KIND_DURATION
                                                  ? "no duration finer than nanoseconds can be read"
                                                  : "there is no such type to read"));
    }
}

} // namespace

const char *zryaml::ScalarKindName(uint32_t kind) noexcept
{
    return KindNames[kind <= YAML_KIND_BYTES ? kind : 0];
}

uint32_t zryaml::ScalarHint(const YamlScalarType &type, const char *least, const char *greatest, uint32_t size,
                            char *hint) noexcept
{
    if (const char *fixed = FixedHint(type.uiKind))
        return static_cast<uint32_t>(snprintf(hint, size, "%s", fixed));
    const bool sign = type.uiKind == YAML_KIND_INT;
    const uint32_t unused = 64 - type.uiWidth * 8;
    char from[24];
    char to[24];
    (void)snprintf(from, sizeof(from), "%" PRId64, sign ? INT64_MIN >> unused : 0);
    (void)snprintf(to, sizeof(to), "%" PRIu64, sign ? uint64_t{INT64_MAX} >> unused : UINT64_MAX >> unused);
    return static_cast<uint32_t>(snprintf(hint, size, "an integer from %s to %s is expected",
                                          least != nullptr ? least : from, greatest != nullptr ? greatest : to));
}

uint32_t ZRYAML_ScalarExplain(const YamlScalarType *pstType, const char *pcText, uint32_t uiBufSize, char *pcBuf)
{
    if (pstType == nullptr || pcText == nullptr)
        return static_cast<uint32_t>(snprintf(pcBuf, uiBufSize, "there is no text or type"));
    ScalarValue value = {};
    return Explain(*pstType, ScalarParse(*pstType, pcText, value), pcText, uiBufSize, pcBuf);
}

uint32_t ZRYAML_ScalarHint(const YamlScalarType *pstType, uint32_t uiBufSize, char *pcBuf)
{
    if (pstType == nullptr)
        return static_cast<uint32_t>(snprintf(pcBuf, uiBufSize, "%s", ""));
    return ScalarHint(*pstType, nullptr, nullptr, uiBufSize, pcBuf);
}

uint32_t ZRYAML_ScalarWrite(const YamlScalarType *pstType, const void *pvValue, uint32_t uiBufSize, char *pcBuf)
{
    if (pstType == nullptr || pvValue == nullptr)
        return static_cast<uint32_t>(snprintf(pcBuf, uiBufSize, "%s", ""));
    const ScalarValue value = ScalarLoad(*pstType, pvValue);
    char number[32];
    switch (pstType->uiKind) {
    case YAML_KIND_INT:
        return static_cast<uint32_t>(snprintf(pcBuf, uiBufSize, "%" PRId64, value.whole));
    case YAML_KIND_DOUBLE:
        NumberWrite(value.number, pstType->uiWidth == sizeof(float), number);
        return static_cast<uint32_t>(snprintf(pcBuf, uiBufSize, "%s", number));
    case YAML_KIND_BOOL:
        return static_cast<uint32_t>(snprintf(pcBuf, uiBufSize, "%s", value.natural != 0 ? "true" : "false"));
    case YAML_KIND_DURATION:
        return DurationWrite(*pstType, value, uiBufSize, pcBuf);
    case YAML_KIND_BYTES:
        return UnitWrite(ByteUnits, false, value.natural, uiBufSize, pcBuf);
    default:
        return static_cast<uint32_t>(snprintf(pcBuf, uiBufSize, "%" PRIu64, value.natural));
    }
}
