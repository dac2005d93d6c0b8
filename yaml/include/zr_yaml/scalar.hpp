// SPDX-License-Identifier: Apache-2.0
// Which types a text can be read as, in terms of the C interface, which knows the rules. Part of zr_yaml.hpp, where
// Value::get() lists what is accepted.
#ifndef ZR_YAML_SCALAR_HPP
#define ZR_YAML_SCALAR_HPP

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ratio>
#include <string>
#include <type_traits>
#include <vector>

#include <zr_yaml_scalar.h>

namespace zryaml {

/// A number of bytes, read from texts such as 512, 64KiB or 1.5GB.
struct Bytes {
    std::uint64_t count = 0; ///< how many
};

namespace detail {

template <class T, class... Others> inline constexpr bool is_one_of = (std::is_same_v<T, Others> || ...);

// The integers that count; bool and the character types are none.
template <class T>
inline constexpr bool is_integer = is_one_of<T, signed char, short, int, long, long long, unsigned char, unsigned short,
                                             unsigned, unsigned long, unsigned long long>;

template <class T> inline constexpr bool is_vector = false;
template <class T, class A> inline constexpr bool is_vector<std::vector<T, A>> = true;

// The type of the C interface that a T is read as.
template <class T, class = void> struct Scalar {
    static constexpr bool readable = false;
};

template <std::uint32_t kind, class T> struct ScalarOfKind {
    static constexpr bool readable = true;
    static constexpr YamlScalarType type = YAML_SCALAR_TYPE(kind, sizeof(T));
};

template <class T>
struct Scalar<T, std::enable_if_t<is_integer<T>>>
    : ScalarOfKind<std::is_signed_v<T> ? YAML_KIND_INT : YAML_KIND_UINT, T> {};

template <> struct Scalar<bool> : ScalarOfKind<YAML_KIND_BOOL, bool> {};

template <> struct Scalar<Bytes> : ScalarOfKind<YAML_KIND_BYTES, Bytes> {};

// long double is left out: its text form differs between machines.
template <class T>
struct Scalar<T, std::enable_if_t<is_one_of<T, float, double>>> : ScalarOfKind<YAML_KIND_DOUBLE, T> {};

template <class Rep, class Period> struct Scalar<std::chrono::duration<Rep, Period>> {
    static_assert(is_integer<Rep>, "durations are read into whole ticks, such as std::chrono::milliseconds");
    using Tick = std::ratio_multiply<Period, std::giga>; // in nanoseconds
    static constexpr bool readable = true;
    static constexpr YamlScalarType type = {sizeof(YamlScalarType),  YAML_KIND_DURATION, sizeof(Rep),
                                            std::is_unsigned_v<Rep>, Tick::num,          Tick::den};
};

// Why a text is no value of a type, and what would be right.
inline std::string scalar_problem(const YamlScalarType &type, const char *text)
{
    char sentence[256];
    (void)ZRYAML_ScalarExplain(&type, text, sizeof(sentence), sentence);
    return sentence;
}
inline std::string scalar_hint(const YamlScalarType &type)
{
    char hint[256];
    (void)ZRYAML_ScalarHint(&type, sizeof(hint), hint);
    return hint;
}

} // namespace detail
} // namespace zryaml

#endif
