// SPDX-License-Identifier: Apache-2.0
// What stands around a place in a source, for excerpts: a window of one line, however long the line or the file is.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zryaml::cli {

struct SourceWindow {
    std::string text;        // the line, or a part of it
    uint32_t column = 1;     // of its first character
    size_t place = 0;        // where in the text the column is; its end if the line is shorter
    bool cut_before = false; // the line has more in front
    bool cut_after = false;  // or behind
};

// Reads a file, or standard input by its name, up to the place and no further than the window. None if the source
// cannot be read twice, is UTF-16, or has no such line.
[[nodiscard]] std::optional<SourceWindow> source_window(const std::string &file, uint32_t line, uint32_t column);
// The same of a text, for those who must see the same bytes twice.
[[nodiscard]] std::optional<SourceWindow> text_window(std::string_view text, uint32_t line, uint32_t column);
// All of a source, up to what is ever loaded. None if it cannot be read twice.
[[nodiscard]] std::optional<std::string> source_text(const std::string &file);

} // namespace zryaml::cli
