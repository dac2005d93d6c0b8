// SPDX-License-Identifier: Apache-2.0
// Loads whole files and looks at what is left behind, in the recorded blocks and among the open files.
#include "load_text.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

ptrdiff_t OpenFiles()
{
    const std::filesystem::directory_iterator stFiles("/proc/self/fd");
    return std::distance(begin(stFiles), end(stFiles));
}

} // namespace

TempFile::TempFile(const std::string &text) : m_path("/tmp/zryaml-test-XXXXXX")
{
    (void)close(mkstemp(m_path.data()));
    std::ofstream(m_path) << text;
}

TempFile::~TempFile()
{
    unlink(m_path.c_str());
}

YamlHandle *TextLoad(const std::string &text)
{
    return ZRYAML_TextLoad(text.data(), text.size(), "doc");
}

std::string LoadRead(const std::function<YamlHandle *()> &fnLoad,
                     const std::function<std::string(const YamlHandle &)> &fnWrite)
{
    const int64_t lBlocks = Base().lBlocks;
    const ptrdiff_t lFiles = OpenFiles();
    Base().log.clear();
    YamlHandle *pstHandle = fnLoad();
    std::string text = pstHandle != nullptr ? TreeCheck(*pstHandle) + fnWrite(*pstHandle) : "";
    ZRYAML_HandleFree(pstHandle);
    text += Base().LogText();
    if (Base().lBlocks != lBlocks)
        text.insert(0, "blocks are left: ");
    if (OpenFiles() != lFiles)
        text.insert(0, "a file is left open: ");
    return text;
}

std::string DocumentRead(const std::string &document)
{
    return LoadRead([&document] { return ZRYAML_FileLoad(TempFile(document).Path()); });
}
