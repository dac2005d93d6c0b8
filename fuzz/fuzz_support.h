// SPDX-License-Identifier: Apache-2.0
// What the fuzz targets share: documents that are loaded and freed, and the check that all ways of reading one agree.
// Nothing is logged. The base library takes every block from malloc one by one here, so the address sanitizer sees
// each.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <zr_yaml.h>

// Ends the program, which makes the input a finding, unless something holds.
void Require(bool bHolds, const char *pcWhat, std::string_view svDetail = "");

struct HandleFree {
    void operator()(YamlHandle *pstHandle) const { ZRYAML_HandleFree(pstHandle); }
};
using Document = std::unique_ptr<YamlHandle, HandleFree>;

// Loads a text with limits that keep one input short; null if it is refused, and then the error record says why.
Document DocumentLoad(std::string_view svText);

// Checks the tree, and that the walk, key paths, iterators, the dump and the list of unread keys show the same.
void DocumentCheck(YamlHandle &stHandle);

// Reads one key path in every way; all must agree on what is there.
void PathCheck(YamlHandle &stHandle, const std::string &path);

// The whole dump as it is before its end is trimmed; empty if the document cannot be dumped or is too large for that.
std::string DumpText(YamlHandle &stHandle);

// An input of two parts: the first line, and what follows it.
struct TwoParts {
    std::string head;
    std::string_view svBody;
};
TwoParts InputSplit(const uint8_t *pucData, size_t ulSize);
