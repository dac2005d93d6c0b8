// SPDX-License-Identifier: Apache-2.0
// One value, seven components deep, read in each library as its users would read it. Every contestant is asked once
// before the run whether it finds the right text.
#include <benchmark/benchmark.h>
#include <libfyaml.h>
#include <stdexcept>
#include <yaml-cpp/yaml.h>

#include "measure.h"
#include "plain_walk.h"
#include "suite.h"
#include "text.h"

namespace zryaml::bench {

namespace {

constexpr double LookupTarget = 0.1; // ten times as fast
constexpr const char *Wanted = "7443";

using FyamlPtr = std::shared_ptr<fy_document>;

// Each map has the wanted key in its middle, between scalars; "halls" is a list with the wanted element in its middle.
std::string LookupText(uint32_t uiSiblings)
{
    std::string text;
    std::string indent;
    const auto Siblings = [&](uint32_t uiFirst, uint32_t uiEnd) {
        for (uint32_t ui = uiFirst; ui < uiEnd; ++ui)
            text += indent + Printed("name_%u: value\n", ui);
    };
    const auto Level = [&](auto &Self, std::span<const PathStep> steps) -> void {
        if (steps.front().pcName == nullptr) {
            for (uint32_t ui = 0; ui < steps.front().uiIndex; ++ui)
                text += indent + "- {name: value}\n";
            text += indent + "-\n";
        } else {
            Siblings(0, uiSiblings / 2);
            text += indent + steps.front().pcName + ":" + (steps.size() == 1 ? std::string(" ") + Wanted : "") + "\n";
        }
        const std::string outer = indent;
        indent += "  ";
        if (steps.size() > 1)
            Self(Self, steps.subspan(1));
        indent = outer;
        if (steps.front().pcName != nullptr)
            Siblings(uiSiblings / 2 + 1, uiSiblings);
    };
    Level(Level, PathSteps(uiSiblings / 2));
    return text;
}

void Check(const char *pcWho, std::string_view svFound)
{
    if (svFound != Wanted)
        throw std::runtime_error(std::string(pcWho) + " finds the wrong text");
}

// Wraps a read that returns a text; the compiler may not leave it out.
template <typename Read> Contestant ContestantOf(const char *pcName, Read stRead)
{
    Check(pcName, stRead());
    return {pcName, Repeated([stRead] { benchmark::DoNotOptimize(stRead()); })};
}

std::string_view FyamlText(fy_document *pstDocument, const char *pcPath, size_t ulLength)
{
    fy_node *pstNode = fy_node_by_path(fy_document_root(pstDocument), pcPath, ulLength, FYNWF_DONT_FOLLOW);
    size_t ulTextLength = 0;
    const char *pcText = fy_node_get_scalar(pstNode, &ulTextLength);
    return {pcText, pcText == nullptr ? 0 : ulTextLength};
}

struct Arguments { // read at run time, so that no contestant can work with constants
    uint32_t uiIndex;
    std::string key;
    std::string plainPath, plainFyamlPath;
};

Contestant LibraryPlain(const HandlePtr &stHandle, const Arguments &stArguments)
{
    return ContestantOf("ZRYAML_PropertyGet", [stHandle, path = stArguments.plainPath] {
    // A format that is no literal would be one that nobody checks; here it holds no '%'.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
        return ZRYAML_PropertyGet(stHandle.get(), path.c_str());
#pragma GCC diagnostic pop
    });
}

Contestant LibraryFormatted(const HandlePtr &stHandle, const Arguments &stArguments)
{
    return ContestantOf("ZRYAML_PropertyGet", [stHandle, stArguments] {
        return ZRYAML_PropertyGet(stHandle.get(), "plant.halls[%u].%s.rack.unit.listen.port", stArguments.uiIndex,
                                  stArguments.key.c_str());
    });
}

Contestant FyamlPlain(const FyamlPtr &stDocument, const Arguments &stArguments)
{
    return ContestantOf("libfyaml", [stDocument, path = stArguments.plainFyamlPath] {
        return FyamlText(stDocument.get(), path.data(), path.size());
    });
}

Contestant FyamlFormatted(const FyamlPtr &stDocument, const Arguments &stArguments)
{
    return ContestantOf("libfyaml", [stDocument, stArguments] {
        char acPath[YAML_KEY_BUF_SIZE];
        const int iLength = snprintf(acPath, sizeof(acPath), "/plant/halls/%u/%s/rack/unit/listen/port",
                                     stArguments.uiIndex, stArguments.key.c_str());
        return FyamlText(stDocument.get(), acPath, static_cast<size_t>(iLength));
    });
}

Contestant YamlCpp(const YAML::Node &stRoot, const Arguments &stArguments)
{
    // A constant node, so that a missing key is not added; the index and the key need no formatting here.
    return ContestantOf("yaml-cpp", [stRoot, stArguments] {
        const YAML::Node &stPlant = stRoot;
        const YAML::Node stPort =
            stPlant["plant"]["halls"][stArguments.uiIndex][stArguments.key]["rack"]["unit"]["listen"]["port"];
        return std::string_view(stPort.Scalar()); // owned by the document
    });
}

void SiblingsAdd(uint32_t uiSiblings, Budget stBudget)
{
    const std::string text = LookupText(uiSiblings);
    const HandlePtr stHandle = HandleOf(text);
    const FyamlPtr stFyaml(fy_document_build_from_malloc_string(nullptr, strdup(text.c_str()), text.size()),
                           fy_document_destroy);
    const YAML::Node stYamlCpp = YAML::Load(text);
    const uint32_t uiIndex = uiSiblings / 2;
    const Arguments stArguments = {uiIndex, "north", Printed("plant.halls[%u].north.rack.unit.listen.port", uiIndex),
                                   Printed("/plant/halls/%u/north/rack/unit/listen/port", uiIndex)};

    const auto Add = [&](const char *pcPath, const Contestant &stLibrary, const Contestant &stPeer, double dTarget) {
        MeasureAdd({Kind::Lookup, Printed("%s path, %u siblings", pcPath, uiSiblings), {stLibrary, stPeer}, dTarget},
                   stBudget.uiRepeats, stBudget.dSeconds);
    };
    const Contestant stPlain = LibraryPlain(stHandle, stArguments);
    const Contestant stFormatted = LibraryFormatted(stHandle, stArguments);
    Add("plain", stPlain, FyamlPlain(stFyaml, stArguments), LookupTarget);
    Add("plain", stPlain, YamlCpp(stYamlCpp, stArguments), LookupTarget);
    Add("formatted", stFormatted, FyamlFormatted(stFyaml, stArguments), LookupTarget);
    Add("formatted", stFormatted, YamlCpp(stYamlCpp, stArguments), LookupTarget);
    const auto Walk = [stHandle, uiIndex] { return PlainWalk(stHandle.get(), PathSteps(uiIndex)); };
    Add("plain", stPlain, ContestantOf("one pass over the siblings", Walk), 0);
}

} // namespace

void LookupMeasuresAdd(Budget stBudget)
{
    for (const uint32_t uiSiblings : {2U, 8U, 32U})
        SiblingsAdd(uiSiblings, stBudget);
}

} // namespace zryaml::bench
