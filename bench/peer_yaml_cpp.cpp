// SPDX-License-Identifier: Apache-2.0
// yaml-cpp: its nodes. A chain of operator[] takes index and key as they are, so both lookups are the same.
#include <yaml-cpp/yaml.h>

#include "peer.h"

namespace zryaml::bench {

namespace {

void Load(const char *path)
{
    if (!YAML::LoadFile(path).IsDefined())
        LoadFail(YamlCpp, path);
}

Contestant Read(const std::string &text, uint32_t index, const std::string &key)
{
    return ReadingOf(YamlCpp, [document = YAML::Load(text), index, key] {
        const YAML::Node &root = document; // constant, so that a missing key is not added
        const YAML::Node port = root["plant"]["halls"][index][key]["rack"]["unit"]["listen"]["port"];
        return std::string_view(port.Scalar()); // owned by the document
    });
}

} // namespace

const Peer YamlCpp = {"yaml-cpp", Load, Read, Read};

} // namespace zryaml::bench
