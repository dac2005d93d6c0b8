// SPDX-License-Identifier: Apache-2.0
// The measurements of the suite, by what they are about.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <zr_yaml.h>

#include "documents.h"

namespace zryaml::bench {

// How often a measurement comes up, and how long it lasts each time at least.
struct Budget {
    uint32_t uiRepeats;
    double dSeconds;
};

using HandlePtr = std::shared_ptr<YamlHandle>;

// Loads a text that is measured later on. Throws std::runtime_error.
[[nodiscard]] HandlePtr HandleOf(const std::string &text);

// Loading and releasing each document, against the event loop and against the loaders of whole documents.
void LoadMeasuresAdd(const std::vector<Document> &documents, Budget stLoopBudget, Budget stLoaderBudget);

// Loading and releasing the hard documents, against the event loop.
void HardMeasuresAdd(const std::vector<Document> &documents, Budget stBudget);

// ZRYAML_PropertyGet with seven components, against the same lookup elsewhere and a plain walk over the same nodes.
void LookupMeasuresAdd(Budget stBudget);

// What one item costs in documents of three sizes.
void GrowthMeasuresAdd(Budget stBudget);

} // namespace zryaml::bench
