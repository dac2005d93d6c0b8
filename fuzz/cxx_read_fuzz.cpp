// SPDX-License-Identifier: Apache-2.0
// The C++ face on any document, with a path from the first line: it sees what the C interface sees, typed reads agree
// with each other, and an absent value at any depth explains itself.
#include "fuzz_support.h"

#include <zr_yaml.hpp>

#include <chrono>
#include <cmath>
#include <vector>

namespace {

using zryaml::Value;

// A narrow read that succeeds is the wide read.
template <class Narrow, class Wide> void NarrowCheck(const Value &stValue)
{
    const zryaml::Result<Narrow> stNarrow = stValue.get<Narrow>();
    const zryaml::Result<Wide> stWide = stValue.get<Wide>();
    if (!stNarrow.has_value())
        return Require(!stNarrow.error().message.empty(), "an error without a message");
    Require(stWide.has_value() && *stWide == static_cast<Wide>(*stNarrow), "a narrow read differs from the wide one");
}

void TypedReadCheck(const Value &stValue)
{
    using namespace std::chrono;
    NarrowCheck<int8_t, int64_t>(stValue);
    NarrowCheck<uint16_t, uint64_t>(stValue);
    NarrowCheck<uint32_t, int64_t>(stValue);
    const zryaml::Result<seconds> stCoarse = stValue.get<seconds>();
    const zryaml::Result<milliseconds> stFine = stValue.get<milliseconds>();
    if (stCoarse.has_value() && stFine.has_value()) // a very long time fits the coarse one only
        Require(*stFine % seconds(1) == milliseconds(0) && *stFine / seconds(1) == stCoarse->count(),
                "a duration differs from itself in another unit");
    NarrowCheck<std::string, std::string>(stValue);
    Require(!(stValue.get<bool>().has_value() && stValue.get<int64_t>().has_value()), "a number reads as bool");
    const zryaml::Result<double> stDouble = stValue.get<double>();
    const zryaml::Result<float> stFloat = stValue.get<float>();
    if (stFloat.has_value())
        Require(stDouble.has_value() && std::isnan(*stFloat) == std::isnan(*stDouble), "a float reads, a double not");
    const bool bVector = stValue.get<std::vector<std::string_view>>().has_value();
    Require(!bVector || stValue.is_sequence(), "a vector from something else");
    const zryaml::Result<int> stDefault = stValue.get_or<int>(7);
    Require(stValue.exists() || (stDefault.has_value() ? *stDefault == 7 : !stDefault.error().is_absent()),
            "an absent value does not give the default");
}

// Everything below a value, and the same through its number, its key, and its key as an argument of a path.
void WalkCheck(const Value &stValue, uint32_t &uiRest)
{
    if (uiRest == 0)
        return;
    --uiRest;
    TypedReadCheck(stValue);
    uint32_t uiIndex = 0;
    if (stValue.is_sequence()) {
        for (const Value &stChild : stValue) {
            if (uiIndex < 64)
                Require(stValue[uiIndex].node() == stChild.node(), "an element by number differs");
            ++uiIndex;
            WalkCheck(stChild, uiRest);
        }
    }
    for (const auto &[svKey, stChild] : stValue.items()) {
        Require(stValue[svKey].node() == stChild.node(), "a key differs", svKey);
        Require(stValue.at("{}", svKey).node() == stChild.node(), "a key as an argument differs", svKey);
        WalkCheck(stChild, uiRest);
    }
}

void ErrorCheck(const Value &stValue)
{
    const zryaml::Result<std::string> stText = stValue.get<std::string>();
    if (stText.has_value())
        return;
    for (const char cChar : stText.error().what())
        Require(static_cast<unsigned char>(cChar) >= 0x20, "an error breaks its line");
    Require(stText.error().code != YAML_OK, "an error without a code");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    const TwoParts stInput = InputSplit(pucData, ulSize);
    const zryaml::Result<zryaml::Document> stLoaded = zryaml::Document::parse(stInput.svBody, "fuzz");
    if (!stLoaded.has_value()) {
        Require(stLoaded.error().code != YAML_OK && !stLoaded.error().message.empty(), "a refusal without a reason");
        return 0;
    }
    const Value stRoot = stLoaded->root();
    uint32_t uiRest = 500;
    WalkCheck(stRoot, uiRest);

    const Value stFound = stRoot.at(stInput.head);
    const YamlListNode *pstFound = ZRYAML_PathFind(stLoaded->handle(), stInput.head.c_str());
    if (stFound.exists() && !stInput.head.empty())
        Require(stFound.node() == pstFound, "a path finds something else than in C", stInput.head);
    for (const Value &stAny : {stFound, stFound[stInput.head], stFound[3], stFound["x"][0].at(stInput.head)}) {
        TypedReadCheck(stAny);
        ErrorCheck(stAny);
    }
    return 0;
}
