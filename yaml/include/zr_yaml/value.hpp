// SPDX-License-Identifier: Apache-2.0
// One value of a document: what it offers. How it walks is in value_walk.hpp, how it goes down and explains what is not
// there in value_find.hpp. Part of zr_yaml.hpp.
#ifndef ZR_YAML_VALUE_HPP
#define ZR_YAML_VALUE_HPP

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <zr_yaml.h>
#include <zr_yaml/path.hpp>
#include <zr_yaml/result.hpp>
#include <zr_yaml/scalar.hpp>

namespace zryaml {

struct Origin; // zr_yaml/layers.hpp

/// The kind of a value.
enum class Type : std::uint32_t {
    sequence = YAML_DATATYPE_SEQ,  ///< elements, counted from 0
    map = YAML_DATATYPE_MAP,       ///< keys with their values
    scalar = YAML_DATATYPE_SCALAR, ///< one text
    none = YAML_DATATYPE_NONE,     ///< absent
};

namespace detail {

// Where an absent value would be; made once per step that misses, so that a Value stays small. What is said of it is
// found out when somebody asks.
struct Missing {
    const YamlHandle *document;
    const YamlListNode *nearest; // the last value that is there, null if the document has none
    std::uint32_t code;
    Step step;           // the first one that leads nowhere
    std::string problem; // of a malformed path
    std::string tail;    // the path from there on
};

} // namespace detail

template <class Out> class ChildIterator;
class Items;

/// A value of a document, or the place of one that is absent.
///
/// A light view: copied freely, owns no text, and must not be used after its Document has gone. Going down from an
/// absent value gives an absent value, so chains need no checks in between; the error of the read at the end names the
/// whole path, the file and the nearest place that exists. Nothing is logged.
///
/// What "absent" means: no such key, no such element, an empty document. A key below a sequence or a scalar, or an
/// element of a map, is a mistake in the file and never taken for absent; but an empty scalar (`env:` with nothing
/// behind it) reads as an empty map or sequence when something below it is asked for.
///
/// Any number of threads may use the values of one document, and copies of one value, at the same time.
class Value {
public:
    /// An absent value of no document.
    Value() = default;
    /// A value that a call of the C interface gave; NULL for an absent one.
    explicit Value(const YamlListNode *node) noexcept : node_(node) {}
    /// The top map or sequence of a document; absent if the document is empty or NULL.
    explicit Value(const YamlHandle *document) : node_(ZRYAML_RootGet(document))
    {
        if (node_ == nullptr)
            missing_ = std::make_shared<const detail::Missing>(
                detail::Missing{document, nullptr, YAML_ERR_NOT_FOUND, {}, {}, {}});
    }

    /// @return The value for calls of the C interface, NULL if absent; belongs to the document.
    [[nodiscard]] const YamlListNode *node() const noexcept { return node_; }

    /// @return Whether the value is there, of whatever kind: true for `debug: false` as well.
    [[nodiscard]] bool exists() const noexcept { return node_ != nullptr; }
    /// As exists().
    [[nodiscard]] explicit operator bool() const noexcept { return exists(); }
    /// @return The kind of the value.
    [[nodiscard]] Type type() const noexcept { return static_cast<Type>(ZRYAML_ValueTypeGet(node_)); }
    /// @return Whether the value is a map.
    [[nodiscard]] bool is_map() const noexcept { return type() == Type::map; }
    /// @return Whether the value is a sequence.
    [[nodiscard]] bool is_sequence() const noexcept { return type() == Type::sequence; }
    /// @return Whether the value is a scalar.
    [[nodiscard]] bool is_scalar() const noexcept { return type() == Type::scalar; }

    /// @return The number of keys of a map or elements of a sequence, counted by a walk; 0 for anything else.
    [[nodiscard]] std::size_t size() const noexcept { return ZRYAML_ChildCountGet(node_); }
    /// @return Whether size() is 0; costs the same however many there are.
    [[nodiscard]] bool empty() const noexcept
    {
        YamlChild child = YAML_CHILD_INIT;
        return ZRYAML_ChildGet(node_, 0, &child) != YAML_OK;
    }

