// SPDX-License-Identifier: Apache-2.0
// The documents that are measured, made up by rule: the same bytes in each run and on each machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zryaml::bench {

struct Document {
    std::string name; // such as "long texts, 30 kB"
    std::string path;
    size_t bytes = 0;
};

// Writes a text to a file in a folder, which is made if need be. The name of the file is that of the document with '_'
// for what is neither letter nor digit. Throws std::runtime_error.
[[nodiscard]] Document DocumentWrite(const std::string &folder, const std::string &name, const std::string &text);

// A file that is there already, named by its path. Throws std::runtime_error.
[[nodiscard]] Document DocumentOf(const std::string &path);

// Four shapes of configuration files, each of 3 kB, 30 kB, 300 kB and 1 MB.
[[nodiscard]] std::vector<Document> ShapesWrite(const std::string &folder);

// One map of ten thousand, a hundred thousand and a million keys.
[[nodiscard]] std::vector<Document> FlatMapsWrite(const std::string &folder);

// The flat maps, and documents of aliases and merges: easily made to cost more than in step with their size.
[[nodiscard]] std::vector<Document> HardWrite(const std::string &folder);

// The lines "key_000000: value 0", "key_000001: value 1", ..., each behind the indent.
[[nodiscard]] std::string FlatMapText(uint32_t count, const char *indent);

// A map "all" of those lines, and a sequence "list" of as many texts.
[[nodiscard]] std::string MapAndSequenceText(uint32_t count);

} // namespace zryaml::bench
