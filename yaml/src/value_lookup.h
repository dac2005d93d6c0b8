// SPDX-License-Identifier: Apache-2.0
// What is below a value, and what to say where nothing is. One rule serves typed reads, the C++ interface and the
// command:
//
// 1. Absent (YAML_ERR_NOT_FOUND) is a key that a map has not, an element past the end of a sequence, and whatever is
//    asked for below an empty scalar (`server:` with nothing behind it) or in an empty document.
// 2. Wrong (YAML_ERR_NODE_TYPE) is anything below another scalar, a key of a sequence and an element of a map.
//
// Lookups by format keep codes and log records of their own; what the error record tells people comes from here.
#pragma once

#include "key_path.h"

namespace zryaml {

// Takes one step from a value, NULL for the top of an empty document: to a key, by its text without escapes, or to an
// element. YAML_OK and where it leads, or the code of the rule above.
[[nodiscard]] uint32_t KeyTake(const YamlListNode *from, std::string_view key, const YamlListNode *&to) noexcept;
[[nodiscard]] uint32_t IndexTake(const YamlListNode *from, uint64_t index, const YamlListNode *&to) noexcept;

// Where a path leads.
struct PathEnd {
    uint32_t code; // YAML_OK: to the value; else absent, wrong, or what PathFaultCode says of a malformed path
    const YamlListNode *value; // the deepest value on the way; NULL: the document is empty
    PathFault fault;           // a fault anywhere in the path counts more than a step that leads nowhere
    PathStep step;             // the one that leads nowhere
};

// Follows a path from a value down; "" leads to the value itself. A key with escapes may have YAML_KEY_BUF_SIZE - 1
// bytes.
[[nodiscard]] PathEnd PathFollow(const YamlListNode *from, std::string_view path) noexcept;

// Adds to the failure in the error record what a person is told of such an end, or of a step that leads nowhere: the
// sentence, the hint, and the place of the deepest value.
void PathEndExplain(const PathEnd &end) noexcept;
void PathFaultExplain(PathFault fault) noexcept;
void KeyMissExplain(const YamlListNode *from, std::string_view key) noexcept;
void IndexMissExplain(const YamlListNode *from, uint64_t index) noexcept;

// As above, of a value that is of another kind than is asked for: "servers[0] is a map, not a scalar".
void KindExplain(const YamlListNode &value, const char *wanted) noexcept;

// The path of a value as sentences have it, cut where it is too long for one; "the document" for the top.
struct ValueName {
    explicit ValueName(const YamlListNode *value) noexcept;
    char text[256];
    bool top;
};

// "a map", "a sequence", "a scalar"
[[nodiscard]] const char *KindName(uint32_t type) noexcept;

} // namespace zryaml
