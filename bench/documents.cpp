// SPDX-License-Identifier: Apache-2.0
// Files of documents, and the flat and hard ones; shapes.cpp makes up configuration files.
#include "documents.h"

#include <cctype>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "text.h"

namespace zryaml::bench {

namespace {

std::string AliasText(uint32_t count)
{
    std::string text = "anchors:\n";
    for (uint32_t i = 0; i < count; ++i)
        text += Printed("  - &a%u value %u\n", i, i);
    text += "aliases:\n";
    for (uint32_t i = 0; i < count; ++i)
        text += Printed("  - *a%u\n", i);
    return text;
}

std::string OverrideText(uint32_t count)
{
    const std::string keys = FlatMapText(count, "  ");
    return "base: &base\n" + keys + "derived:\n  <<: *base\n" + keys;
}

std::string MergeText(uint32_t count)
{
    std::string text = "bases:\n";
    for (uint32_t i = 0; i < count; ++i)
        text += Printed("  - &b%u {key_%u: value %u}\n", i, i, i);
    text += "merged:\n";
    for (uint32_t i = 0; i < count; ++i)
        text += Printed("  <<: *b%u\n", i);
    return text;
}

} // namespace

Document DocumentWrite(const std::string &folder, const std::string &name, const std::string &text)
{
    std::filesystem::create_directories(folder);
    std::string file = name;
    for (char &letter : file) {
        if (isalnum(static_cast<unsigned char>(letter)) == 0)
            letter = '_';
    }
    std::string path = folder;
    path += "/" + file + ".yaml";
    std::ofstream stream(path, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream)
        throw std::runtime_error("cannot write " + path);
    return {name, path, text.size()};
}

Document DocumentOf(const std::string &path)
{
    std::error_code error;
    const uintmax_t bytes = std::filesystem::file_size(path, error);
    if (error)
        throw std::runtime_error(path + ": " + error.message());
    return {path, path, static_cast<size_t>(bytes)};
}

std::vector<Document> FlatMapsWrite(const std::string &folder)
{
    return {
        DocumentWrite(folder, "flat map, 10k keys", FlatMapText(10000, "")),
        DocumentWrite(folder, "flat map, 100k keys", FlatMapText(100000, "")),
        DocumentWrite(folder, "flat map, 1M keys", FlatMapText(1000000, "")),
    };
}

std::vector<Document> HardWrite(const std::string &folder)
{
    std::vector<Document> documents = FlatMapsWrite(folder);
    documents.push_back(DocumentWrite(folder, "100k anchors and aliases", AliasText(100000)));
    documents.push_back(DocumentWrite(folder, "50k overridden merged keys", OverrideText(50000)));
    documents.push_back(DocumentWrite(folder, "a map of 20k merges", MergeText(20000)));
    return documents;
}

std::string FlatMapText(uint32_t count, const char *indent)
{
    std::string text;
    for (uint32_t i = 0; i < count; ++i)
        text += Printed("%skey_%06u: value %u\n", indent, i, i);
    return text;
}

std::string MapAndSequenceText(uint32_t count)
{
    std::string text = "all:\n" + FlatMapText(count, "  ") + "list:\n";
    for (uint32_t i = 0; i < count; ++i)
        text += Printed("  - element %u\n", i);
    return text;
}

} // namespace zryaml::bench
