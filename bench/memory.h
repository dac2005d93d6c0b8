// SPDX-License-Identifier: Apache-2.0
// What documents hold in memory, each seen by a process of its own, so that nothing else is in its pool.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "documents.h"

namespace zryaml::bench {

struct Holding { // of one loaded document
    std::string name;
    uint64_t ulTextBytes = 0;
    uint64_t ulNodes = 0;
    uint64_t ulBytesInUse = 0; // in blocks of the pool
};

struct Reload { // of loading and releasing one file again and again
    std::string name;
    uint64_t ulTimes = 0;
    uint64_t ulBytesBefore = 0; // resident size of the process, after the first hundred loads
    uint64_t ulBytesAfter = 0;
};

// These start this program once more with one of MemoryMode's arguments. They throw std::runtime_error.
[[nodiscard]] Holding HoldingOf(const Document &stDocument);
[[nodiscard]] Reload ReloadOf(const Document &stDocument, uint64_t ulTimes);

// Does what a program started by the calls above is for; false if the arguments are not those.
[[nodiscard]] bool MemoryMode(const std::vector<std::string> &arguments);

} // namespace zryaml::bench
