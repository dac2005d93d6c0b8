// SPDX-License-Identifier: Apache-2.0
// What stands in the files of a watch's layers at one moment. The documents are made of these copies, so that what is
// compared is what was loaded.
#pragma once

#include "../growing_array.h"

#include <zr_yaml_layers.h>

namespace zryaml::watch {

struct Settings;

struct WatchedLayer {
    YamlLayer layer;  // its texts are the watch's own
    const char *path; // of a file or folder: from the root
};

[[nodiscard]] inline bool IsFolder(const YamlLayer &layer) noexcept
{
    return layer.uiKind == YAML_LAYER_FOLDER || layer.uiKind == YAML_LAYER_FOLDER_OPTIONAL;
}
[[nodiscard]] inline bool IsOnDisk(const YamlLayer &layer) noexcept
{
    return IsFolder(layer) || layer.uiKind == YAML_LAYER_FILE || layer.uiKind == YAML_LAYER_FILE_OPTIONAL;
}
[[nodiscard]] inline bool IsOptional(const YamlLayer &layer) noexcept
{
    return layer.uiKind == YAML_LAYER_FILE_OPTIONAL || layer.uiKind == YAML_LAYER_FOLDER_OPTIONAL;
}

enum class Found : uint8_t {
    Bytes,
    Absent,
    Folder, // a layer's folder; what is in it follows
    Pipe,   // or a socket: nothing that can be read again and again
    Unfit,  // for the reason in "error"
};

struct SourceCopy {
    uint32_t layer; // number of its layer
    bool isMember;  // of a folder
    Found found;
    int error;
    uint32_t length;  // of the bytes
    const char *name; // as problems call it
    const char *path; // from the root
    char *bytes;      // a block of its own
    char *block;      // of a folder's file: name and path
};

class SourceCopies {
public:
    // Reads all. YAML_OK, or what the system refused, told.
    [[nodiscard]] uint32_t Read(const Settings &settings, YamlProblems **problems) noexcept;
    void Release() noexcept;
    // Takes over what the other has.
    void Take(SourceCopies &other) noexcept;

    [[nodiscard]] bool Same(const SourceCopies &other) const noexcept;
    // Whether a file has become empty that was not.
    [[nodiscard]] bool Emptied(const SourceCopies &before) const noexcept;

    [[nodiscard]] uint32_t Count() const noexcept { return m_sources.Count(); }
    [[nodiscard]] SourceCopy *begin() const noexcept { return m_sources.begin(); }
    [[nodiscard]] SourceCopy *end() const noexcept { return m_sources.end(); }

private:
    [[nodiscard]] uint32_t FolderRead(SourceCopy &folder, bool optional, YamlProblems **problems) noexcept;
    [[nodiscard]] uint32_t MemberRead(const SourceCopy &folder, const char *entry, YamlProblems **problems) noexcept;
    // Adds what was read, or gives it back if reading failed with a code.
    [[nodiscard]] uint32_t Keep(SourceCopy &source, uint32_t code, YamlProblems **problems) noexcept;

    GrowingArray<SourceCopy> m_sources;
};

} // namespace zryaml::watch
