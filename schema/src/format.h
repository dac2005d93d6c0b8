// SPDX-License-Identifier: Apache-2.0
// The formats that are checked; any other name lets every string pass.
#pragma once

#include <string>
#include <string_view>

namespace zryaml::schema {

struct Format {
    std::string_view name;
    bool (*isValid)(std::string_view text);
    std::string_view phrase;                        // for people, behind "is not"
    std::string (*why)(std::string_view) = nullptr; // what is wrong with a text that is not valid
};

// Null if the name is not one of those that are checked.
const Format *FormatFind(std::string_view name) noexcept;

// What the table is made of; each in the file that its name suggests.
bool IsDate(std::string_view text);
bool IsTime(std::string_view text);
bool IsDateTime(std::string_view text);
bool IsHostName(std::string_view text);
bool IsIpv4(std::string_view text);
bool IsIpv6(std::string_view text);
bool IsEmail(std::string_view text);
bool IsUri(std::string_view text);

} // namespace zryaml::schema
