// SPDX-License-Identifier: Apache-2.0
// What the core schema of YAML 1.2 makes of a scalar, and how JSON writes that.
#pragma once

#include <string>
#include <zr_yaml.hpp>

namespace zryaml::cli {

struct CoreScalar {
    std::string literal;  // null, true, false or a number; "": the scalar is a text
    bool too_big = false; // a number that JSON cannot hold or that 64 bits cannot; literal is "" then
};

// Plain scalars have types, quoted ones and blocks are texts, unless a tag says otherwise.
[[nodiscard]] CoreScalar core_scalar(const Value &scalar);

} // namespace zryaml::cli
