// SPDX-License-Identifier: Apache-2.0
// Formatted texts, and Markdown tables whose columns line up on a terminal too.
#pragma once

#include <string>
#include <vector>

namespace zryaml::bench {

// A printf-style text.
[[nodiscard]] std::string Printed(const char *pcFormat, ...) __attribute__((format(printf, 1, 2)));

// A Markdown table. The first row is the head; all have as many cells as it has. ASCII only.
[[nodiscard]] std::string MarkdownTable(const std::vector<std::vector<std::string>> &rows);

} // namespace zryaml::bench
