// SPDX-License-Identifier: Apache-2.0
// Strict tests of a text against a type: the whole text or nothing, whatever the locale.
#pragma once

#include <string_view>
#include <vector>

namespace zryaml::cli {

// The types that there are, as they are named on the command line.
[[nodiscard]] std::vector<std::string_view> TypeNames();

// Whether a text is a value of one of them:
//   int, uint  a whole number of 64 bits, decimal, 0x or 0o, with a sign or none
//   float      a decimal number within the range of a double, or .inf or .nan
//   bool       true, yes, on, false, no, off in lower or upper case or with a capital
//   duration   a whole number with one unit (ns us ms s min h d), within 64 bits of nanoseconds
//   string     any text
[[nodiscard]] bool TextHasType(std::string_view svText, std::string_view svType);

} // namespace zryaml::cli
