// SPDX-License-Identifier: Apache-2.0
// A check of a whole loaded document, and its tree written as text for comparison.
#pragma once

#include <string>
#include <string_view>

#include <zr_yaml.h>

// Throws, which ends a test or a fuzz target with a finding, unless something holds.
void Require(bool bHolds, const char *pcWhat, std::string_view svDetail = "");

// Checks every father, every link both ways, that every node of the tree is on the all-nodes list, that types fit the
// children, that texts are where they belong and that the unmarked keys of a map differ.
// The first fault found, or an empty text.
std::string TreeCheck(const YamlHandle &stHandle);

// The document as it reads, marked keys left out: maps "{k:v,...}", sequences "[...]", scalars quoted with '"', where
// '"', '\\' and control characters are escaped as \xx; an empty document is "". With flags a copy is followed by '*',
// and a marked key, which then is there too, by '!'.
std::string TreeText(const YamlHandle &stHandle, bool bFlags = false);

// Adds a scalar to a text in that form.
void ScalarWrite(const char *pcText, std::string &text);
