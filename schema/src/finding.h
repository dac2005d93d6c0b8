// SPDX-License-Identifier: Apache-2.0
// What a check has found, before it becomes a list of problems.
#pragma once

#include "value.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <zr_yaml_problem.h>

namespace zryaml::schema {

struct Finding {
    Value value; // of a key: the key is too many or wrong, and the path is its map's
    uint32_t code = YAML_ERR_SCHEMA;
    std::string message;
    std::string hint = {};
    std::string_view key = {}; // the key that is missing, or that an unknown one probably stands for
};

class Findings {
public:
    void Add(Finding finding);
    // Adds what another list holds.
    void Append(Findings &&other);
    [[nodiscard]] size_t Count() const noexcept { return findings_.size() + leftOut_; }
    // Past this, hints are no longer read by anybody.
    [[nodiscard]] bool IsLong() const noexcept { return findings_.size() > YAML_PROBLEM_MAX; }
    [[nodiscard]] bool IsEmpty() const noexcept { return findings_.empty(); }
    // Whether all are about the value itself, and about nothing in it.
    [[nodiscard]] bool AreAt(const Value &value) const noexcept;

    // Puts the findings into the order in which walks from the tops meet their values, and drops what another finding
    // says already.
    void Tidy(std::span<const YamlListNode *const> tops);
    // Makes problems of them. A code other than YAML_OK stands for each one's own.
    void Report(YamlProblems **problems, uint32_t code = YAML_OK) const;

private:
    std::vector<Finding> findings_;
    uint64_t leftOut_ = 0;
};

// A value as a sentence names it: a text in full or cut, "null", "a map".
std::string Shown(const Value &value);
// A text in quotes, cut if it is long.
std::string Quoted(std::string_view text);
// "a, b, c", cut where it gets long.
std::string ShownList(const std::vector<Value> &values);
// "an integer or null" for a set of kinds.
std::string ShownKinds(uint32_t kinds);

} // namespace zryaml::schema
