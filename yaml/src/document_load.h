// SPDX-License-Identifier: Apache-2.0
// Loading as layers need it: with settings of their own, and with a document that takes over the nodes of another.
#pragma once

#include <string_view>

#include <zr_yaml_problem.h>

namespace zryaml {

// Bits of YamlHandle::uiLoadFlags.
constexpr uint32_t LOAD_TAGS = 1U;        // !append, !prepend, !replace and !unset are noted in their nodes
constexpr uint32_t LOAD_TAGS_SEEN = 2U;   // there was one
constexpr uint32_t LOAD_MERGE_FORMS = 4U; // "<<" takes maps and sequences of maps as they stand

struct LoadSettings {
    uint32_t flags = 0;
    uint32_t nodeState = 0;          // bits that each node begins with
    uint32_t depthUsed = 0;          // collections that the document will lie in
    YamlProblems **review = nullptr; // receives warnings about a document that loads
};

// As ZRYAML_FileLoad and ZRYAML_TextLoad.
[[nodiscard]] YamlHandle *DocumentOfFile(const char *path, const LoadSettings &settings) noexcept;
[[nodiscard]] YamlHandle *DocumentOfText(std::string_view text, const char *name,
                                         const LoadSettings &settings) noexcept;

// An empty document that can take nodes until DocumentClose. NULL if out of memory (logged).
[[nodiscard]] YamlHandle *DocumentOpen(const char *name) noexcept;
void DocumentClose(YamlHandle &handle) noexcept;

// Makes all nodes and texts of a loaded document belong to another one. What still hangs in its tree stays as it is and
// is to be hung elsewhere; its handle is gone afterwards.
void DocumentTakeOver(YamlHandle &handle, YamlHandle *other) noexcept;

// A scalar that no file wrote, in no place of the tree yet. NULL if out of memory (logged).
[[nodiscard]] YamlListNode *ScalarMake(YamlHandle &handle, std::string_view text) noexcept;

// Gives the scalar value of a key or sequence another text. False if out of memory (logged).
[[nodiscard]] bool TextReplace(YamlHandle &handle, YamlListNode &scalar, std::string_view text) noexcept;

} // namespace zryaml
