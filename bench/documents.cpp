// SPDX-License-Identifier: Apache-2.0
// Files of documents, and the flat and hard ones; the shapes of configuration files are in shapes.cpp.
#include "documents.h"

#include <cctype>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "text.h"

namespace zryaml::bench {

namespace {

std::string FlatMapText(uint32_t uiCount, const char *pcIndent)
{
    std::string text;
    for (uint32_t ui = 0; ui < uiCount; ++ui)
        text += Printed("%skey_%06u: value %u\n", pcIndent, ui, ui);
    return text;
}

std::string AliasText(uint32_t uiCount)
{
    std::string text = "anchors:\n";
    for (uint32_t ui = 0; ui < uiCount; ++ui)
        text += Printed("  - &a%u value %u\n", ui, ui);
    text += "aliases:\n";
    for (uint32_t ui = 0; ui < uiCount; ++ui)
        text += Printed("  - *a%u\n", ui);
    return text;
}

std::string OverrideText(uint32_t uiCount)
{
    const std::string keys = FlatMapText(uiCount, "  ");
    return "base: &base\n" + keys + "derived:\n  <<: *base\n" + keys;
}

std::string MergeText(uint32_t uiCount)
{
    std::string text = "bases:\n";
    for (uint32_t ui = 0; ui < uiCount; ++ui)
        text += Printed("  - &b%u {key_%u: value %u}\n", ui, ui, ui);
    text += "merged:\n";
    for (uint32_t ui = 0; ui < uiCount; ++ui)
        text += Printed("  <<: *b%u\n", ui);
    return text;
}

} // namespace

Document DocumentWrite(const std::string &folder, const std::string &name, const std::string &text)
{
    std::filesystem::create_directories(folder);
    std::string file = name;
    for (char &cChar : file) {
        if (isalnum(static_cast<unsigned char>(cChar)) == 0)
            cChar = '_';
    }
    std::string path = folder;
    path += "/" + file + ".yaml";
    std::ofstream stFile(path, std::ios::binary);
    stFile << text;
    stFile.close();
    if (!stFile)
        throw std::runtime_error("can not write " + path);
    return {name, path, text.size()};
}

Document DocumentOf(const std::string &path)
{
    std::error_code stError;
    const uintmax_t ulBytes = std::filesystem::file_size(path, stError);
    if (stError)
        throw std::runtime_error(path + ": " + stError.message());
    return {path, path, static_cast<size_t>(ulBytes)};
}

std::vector<Document> HardWrite(const std::string &folder)
{
    return {
        DocumentWrite(folder, "flat map, 10k keys", FlatMapText(10000, "")),
        DocumentWrite(folder, "flat map, 100k keys", FlatMapText(100000, "")),
        DocumentWrite(folder, "flat map, 1M keys", FlatMapText(1000000, "")),
        DocumentWrite(folder, "100k anchors and aliases", AliasText(100000)),
        DocumentWrite(folder, "50k overridden merged keys", OverrideText(50000)),
        DocumentWrite(folder, "a map of 20k merges", MergeText(20000)),
    };
}

std::string FlatText(uint32_t uiCount)
{
    std::string text = "all:\n" + FlatMapText(uiCount, "  ") + "list:\n";
    for (uint32_t ui = 0; ui < uiCount; ++ui)
        text += Printed("  - element %u\n", ui);
    return text;
}

} // namespace zryaml::bench
