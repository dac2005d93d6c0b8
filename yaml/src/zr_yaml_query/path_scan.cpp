// SPDX-License-Identifier: Apache-2.0
// Cuts key paths into components and steps. Nothing is copied and nothing logged.
#include "../key_path.h"

#include <cstring>

namespace zryaml {
namespace {

struct FaultText {
    uint32_t code;
    const char *text;
};
constexpr FaultText g_faultTexts[] = {
    // by PathFault
    {YAML_OK, ""},
    {YAML_ERR_KEY, "a key is missing after the last '.'"},
    {YAML_ERR_INDEX, "an index is not closed by ']'"},
    {YAML_ERR_INDEX, "a backslash stands before the ']' of an index"},
    {YAML_ERR_INDEX, "an index is not a number from 0 on"},
    {YAML_ERR_INDEX, "an index is missing between '[' and ']'"},
    {YAML_ERR_INDEX, "an index is too large"},
    {YAML_ERR_KEY, "something else than '.' or '[' stands behind an index"},
    {YAML_ERR_KEY, "a '[' or ']' stands where no index begins"},
    {YAML_ERR_KEY, "a '{' is not closed by '}'"},
    {YAML_ERR_KEY, "something else than '.' or '[' stands behind a '}'"},
    {YAML_ERR_KEY, "a bracket or brace stands inside braces without a backslash"},
    {YAML_ERR_KEY, "a '[' stands behind a '.'"},
};

std::string_view Behind(std::string_view text, size_t count) noexcept
{
    text.remove_prefix(count);
    return text;
}

std::string_view Before(std::string_view text, size_t end) noexcept
{
    return {text.data(), end};
}

bool IsPlaceholder(std::string_view text) noexcept
{
    return text.size() > 1 && text[0] == '{' && text[1] == '}';
}

// Where a character stands without a backslash right before it; the size if nowhere. With placeholders, a '}' that
// ends one is not meant.
size_t UnescapedFind(std::string_view text, char wanted, bool placeholders) noexcept
{
    for (size_t at = 0; at < text.size(); ++at) {
        const bool escaped = at > 0 && text[at - 1] == '\\';
        if (placeholders && !escaped && IsPlaceholder(Behind(text, at)))
            ++at;
        else if (text[at] == wanted && !escaped)
            return at;
    }
    return text.size();
}

uint64_t NumberOf(std::string_view digits) noexcept
{
    uint64_t number = 0;
    for (const char digit : digits) {
        if (number > (UINT64_MAX - 9) / 10)
            return UINT64_MAX;
        number = number * 10 + static_cast<uint64_t>(digit - '0');
    }
    return number;
}

size_t DigitsLength(std::string_view text, bool placeholders) noexcept
{
    if (placeholders && IsPlaceholder(text))
        return 2;
    size_t length = 0;
    while (length < text.size() && IsDigit(text[length]))
        ++length;
    return length;
}

// Reads an index from behind its '[' on.
void BracketsScan(std::string_view inside, bool placeholders, PathComponent &component) noexcept
{
    component.digits = Before(inside, DigitsLength(inside, placeholders));
    component.index = component.digits.starts_with('{') ? 0 : NumberOf(component.digits);
    const size_t close = inside.find(']');
    if (close == component.digits.size())
        component.fault = close > 0 ? PathFault::None : PathFault::IndexEmpty;
    else if (close == inside.npos)
        component.fault = PathFault::IndexOpen;
    else
        component.fault = close > 0 && inside[close - 1] == '\\' ? PathFault::IndexEscaped : PathFault::IndexText;
}

// Takes the separator behind an index, at which the component's use ends.
void IndexEnd(std::string_view text, PathComponent &component) noexcept
{
    const std::string_view rest = Behind(text, component.used);
    if (rest.empty() || rest.front() == '.')
        ++component.used;
    else if (rest.front() != '[')
        component.fault = PathFault::IndexTail;
}

} // namespace

const char *PathFaultText(PathFault fault) noexcept
{
    return g_faultTexts[static_cast<size_t>(fault)].text;
}

uint32_t PathFaultCode(PathFault fault) noexcept
{
    return g_faultTexts[static_cast<size_t>(fault)].code;
}

size_t StrayBracketFind(std::string_view name) noexcept
{
    for (size_t at = 1; at < name.size(); ++at) {
        if ((name[at] == '[' || name[at] == ']') && name[at - 1] != '\\')
            return at;
    }
    return name.size();
}

PathComponent IndexScan(std::string_view path, bool placeholders) noexcept
{
    PathComponent component = {};
    component.text = path;
    component.alone = true;
    BracketsScan(path, placeholders, component);
    component.used = component.digits.size() + 1;
    if (component.fault == PathFault::None)
        IndexEnd(path, component);
    return component;
}

PathComponent IndexSplit(std::string_view text, bool placeholders) noexcept
{
    PathComponent component = {};
    const size_t open = UnescapedFind(text, '[', placeholders);
    component.text = text;
    component.name = Before(text, open);
    if (open < text.size())
        BracketsScan(Behind(text, open + 1), placeholders, component);
    return component;
}

PathComponent TextScan(std::string_view text, bool placeholders) noexcept
{
    PathComponent component = {};
    component.text = component.name = text;
    if (text.size() > 1) // else there is neither an escape nor an index
        component = IndexSplit(text, placeholders);
    component.used = text.size() + 1;
    if (component.fault == PathFault::None && StrayBracketFind(component.name) < component.name.size())
        component.fault = PathFault::Bracket;
    if (component.fault != PathFault::None || !component.HasIndex())
        return component;
    component.used = component.name.size() + component.digits.size() + 2;
    IndexEnd(text, component);
    return component;
}

PathComponent NameScan(std::string_view path, char end, bool placeholders) noexcept
{
    const size_t length = UnescapedFind(path, end, placeholders);
    PathComponent component = TextScan(Before(path, length), placeholders);
    component.closed = length < path.size();
    const bool whole = component.closed && component.used == length + 1;
    if (end == '}' && whole && (length + 1 == path.size() || path[length + 1] == '.'))
        ++component.used; // the separator after '}', or the end of the path
    return component;
}

PathComponent ComponentScan(std::string_view path, bool placeholders) noexcept
{
    const bool index = path.starts_with('[');
    const bool braces = path.starts_with('{') && !(placeholders && IsPlaceholder(path));
    if (!index && !braces)
        return NameScan(path, '.', placeholders);
    const std::string_view behind = Behind(path, 1);
    PathComponent component = index ? IndexScan(behind, placeholders) : NameScan(behind, '}', placeholders);
    component.braces = braces;
    ++component.used;
    return component;
}

size_t NameUnescape(std::string_view written, char *name, size_t size) noexcept
{
    size_t length = 0;
    for (size_t at = 0; at < written.size(); ++at) {
        const bool escapes = written[at] == '\\' && at + 1 < written.size() && IsPathSyntax(written[at + 1]);
        if (!escapes && length < size)
            name[length++] = written[at];
    }
    return length;
}

namespace {

// What is wrong with the component that a path begins with, for a reader that takes nothing generously.
PathFault StrictFault(const PathComponent &component, std::string_view path, bool separated, bool placeholders) noexcept
{
    if (path.empty())
        return PathFault::KeyMissing;
    if (separated && component.alone)
        return PathFault::IndexAlone;
    if (component.fault != PathFault::None)
        return component.fault;
    if (component.name.starts_with(']'))
        return PathFault::Bracket;
    if (component.index == UINT64_MAX)
        return PathFault::IndexLarge;
    if (!component.braces)
        return PathFault::None;
    if (component.HasIndex() || UnescapedFind(component.name, '{', placeholders) < component.name.size())
        return PathFault::BraceSyntax;
    if (!component.closed)
        return PathFault::BraceOpen;
    const size_t behind = component.text.size() + 2;
    const bool ends = behind == path.size() || path[behind] == '.' || path[behind] == '[';
    return ends ? PathFault::None : PathFault::BraceTail;
}

} // namespace

bool PathReader::Next(PathStep &step) noexcept
{
    if (m_fault != PathFault::None || (m_rest.empty() && !m_separated))
        return false;
    const PathComponent component = m_rest.empty() ? PathComponent{} : ComponentScan(m_rest, m_placeholders);
    m_fault = StrictFault(component, m_rest, m_separated, m_placeholders);
    if (m_fault != PathFault::None)
        return false;
    const bool indexFollows = component.HasIndex() && !component.alone; // read as a step of its own
    const size_t used = indexFollows ? component.name.size() : component.used;
    m_separated = !indexFollows && used <= m_rest.size() && m_rest[used - 1] == '.';
    m_rest = Behind(m_rest, used < m_rest.size() ? used : m_rest.size());
    step = component.alone ? PathStep{true, component.digits, component.index} : PathStep{false, component.name, 0};
    return true;
}

} // namespace zryaml
