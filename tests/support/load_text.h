// SPDX-License-Identifier: Apache-2.0
// Loading with everything that a test wants to know of it in one text; and pieces of documents that come many times.
#pragma once

#include "tree_check.h"

#include <cstddef>
#include <string>

// What a refused load logs last.
#define PARSE_FAILED "2 1900000f Parse file failed.\n"

// Loads a file and releases it. The tree as pfnWrite gives it, then the log as RecordingBase::LogText gives it; of a
// refused load, the log alone. A fault that TreeCheck finds, a block or a file that is left is said in front.
std::string FileRead(const char *pcPath, std::string (*pfnWrite)(const YamlHandle &) = TreeText);

// The same for a document, which is written to a file first.
std::string DocumentRead(const std::string &document, std::string (*pfnWrite)(const YamlHandle &) = TreeText);

// A piece so many times in a row.
std::string Times(size_t ulTimes, const std::string &piece);

// The numbers from 0, each between two texts.
std::string Numbered(size_t ulTimes, const std::string &before, const std::string &after);
