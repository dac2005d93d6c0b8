// SPDX-License-Identifier: Apache-2.0
// Reads one reference. A key path in it may have braces and escapes of its own; what stands behind ":-" or ":?" ends at
// the first '}'.
#include "reference.h"

#include "../key_path.h"
#include "../text_part.h"

#include <algorithm>

namespace {

using namespace zryaml;

// Where the name ends: at the '}', the ":-" or the ":?" behind it; the size if nowhere.
size_t NameEnd(std::string_view text) noexcept
{
    bool braces = false;
    for (size_t at = 0; at < text.size(); ++at) {
        const char next = at + 1 < text.size() ? text[at + 1] : '\0';
        if (text[at] == '\\' && IsPathSyntax(next))
            ++at;
        else if (text[at] == '{' || (text[at] == '}' && braces))
            braces = text[at] == '{';
        else if (!braces && (text[at] == '}' || (text[at] == ':' && (next == '-' || next == '?'))))
            return at;
    }
    return text.size();
}

constexpr bool IsVariableCharacter(char character) noexcept
{
    return (character >= 'A' && character <= 'Z') || IsDigit(character) || character == '_';
}

// Takes a prefix off the name that says what it names, if it has one.
bool PrefixTake(std::string_view &name, std::string_view prefix) noexcept
{
    const bool has = Begins(name, prefix);
    name.remove_prefix(has ? prefix.size() : 0);
    return has;
}

} // namespace

zryaml::layers::Reference zryaml::layers::ReferenceRead(std::string_view text) noexcept
{
    constexpr size_t open = 2; // "${"
    Reference reference = {};
    const size_t nameEnd = open + NameEnd(Behind(text, open));
    const size_t end = text.find('}', nameEnd);
    if (end == std::string_view::npos)
        return reference;
    reference.written = First(text, end + 1);
    reference.name = Behind(First(text, nameEnd), open);
    if (text[nameEnd] == ':') {
        reference.otherwise = static_cast<Otherwise>(text[nameEnd + 1]);
        reference.tail = Behind(First(text, end), nameEnd + 2);
    }
    if (PrefixTake(reference.name, "env:"))
        reference.isVariable = true;
    else if (!PrefixTake(reference.name, "key:"))
        reference.isVariable = std::all_of(reference.name.begin(), reference.name.end(), IsVariableCharacter);
    return reference;
}
