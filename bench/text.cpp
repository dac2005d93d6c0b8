// SPDX-License-Identifier: Apache-2.0
// Formatting by the C library; a table's columns are as wide as their widest cell.
#include "text.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace zryaml::bench {

std::string Printed(const char *pcFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcFormat);
    va_list stSecond;
    va_copy(stSecond, stArgs);
    const int iLength = vsnprintf(nullptr, 0, pcFormat, stArgs);
    va_end(stArgs);
    std::string text(static_cast<size_t>(std::max(iLength, 0)), '\0');
    (void)vsnprintf(text.data(), text.size() + 1, pcFormat, stSecond);
    va_end(stSecond);
    return text;
}

std::string MarkdownTable(const std::vector<std::vector<std::string>> &rows)
{
    std::vector<size_t> widths(rows.front().size(), 3);
    for (const auto &row : rows) {
        for (size_t ul = 0; ul < row.size(); ++ul)
            widths[ul] = std::max(widths[ul], row[ul].size());
    }
    std::string table;
    for (size_t ulRow = 0; ulRow < rows.size(); ++ulRow) {
        for (size_t ul = 0; ul < widths.size(); ++ul) {
            const std::string &cell = rows[ulRow][ul];
            table.append("| ").append(cell).append(widths[ul] - cell.size() + 1, ' ');
        }
        table += "|\n";
        if (ulRow != 0)
            continue;
        for (const size_t &ulWidth : widths) // numbers stand to the right, what they are about to the left
            table.append("|").append(ulWidth + 1, '-').append(&ulWidth == &widths.front() ? "-" : ":");
        table += "|\n";
    }
    return table;
}

} // namespace zryaml::bench
