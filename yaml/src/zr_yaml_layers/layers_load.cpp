// SPDX-License-Identifier: Apache-2.0
// Loads layers one after the other into one document. Nothing is handed out unless all of it is right.
#include "layers_internal.h"

#include "../layers_load.h"
#include "../record_size.h"

using namespace zryaml;
using namespace zryaml::layers;

namespace {

constexpr uint32_t LayersMax = 1000;
constexpr uint32_t KnownFlags = YAML_LAYERS_EXPAND | YAML_LAYERS_MERGE_FORMS;

// What is wrong with a layer itself; NULL: nothing.
const char *LayerFault(const YamlLayer &layer) noexcept
{
    if (layer.uiKind < YAML_LAYER_FILE || layer.uiKind > YAML_LAYER_ASSIGNMENT)
        return "is of no known kind";
    if (layer.pcSource == nullptr)
        return "has no source";
    if (layer.uiFlags != 0 || layer.pvReserved != nullptr)
        return "has flags or reserved members that are not 0";
    if (layer.uiKind == YAML_LAYER_ENVIRONMENT && layer.pcSource[0] == '\0')
        return "has an empty prefix, which would take every variable";
    if (layer.pcText == nullptr && (layer.uiKind == YAML_LAYER_ASSIGNMENT || layer.ulLength != 0))
        return "has no text";
    return nullptr;
}

void ArgumentsCheck(Stack &stack, const YamlLayer *layers, uint32_t count, const YamlLayerOptions *options) noexcept
{
    Spot spot = {""};
    spot.code = YAML_ERR_PARAM;
    if (options != nullptr && RecordFits(*options))
        stack.options = *options;
    if ((layers == nullptr && count != 0) || (options != nullptr && !RecordFits(*options)) ||
        (stack.options.uiFlags & ~KnownFlags) != 0)
        return Tell(stack, spot, "the layers or their options are invalid");
    if (count > LayersMax) {
        spot.code = YAML_ERR_LAYER;
        return Tell(stack, spot, "there are %u layers, but at most %u can be loaded", count, LayersMax);
    }
    for (uint32_t number = 0; number < count; ++number) {
        if (const char *fault = LayerFault(layers[number]))
            Tell(stack, spot, "layer %u %s", number, fault);
    }
}

void LayersApply(Stack &stack, const YamlLayer *layers, const uint32_t *numbers, uint32_t count) noexcept
{
    for (uint32_t at = 0; at < count && !stack.starved && !stack.overfull; ++at) {
        const YamlLayer &layer = layers[at];
        const uint32_t number = numbers != nullptr ? numbers[at] : at;
        if (layer.uiKind == YAML_LAYER_ENVIRONMENT)
            EnvironmentApply(stack, layer, number);
        else if (layer.uiKind == YAML_LAYER_ASSIGNMENT)
            AssignmentApply(stack, layer, number);
        else
            DocumentLayerApply(stack, layer, number);
    }
    if ((stack.options.uiFlags & YAML_LAYERS_EXPAND) != 0 && !stack.refused)
        Interpolate(stack);
}

void StackLoad(Stack &stack, const YamlLayer *layers, const uint32_t *numbers, uint32_t count) noexcept
{
    struct timespec start = {};
    yaml_StartPoint(&start);
    stack.document = DocumentOpen(count != 0 ? layers[0].pcSource : "");
    if (stack.document == nullptr || !LayeringMake(*stack.document))
        return Starve(stack);
    LayersApply(stack, layers, numbers, count);
    DocumentClose(*stack.document);
    LayeringSort(*stack.document);
    stack.document->uiNodeState = 0;
    yaml_ParseElapseTimeGet(stack.document, &start);
}

} // namespace

bool zryaml::LayersCheck(const YamlLayer *layers, uint32_t count, const YamlLayerOptions *options,
                         YamlProblems **problems) noexcept
{
    Stack stack;
    ArgumentsCheck(stack, layers, count, options);
    if (stack.refused)
        ErrorRecordSet(stack.problems);
    *problems = stack.problems;
    return !stack.refused;
}

YamlHandle *zryaml::LayersLoadAs(const YamlLayer *layers, const uint32_t *numbers, uint32_t count,
                                 const YamlLayerOptions *options, YamlProblems **problems) noexcept
{
    ErrorClear();
    Stack stack;
    ArgumentsCheck(stack, layers, count, options);
    if (!stack.refused)
        StackLoad(stack, layers, numbers, count);
    if (stack.refused || stack.starved) {
        ErrorRecordSet(stack.problems);
        ZRYAML_HandleFree(stack.document);
        stack.document = nullptr;
    } else {
        ErrorClear(); // a layer that need not be there may have left something
    }
    if (problems != nullptr)
        *problems = stack.problems;
    else
        ZRYAML_ProblemsFree(stack.problems);
    return stack.document;
}

YamlHandle *ZRYAML_LayersLoad(const YamlLayer *pstLayers, uint32_t uiCount, const YamlLayerOptions *pstOptions,
                              YamlProblems **ppstProblems)
{
    return LayersLoadAs(pstLayers, nullptr, uiCount, pstOptions, ppstProblems);
}
