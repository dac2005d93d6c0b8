// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../scalar_text.h"

namespace zryaml {

// Reads a text as a number, rounded once to the type.
[[nodiscard]] Fit NumberParse(const char *text, bool single, double &number) noexcept;
// Writes the shortest text that reads as the same number, at most 32 characters.
void NumberWrite(double number, bool single, char (&text)[32]) noexcept;

} // namespace zryaml
