// SPDX-License-Identifier: Apache-2.0
// What the fuzz targets share: documents that are loaded and freed, without a log. The base library takes every block
// from malloc one by one here, so the address sanitizer sees each.
#pragma once

#include "../tests/support/reading_check.h"
#include "../tests/support/tree_check.h"

#include <memory>

struct HandleFree {
    void operator()(YamlHandle *pstHandle) const { ZRYAML_HandleFree(pstHandle); }
};
using Document = std::unique_ptr<YamlHandle, HandleFree>;

// Loads a text with limits that keep one input short, and checks the whole document; null if it is refused, and then
// the error record says why.
Document DocumentLoad(std::string_view svText);

// An input of two parts: the first line, and what follows it.
struct TwoParts {
    std::string head;
    std::string_view svBody;
};
TwoParts InputSplit(const uint8_t *pucData, size_t ulSize);
