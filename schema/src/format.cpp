// SPDX-License-Identifier: Apache-2.0
// The table of formats, and those that are neither times nor of the network.
#include "format.h"

#include "pattern.h"

#include <algorithm>
#include <array>

namespace zryaml::schema {

namespace {

bool IsRegex(std::string_view text)
{
    std::string fault;
    return Pattern::Compile(text, fault) != nullptr;
}

std::string RegexFault(std::string_view text)
{
    std::string fault;
    (void)Pattern::Compile(text, fault);
    return fault;
}

bool IsJsonPointer(std::string_view text)
{
    if (!text.empty() && text.front() != '/')
        return false;
    for (size_t tilde = text.find('~'); tilde != std::string_view::npos; tilde = text.find('~', tilde + 1)) {
        if (tilde + 1 == text.size() || (text[tilde + 1] != '0' && text[tilde + 1] != '1'))
            return false;
    }
    return true;
}

constexpr std::array Formats = {
    Format{"date", IsDate, "a date such as 2024-02-29"},
    Format{"date-time", IsDateTime, "a date and time such as 2024-02-29T12:00:00Z"},
    Format{"email", IsEmail, "an email address"},
    Format{"hostname", IsHostName, "a host name"},
    Format{"ipv4", IsIpv4, "an IPv4 address"},
    Format{"ipv6", IsIpv6, "an IPv6 address"},
    Format{"json-pointer", IsJsonPointer, "a JSON pointer such as /servers/0"},
    Format{"regex", IsRegex, "a regular expression", RegexFault},
    Format{"time", IsTime, "a time with its zone such as 12:00:00Z"},
    Format{"uri", IsUri, "a URI with its scheme"},
};

} // namespace

const Format *FormatFind(std::string_view name) noexcept
{
    const auto *format = std::ranges::find(Formats, name, &Format::name);
    return format != Formats.end() ? format : nullptr;
}

} // namespace zryaml::schema
