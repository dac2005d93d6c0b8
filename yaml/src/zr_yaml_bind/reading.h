// SPDX-License-Identifier: Apache-2.0
// What one reading of a record holds from its beginning to its end, and how it tells of a problem.
#pragma once

#include "../kept_memory.h"
#include "../problem.h"

#include <zr_yaml_bind.h>

struct YamlReading {
    YamlHandle *document;
    YamlProblems **list;          // NULL: nobody wants the problems
    zryaml::KeptMemory kept{};    // for what the record points to
    zryaml::KeptMemory scratch{}; // for what the reading itself needs
    uint32_t errors = 0;          // problems that are no notes
    uint32_t code = YAML_OK;      // of the first of them
    uint32_t probes = 0;          // not 0: an alternative is tried out, nothing is told or kept
    bool starved = false;         // memory was short, everything stops
};

namespace zryaml::bind {

// Tells of a problem, as ProblemFind does; the first one fills the error record of the thread as well. Always false.
bool Tell(YamlReading &reading, const Finding &finding, const char *format, ...) noexcept
    __attribute__((format(printf, 3, 4)));

// Memory was short. Always false.
bool Starve(YamlReading &reading) noexcept;

// Memory of zeros for what the record points to; NULL if there is none left, which the reading knows then.
[[nodiscard]] void *Keep(YamlReading &reading, size_t bytes) noexcept;

} // namespace zryaml::bind
