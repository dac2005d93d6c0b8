// SPDX-License-Identifier: Apache-2.0
// Accepts what the typed reads of the C++ interface accept.
#include "typed_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>

namespace zryaml::cli {

namespace {

bool PrefixTake(std::string_view &svText, std::string_view svPrefix)
{
    const bool bFound = svText.starts_with(svPrefix);
    if (bFound)
        svText.remove_prefix(svPrefix.size());
    return bFound;
}

// True for a minus sign.
bool SignTake(std::string_view &svText)
{
    return !PrefixTake(svText, "+") && PrefixTake(svText, "-");
}

// Takes the digits that a text begins with; none if there are none or the number needs more than 64 bits.
std::optional<uint64_t> DigitsTake(std::string_view &svText, int iBase)
{
    uint64_t ulNumber = 0;
    const auto [pcEnd, eError] = std::from_chars(svText.data(), svText.data() + svText.size(), ulNumber, iBase);
    svText.remove_prefix(static_cast<size_t>(pcEnd - svText.data()));
    return eError == std::errc() ? std::optional(ulNumber) : std::nullopt;
}

// The largest magnitude of a signed number: there is one more below zero than above.
constexpr uint64_t SignedLimit(bool bNegative)
{
    return uint64_t{INT64_MAX} + (bNegative ? 1 : 0);
}

bool IsWhole(std::string_view svText, bool bSigned)
{
    const bool bNegative = SignTake(svText);
    const int iBase = PrefixTake(svText, "0x") ? 16 : PrefixTake(svText, "0o") ? 8 : 10;
    const std::optional<uint64_t> stNumber = DigitsTake(svText, iBase);
    const uint64_t ulUnsignedLimit = bNegative ? 0 : UINT64_MAX;
    return stNumber && svText.empty() && *stNumber <= (bSigned ? SignedLimit(bNegative) : ulUnsignedLimit);
}

bool IsInt(std::string_view svText)
{
    return IsWhole(svText, true);
}

bool IsUint(std::string_view svText)
{
    return IsWhole(svText, false);
}

bool IsFloat(std::string_view svText)
{
    const bool bSigned = svText.starts_with('+') || svText.starts_with('-');
    (void)SignTake(svText);
    if (svText == ".inf" || svText == ".Inf" || svText == ".INF")
        return true;
    if (!bSigned && (svText == ".nan" || svText == ".NaN" || svText == ".NAN"))
        return true;
    // from_chars takes a further minus sign and the words inf and nan as well.
    if (svText.empty() || std::string_view("-iInN").find(svText.front()) != std::string_view::npos)
        return false;
    double dNumber = 0;
    const char *pcTextEnd = svText.data() + svText.size();
    const auto [pcEnd, eError] = std::from_chars(svText.data(), pcTextEnd, dNumber);
    return eError == std::errc() && pcEnd == pcTextEnd;
}

constexpr std::array<std::string_view, 18> g_asvBool = {
    "true", "True", "TRUE", "false", "False", "FALSE", "yes", "Yes", "YES",
    "no",   "No",   "NO",   "on",    "On",    "ON",    "off", "Off", "OFF",
};

bool IsBool(std::string_view svText)
{
    return std::ranges::find(g_asvBool, svText) != g_asvBool.end();
}

struct Unit {
    std::string_view svName;
    uint64_t ulNanoseconds;
};
constexpr uint64_t Second = 1'000'000'000;
constexpr std::array g_astUnit = {
    Unit{"ns", 1},
    Unit{"us", 1'000},
    Unit{"ms", 1'000'000},
    Unit{"s", Second},
    Unit{"min", 60 * Second},
    Unit{"h", 3'600 * Second},
    Unit{"d", 86'400 * Second},
};

bool IsDuration(std::string_view svText)
{
    const bool bNegative = SignTake(svText);
    const std::optional<uint64_t> stNumber = DigitsTake(svText, 10);
    const auto *pstUnit = std::ranges::find(g_astUnit, svText, &Unit::svName);
    return stNumber && pstUnit != g_astUnit.end() && *stNumber <= SignedLimit(bNegative) / pstUnit->ulNanoseconds;
}

bool IsString(std::string_view)
{
    return true;
}

struct Type {
    std::string_view svName;
    bool (*pfnIsValue)(std::string_view);
};
constexpr std::array g_astType = {
    Type{"int", IsInt},   Type{"uint", IsUint},         Type{"float", IsFloat},
    Type{"bool", IsBool}, Type{"duration", IsDuration}, Type{"string", IsString},
};

} // namespace

std::vector<std::string_view> TypeNames()
{
    std::vector<std::string_view> asvName;
    asvName.reserve(g_astType.size());
    for (const Type &stType : g_astType)
        asvName.push_back(stType.svName);
    return asvName;
}

bool TextHasType(std::string_view svText, std::string_view svType)
{
    const auto *pstType = std::ranges::find(g_astType, svType, &Type::svName);
    return pstType != g_astType.end() && pstType->pfnIsValue(svText);
}

} // namespace zryaml::cli
