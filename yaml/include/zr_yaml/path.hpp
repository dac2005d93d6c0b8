// SPDX-License-Identifier: Apache-2.0
// Key paths with placeholders, read step by step. What an argument brings goes into a step as it is and is never looked
// at as path text, so data cannot become syntax. Part of zr_yaml.hpp, where Value::at() gives the rules.
#ifndef ZR_YAML_PATH_HPP
#define ZR_YAML_PATH_HPP

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include <zr_yaml/scalar.hpp>

namespace zryaml::detail {

inline bool is_path_syntax(char character) noexcept
{
    return std::string_view(".[]{}").find(character) != std::string_view::npos;
}

// A key as a path writes it.
inline std::string escaped(std::string_view key)
{
    if (key.empty())
        return "{}";
    std::string text;
    for (const char character : key) {
        if (is_path_syntax(character))
            text += '\\';
        text += character;
    }
    return text;
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

class PathReader {
public:
    PathReader(std::string_view path, const Argument *arguments, std::size_t count) noexcept
        : rest_(path), argument_(arguments), end_(arguments + count), patterned_(count != 0)
    {}

    // Reads one step; false at the end and where the path is malformed.
    [[nodiscard]] bool next(Step &step)
    {
        step = Step{};
        if (rest_.empty() && !separated_) {
            if (argument_ != end_)
                fail("there are more arguments than placeholders");
            return false;
        }
        if (rest_.empty())
            return fail("a key is missing after the last '.'");
        if (rest_.front() == '[')
            return !separated_ ? index(step) : fail("a '[' stands after a '.'");
        const bool braces = rest_.front() == '{' && !at_placeholder();
        return braces ? quoted(step) : name(step);
    }

    // What is wrong with the path, null if nothing is.
    [[nodiscard]] const char *problem() const noexcept { return problem_; }

private:
    bool fail(const char *problem) noexcept
    {
        problem_ = problem;
        rest_ = {};
        return false;
    }

    [[nodiscard]] bool at_placeholder() const noexcept { return patterned_ && rest_.substr(0, 2) == "{}"; }

    const Argument *take_argument() noexcept
    {
        rest_.remove_prefix(2);
        if (argument_ == end_)
            fail("there are fewer arguments than placeholders");
        return argument_ != end_ ? argument_++ : nullptr;
    }

    // Adds one character or one argument to a key.
    bool character(std::string &key)
    {
        if (at_placeholder()) {
            const Argument *argument = take_argument();
            if (argument != nullptr)
                key += argument->text();
            return argument != nullptr;
        }
        if (rest_.size() > 1 && rest_[0] == '\\' && is_path_syntax(rest_[1]))
            rest_.remove_prefix(1);
        else if (rest_[0] == ']')
            return fail("a ']' stands where no index begins");
        key += rest_[0];
        rest_.remove_prefix(1);
        return true;
    }

    bool name(Step &step)
    {
        while (!rest_.empty() && rest_.front() != '.' && rest_.front() != '[') {
            if (!character(step.key))
                return false;
        }
        return step_ended();
    }

    bool quoted(Step &step)
    {
        rest_.remove_prefix(1);
        while (!rest_.empty() && rest_.front() != '}') {
            if (rest_.front() == '[' || (rest_.front() == '{' && !at_placeholder()))
                return fail("a bracket or brace stands inside braces without a backslash");
            if (!character(step.key))
                return false;
        }
        if (!take_prefix(rest_, "}"))
            return fail("a '{' is not closed");
        return step_ended();
    }

    bool index(Step &step)
    {
        step.is_index = true;
        rest_.remove_prefix(1);
        const Argument *argument = nullptr;
        if (at_placeholder() && (argument = take_argument()) == nullptr)
            return false;
        std::string_view digits = argument != nullptr ? argument->text() : rest_;
        if (argument != nullptr && !argument->is_whole())
            return fail("an index is given by a text");
        if (take_digits(digits, 10, step.index) != std::errc())
            return fail("an index is not a number from 0 on");
        if (argument == nullptr)
            rest_ = digits;
        if (!take_prefix(rest_, "]"))
            return fail("an index is not closed by ']'");
        return step_ended();
    }

    // After a step comes '.', an index or the end.
    bool step_ended() noexcept
    {
        separated_ = take_prefix(rest_, ".");
        if (separated_ || rest_.empty() || rest_.front() == '[')
            return true;
        return fail("something else than '.' or '[' stands behind a bracket or brace");
    }

    std::string_view rest_;
    const Argument *argument_;
    const Argument *end_;
    bool patterned_;         // there are arguments, so "{}" is a placeholder
    bool separated_ = false; // a '.' has been read, so a key must follow
    const char *problem_ = nullptr;
};

} // namespace zryaml::detail

#endif
