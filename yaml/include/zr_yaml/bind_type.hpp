// SPDX-License-Identifier: Apache-2.0
// Which C++ types can be bound, and how each is described to the C interface: its kind, and the functions that fill it.
// Part of zr_yaml/bind.hpp.
#ifndef ZR_YAML_BIND_TYPE_HPP
#define ZR_YAML_BIND_TYPE_HPP

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include <zr_yaml/value.hpp>
#include <zr_yaml_bind.h>

namespace zryaml {

/// The conversion of a type that cannot be described by fields. Specialise it with
/// `static Result<T> read(const Value &value)`; message and hint of an error become a problem at the value.
template <class T> struct Convert;

/// The description of a record, for keys of another name, ranges and documents. Specialise it with
/// `static constexpr auto fields()`, which gives zryaml::fields(zryaml::field<&T::member>("key").required(), ...), and
/// if needed `static constexpr bool ignore_unknown = true`, `static constexpr const char *doc = "..."`, and
/// `static std::string check(const T &record)`, which gives a sentence if members do not fit each other, else "".
template <class T> struct Fields;

namespace detail {

// Leads to the functions that ZRYAML_FIELDS and ZRYAML_ENUM put beside a type.
template <class T> struct Tag {};

template <std::size_t count> struct FieldList {
    std::array<YamlField, count> fields;
};
template <std::size_t count> struct NameList {
    std::array<YamlName, count> names;
};

template <class T, class = void> inline constexpr bool has_fields_class = false;
template <class T> inline constexpr bool has_fields_class<T, std::void_t<decltype(Fields<T>::fields())>> = true;
template <class T, class = void> inline constexpr bool has_fields_macro = false;
template <class T> inline constexpr bool has_fields_macro<T, std::void_t<decltype(zryaml_fields(Tag<T>{}))>> = true;
template <class T, class = void> inline constexpr bool has_names = false;
template <class T> inline constexpr bool has_names<T, std::void_t<decltype(zryaml_names(Tag<T>{}))>> = true;
template <class T, class = void> inline constexpr bool has_convert = false;
template <class T>
inline constexpr bool has_convert<T, std::void_t<decltype(Convert<T>::read(std::declval<const Value &>()))>> = true;

template <class T> inline constexpr bool is_record = has_fields_class<T> || has_fields_macro<T>;

// Containers are filled without an exception leaving: the caller is C. Nothing but memory can run short.
template <class Fill> auto guarded(Fill fill) noexcept -> decltype(fill())
{
#if defined(__cpp_exceptions)
    try {
        return fill();
    } catch (...) {
        return {};
    }
#else
    return fill();
#endif
}

template <class T> T &as(void *place) noexcept
{
    return *static_cast<T *>(place);
}

template <class T> struct Record; // the description of a record type, in fields.hpp

// How a T is described. known is false for types that cannot be bound.
template <class T, class = void> struct Binding {
    static constexpr bool known = false;
};

template <class T> inline constexpr bool can_bind = Binding<std::remove_cv_t<T>>::known && !std::is_const_v<T>;

template <class T> struct Element { // a T where it is no member with a key, but part of another type
    static const YamlField field;
};

// Describes what a container holds: plain values and records within its own field, all else by a field of their own.
template <class T> constexpr void describe_element(YamlField &field)
{
    field.uiElementWidth = sizeof(T);
    if constexpr (Binding<T>::plain)
        Binding<T>::element(field);
    else
        field.pstElement = &Element<T>::field;
}

template <class T> constexpr YamlField described()
{
    YamlField field{};
    field.uiWidth = sizeof(T);
    Binding<T>::describe(field);
    return field;
}
template <class T> const YamlField Element<T>::field = described<T>();

// A type that is described alike as a member and as an element.
template <class Derived> struct PlainBinding {
    static constexpr bool known = true;
    static constexpr bool plain = true;
    static constexpr void describe(YamlField &field)
    {
        Derived::element(field);
        field.uiKind = field.uiMemberKind;
    }
};
struct CompoundBinding {
    static constexpr bool known = true;
    static constexpr bool plain = false;
};

template <class T> struct Binding<T, std::enable_if_t<Scalar<T>::readable>> : PlainBinding<Binding<T>> {
    static constexpr void element(YamlField &field)
    {
        constexpr YamlScalarType type = Scalar<T>::type;
        field.uiMemberKind = type.uiKind;
        field.bUnsigned = type.bUnsigned;
        field.ulTick = type.ulTick;
        field.ulTickParts = type.ulTickParts;
    }
};

template <> struct Binding<std::string> : PlainBinding<Binding<std::string>> {
    static std::uint32_t set(void *member, const char *text)
    {
        const bool done = guarded([&] {
            as<std::string>(member) = text;
            return true;
        });
        return done ? YAML_OK : YAML_ERR_NOMEM;
    }
    static const char *get(const void *member) { return static_cast<const std::string *>(member)->c_str(); }
    static constexpr YamlStorage storage = {sizeof(YamlStorage), set, get, nullptr, nullptr};
    static constexpr void element(YamlField &field)
    {
        field.uiMemberKind = YAML_KIND_TEXT;
        field.pstStorage = &storage;
    }
};

template <class T> struct Names { // of an enumeration
    static constexpr auto list = zryaml_names(Tag<T>{});
};
template <class T> struct Binding<T, std::enable_if_t<std::is_enum_v<T> && has_names<T>>> : PlainBinding<Binding<T>> {
    static constexpr void element(YamlField &field)
    {
        field.uiMemberKind = YAML_KIND_ENUM;
        field.pstNames = Names<T>::list.names.data();
        field.uiNames = static_cast<std::uint32_t>(Names<T>::list.names.size());
    }
};

template <class T> struct Binding<T, std::enable_if_t<is_record<T> && !has_convert<T>>> : PlainBinding<Binding<T>> {
    static constexpr void element(YamlField &field)
    {
        field.uiMemberKind = YAML_KIND_RECORD;
        field.pfnRecord = Record<T>::get;
    }
};

template <class T> struct Binding<T, std::enable_if_t<has_convert<T>>> : CompoundBinding {
    static std::uint32_t read(YamlReading *reading, const YamlListNode *node, void *member, const void *)
    {
        std::uint32_t code = YAML_ERR_NOMEM;
        (void)guarded([&] {
            auto result = Convert<T>::read(Value(node));
            if (result.has_value()) {
                as<T>(member) = *std::move(result);
                code = YAML_OK;
            } else {
                code = ZRYAML_ReadingProblemAdd(reading, node, "%s", result.error().message.c_str());
            }
            return true;
        });
        return code;
    }
    static constexpr void describe(YamlField &field)
    {
        field.uiKind = YAML_KIND_CUSTOM;
        field.pfnConvert = read;
    }
};

// Its elements have no addresses, so it is read as a whole.
template <class A> struct Binding<std::vector<bool, A>> : CompoundBinding {
    static std::uint32_t read(YamlReading *reading, const YamlListNode *node, void *member, const void *)
    {
        std::uint32_t code = YAML_ERR_NOMEM;
        (void)guarded([&] {
            auto result = Value(node).get<std::vector<bool, A>>();
            code = result.has_value() ? YAML_OK
                                      : ZRYAML_ReadingProblemAdd(reading, node, "%s", result.error().message.c_str());
            if (result.has_value())
                as<std::vector<bool, A>>(member) = *std::move(result);
            return true;
        });
        return code;
    }
    static constexpr void describe(YamlField &field)
    {
        field.uiKind = YAML_KIND_CUSTOM;
        field.pfnConvert = read;
    }
};

// What a container of one type is filled by; texts within it are set as texts are.
template <class T, class Opener, class = void> struct ContainerStorage {
    static constexpr YamlStorage storage = {sizeof(YamlStorage), nullptr, nullptr, Opener::open, Opener::add};
};
template <class Opener> struct ContainerStorage<std::string, Opener> {
    static constexpr YamlStorage storage = {sizeof(YamlStorage), Binding<std::string>::set, nullptr, Opener::open,
                                            Opener::add};
};

template <class T, class Container> struct ContainerBinding : CompoundBinding {
    static_assert(can_bind<T>, "elements of this type cannot be bound");
    static constexpr void *(*add)(void *, const char *) = nullptr;
    static constexpr void describe_as(YamlField &field, std::uint32_t kind)
    {
        describe_element<T>(field);
        field.uiKind = kind;
        field.pstStorage = &ContainerStorage<T, Container>::storage;
    }
};

template <class T, class A> struct Binding<std::vector<T, A>> : ContainerBinding<T, Binding<std::vector<T, A>>> {
    static void *open(void *member, std::uint32_t count)
    {
        return guarded([&]() -> void * {
            auto &vector = as<std::vector<T, A>>(member);
            vector.clear();
            vector.resize(count);
            return vector.data();
        });
    }
    static constexpr void describe(YamlField &field) { Binding::describe_as(field, YAML_KIND_ARRAY); }
};

template <class T, std::size_t size>
struct Binding<std::array<T, size>> : ContainerBinding<T, Binding<std::array<T, size>>> {
    static_assert(size > 0, "an array without elements cannot be bound");
    static void *open(void *member, std::uint32_t) { return as<std::array<T, size>>(member).data(); }
    static constexpr void describe(YamlField &field)
    {
        Binding::describe_as(field, YAML_KIND_ARRAY);
        field.uiMinCount = field.uiMaxCount = size;
    }
};

template <class T> struct Binding<std::optional<T>> : ContainerBinding<T, Binding<std::optional<T>>> {
    static void *open(void *member, std::uint32_t)
    {
        return guarded([&]() -> void * { return &as<std::optional<T>>(member).emplace(); });
    }
    static constexpr void describe(YamlField &field) { Binding::describe_as(field, YAML_KIND_OPTIONAL); }
};

template <class T> struct Binding<std::unique_ptr<T>> : ContainerBinding<T, Binding<std::unique_ptr<T>>> {
    static void *open(void *member, std::uint32_t)
    {
        return guarded([&]() -> void * {
            as<std::unique_ptr<T>>(member) = std::make_unique<T>();
            return as<std::unique_ptr<T>>(member).get();
        });
    }
    static constexpr void describe(YamlField &field) { Binding::describe_as(field, YAML_KIND_OPTIONAL); }
};

template <class Map> struct MapBinding : ContainerBinding<typename Map::mapped_type, MapBinding<Map>> {
    static void *open(void *member, std::uint32_t) { return as<Map>(member).clear(), member; }
    static void *add(void *member, const char *key)
    {
        return guarded([&]() -> void * { return &as<Map>(member)[key]; });
    }
    static constexpr void describe(YamlField &field)
    {
        MapBinding::describe_as(field, YAML_KIND_MAP);
        field.uiValueWidth = sizeof(typename Map::mapped_type);
    }
};
template <class T, class C, class A>
struct Binding<std::map<std::string, T, C, A>> : MapBinding<std::map<std::string, T, C, A>> {};
template <class T, class H, class E, class A>
struct Binding<std::unordered_map<std::string, T, H, E, A>> : MapBinding<std::unordered_map<std::string, T, H, E, A>> {
};

// Types of several parts, each with a field of its own.
template <class... Parts> struct PartList {
    static constexpr YamlAlternative list[] = {{"", nullptr, &Element<Parts>::field}...};
};

template <class Tuple, class... Parts> struct TupleBinding : CompoundBinding {
    static_assert((can_bind<Parts> && ...), "a part of this type cannot be bound");
    template <std::size_t... index> static void *part(Tuple &tuple, std::uint32_t number, std::index_sequence<index...>)
    {
        void *const places[] = {&std::get<index>(tuple)...};
        return places[number];
    }
    static void *open(void *member, std::uint32_t number)
    {
        return part(as<Tuple>(member), number, std::index_sequence_for<Parts...>());
    }
    static constexpr YamlStorage storage = {sizeof(YamlStorage), nullptr, nullptr, open, nullptr};
    static constexpr void describe(YamlField &field)
    {
        field.uiKind = YAML_KIND_TUPLE;
        field.pstStorage = &storage;
        field.pstAlternatives = PartList<Parts...>::list;
        field.uiAlternatives = sizeof...(Parts);
    }
};
template <class A, class B> struct Binding<std::pair<A, B>> : TupleBinding<std::pair<A, B>, A, B> {};
template <class... Parts> struct Binding<std::tuple<Parts...>> : TupleBinding<std::tuple<Parts...>, Parts...> {};

template <class... Parts> struct Binding<std::variant<Parts...>> : CompoundBinding {
    static_assert((can_bind<Parts> && ...), "an alternative of this type cannot be bound");
    using Variant = std::variant<Parts...>;
    template <std::size_t index> static void *emplace(Variant &variant)
    {
        return guarded([&]() -> void * { return &variant.template emplace<index>(); });
    }
    template <std::size_t... index>
    static void *part(Variant &variant, std::uint32_t number, std::index_sequence<index...>)
    {
        constexpr void *(*places[])(Variant &) = {emplace<index>...};
        return places[number](variant);
    }
    static void *open(void *member, std::uint32_t number)
    {
        return part(as<Variant>(member), number, std::index_sequence_for<Parts...>());
    }
    static constexpr YamlStorage storage = {sizeof(YamlStorage), nullptr, nullptr, open, nullptr};
    static constexpr void describe(YamlField &field)
    {
        field.uiKind = YAML_KIND_UNION;
        field.bAnyFits = 1;
        field.pstStorage = &storage;
        field.pstAlternatives = PartList<Parts...>::list;
        field.uiAlternatives = sizeof...(Parts);
    }
};

} // namespace detail
} // namespace zryaml

#endif
