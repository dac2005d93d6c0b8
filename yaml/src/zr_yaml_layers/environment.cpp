// SPDX-License-Identifier: Apache-2.0
// A layer of environment variables: those with a prefix, in the order of their components, each set as its way says.
#include "environment_way.h"
#include "layers_internal.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

using namespace zryaml;
using namespace zryaml::layers;

namespace {

const char *const *EnvironmentOf(const Stack &stack) noexcept
{
    static const char *const None[] = {nullptr};
    const char *const *texts = stack.options.apcEnvironment;
    if (texts == nullptr)
        texts = const_cast<const char *const *>(environ);
    return texts != nullptr ? texts : None;
}

std::string_view WithoutZeros(std::string_view digits) noexcept
{
    while (digits.size() > 1 && digits[0] == '0')
        digits.remove_prefix(1);
    return digits;
}

// Numbers by their value, before anything else by its bytes.
int ComponentCompare(std::string_view one, std::string_view other) noexcept
{
    if (IsNumber(one) != IsNumber(other))
        return IsNumber(one) ? -1 : 1;
    if (IsNumber(one)) {
        one = WithoutZeros(one);
        other = WithoutZeros(other);
        if (one.size() != other.size())
            return one.size() < other.size() ? -1 : 1;
    }
    return one.compare(other);
}

int VariableCompare(const void *one, const void *other) noexcept
{
    const std::string_view leftPath = static_cast<const Variable *>(one)->path;
    const std::string_view rightPath = static_cast<const Variable *>(other)->path;
    ComponentReader left(leftPath), right(rightPath);
    for (;;) {
        const bool leftEnds = !left.Next(), rightEnds = !right.Next();
        if (leftEnds || rightEnds)
            return leftEnds && rightEnds ? leftPath.compare(rightPath) : leftEnds ? -1 : 1; // "0" and "00"
        const int order = ComponentCompare(left.Component(), right.Component());
        if (order != 0)
            return order;
    }
}

bool VariablesCollect(Stack &stack, std::string_view prefix, GrowingArray<Variable> &variables) noexcept
{
    for (const char *const *text = EnvironmentOf(stack); *text != nullptr; ++text) {
        const char *equals = strchr(*text, '=');
        if (equals == nullptr)
            continue;
        const std::string_view name(*text, static_cast<size_t>(equals - *text));
        if (Begins(name, prefix) && !variables.Add({name, Behind(name, prefix.size()), equals + 1}))
            return Starve(stack), false;
    }
    if (variables.Count() > 1)
        qsort(variables.begin(), variables.Count(), sizeof(Variable), VariableCompare);
    return true;
}

} // namespace

void zryaml::layers::EnvironmentApply(Stack &stack, const YamlLayer &layer, uint32_t number) noexcept
{
    GrowingArray<Variable> variables;
    if (VariablesCollect(stack, layer.pcSource, variables)) {
        for (const Variable &variable : variables) {
            if (!stack.starved && !stack.overfull)
                VariableApply(stack, variable, number);
        }
    }
    variables.Release();
}

const char *zryaml::layers::VariableGet(const Stack &stack, std::string_view name) noexcept
{
    for (const char *const *text = EnvironmentOf(stack); *text != nullptr; ++text) {
        if (strncmp(*text, name.data(), name.size()) == 0 && (*text)[name.size()] == '=')
            return *text + name.size() + 1;
    }
    return nullptr;
}
