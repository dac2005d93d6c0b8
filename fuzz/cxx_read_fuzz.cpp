// SPDX-License-Identifier: Apache-2.0
// The C++ face on any document, with a path from the first line: it sees what the C interface sees, typed reads agree
// with each other, and an absent value at any depth explains itself.
#include "fuzz_support.h"

#include <zr_yaml.hpp>

#include <algorithm>

namespace {

using namespace zryaml;

void ErrorCheck(const Error &stError)
{
    Require(stError.code != YAML_OK && !stError.message.empty(), "an error without a code or a message");
    const bool bLine = std::ranges::all_of(stError.what(), [](unsigned char ucChar) { return ucChar >= 0x20; });
    Require(bLine, "an error breaks its line");
}

// A value that a narrow type holds is the same in a wide type.
template <class Narrow, class Wide> void ReadCheck(const Value &stValue)
{
    const Result<Narrow> stNarrow = stValue.get<Narrow>();
    if (!stNarrow.has_value())
        return ErrorCheck(stNarrow.error());
    const Result<Wide> stWide = stValue.get<Wide>();
    Require(stWide.has_value() && *stWide == static_cast<Wide>(*stNarrow), "a narrow read differs from the wide one");
}

void TypedReadCheck(const Value &stValue)
{
    ReadCheck<int8_t, int64_t>(stValue);
    ReadCheck<uint16_t, uint64_t>(stValue);
    ReadCheck<std::chrono::duration<int32_t>, std::chrono::milliseconds>(stValue);
    Require(!stValue.get<bool>().has_value() || !stValue.get<int64_t>().has_value(), "a number reads as bool");
    Require(!stValue.get<float>().has_value() || stValue.get<double>().has_value(), "a float reads, a double not");
    Require(!stValue.get<std::vector<std::string>>().has_value() || stValue.is_sequence(), "a vector from no sequence");
    const Result<int> stDefault = stValue.get_or(7);
    Require(stValue.exists() || (stDefault.has_value() ? *stDefault == 7 : !stDefault.error().is_absent()),
            "an absent value does not give the default");
}

// Everything below a value, and the same through its number, its key, and its key as an argument of a path.
void WalkCheck(const Value &stValue, int32_t &iRest)
{
    if (--iRest < 0)
        return;
    TypedReadCheck(stValue);
    uint32_t uiIndex = 0;
    for (const Value &stChild : stValue) {
        Require(stValue.is_map() || uiIndex > 63 || stValue[uiIndex].node() == stChild.node(), "an element differs");
        ++uiIndex;
        WalkCheck(stChild, iRest);
    }
    for (const auto &[svKey, stChild] : stValue.items()) {
        Require(stValue[svKey].node() == stChild.node(), "a key differs", svKey);
        Require(stValue.at("{}", svKey).node() == stChild.node(), "a key as an argument differs", svKey);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    const auto [path, svBody] = InputSplit(pucData, ulSize);
    const Result<zryaml::Document> stLoaded = zryaml::Document::parse(svBody, "fuzz");
    if (!stLoaded)
        return ErrorCheck(stLoaded.error()), 0;
    const Value stRoot = stLoaded->root(), stFound = stRoot.at(path);
    if (stFound && !path.empty())
        Require(stFound.node() == ZRYAML_PathFind(stLoaded->handle(), path.c_str()), "in C a path differs", path);
    int32_t iRest = 500;
    WalkCheck(stRoot, iRest);
    for (const Value &stAny : {stFound, stFound[path], stFound[3], stFound["x"][0].at(path)})
        TypedReadCheck(stAny);
    return 0;
}
