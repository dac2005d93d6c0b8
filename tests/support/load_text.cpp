// SPDX-License-Identifier: Apache-2.0
// Loads whole files and looks at what is left behind, in the recorded blocks and among the open files.
#include "load_text.h"

#include "recording_base.h"

#include <filesystem>

namespace {

ptrdiff_t OpenFiles()
{
    const std::filesystem::directory_iterator stFiles("/proc/self/fd");
    return std::distance(begin(stFiles), end(stFiles));
}

} // namespace

std::string FileRead(const char *pcPath, std::string (*pfnWrite)(const YamlHandle &))
{
    const int64_t lBlocks = Base().lBlocks;
    const ptrdiff_t lFiles = OpenFiles();
    Base().log.clear();
    YamlHandle *pstHandle = ZRYAML_FileLoad(pcPath);
    std::string text = pstHandle != nullptr ? TreeCheck(*pstHandle) + pfnWrite(*pstHandle) : "";
    ZRYAML_HandleFree(pstHandle);
    text += Base().LogText();
    if (Base().lBlocks != lBlocks)
        text.insert(0, "blocks are left: ");
    if (OpenFiles() != lFiles)
        text.insert(0, "a file is left open: ");
    return text;
}

std::string DocumentRead(const std::string &document, std::string (*pfnWrite)(const YamlHandle &))
{
    return FileRead(TempFile(document).Path(), pfnWrite);
}

std::string Times(size_t ulTimes, const std::string &piece)
{
    std::string text;
    text.reserve(ulTimes * piece.size());
    while (ulTimes-- > 0)
        text += piece;
    return text;
}

std::string Numbered(size_t ulTimes, const std::string &before, const std::string &after)
{
    std::string text;
    for (size_t ul = 0; ul < ulTimes; ++ul)
        text += before + std::to_string(ul) + after;
    return text;
}
