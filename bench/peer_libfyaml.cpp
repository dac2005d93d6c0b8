// SPDX-License-Identifier: Apache-2.0
// libfyaml: its document, and its paths.
#include <cstring>
#include <libfyaml.h>
#include <memory>

#include "peer.h"
#include "text.h"

namespace zryaml::bench {

namespace {

using DocumentPtr = std::shared_ptr<fy_document>;

void Load(const char *path)
{
    const DocumentPtr document(fy_document_build_from_file(nullptr, path), fy_document_destroy);
    if (fy_document_root(document.get()) == nullptr)
        LoadFail(Fyaml, path);
}

DocumentPtr DocumentOf(const std::string &text)
{
    return {fy_document_build_from_malloc_string(nullptr, strdup(text.c_str()), text.size()), fy_document_destroy};
}

std::string_view TextAt(fy_document *document, const char *path, size_t length)
{
    size_t text_length = 0;
    const char *text =
        fy_node_get_scalar(fy_node_by_path(fy_document_root(document), path, length, FYNWF_DONT_FOLLOW), &text_length);
    return {text, text == nullptr ? 0 : text_length};
}

Contestant Plain(const std::string &text, uint32_t index, const std::string &key)
{
    const std::string path = Printed("/plant/halls/%u/%s/rack/unit/listen/port", index, key.c_str());
    return ReadingOf(Fyaml,
                     [document = DocumentOf(text), path] { return TextAt(document.get(), path.data(), path.size()); });
}

Contestant Formatted(const std::string &text, uint32_t index, const std::string &key)
{
    return ReadingOf(Fyaml, [document = DocumentOf(text), index, key] {
        char path[1024];
        const int length = snprintf(path, sizeof path, "/plant/halls/%u/%s/rack/unit/listen/port", index, key.c_str());
        return TextAt(document.get(), path, static_cast<size_t>(length));
    });
}

} // namespace

const Peer Fyaml = {"libfyaml", Load, Plain, Formatted};

} // namespace zryaml::bench
