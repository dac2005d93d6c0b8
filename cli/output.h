// SPDX-License-Identifier: Apache-2.0
// Results on standard output. Calls do not fail one by one: OutputEnd tells whether all was written.
#pragma once

#include <string_view>

namespace zryaml::cli {

// Writes a text as it is.
void OutputText(std::string_view svText) noexcept;

// Writes one result: as it is with a NUL behind it, or with a newline.
void OutputItem(std::string_view svText, bool bNull) noexcept;

// Writes out what is buffered; throws a Failure if this or anything before could not be written.
void OutputEnd();

} // namespace zryaml::cli
