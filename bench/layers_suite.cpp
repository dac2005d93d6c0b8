// SPDX-License-Identifier: Apache-2.0
// What layers cost: three copies of one document put over each other against three loads of it, all held at once; and
// a lookup in what comes out against one in the plain document.
#include <stdexcept>

#include <zr_yaml_layers.h>

#include "measure.h"
#include "suite.h"
#include "text.h"

namespace zryaml::bench {

namespace {

constexpr uint32_t Copies = 3;
constexpr size_t LargeBytes = 500000; // of the generated files those of 1 MB
constexpr uint32_t Keys = 1000;

HandlePtr Layered(const char *path)
{
    const YamlLayer layer = {YAML_LAYER_FILE, 0, path, nullptr, 0, nullptr};
    const YamlLayer layers[Copies] = {layer, layer, layer};
    HandlePtr document(ZRYAML_LayersLoad(layers, Copies, nullptr, nullptr), ZRYAML_HandleFree);
    if (document == nullptr)
        throw std::runtime_error(std::string("can not layer ") + path);
    return document;
}

void LoadsHeld(const char *path)
{
    YamlHandle *documents[Copies];
    for (YamlHandle *&document : documents)
        document = ZRYAML_FileLoad(path);
    for (YamlHandle *document : documents)
        ZRYAML_HandleFree(document);
}

Contestant LastKey(const HandlePtr &document)
{
    const auto find = [document, path = Printed("all.key_%06u", Keys - 1)] {
        if (ZRYAML_PropertyGet(document.get(), "%s", path.c_str()) == nullptr)
            throw std::runtime_error("the key is not there");
    };
    return {Repeated(find)};
}

const Suite added([](const Setting &setting) {
    for (const Document &document : setting.files) {
        if (document.bytes >= LargeBytes)
            PairAdd("layers/" + document.name + ", three copies/loading the three",
                    {Repeated([path = document.path] { (void)Layered(path.c_str()); })},
                    {Repeated([path = document.path] { LoadsHeld(path.c_str()); })});
    }
    const Document keys = DocumentWrite(setting.folder, "keys to layer", MapAndSequenceText(Keys));
    PairAdd("layers/a lookup of a key/plain document", LastKey(Layered(keys.path.c_str())),
            LastKey(HandleOf(MapAndSequenceText(Keys))));
});

} // namespace

} // namespace zryaml::bench
