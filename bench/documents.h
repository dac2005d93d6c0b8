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
    size_t ulBytes = 0;
};

// Writes a text to a file in a folder, which is made if need be. The name of the file is that of the document with '_'
// for what is neither letter nor digit. Throws std::runtime_error.
[[nodiscard]] Document DocumentWrite(const std::string &folder, const std::string &name, const std::string &text);

// A file that is there already, named by its path. Throws std::runtime_error.
[[nodiscard]] Document DocumentOf(const std::string &path);

// Four shapes of configuration files, each of 2 kB, 30 kB, 300 kB and 1 MB.
[[nodiscard]] std::vector<Document> ShapesWrite(const std::string &folder);

// Documents that are easily made to cost more than in step with their size.
[[nodiscard]] std::vector<Document> HardWrite(const std::string &folder);

// A map "all" of uiCount keys key_000000, key_000001, ..., and a list "list" of as many texts.
[[nodiscard]] std::string FlatText(uint32_t uiCount);

} // namespace zryaml::bench
