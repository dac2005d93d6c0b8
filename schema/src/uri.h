// SPDX-License-Identifier: Apache-2.0
// References between schemas: URIs as RFC 3986 resolves them, and the pointers into a document that may follow.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zryaml::schema {

// The URI that a reference means where the base holds, its fragment included.
std::string UriResolve(std::string_view base, std::string_view reference);

struct SplitUri {
    std::string_view document; // without the fragment
    std::string_view fragment; // without the '#'
};
SplitUri FragmentSplit(std::string_view uri) noexcept;

// The folder of a URI, up to and with its last '/'; empty if there is none.
std::string_view UriFolder(std::string_view uri) noexcept;

// Resolves "%2F" and the like; empty where a '%' is followed by something else, or by a NUL.
std::optional<std::string> PercentDecoded(std::string_view text);
// Writes a path so that it may stand in a URI.
std::string PercentEncoded(std::string_view path);

} // namespace zryaml::schema
