// SPDX-License-Identifier: Apache-2.0
// The usual mistakes behind what a parser says.
#pragma once

#include "problem_scene.h"

namespace zryaml::parse {

// Adds place, sentence and hint to the failure in progress. False if the mistake is another one, and nothing is added.
using CauseTell = bool (*)(const Scene &);

bool ConflictTell(const Scene &scene) noexcept;     // of version control
bool TemplateTell(const Scene &scene) noexcept;     // {{ x }} or {% x %} that nobody has filled in
bool NoKeyTell(const Scene &scene) noexcept;        // a line with no key in it: what it lacks
bool LongKeyTell(const Scene &scene) noexcept;      // of more characters than libyaml looks for its ':'
bool SecondColonTell(const Scene &scene) noexcept;  // a: b: c
bool BelowTextTell(const Scene &scene) noexcept;    // a key below a text
bool SpecialStartTell(const Scene &scene) noexcept; // a text that begins with a character of YAML's own
bool TabTell(const Scene &scene) noexcept;
bool EscapeTell(const Scene &scene) noexcept;      // a backslash in double quotes
bool AfterValueTell(const Scene &scene) noexcept;  // 'it's', [a]b, "x",
bool OpenBracketTell(const Scene &scene) noexcept; // the problem is in or behind a bracket that is not closed
bool OpenQuoteTell(const Scene &scene) noexcept;
bool StrayBracketTell(const Scene &scene) noexcept; // one that closes nothing
bool CommaTell(const Scene &scene) noexcept;        // or it lacks a ',', or a value before one
bool NoValueTell(const Scene &scene) noexcept;      // a character that no value begins with
bool IndentTell(const Scene &scene) noexcept;       // a line that begins in the wrong column
bool MarkerTell(const Scene &scene) noexcept;       // no '---' behind directives

} // namespace zryaml::parse
