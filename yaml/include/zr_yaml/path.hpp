// SPDX-License-Identifier: Apache-2.0
// Key paths with placeholders, read step by step by the C interface. What an argument brings goes into a step as it is
// and is never looked at as path text, so data cannot become syntax. Part of zr_yaml.hpp, where Value::at() gives the
// rules.
#ifndef ZR_YAML_PATH_HPP
#define ZR_YAML_PATH_HPP

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>

#include <zr_yaml/scalar.hpp>
#include <zr_yaml_path.h>

namespace zryaml::detail {

// A key as a path writes it.
inline std::string escaped(std::string_view key)
{
    const char *text = key.empty() ? "" : key.data();
    std::string written(ZRYAML_PathKeyWrite(text, key.size(), 0, nullptr) + std::size_t{1}, '\0');
    (void)ZRYAML_PathKeyWrite(text, key.size(), static_cast<std::uint32_t>(written.size()), written.data());
    written.pop_back();
    return written;
}

// Puts a key or an index, as a path writes it, behind a path.
inline std::string joined(std::string path, std::string_view tail)
{
    if (!path.empty() && !tail.empty() && tail.front() != '[')
        path += '.';
    return path.append(tail);
}

template <class T>
inline constexpr bool is_text =
    std::is_convertible_v<const T &, std::string_view> && !std::is_same_v<T, std::nullptr_t>;

// What a placeholder stands for: an integer or a text.
class Argument {
public:
    template <class T> explicit Argument(const T &value)
    {
        if constexpr (is_integer<T>) {
            digits_ = std::to_string(value);
            is_integer_ = true;
        } else {
            text_ = value;
        }
    }
    [[nodiscard]] bool is_whole() const noexcept { return is_integer_; }
    [[nodiscard]] std::string_view text() const noexcept { return is_integer_ ? std::string_view(digits_) : text_; }

private:
    std::string digits_;
    std::string_view text_; // lives as long as the call of at() that it was given to
    bool is_integer_ = false;
};

// One step down: to a key of a map or to an element of a sequence.
struct Step {
    bool is_index = false;
    std::string key;
    std::uint64_t index = 0;
};

// A step as a path writes it.
inline std::string written(const Step &step)
{
    return step.is_index ? '[' + std::to_string(step.index) + ']' : escaped(step.key);
}

// Reads the steps of a path, and puts the arguments where the placeholders are.
class PathReader {
public:
    PathReader(std::string_view path, const Argument *arguments, std::size_t count) noexcept
        : argument_(arguments), end_(arguments + count)
    {
        step_.uiPlaceholders = count != 0 ? 1 : 0;
        step_.pcRest = path.empty() ? "" : path.data();
        step_.ulRest = path.size();
    }

    // Reads one step; false at the end and where the path is malformed.
    [[nodiscard]] bool next(Step &step)
    {
        code_ = ZRYAML_PathStepNext(&step_);
        if (code_ == YAML_ERR_ITER_END)
            return argument_ == end_ ? false : fail("there are more arguments than placeholders");
        if (code_ != YAML_OK) {
            problem_ = ZRYAML_LastErrorGet()->pcMessage;
            return false;
        }
        step = Step{};
        step.is_index = step_.uiIsIndex != 0;
        return step.is_index ? index(step) : name(step);
    }

    // What is wrong with the path, empty if nothing is, and the code for it.
    [[nodiscard]] const std::string &problem() const noexcept { return problem_; }
    [[nodiscard]] std::uint32_t code() const noexcept { return code_; }

private:
    bool fail(const char *problem)
    {
        code_ = YAML_ERR_KEY;
        problem_ = std::string("the key path is malformed: ") + problem;
        return false;
    }

    const Argument *take_argument()
    {
        if (argument_ == end_)
            fail("there are fewer arguments than placeholders");
        return argument_ != end_ ? argument_++ : nullptr;
    }

    bool name(Step &step)
    {
        std::string_view text(step_.pcText, step_.ulLength);
        for (std::size_t at = placeholder(text); at != text.npos; at = placeholder(text)) {
            const Argument *argument = take_argument();
            if (argument == nullptr)
                return false;
            append(step.key, text.substr(0, at));
            step.key += argument->text();
            text.remove_prefix(at + 2);
        }
        append(step.key, text);
        return true;
    }

    bool index(Step &step)
    {
        step.index = step_.ulIndex;
        if (step_.pcText[0] != '{')
            return true;
        const Argument *argument = take_argument();
        if (argument == nullptr)
            return false;
        if (!argument->is_whole())
            return fail("an index is given by a text");
        const std::string_view digits = argument->text();
        const bool read = std::from_chars(digits.data(), digits.data() + digits.size(), step.index).ec == std::errc();
        return read ? true : fail("an index is not a number from 0 on");
    }

    // Where the next placeholder of a key begins.
    [[nodiscard]] std::size_t placeholder(std::string_view text) const noexcept
    {
        std::size_t at = step_.uiPlaceholders != 0 ? text.find("{}") : text.npos;
        while (at != text.npos && at > 0 && text[at - 1] == '\\')
            at = text.find("{}", at + 1);
        return at;
    }

    // Adds a part of a key without its escapes.
    static void append(std::string &key, std::string_view written)
    {
        const std::size_t before = key.size();
        key.resize(before + written.size());
        key.resize(before + ZRYAML_PathKeyRead(written.data(), written.size(), key.data() + before));
    }

    YamlPathStep step_ = YAML_PATH_STEP_INIT;
    const Argument *argument_;
    const Argument *end_;
    std::uint32_t code_ = YAML_OK;
    std::string problem_;
};

} // namespace zryaml::detail

#endif
