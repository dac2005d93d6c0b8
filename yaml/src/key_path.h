// SPDX-License-Identifier: Apache-2.0
// The syntax of key paths, for all that read or write one. A path is a row of components, separated by '.': a name, a
// name with an index behind it, an index alone, or a name in braces. A backslash takes the meaning from '.', '[', ']',
// '{' and '}', and is a character like any other before anything else.
//
// There are two readers over one tokenizer. ComponentScan reads generously and is for the lookups by format, which go
// on where a brace is never closed, say. PathReader takes only what leads back to what it says, and is for all others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <zr_yaml.h>

namespace zryaml {

// The characters that a backslash escapes.
[[nodiscard]] constexpr bool IsPathSyntax(char character) noexcept
{
    return character == '.' || character == '[' || character == ']' || character == '{' || character == '}';
}

[[nodiscard]] constexpr bool IsDigit(char character) noexcept
{
    return character >= '0' && character <= '9';
}

// What is wrong with a path. ComponentScan tells those before BraceOpen, save that it leaves KeyMissing and IndexLarge
// to the lookup; the others are for PathReader alone.
enum class PathFault : uint8_t {
    None,
    KeyMissing,   // nothing behind the last '.'
    IndexOpen,    // a '[' without a ']'
    IndexEscaped, // the next ']' has a backslash before it
    IndexText,    // something else than digits
    IndexEmpty,   // "[]"
    IndexLarge,   // more than the reader can take
    IndexTail,    // behind the ']' comes neither '.' nor '[' nor the end
    Bracket,      // a bracket where no index begins
    BraceOpen,    // a '{' without a '}'
    BraceTail,    // behind the '}' comes neither '.' nor '[' nor the end
    BraceSyntax,  // a bracket or brace within braces
    IndexAlone,   // a '[' behind a '.'
};

// What a person is told; ends a sentence.
[[nodiscard]] const char *PathFaultText(PathFault fault) noexcept;
// YAML_ERR_INDEX or YAML_ERR_KEY, YAML_OK for None.
[[nodiscard]] uint32_t PathFaultCode(PathFault fault) noexcept;

struct PathComponent {
    std::string_view text;   // all of it, without braces and separator
    std::string_view name;   // as written, with its escapes
    std::string_view digits; // of the index; no data: there is no index
    uint64_t index;          // UINT64_MAX if it is larger still
    size_t used;             // characters before the next component, with the separator; more than there are at the end
    PathFault fault;
    bool alone;  // an index without a name
    bool braces; // a name in braces,
    bool closed; // and they end

    [[nodiscard]] bool HasIndex() const noexcept { return digits.data() != nullptr; }
};

// Reads the component that a path begins with. With placeholders, "{}" stands for text that is not here.
[[nodiscard]] PathComponent ComponentScan(std::string_view path, bool placeholders = false) noexcept;
// As above, of a name or a name in braces that ends at an unescaped '.' or '}'.
[[nodiscard]] PathComponent NameScan(std::string_view path, char end, bool placeholders = false) noexcept;
// As above, of the text of a component.
[[nodiscard]] PathComponent TextScan(std::string_view text, bool placeholders = false) noexcept;
// As above, of such a text up to the ']' of its index, at which it is split.
[[nodiscard]] PathComponent IndexSplit(std::string_view text, bool placeholders = false) noexcept;
// As above, of an index alone, from behind its '[' on.
[[nodiscard]] PathComponent IndexScan(std::string_view path, bool placeholders = false) noexcept;

// Where a bracket stands, not at the front, that belongs to no index and is not escaped; the size if nowhere.
[[nodiscard]] size_t StrayBracketFind(std::string_view name) noexcept;

// Takes the escapes out of a name; what does not fit is left out. The length; no NUL is added.
size_t NameUnescape(std::string_view written, char *name, size_t size) noexcept;

// One step down: to a key of a map or to an element of a sequence.
struct PathStep {
    bool isIndex;
    std::string_view text; // the key as written, with its escapes, or the digits of the index
    uint64_t index;
};

class PathReader {
public:
    explicit PathReader(std::string_view path, bool placeholders = false, bool separated = false) noexcept
        : m_rest(path), m_placeholders(placeholders), m_separated(separated)
    {}
    // Reads one step; false at the end and where the path is malformed.
    [[nodiscard]] bool Next(PathStep &step) noexcept;
    // What is wrong with the path, as far as it has been read.
    [[nodiscard]] PathFault Fault() const noexcept { return m_fault; }
    // What is left to read, and whether a '.' has been read right before it.
    [[nodiscard]] std::string_view Rest() const noexcept { return m_rest; }
    [[nodiscard]] bool Separated() const noexcept { return m_separated; }

private:
    std::string_view m_rest;
    PathFault m_fault = PathFault::None;
    bool m_placeholders;
    bool m_separated; // so a key must follow
};

// Writes steps behind each other into a buffer, so that a reader finds them again; counts what does not fit.
class PathWriter {
public:
    PathWriter(char *buffer, size_t size) noexcept : m_buffer(buffer), m_size(size) {}
    void KeyPut(std::string_view key) noexcept;
    void IndexPut(uint64_t index) noexcept;
    // Terminates the text. The length of the whole path.
    size_t End() noexcept;

private:
    void Put(char character) noexcept;

    char *m_buffer;
    size_t m_size;
    size_t m_length = 0;
};

// Writes the path of a value from the root on; a value under a key has the path of the key.
void PathPut(const YamlListNode &value, PathWriter &path) noexcept;

} // namespace zryaml
