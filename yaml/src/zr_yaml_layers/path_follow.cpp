// SPDX-License-Identifier: Apache-2.0
// Finds a value by a key path, in silence: what is not there may have a text to take instead.
#include "layers_internal.h"

#include "../key_path.h"

using namespace zryaml;
using namespace zryaml::layers;

namespace {

YamlListNode *StepTake(const YamlListNode &value, const PathStep &step, char (&name)[YAML_KEY_BUF_SIZE]) noexcept
{
    if (step.isIndex)
        return value.uiDataType == YAML_DATATYPE_SEQ ? ElementAt(value, step.index) : nullptr;
    if (value.uiDataType != YAML_DATATYPE_MAP)
        return nullptr;
    const YamlListNode *key = KeyFind(value, {name, NameUnescape(step.text, name, sizeof(name))});
    return key != nullptr ? FirstChild(*key) : nullptr;
}

} // namespace

bool zryaml::layers::PathFollow(const YamlHandle &document, std::string_view path, YamlListNode *&value) noexcept
{
    if (path.size() >= YAML_KEY_BUF_SIZE)
        return false;
    char name[YAML_KEY_BUF_SIZE];
    PathReader reader(path);
    PathStep step = {};
    value = FirstChild(document.stRoot);
    while (reader.Next(step)) // to the end, which may be malformed
        value = value != nullptr ? StepTake(*value, step, name) : nullptr;
    return reader.Fault() == PathFault::None;
}
