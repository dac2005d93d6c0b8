// SPDX-License-Identifier: Apache-2.0
// How the library tells of a problem: the nodes that it is about give source, place and key path.
#pragma once

#include <zr_yaml_problem.h>

namespace zryaml {

struct Finding {
    uint32_t level = YAML_PROBLEM_ERROR;
    uint32_t code = YAML_ERR_VALUE;
    const YamlListNode *value = nullptr; // gives the key path, and the place unless another node does
    const YamlListNode *place = nullptr; // the node to point at: the key where a key is wrong
    const char *hint = "";               // formatted already
};

// Adds a problem with a printf-style sentence; makes the list where there is none. A NULL pointer wants no list.
// YAML_OK or YAML_ERR_NOMEM, in which case the list says so.
uint32_t ProblemFind(YamlProblems **list, const Finding &finding, const char *format, ...) noexcept
    __attribute__((format(printf, 3, 4)));

// An empty list to hand to a host's check; never NULL. ProblemsTrim afterwards gives it back if it stayed empty.
[[nodiscard]] YamlProblems *ProblemsMake() noexcept;
// The list, or NULL, with nothing left behind, if it is empty.
[[nodiscard]] YamlProblems *ProblemsTrim(YamlProblems *list) noexcept;

// How many errors were added, those left out included.
[[nodiscard]] uint32_t ProblemErrorCount(const YamlProblems *list) noexcept;

} // namespace zryaml
