// SPDX-License-Identifier: Apache-2.0
// Checks that all ways of reading a document agree. Each throws, as Require does, if they don't.
#pragma once

#include <cstdint>
#include <string>

#include <zr_yaml.h>

// The tree, the walk, key paths, iterators, the dump and the list of unread keys.
void DocumentCheck(YamlHandle &stHandle);

// All readings of one key path: the same is found or missed.
void PathCheck(YamlHandle &stHandle, const std::string &path);

// The whole dump with the ", " that its end loses; empty if the document cannot be dumped or is too large for that.
std::string DumpText(YamlHandle &stHandle);

// A dump into a buffer of a size: it stays inside, ends with a NUL, and is the beginning of the whole, as much of it as
// fits.
void DumpCheck(YamlHandle &stHandle, uint32_t uiSize, const std::string &whole);