    /// @return The line where the value, or the alias or merge that brought it, stands, from 1; 0 if absent.
    [[nodiscard]] std::uint32_t line() const noexcept { return place(node_).first; }
    /// @return The column there, in characters from 1; 0 if absent.
    [[nodiscard]] std::uint32_t column() const noexcept { return place(node_).second; }
    /// Where the value came from, with zr_yaml/layers.hpp.
    ///
    /// @param shadowed  0: the value itself; 1: the value of a lower layer that it took the place of; and so on.
    /// @return The origin; nothing past the last, or if the value is absent.
    [[nodiscard]] std::optional<Origin> origin(std::uint32_t shadowed = 0) const;
    /// @return The key path from the root, as at() of the document takes it; "" for the root. Of an absent value, where
    ///         it would be.
    [[nodiscard]] std::string path() const;

    /// The value of a key.
    ///
    /// @param key  Text of the key, compared byte for byte; no path: '.' and brackets are characters like any other.
    [[nodiscard]] Value operator[](std::string_view key) const;
    /// Element number `index` of a sequence, from 0; takes time in step with the index, so prefer a range-for.
    template <class Index, std::enable_if_t<detail::is_integer<Index>, int> = 0>
    [[nodiscard]] Value operator[](Index index) const
    {
        if constexpr (std::is_signed_v<Index>) {
            if (index < 0)
                return malformed(YAML_ERR_INDEX, "the key path is malformed: an index is negative",
                                 '[' + std::to_string(index) + ']');
        }
        return element(static_cast<std::uint64_t>(index));
    }
    /// A key is never NULL.
    Value operator[](std::nullptr_t) const = delete;

    /// The value at a key path below this one: `v.at("servers[0].port")`, `v.at("hosts.{}.ports[{}]", host, i)`.
    ///
    /// @param path       Keys separated by '.', elements as [n]. A backslash takes the meaning from '.', '[', ']', '{'
    ///                   and '}'; `{a.b}` is the key "a.b". "" is this value itself.
    /// @param arguments  Texts and integers, one for each "{}" in the path: the two characters side by side, neither
    ///                   after a backslash. All other braces are as above. A text is (part of) one key whatever it
    ///                   holds; an integer is an index in brackets and part of a key elsewhere. Without any argument
    ///                   "{}" is the empty key, so at(path()) always leads back, except below a key that ends with a
    ///                   backslash, which has no path.
    /// Where ZRYAML_PathFind takes the path as well, both find the same value; at() refuses what C reads generously,
    /// such as a brace that is never closed, and knows no limit on the length.
    ///
    /// @return The value; an absent one whose error says so if the path is malformed or the arguments do not fit it,
    ///         which no default covers up.
    template <class... Arguments> [[nodiscard]] Value at(std::string_view path, const Arguments &...arguments) const
    {
        static_assert(((detail::is_integer<Arguments> || detail::is_text<Arguments>)&&...),
                      "a placeholder takes an integer or a text");
        const std::array<detail::Argument, sizeof...(Arguments)> list{detail::Argument(arguments)...};
        return follow(path, detail::PathReader(path, list.data(), list.size()));
    }
    /// A path is never NULL, as the number 0 would be.
    template <class... Arguments> Value at(std::nullptr_t, const Arguments &...) const = delete;

    /// @return The text of a scalar as the file has it, "" for an empty one; nothing if the value is absent, a map or a
    ///         sequence. The text belongs to the document.
    [[nodiscard]] std::optional<std::string_view> text() const noexcept
    {
        const char *found = ZRYAML_ValueTextGet(node_);
        return found != nullptr ? std::optional<std::string_view>(found) : std::nullopt;
    }

