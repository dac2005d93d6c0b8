// SPDX-License-Identifier: Apache-2.0
// Where values came from: the sources of a layered document, and the values that others took the place of.
#include "layers_internal.h"

#include "../record_size.h"

#include <cstdlib>
#include <cstring>

using namespace zryaml;
using namespace zryaml::layers;

namespace {

const LayerSource *SourceOf(const YamlHandle &handle, const YamlListNode &value) noexcept
{
    if (handle.pstLayering == nullptr)
        return nullptr;
    return &handle.pstLayering->sources[StateGet(value, NODE_LAYER_MASK, NODE_LAYER_SHIFT)];
}

int PairCompare(const void *one, const void *other) noexcept
{
    const auto left = reinterpret_cast<uintptr_t>(static_cast<const ValuePair *>(one)->value);
    const auto right = reinterpret_cast<uintptr_t>(static_cast<const ValuePair *>(other)->value);
    return left < right ? -1 : left > right ? 1 : 0;
}

// The first pair of a value in a table that is in order; NULL if there is none.
const ValuePair *PairFind(const GrowingArray<ValuePair> &pairs, const YamlListNode &value) noexcept
{
    uint32_t low = 0, high = pairs.Count();
    while (low < high) {
        const uint32_t middle = low + (high - low) / 2;
        if (reinterpret_cast<uintptr_t>(pairs[middle].value) < reinterpret_cast<uintptr_t>(&value))
            low = middle + 1;
        else
            high = middle;
    }
    return low < pairs.Count() && pairs[low].value == &value ? &pairs[low] : nullptr;
}

const YamlListNode *ShadowedBy(const YamlHandle &handle, const YamlListNode &value) noexcept
{
    if ((value.uiState & NODE_SHADOWS) == 0)
        return nullptr;
    if (value.uiDataType != YAML_DATATYPE_MAP)
        return value.uPrivate.pstShadowed;
    const ValuePair *pair = PairFind(handle.pstLayering->shadows, value);
    return pair != nullptr ? pair->other : nullptr;
}

char *NameMake(const char *kind, std::string_view name) noexcept
{
    const size_t kindSize = strlen(kind), size = kindSize + 1 + name.size() + 1;
    void *block = size <= UINT32_MAX ? ZR_MemAlloc(static_cast<uint32_t>(size), yaml_MemHandleGet()) : nullptr;
    auto *text = static_cast<char *>(block);
    if (text == nullptr)
        return nullptr;
    char *at = text;
    if (kindSize != 0) {
        memcpy(at, kind, kindSize);
        at[kindSize] = ' ';
        at += kindSize + 1;
    }
    memcpy(at, name.data(), name.size());
    at[name.size()] = '\0';
    return text;
}

} // namespace

const char *zryaml::SourceNameOf(const YamlListNode *node) noexcept
{
    const YamlHandle *handle = ZRYAML_DocumentGet(node);
    const LayerSource *source = handle != nullptr ? SourceOf(*handle, *node) : nullptr;
    return source != nullptr ? source->name : ZRYAML_NameGet(handle);
}

bool zryaml::LayeringMake(YamlHandle &handle) noexcept
{
    handle.pstLayering = static_cast<YamlLayering *>(ZR_MemAlloc(sizeof(YamlLayering), yaml_MemHandleGet()));
    if (handle.pstLayering != nullptr)
        *handle.pstLayering = {};
    return handle.pstLayering != nullptr;
}

void zryaml::LayeringSort(YamlHandle &handle) noexcept
{
    for (const GrowingArray<ValuePair> *pairs : {&handle.pstLayering->shadows, &handle.pstLayering->references}) {
        if (pairs->Count() > 1)
            qsort(pairs->begin(), pairs->Count(), sizeof(ValuePair), PairCompare);
    }
}

void zryaml::LayeringRelease(YamlHandle &handle) noexcept
{
    YamlLayering *layering = handle.pstLayering;
    if (layering == nullptr)
        return;
    for (const LayerSource &source : layering->sources)
        ZR_MemFree(source.name, yaml_MemHandleGet());
    layering->sources.Release();
    layering->shadows.Release();
    layering->references.Release();
    ZR_MemFree(layering, yaml_MemHandleGet());
    handle.pstLayering = nullptr;
}

bool zryaml::layers::SourceAdd(Stack &stack, uint32_t layer, const char *kind, std::string_view name) noexcept
{
    auto &sources = stack.document->pstLayering->sources;
    char *text = NameMake(kind, name);
    if (text == nullptr)
        return Starve(stack), false;
    if (sources.Count() == SourcesMax) {
        if (!stack.overfull) // told once
            Tell(stack, {text}, "there are more than %u files, variables and assignments in all", SourcesMax);
        stack.overfull = true;
        ZR_MemFree(text, yaml_MemHandleGet());
        return false;
    }
    if (!sources.Add({layer, kind[0] == '\0', text, nullptr})) {
        ZR_MemFree(text, yaml_MemHandleGet());
        return Starve(stack), false;
    }
    stack.document->uiNodeState = (sources.Count() - 1) << NODE_LAYER_SHIFT;
    return true;
}

const LayerSource &zryaml::layers::SourceOf(const Stack &stack, const YamlListNode &value) noexcept
{
    return *::SourceOf(*stack.document, value);
}

LayerSource &zryaml::layers::SourceLast(const Stack &stack) noexcept
{
    const auto &sources = stack.document->pstLayering->sources;
    return sources[sources.Count() - 1];
}

void zryaml::layers::ShadowAdd(Stack &stack, YamlListNode &value, YamlListNode &shadowed) noexcept
{
    value.uiState |= NODE_SHADOWS;
    if (value.uiDataType != YAML_DATATYPE_MAP)
        value.uPrivate.pstShadowed = &shadowed;
    else if (!stack.document->pstLayering->shadows.Add({&value, &shadowed}))
        Starve(stack);
}

uint32_t ZRYAML_OriginGet(const YamlListNode *pstValue, uint32_t uiShadowed, YamlOrigin *pstOrigin)
{
    if (pstValue == nullptr || pstOrigin == nullptr || !RecordFits(*pstOrigin))
        return YAML_ERR_PARAM;
    const YamlHandle &handle = *ZRYAML_DocumentGet(pstValue);
    for (; uiShadowed > 0 && pstValue != nullptr; --uiShadowed)
        pstValue = ShadowedBy(handle, *pstValue);
    if (pstValue == nullptr)
        return YAML_ERR_ITER_END;
    const LayerSource *source = SourceOf(handle, *pstValue);
    pstOrigin->uiLayer = source != nullptr ? source->layer : 0;
    pstOrigin->uiLine = pstValue->uiLine;
    pstOrigin->uiColumn = pstValue->uiColumn;
    pstOrigin->pcSource = source != nullptr ? source->name : ZRYAML_NameGet(&handle);
    pstOrigin->pcText = pstValue->pcValue;
    return YAML_OK;
}

const YamlListNode *ZRYAML_ReferenceGet(const YamlListNode *pstValue, uint32_t uiIndex)
{
    const YamlLayering *layering = pstValue != nullptr ? ZRYAML_DocumentGet(pstValue)->pstLayering : nullptr;
    const ValuePair *pair = layering != nullptr ? PairFind(layering->references, *pstValue) : nullptr;
    if (pair == nullptr || uiIndex >= static_cast<size_t>(layering->references.end() - pair))
        return nullptr;
    return pair[uiIndex].value == pstValue ? pair[uiIndex].other : nullptr;
}
