// SPDX-License-Identifier: Apache-2.0
// The library itself, as a program uses it.
#include <zr_yaml.h>

#include "peer.h"
#include "suite.h"
#include "text.h"

namespace zryaml::bench {

namespace {

void Load(const char *path)
{
    YamlHandle *document = ZRYAML_FileLoad(path);
    if (document == nullptr)
        LoadFail(Library, path);
    ZRYAML_HandleFree(document);
}

Contestant Plain(const std::string &text, uint32_t index, const std::string &key)
{
    const std::string path = Printed("plant.halls[%u].%s.rack.unit.listen.port", index, key.c_str());
    return ReadingOf(Library, [document = HandleOf(text), path] {
#pragma GCC diagnostic push // a literal path would be one that the compiler could prepare; here it holds no '%'
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
        return ZRYAML_PropertyGet(document.get(), path.c_str());
#pragma GCC diagnostic pop
    });
}

Contestant Formatted(const std::string &text, uint32_t index, const std::string &key)
{
    return ReadingOf(Library, [document = HandleOf(text), index, key] {
        return ZRYAML_PropertyGet(document.get(), "plant.halls[%u].%s.rack.unit.listen.port", index, key.c_str());
    });
}

} // namespace

const Peer Library = {"library", Load, Plain, Formatted};

HandlePtr HandleOf(const std::string &text)
{
    HandlePtr document(ZRYAML_TextLoad(text.data(), text.size(), "bench"), ZRYAML_HandleFree);
    if (document == nullptr)
        throw std::runtime_error(std::string("cannot load a text: ") + ZRYAML_LastErrorGet()->pcMessage);
    return document;
}

} // namespace zryaml::bench
