// SPDX-License-Identifier: Apache-2.0
// An assignment: "servers[0].port=9090". The first '=' outside of braces and escapes ends the key path.
#include "description.h"
#include "path_way.h"

using namespace zryaml;
using namespace zryaml::layers;

namespace {

// Where the '=' stands; the size if there is none.
size_t PathEnd(std::string_view text) noexcept
{
    bool braces = false;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\\' && at + 1 < text.size() && (IsPathSyntax(text[at + 1]) || text[at + 1] == '='))
            ++at;
        else if (text[at] == '{' || text[at] == '}')
            braces = text[at] == '{';
        else if (text[at] == '=' && !braces)
            return at;
    }
    return text.size();
}

// A path as it is without the escapes of '=', which is no syntax of paths; it has room for all of it.
std::string_view PathUnescape(std::string_view path, char (&buffer)[YAML_KEY_BUF_SIZE]) noexcept
{
    size_t size = 0;
    for (size_t at = 0; at < path.size(); ++at) {
        if (path[at] == '\\' && at + 1 < path.size() && path[at + 1] == '=')
            ++at;
        buffer[size++] = path[at];
    }
    return {buffer, size};
}

// What the description says of the end of a way.
Reads ReadsOf(const YamlRecord *record, const PathWay &way) noexcept
{
    Description described(record);
    for (uint32_t at = 0; at < way.Count(); ++at) {
        const Step &step = way.steps[at];
        described = step.isIndex ? described.Element(step.index) : described.Below(step.key);
    }
    return described.HowRead();
}

} // namespace

void zryaml::layers::AssignmentApply(Stack &stack, const YamlLayer &layer, uint32_t number) noexcept
{
    const std::string_view text = layer.pcText;
    const size_t end = PathEnd(text);
    const std::string_view path = First(text, end);
    Spot spot = {layer.pcSource};
    spot.hint = "write it as path=text";
    if (end == text.size())
        return Tell(stack, spot, "'%s' has no '='", layer.pcText);
    if (path.empty())
        return Tell(stack, spot, "'%s' names no value", layer.pcText);
    if (!SourceAdd(stack, number, layer.pcSource, path))
        return;
    spot = {SourceLast(stack).name};
    if (path.size() >= YAML_KEY_BUF_SIZE)
        return Tell(stack, spot, "the key path is longer than %u bytes", YAML_KEY_BUF_SIZE - 1);
    char plain[YAML_KEY_BUF_SIZE];
    PathWay way;
    const PathFault fault = way.Read(PathUnescape(path, plain));
    if (fault != PathFault::None)
        return Tell(stack, spot, "the key path is malformed: %s", PathFaultText(fault));
    if (!IsUtf8(text))
        return Tell(stack, spot, "the assignment is not valid UTF-8");
    if (!stack.incomplete) // else what is missing might have been in the layer that is
        ValueSet(stack, way.steps, way.Count(), Behind(text, end + 1), ReadsOf(stack.options.pstRecord, way));
}
