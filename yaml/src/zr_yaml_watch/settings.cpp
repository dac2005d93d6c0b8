// SPDX-License-Identifier: Apache-2.0
// What a watch keeps of its caller's arguments: layers with their texts, paths from the root, and the environment.
#include "watch_internal.h"

#include <cstring>
#include <unistd.h>

using namespace zryaml;
using namespace zryaml::watch;

namespace {

bool NeedsEnvironment(const Settings &settings) noexcept
{
    if ((settings.options.uiFlags & YAML_LAYERS_EXPAND) != 0)
        return true;
    for (const WatchedLayer &watched : settings.layers) {
        if (watched.layer.uiKind == YAML_LAYER_ENVIRONMENT)
            return true;
    }
    return false;
}

} // namespace

bool zryaml::watch::Settings::Copy(const YamlLayer *given, uint32_t count, const YamlWatchOptions &wanted) noexcept
{
    watch = wanted;
    if (wanted.pstLayers != nullptr)
        options = *wanted.pstLayers;
    watch.pstLayers = &options;
    char *folder = getcwd(nullptr, 0);
    bool copied = true;
    for (uint32_t number = 0; number < count && copied; ++number)
        copied = LayerCopy(given[number], folder != nullptr ? folder : "");
    free(folder);
    return copied && EnvironmentCopy(options.apcEnvironment);
}

bool zryaml::watch::Settings::LayerCopy(const YamlLayer &given, const char *folder) noexcept
{
    WatchedLayer copy = {given, nullptr};
    copy.layer.pcSource = Keep("", given.pcSource);
    if (given.pcText != nullptr)
        copy.layer.pcText = Keep("", given.uiKind == YAML_LAYER_TEXT ? std::string_view(given.pcText, given.ulLength)
                                                                     : std::string_view(given.pcText));
    if (IsOnDisk(given))
        copy.path = Keep(given.pcSource[0] == '/' ? "" : folder, given.pcSource);
    const bool kept = copy.layer.pcSource != nullptr && (copy.layer.pcText != nullptr || given.pcText == nullptr) &&
                      (copy.path != nullptr || !IsOnDisk(given));
    return kept && layers.Add(copy);
}

bool zryaml::watch::Settings::EnvironmentCopy(const char *const *given) noexcept
{
    if (given == nullptr)
        given = environ;
    for (; NeedsEnvironment(*this) && given != nullptr && *given != nullptr; ++given) {
        const char *text = Keep("", *given);
        if (text == nullptr || !environment.Add(text))
            return false;
    }
    if (!environment.Add(nullptr))
        return false;
    options.apcEnvironment = environment.begin();
    return true;
}

// A copy that the watch owns, with a folder and a slash before it, if there is one. NULL if out of memory.
const char *zryaml::watch::Settings::Keep(const char *folder, std::string_view text) noexcept
{
    const size_t lead = folder[0] != '\0' ? strlen(folder) + 1 : 0;
    const size_t size = lead + text.size() + 1;
    char *copy = size <= UINT32_MAX ? static_cast<char *>(ZR_MemAlloc(static_cast<uint32_t>(size), yaml_MemHandleGet()))
                                    : nullptr;
    if (copy == nullptr)
        return nullptr;
    if (lead != 0) {
        memcpy(copy, folder, lead - 1);
        copy[lead - 1] = '/';
    }
    if (!text.empty())
        memcpy(copy + lead, text.data(), text.size());
    copy[size - 1] = '\0';
    if (texts.Add(copy))
        return copy;
    ZR_MemFree(copy, yaml_MemHandleGet());
    return nullptr;
}

void zryaml::watch::Settings::Release() noexcept
{
    for (char *text : texts)
        ZR_MemFree(text, yaml_MemHandleGet());
    texts.Release();
    layers.Release();
    environment.Release();
}
