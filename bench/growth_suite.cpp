// SPDX-License-Identifier: Apache-2.0
// Time for each item that is gone through, at three sizes that take turns: in step with the size if it stays the same.
#include <array>
#include <benchmark/benchmark.h>
#include <cstring>
#include <stdexcept>

#include "measure.h"
#include "suite.h"
#include "text.h"

namespace zryaml::bench {

namespace {

struct Size {
    const char *pcName;
    uint32_t uiCount;
};
constexpr std::array g_astSize = {Size{"1k", 1000}, Size{"10k", 10000}, Size{"100k", 100000}};

void Check(bool bRight, const char *pcWhat)
{
    if (!bRight)
        throw std::runtime_error(std::string(pcWhat) + " did not go through all items");
}

Contestant IteratorSteps(const HandlePtr &stHandle, uint32_t uiCount)
{
    const auto Walk = [stHandle, uiCount] {
        YamlIterator *pstIter = yaml_IteratorCreate(stHandle.get(), "all");
        YamlKeyValue stPair = {};
        uint32_t uiPairs = 0;
        while (yaml_NextKeyValueGet(pstIter, &stPair) == YAML_OK)
            ++uiPairs;
        yaml_IteratorDestroy(pstIter);
        Check(uiPairs == uiCount, "the iterator");
    };
    return {"", Repeated(Walk), static_cast<double>(uiCount)};
}

Contestant ArraySize(const HandlePtr &stHandle, uint32_t uiCount)
{
    const auto Ask = [stHandle, uiCount] {
        Check(ZRYAML_ArraySizeGet(stHandle.get(), "list") == uiCount, "ZRYAML_ArraySizeGet");
    };
    return {"", Repeated(Ask), static_cast<double>(uiCount)};
}

Contestant LastKey(const HandlePtr &stHandle, uint32_t uiCount)
{
    const auto Read = [stHandle, uiCount] {
        Check(ZRYAML_PropertyGet(stHandle.get(), "all.key_%06u", uiCount - 1) != nullptr, "ZRYAML_PropertyGet");
    };
    return {"", Repeated(Read), static_cast<double>(uiCount)};
}

Contestant Dump(const HandlePtr &stHandle, uint32_t uiCount)
{
    const auto stBuffer = std::make_shared<std::vector<char>>(size_t{uiCount} * 64 + 1024);
    const auto Write = [stHandle, stBuffer] {
        Check(ZRYAML_ContextDump(stHandle.get(), static_cast<uint32_t>(stBuffer->size()), stBuffer->data()) == YAML_OK,
              "ZRYAML_ContextDump");
    };
    Write();
    return {"", Repeated(Write), static_cast<double>(strlen(stBuffer->data()))};
}

struct Growth {
    const char *pcName;
    Contestant (*pfnMake)(const HandlePtr &stHandle, uint32_t uiCount);
};
constexpr std::array g_astGrowth = {
    Growth{"iterator, per step", IteratorSteps},
    Growth{"ZRYAML_ArraySizeGet, per element", ArraySize},
    Growth{"ZRYAML_PropertyGet of the last key, per sibling", LastKey},
    Growth{"ZRYAML_ContextDump, per byte", Dump},
};

} // namespace

void GrowthMeasuresAdd(Budget stBudget)
{
    std::vector<HandlePtr> handles;
    for (const Size &stSize : g_astSize)
        handles.push_back(HandleOf(FlatText(stSize.uiCount)));
    for (const Growth &stGrowth : g_astGrowth) {
        std::vector<Contestant> contestants;
        for (size_t ul = 0; ul < g_astSize.size(); ++ul) {
            contestants.push_back(stGrowth.pfnMake(handles[ul], g_astSize[ul].uiCount));
            contestants.back().name = g_astSize[ul].pcName;
        }
        MeasureAdd({Kind::Growth, stGrowth.pcName, std::move(contestants)}, stBudget.uiRepeats, stBudget.dSeconds);
    }
}

} // namespace zryaml::bench
