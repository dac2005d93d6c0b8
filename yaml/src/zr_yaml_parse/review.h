// SPDX-License-Identifier: Apache-2.0
// What a document that loads probably does not mean.
#pragma once

#include "source.h"

#include <zr_yaml_problem.h>

namespace zryaml::parse {

// Adds a warning for each such thing, in the source's order: a line such as "-b" that goes on with the text before it,
// and a "<<" with a map or sequence written in place.
void ReviewTell(const Source &source, const YamlHandle &handle, YamlProblems **problems) noexcept;

} // namespace zryaml::parse
