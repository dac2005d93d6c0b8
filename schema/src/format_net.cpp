// SPDX-License-Identifier: Apache-2.0
// Names and addresses of the network: RFC 1123, 5321 and 3986.
#include "format.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include <arpa/inet.h>

namespace zryaml::schema {

namespace {

constexpr bool IsAlphanumeric(char character) noexcept
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

bool IsAddress(std::string_view text, int family) noexcept
{
    std::array<char, INET6_ADDRSTRLEN> copy = {};
    if (text.size() >= copy.size())
        return false;
    std::ranges::copy(text, copy.begin());
    std::array<unsigned char, sizeof(in6_addr)> address = {};
    return inet_pton(family, copy.data(), address.data()) == 1;
}

bool IsLabel(std::string_view label) noexcept
{
    return !label.empty() && label.size() <= 63 && label.front() != '-' && label.back() != '-' &&
           std::ranges::all_of(label, [](char character) { return IsAlphanumeric(character) || character == '-'; });
}

bool IsAtomCharacter(char character) noexcept
{
    return IsAlphanumeric(character) || std::strchr("!#$%&'*+-/=?^_`{|}~", character) != nullptr ||
           static_cast<unsigned char>(character) >= 0x80;
}

// "joe.bloggs", or anything printable in quotes.
bool IsLocalPart(std::string_view text) noexcept
{
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        const std::string_view inner = text.substr(1, text.size() - 2);
        for (size_t at = 0; at < inner.size(); ++at) {
            if (inner[at] == '"' || static_cast<unsigned char>(inner[at]) < ' ')
                return false;
            if (inner[at] == '\\' && ++at == inner.size())
                return false;
        }
        return true;
    }
    return !text.empty() && text.size() <= 64 && text.front() != '.' && text.back() != '.' &&
           text.find("..") == std::string_view::npos &&
           std::ranges::all_of(text, [](char character) { return character == '.' || IsAtomCharacter(character); });
}

bool IsMailDomain(std::string_view text) noexcept
{
    if (!text.starts_with('[') || !text.ends_with(']'))
        return IsHostName(text);
    const std::string_view literal = text.substr(1, text.size() - 2);
    constexpr std::string_view Six = "IPv6:";
    return literal.starts_with(Six) ? IsIpv6(literal.substr(Six.size())) : IsIpv4(literal);
}

constexpr bool IsHexDigit(char character) noexcept
{
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

// Only characters that a URI may hold, apart from brackets.
bool IsUriText(std::string_view text) noexcept
{
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '%') {
            if (at + 2 >= text.size() || !IsHexDigit(text[at + 1]) || !IsHexDigit(text[at + 2]))
                return false;
        } else if (!IsAlphanumeric(text[at]) && (text[at] == '\0' || !std::strchr("-._~:/?@!$&'()*+,;=", text[at]))) {
            return false;
        }
    }
    return true;
}

// "user@host:80" and "[::1]:80".
bool IsAuthority(std::string_view text) noexcept
{
    const size_t at = text.rfind('@');
    if (at != std::string_view::npos) {
        if (!IsUriText(text.substr(0, at)) || text.substr(0, at).find('@') != std::string_view::npos)
            return false;
        text.remove_prefix(at + 1);
    }
    if (text.starts_with('[')) {
        const size_t end = text.find(']');
        if (end == std::string_view::npos || !IsIpv6(text.substr(1, end - 1)))
            return false;
        text.remove_prefix(end + 1);
        if (!text.empty() && text.front() != ':')
            return false;
    }
    const size_t colon = text.find(':');
    const std::string_view port = colon == std::string_view::npos ? "" : text.substr(colon + 1);
    return IsUriText(text) && port.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

bool IsHostName(std::string_view text)
{
    if (text.empty() || text.size() > 253)
        return false;
    for (;;) {
        const size_t dot = text.find('.');
        if (!IsLabel(text.substr(0, dot)))
            return false;
        if (dot == std::string_view::npos)
            return true;
        text.remove_prefix(dot + 1);
    }
}

bool IsIpv4(std::string_view text)
{
    return IsAddress(text, AF_INET);
}

bool IsIpv6(std::string_view text)
{
    return IsAddress(text, AF_INET6);
}

bool IsEmail(std::string_view text)
{
    const size_t at = text.rfind('@');
    return at != std::string_view::npos && IsLocalPart(text.substr(0, at)) && IsMailDomain(text.substr(at + 1));
}

bool IsUri(std::string_view text)
{
    const size_t colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0 || !IsAlphanumeric(text[0]) || (text[0] >= '0' && text[0] <= '9'))
        return false;
    const bool goodScheme = std::ranges::all_of(text.substr(0, colon), [](char character) {
        return IsAlphanumeric(character) || character == '+' || character == '-' || character == '.';
    });
    text.remove_prefix(colon + 1);
    const size_t mark = text.find('#');
    const std::string_view fragment = mark == std::string_view::npos ? "" : text.substr(mark + 1);
    text = text.substr(0, mark);
    if (!goodScheme || !IsUriText(fragment))
        return false;
    if (!text.starts_with("//"))
        return IsUriText(text);
    const size_t end = std::min(text.find_first_of("/?", 2), text.size());
    return IsAuthority(text.substr(2, end - 2)) && IsUriText(text.substr(end));
}

} // namespace zryaml::schema
