// SPDX-License-Identifier: Apache-2.0
// Finds a value by a key path, in silence: what is not there may have a text to take instead.
#include "layers_internal.h"

#include "../key_path.h"

using namespace zryaml;
using namespace zryaml::layers;

namespace {

YamlListNode *ElementTake(const YamlListNode &value, uint64_t index, uint64_t &steps) noexcept
{
    if (value.uiDataType != YAML_DATATYPE_SEQ || !HasChildren(value))
        return nullptr;
    steps += ElementSteps(*NodeOf(value.stChildList.prev, NodeLink::Seq), index);
    return ElementAt(value, index);
}

YamlListNode *KeyTake(const YamlListNode &value, const PathStep &step, char (&name)[YAML_KEY_BUF_SIZE]) noexcept
{
    if (value.uiDataType != YAML_DATATYPE_MAP)
        return nullptr;
    const YamlListNode *key = KeyFind(value, {name, NameUnescape(step.text, name, sizeof(name))});
    return key != nullptr ? FirstChild(*key) : nullptr;
}

} // namespace

Followed zryaml::layers::PathFollow(const YamlHandle &document, std::string_view path) noexcept
{
    if (path.size() >= YAML_KEY_BUF_SIZE)
        return {nullptr, 0, true};
    char name[YAML_KEY_BUF_SIZE];
    PathReader reader(path);
    PathStep step = {};
    uint64_t steps = 0;
    YamlListNode *value = FirstChild(document.stRoot);
    while (reader.Next(step)) { // to the end, which may be malformed
        if (value != nullptr)
            value = step.isIndex ? ElementTake(*value, step.index, steps) : KeyTake(*value, step, name);
    }
    return {value, steps, reader.Fault() != PathFault::None};
}
