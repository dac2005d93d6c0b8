// SPDX-License-Identifier: Apache-2.0
// Layers that are documents: files, the files of folders, texts. One that need not be there is passed over if it is
// not; one that cannot be loaded is a problem, and the others are looked at all the same.
#include "../folder_names.h"
#include "layers_internal.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

using namespace zryaml;
using namespace zryaml::layers;

namespace {

bool IsAbsent(const char *path) noexcept
{
    return access(path, F_OK) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

LoadSettings SettingsOf(const Stack &stack) noexcept
{
    const bool forms = (stack.options.uiFlags & YAML_LAYERS_MERGE_FORMS) != 0;
    return {LOAD_TAGS | (forms ? LOAD_MERGE_FORMS : 0), stack.document->uiNodeState};
}

void LoadedMerge(Stack &stack, const char *source, YamlHandle *loaded) noexcept
{
    if (loaded != nullptr)
        return DocumentMerge(stack, loaded);
    stack.incomplete = true;
    LoadFailureAdd(stack, source, "");
}

void FileApply(Stack &stack, const char *path, uint32_t number) noexcept
{
    if (SourceAdd(stack, number, "", path))
        LoadedMerge(stack, path, DocumentOfFile(path, SettingsOf(stack)));
}

void TextApply(Stack &stack, const YamlLayer &layer, uint32_t number) noexcept
{
    const char *text = layer.ulLength != 0 ? layer.pcText : "";
    if (SourceAdd(stack, number, "", layer.pcSource))
        LoadedMerge(stack, layer.pcSource, DocumentOfText({text, layer.ulLength}, layer.pcSource, SettingsOf(stack)));
}

void FolderApply(Stack &stack, const char *folder, uint32_t number) noexcept
{
    struct dirent **entries = nullptr;
    const int count = scandir(folder, &entries, IsDocumentName, InByteOrder);
    if (count < 0) {
        stack.incomplete = true;
        Spot spot = {folder};
        spot.code = YAML_ERR_OPEN;
        return errno == ENOENT ? Tell(stack, spot, "no such folder")
                               : Tell(stack, spot, "the folder cannot be read: %s", strerrordesc_np(errno));
    }
    for (int at = 0; at < count; ++at) {
        char path[PATH_MAX];
        const int length = snprintf(path, sizeof(path), "%s/%s", folder, entries[at]->d_name);
        if (length >= static_cast<int>(sizeof(path)))
            Tell(stack, {folder}, "the path of '%s' is too long", entries[at]->d_name);
        else if (!stack.starved)
            FileApply(stack, path, number);
        free(entries[at]);
    }
    free(entries);
}

} // namespace

void zryaml::layers::DocumentLayerApply(Stack &stack, const YamlLayer &layer, uint32_t number) noexcept
{
    const char *path = layer.pcSource;
    switch (layer.uiKind) {
    case YAML_LAYER_TEXT:
        return TextApply(stack, layer, number);
    case YAML_LAYER_FILE_OPTIONAL:
        return IsAbsent(path) ? (void)0 : FileApply(stack, path, number);
    case YAML_LAYER_FOLDER_OPTIONAL:
        return IsAbsent(path) ? (void)0 : FolderApply(stack, path, number);
    case YAML_LAYER_FOLDER:
        return FolderApply(stack, path, number);
    default:
        return FileApply(stack, path, number);
    }
}
