// SPDX-License-Identifier: Apache-2.0
// Each part of a URI is kept with the mark that sets it off, so that putting them together again is all there is to do.
#include "uri.h"

#include <algorithm>

namespace zryaml::schema {

namespace {

struct Uri { // each part with the mark that sets it off: "http:", "//host", "/path", "?query", "#fragment"
    std::string_view scheme, authority, path, query, fragment;
};

constexpr bool IsAlpha(char character) noexcept
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

constexpr bool IsDigit(char character) noexcept
{
    return character >= '0' && character <= '9';
}

// Cuts off what stands before the first of some characters, or all.
std::string_view CutBefore(std::string_view &text, std::string_view marks) noexcept
{
    const std::string_view cut = text.substr(0, text.find_first_of(marks));
    text.remove_prefix(cut.size());
    return cut;
}

Uri Split(std::string_view text) noexcept
{
    Uri uri;
    const size_t colon = text.find_first_of(":/?#");
    if (colon != std::string_view::npos && text[colon] == ':' && colon > 0 && IsAlpha(text[0])) {
        uri.scheme = text.substr(0, colon + 1);
        text.remove_prefix(colon + 1);
    }
    if (text.starts_with("//")) {
        const size_t end = std::min(text.find_first_of("/?#", 2), text.size());
        uri.authority = text.substr(0, end);
        text.remove_prefix(end);
    }
    uri.path = CutBefore(text, "?#");
    uri.query = CutBefore(text, "#");
    uri.fragment = text;
    return uri;
}

// Takes "." and ".." out of a path.
std::string DotsRemoved(std::string_view path)
{
    std::string clean;
    const bool isAbsolute = path.starts_with('/');
    while (!path.empty()) {
        const size_t start = path.starts_with('/') ? 1 : 0;
        const std::string_view segment = path.substr(start, path.find('/', start) - start);
        const std::string_view whole = path.substr(0, start + segment.size());
        path.remove_prefix(whole.size());
        if (segment == "..") {
            clean.erase(std::min(clean.rfind('/'), clean.size()));
        } else if (segment != ".") {
            clean += whole;
        }
        if (path.empty() && (segment == "." || segment == "..") && (isAbsolute || !clean.empty()))
            clean += '/';
    }
    return clean;
}

int HexValue(char character) noexcept
{
    if (IsDigit(character))
        return character - '0';
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

std::string UriResolve(std::string_view base, std::string_view reference)
{
    const Uri from = Split(base);
    const Uri to = Split(reference);
    std::string path;
    std::string_view query = to.query;
    const bool hasOwnPlace = !to.scheme.empty() || !to.authority.empty();
    if (hasOwnPlace || to.path.starts_with('/')) {
        path = DotsRemoved(to.path);
    } else if (to.path.empty()) {
        path = from.path;
        query = to.query.empty() ? from.query : to.query;
    } else {
        const std::string_view folder = from.path.substr(0, from.path.rfind('/') + 1);
        const std::string_view between = folder.empty() && !from.authority.empty() ? "/" : "";
        path = DotsRemoved(std::string(folder).append(between).append(to.path));
    }
    std::string uri(to.scheme.empty() ? from.scheme : to.scheme);
    uri += hasOwnPlace ? to.authority : from.authority;
    return uri.append(path).append(query).append(to.fragment);
}

SplitUri FragmentSplit(std::string_view uri) noexcept
{
    const size_t mark = uri.find('#');
    return mark == std::string_view::npos ? SplitUri{uri, {}} : SplitUri{uri.substr(0, mark), uri.substr(mark + 1)};
}

std::string_view UriFolder(std::string_view uri) noexcept
{
    const Uri parts = Split(uri);
    const size_t slash = parts.path.rfind('/');
    if (parts.scheme.empty() || slash == std::string_view::npos)
        return {};
    return uri.substr(0, parts.scheme.size() + parts.authority.size() + slash + 1);
}

std::optional<std::string> PercentDecoded(std::string_view text)
{
    std::string decoded;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            decoded += text[at];
            continue;
        }
        const int high = at + 2 < text.size() ? HexValue(text[at + 1]) : -1;
        const int low = high >= 0 ? HexValue(text[at + 2]) : -1;
        if (low < 0 || high * 16 + low == 0)
            return std::nullopt;
        decoded += static_cast<char>(high * 16 + low);
        at += 2;
    }
    return decoded;
}

std::string PercentEncoded(std::string_view path)
{
    std::string encoded;
    for (const char character : path) {
        if (IsAlpha(character) || IsDigit(character) ||
            std::string_view("/-._~").find(character) != std::string::npos) {
            encoded += character;
        } else {
            constexpr std::string_view Digits = "0123456789ABCDEF";
            const auto byte = static_cast<unsigned char>(character);
            encoded.append({'%', Digits[byte >> 4U], Digits[byte & 15U]});
        }
    }
    return encoded;
}

} // namespace zryaml::schema
