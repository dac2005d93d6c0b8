// SPDX-License-Identifier: Apache-2.0
// libyaml's own tree. As a caller would, the load reads on to the end of the stream, which is an empty document.
#include "libyaml_file.h"

namespace zryaml::bench {

namespace {

void Load(const char *path)
{
    LibyamlFile file(DocumentTree, path);
    for (const bool last : {false, true}) {
        yaml_document_t document;
        if (yaml_parser_load(file.Get(), &document) == 0)
            LoadFail(DocumentTree, path);
        const bool any = yaml_document_get_root_node(&document) != nullptr;
        yaml_document_delete(&document);
        if (any == last)
            LoadFail(DocumentTree, path);
    }
}

} // namespace

const Peer DocumentTree = {"yaml_parser_load", Load, nullptr, nullptr};

} // namespace zryaml::bench