    /// Reads the value as a T: the whole text, range-checked, whatever the locale, or an error.
    ///
    /// - bool: true, yes, on and false, no, off; also Capitalised and UPPER CASE. Nothing else, so neither y nor 1.
    /// - signed and unsigned integers of every width: decimal, 0x or 0o, after an optional sign. A leading zero is
    ///   decimal: 010 is ten. No underscores.
    /// - float, double: decimal with optional fraction and exponent, or .inf and .nan (.Inf .INF .NaN .NAN), after an
    ///   optional sign, which .nan does not take. A number too large or too small for the type is an error.
    /// - std::chrono::duration of integers: 500ms, 1h30m; decimal whole numbers with a unit each (d h min or m s ms us
    ///   ns), from the largest to the smallest. An error if the duration is no whole number of T's unit: 1500ms is no
    ///   std::chrono::seconds; and for a T finer than nanoseconds.
    /// - Bytes: 512, 64KiB, 1.5GB.
    /// - std::string and std::string_view: the text of any scalar; the view belongs to the document.
    /// - std::vector of any of these, or of vectors: a sequence, all of whose elements must be right.
    ///
    /// @return The value, or an error: absent (see Error::is_absent()), a map or sequence (YAML_ERR_NOT_SCALAR), no
    ///         sequence for a vector (YAML_ERR_NODE_TYPE), a text that is wrong (YAML_ERR_VALUE), or a malformed path.
    template <class T> [[nodiscard]] Result<T> get() const
    {
        if constexpr (detail::is_vector<T>) {
            return get_elements<T>();
        } else if constexpr (detail::is_one_of<T, std::string, std::string_view>) {
            const std::optional<std::string_view> found = text();
            if (!found)
                return not_a(Type::scalar);
            return T(*found);
        } else {
            static_assert(detail::Scalar<T>::readable, "get<T> reads bool, integers, float, double, durations, Bytes, "
                                                       "std::string, std::string_view and vectors of them");
            const char *found = ZRYAML_ValueTextGet(node_);
            if (found == nullptr)
                return not_a(Type::scalar);
            constexpr const YamlScalarType &type = detail::Scalar<T>::type;
            T out{};
            if (ZRYAML_ScalarRead(&type, found, &out) != YAML_OK)
                return error(YAML_ERR_VALUE, detail::scalar_problem(type, found), detail::scalar_hint(type));
            return out;
        }
    }

    /// As get(), with a default that stands in for an absent value and for nothing else: a value that is there but
    /// wrong stays an error, which is why the answer is a Result.
    template <class T> [[nodiscard]] Result<T> get_or(T fallback) const
    {
        if (is_absent())
            return fallback;
        return get<T>();
    }
    /// As above, for a text; the default is copied.
    [[nodiscard]] Result<std::string> get_or(const char *fallback) const { return get_or<std::string>(fallback); }

    /// @return This value if it is of the wanted kind, else an error that says what it is. For the loops below, which
    ///         go no round for a value of another kind. An empty scalar is neither a map nor a sequence here.
    [[nodiscard]] Result<Value> expect(Type wanted) const
    {
        if (type() == wanted && exists())
            return *this;
        return not_a(wanted);
    }

    /// The elements of a sequence, or the values of a map, in document order: `for (zryaml::Value v : doc["servers"])`.
    /// Maps as they read, with merged keys; nothing for any other kind.
    [[nodiscard]] ChildIterator<Value> begin() const;
    /// The end of the walk.
    [[nodiscard]] ChildIterator<Value> end() const;
    /// The keys of a map with their values: `for (auto [key, value] : doc["env"].items())`; nothing for any other kind.
    [[nodiscard]] Items items() const;

private:
    static std::pair<std::uint32_t, std::uint32_t> place(const YamlListNode *node) noexcept
    {
        std::uint32_t line = 0;
        std::uint32_t column = 0;
        ZRYAML_ValuePositionGet(node, &line, &column);
        return {line, column};
    }

    [[nodiscard]] Value element(std::uint64_t index) const;
    [[nodiscard]] Value follow(std::string_view path, detail::PathReader reader) const;
    [[nodiscard]] Value below(detail::Step step) const;
    [[nodiscard]] Value malformed(std::uint32_t code, std::string problem, std::string_view tail) const;
    [[nodiscard]] Value missing(detail::Missing record, std::string_view tail) const;
    [[nodiscard]] bool is_absent() const noexcept
    {
        return !exists() && (missing_ == nullptr || missing_->code == YAML_ERR_NOT_FOUND);
    }
    [[nodiscard]] Error absence() const;
    [[nodiscard]] Error not_a(Type wanted) const;
    [[nodiscard]] Error error(std::uint32_t code, std::string message, std::string hint = {}) const;
    template <class Vector> [[nodiscard]] Result<Vector> get_elements() const;

    const YamlListNode *node_ = nullptr;
    std::shared_ptr<const detail::Missing> missing_; // only of an absent value
};

} // namespace zryaml

#endif
