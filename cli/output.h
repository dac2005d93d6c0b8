// SPDX-License-Identifier: Apache-2.0
// Results on standard output. Calls do not fail one by one: output_end tells whether all was written.
#pragma once

#include <string_view>

namespace zryaml::cli {

// Writes a text as it is.
void output_text(std::string_view text) noexcept;

// Writes one result: with a newline behind it, or with a NUL.
void output_item(std::string_view text, bool null = false) noexcept;

// Writes out what is buffered, for those who wait for it.
void output_flush() noexcept;

// Writes out what is buffered; throws a Failure if this or anything before could not be written. Nothing may follow.
void output_end();
[[nodiscard]] bool output_ended() noexcept;

} // namespace zryaml::cli
