// SPDX-License-Identifier: Apache-2.0
// Errors as values: what went wrong and where, and the result that holds either a value or that. Part of zr_yaml.hpp.
#ifndef ZR_YAML_RESULT_HPP
#define ZR_YAML_RESULT_HPP

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

#if defined(__cpp_exceptions)
#include <memory>
#include <stdexcept>
#endif

#include <zr_yaml.h>

namespace zryaml {

/// What went wrong, and where. Owns its texts, so it may outlive the document and move between threads.
struct Error {
    std::uint32_t code = YAML_ERR_PARAM; ///< one of YAML_ERR_*; see is_absent() for the one most asked for
    std::string message;                 ///< what is wrong, in one plain sentence
    std::string hint;                    ///< what would be right, or what is probably meant; may be empty
    std::string file;                    ///< path or name of the document as it was given; may be empty
    std::string record;                  ///< how the log told it, for those who search there; empty for a read
    std::string path;                    ///< key path of the value that was read; empty for a load and for the root
    std::uint32_t line = 0;         ///< from 1, 0 without a place; for an absent value that of the nearest one above it
    std::uint32_t column = 0;       ///< in characters, from 1; 0 without a place
    std::uint32_t first_line = 0;   ///< for a key that is repeated the place of the first one, else 0
    std::uint32_t first_column = 0; ///< as above

    /// @return Whether the value is simply not there. Anything else is a mistake in the file, the path or the call.
    [[nodiscard]] bool is_absent() const noexcept { return code == YAML_ERR_NOT_FOUND; }

    /// @return One line, `file:line:column: message (path)` without what is not known, and '?' for control characters.
    [[nodiscard]] std::string what() const
    {
        std::string text = file;
        if (line != 0) {
            text += text.empty() ? "" : ":";
            text += std::to_string(line) + ':' + std::to_string(column);
        }
        text += text.empty() ? "" : ": ";
        text += message;
        if (!path.empty())
            text += " (" + path + ")";
        for (char &character : text) {
            if (static_cast<unsigned char>(character) < 0x20 || character == 0x7F)
                character = '?';
        }
        return text;
    }
};

#if defined(__cpp_exceptions)
/// Thrown by Result::or_throw() and by nothing else; left out where exceptions are off. what() is that of the error.
template <class E> class BasicException : public std::runtime_error {
public:
    /// Takes the error to carry.
    explicit BasicException(E error)
        : std::runtime_error(error.what()), error_(std::make_shared<const E>(std::move(error)))
    {}
    /// @return The error, which lives as long as the exception or a copy of it.
    [[nodiscard]] const E &error() const noexcept { return *error_; }

private:
    std::shared_ptr<const E> error_; // shared, so that copies of the exception cannot throw
};
/// What a read or a load throws.
using Exception = BasicException<Error>;
#endif

namespace detail {

// Ends the program: a value was taken from an error, or an error from a value, without having asked.
[[noreturn]] inline void misuse(const std::string &text) noexcept
{
    (void)std::fprintf(stderr, "zryaml: %s\n", text.c_str());
    std::abort();
}

} // namespace detail

/// A value or the error that stands in its place: an Error, or any type with `std::string what() const`.
///
/// Nothing is thrown unless or_throw() is called. Taking what is not there by value(), *, -> or error() is a mistake of
/// the program, which ends with the error on stderr; ask first. A result that is about to vanish gives its value
/// away as a value, never as a reference, so `for (int i : v.get<std::vector<int>>().value())` is safe.
///
/// One thread at a time may use a result, or any number if none changes it.
template <class T, class E = Error> class [[nodiscard]] Result {
    static_assert(std::is_object_v<T> && !std::is_same_v<std::remove_cv_t<T>, E>, "a result holds a value");

public:
    /// Holds a value.
    Result(T value) noexcept(std::is_nothrow_move_constructible_v<T>) : state_(std::in_place_index<0>, std::move(value))
    {}
    /// Holds an error.
    Result(E error) noexcept : state_(std::in_place_index<1>, std::move(error)) {}

    /// @return Whether there is a value.
    [[nodiscard]] bool has_value() const noexcept { return state_.index() == 0; }
    /// As has_value(). A Result<bool> has no such conversion, because `if (value.get<bool>())` reads as the other
    /// question: write has_value() or *.
    template <class U = T, std::enable_if_t<!std::is_same_v<U, bool>, int> = 0>
    [[nodiscard]] explicit operator bool() const noexcept
    {
        return has_value();
    }

    /// @return The value; the program ends if there is none.
    [[nodiscard]] const T &value() const &
    {
        if (const T *value = std::get_if<0>(&state_))
            return *value;
        detail::misuse(error().what());
    }
    /// @return The value; the program ends if there is none.
    [[nodiscard]] T &value() &
    {
        if (T *value = std::get_if<0>(&state_))
            return *value;
        detail::misuse(error().what());
    }
    /// @return The value; the program ends if there is none.
    [[nodiscard]] T value() && { return std::move(static_cast<Result &>(*this).value()); }

    /// @return As value().
    [[nodiscard]] const T &operator*() const & { return value(); }
    /// @return As value().
    [[nodiscard]] T &operator*() & { return value(); }
    /// @return As value().
    [[nodiscard]] T operator*() && { return std::move(*this).value(); }
    /// @return As value().
    [[nodiscard]] const T *operator->() const & { return &value(); }
    /// @return As value().
    [[nodiscard]] T *operator->() & { return &value(); }
    /// What `Document::load(path)->root()` gives would dangle: give the result a name first.
    const T *operator->() const && = delete;

    /// @return The error; the program ends if there is none.
    [[nodiscard]] const E &error() const &
    {
        if (const E *error = std::get_if<1>(&state_))
            return *error;
        detail::misuse("a result that holds a value was asked for its error");
    }
    /// @return The error; the program ends if there is none.
    [[nodiscard]] E error() && { return static_cast<const Result &>(*this).error(); }

    /// Puts a default in the place of an absent value, and of nothing else: a value that is there but wrong stays an
    /// error. For that reason the answer is a result again, and not a T.
    [[nodiscard]] Result value_or(T fallback) const
    {
        if (!has_value() && error().is_absent())
            return Result(std::move(fallback));
        return *this;
    }

#if defined(__cpp_exceptions)
    /// @return The value; throws BasicException with the error if there is none.
    [[nodiscard]] const T &or_throw() const &
    {
        if (!has_value())
            throw BasicException<E>(error());
        return value();
    }
    /// @return The value; throws BasicException with the error if there is none.
    [[nodiscard]] T or_throw() &&
    {
        if (!has_value())
            throw BasicException<E>(std::move(*this).error());
        return std::move(*this).value();
    }
#endif

private:
    std::variant<T, E> state_;
};

} // namespace zryaml

#endif
