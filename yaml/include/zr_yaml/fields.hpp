// SPDX-License-Identifier: Apache-2.0
// The description of record types and enumerations. Part of zr_yaml/bind.hpp.
#ifndef ZR_YAML_FIELDS_HPP
#define ZR_YAML_FIELDS_HPP

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include <zr_yaml/bind_type.hpp>
#include <zr_yaml/each.hpp>

namespace zryaml {

namespace detail {

template <class Class, auto member> void *member_of(void *record)
{
    return std::addressof(static_cast<Class *>(record)->*member);
}

template <class T> struct MemberType;
template <class Class, class T> struct MemberType<T Class::*> {
    using type = T;
};

// Of a union with a key that chooses: the texts, one for each alternative.
template <class... Parts> constexpr std::size_t part_count(const std::variant<Parts...> *)
{
    return sizeof...(Parts);
}

} // namespace detail

/// A field of a record: a member, its key, and its rules. Each call gives the field with one rule more.
template <auto member> class Field {
    using T = typename detail::MemberType<decltype(member)>::type;
    static_assert(!std::is_same_v<T, std::string_view>,
                  "a std::string_view would dangle when the document goes: bind a std::string");
    static_assert(detail::can_bind<T>, "a member of this type cannot be bound; describe it with ZRYAML_FIELDS, "
                                       "ZRYAML_ENUM or a zryaml::Convert of its own");

public:
    /// A member under a key.
    constexpr explicit Field(const char *key) : field_(detail::described<T>()) { field_.pcKey = key; }

    /// A record without the key is wrong.
    [[nodiscard]] constexpr Field required() const { return with(&YamlField::bRequired, 1U); }
    /// The least number, duration or size, as the file would write it; of a sequence or map: of each element.
    [[nodiscard]] constexpr Field min(const char *text) const { return with(&YamlField::pcMin, text); }
    /// The greatest.
    [[nodiscard]] constexpr Field max(const char *text) const { return with(&YamlField::pcMax, text); }
    /// Elements of a sequence, or keys of a map, at least,
    [[nodiscard]] constexpr Field min_count(std::uint32_t count) const { return with(&YamlField::uiMinCount, count); }
    /// and at most.
    [[nodiscard]] constexpr Field max_count(std::uint32_t count) const { return with(&YamlField::uiMaxCount, count); }
    /// What people are told in the sample and the schema.
    [[nodiscard]] constexpr Field doc(const char *text) const { return with(&YamlField::pcDoc, text); }
    /// A key that the field had before, which is read with a note.
    [[nodiscard]] constexpr Field old_key(const char *key) const { return with(&YamlField::pcOldKey, key); }
    /// An unsigned integer of 64 bits is a size such as 64KiB.
    [[nodiscard]] constexpr Field bytes() const
    {
        static_assert(std::is_unsigned_v<T> && sizeof(T) == 8, "a size is an unsigned integer of 64 bits");
        return with(&YamlField::uiKind, YAML_KIND_BYTES);
    }
    /// A variant is chosen by the text of a key in its map: one text for each alternative, each of which is a record.
    template <class... Texts> [[nodiscard]] constexpr Field chosen_by(const char *key, Texts... texts) const
    {
        static_assert(sizeof...(Texts) == detail::part_count(static_cast<T *>(nullptr)),
                      "chosen_by() takes one text for each alternative of the variant");
        Field field = with(&YamlField::pcTagKey, key);
        field.field_.bAnyFits = 0;
        field.texts_ = {texts...};
        return field;
    }

    /// The field for calls of the C interface, of a record type that has the member.
    template <class Class> [[nodiscard]] constexpr YamlField of(const YamlAlternative *alternatives) const
    {
        YamlField field = field_;
        field.pfnMember = detail::member_of<Class, member>;
        if (texts_[0] != nullptr)
            field.pstAlternatives = alternatives;
        return field;
    }
    /// The alternatives of a variant, with the texts that choose them.
    [[nodiscard]] constexpr auto alternatives() const
    {
        std::array<YamlAlternative, most> list{};
        for (std::size_t index = 0; index < field_.uiAlternatives && field_.uiKind == YAML_KIND_UNION; ++index) {
            list[index] = field_.pstAlternatives[index];
            list[index].pcText = texts_[index];
        }
        return list;
    }

private:
    template <class V> constexpr Field with(V YamlField::*rule, V value) const
    {
        Field field = *this;
        field.field_.*rule = value;
        return field;
    }

    template <class V> static constexpr std::size_t parts(const V *) { return 1; }
    template <class... Parts> static constexpr std::size_t parts(const std::variant<Parts...> *)
    {
        return sizeof...(Parts);
    }
    static constexpr std::size_t most = parts(static_cast<const T *>(nullptr));

    YamlField field_;
    std::array<const char *, most> texts_{};
};

/// A member under a key: field<&Server::port>("port").
template <auto member> constexpr Field<member> field(const char *key)
{
    return Field<member>(key);
}

/// What Fields<T>::fields() gives.
template <auto... members> constexpr std::tuple<Field<members>...> fields(const Field<members> &...list)
{
    return {list...};
}

namespace detail {

// The fields of a record type, as a table of the C interface.
template <class T, class = void> struct FieldTable {
    static constexpr auto list = zryaml_fields(Tag<T>{}).fields;
};
template <class T> struct FieldTable<T, std::enable_if_t<has_fields_class<T>>> {
    static constexpr auto fields = Fields<T>::fields();
    template <std::size_t index> static constexpr auto alternatives = std::get<index>(fields).alternatives();
    template <std::size_t... index>
    static constexpr std::array<YamlField, sizeof...(index)> table(std::index_sequence<index...>)
    {
        return {std::get<index>(fields).template of<T>(alternatives<index>.data())...};
    }
    static constexpr auto list = table(std::make_index_sequence<std::tuple_size_v<decltype(fields)>>());
};

template <class T, class = void> inline constexpr bool ignores_unknown = false;
template <class T>
inline constexpr bool ignores_unknown<T, std::void_t<decltype(Fields<T>::ignore_unknown)>> = Fields<T>::ignore_unknown;
template <class T, class = void> inline constexpr const char *doc_of = nullptr;
template <class T> inline constexpr const char *doc_of<T, std::void_t<decltype(Fields<T>::doc)>> = Fields<T>::doc;

template <class T, class = void> struct Checked {
    static constexpr YamlCheck check = nullptr;
};
template <class T> struct Checked<T, std::void_t<decltype(Fields<T>::check(std::declval<const T &>()))>> {
    static std::uint32_t check(YamlReading *reading, const YamlListNode *node, const void *record, const void *)
    {
        std::uint32_t code = YAML_ERR_NOMEM;
        (void)guarded([&] {
            const std::string sentence = Fields<T>::check(*static_cast<const T *>(record));
            code = sentence.empty() ? YAML_OK : ZRYAML_ReadingProblemAdd(reading, node, "%s", sentence.c_str());
            return true;
        });
        return code;
    }
};

template <class T> struct Record {
    // A record with the values that its members begin with.
    static const void *model()
    {
        static const T initial{};
        return &initial;
    }
    static constexpr YamlRecord make()
    {
        YamlRecord made{};
        made.uiSize = sizeof(YamlRecord);
        made.uiFieldSize = sizeof(YamlField);
        made.uiRecordSize = sizeof(T);
        made.uiFields = static_cast<std::uint32_t>(FieldTable<T>::list.size());
        made.pcName = "the type";
        made.pstFields = FieldTable<T>::list.data();
        made.bIgnoreUnknown = ignores_unknown<T>;
        made.bInPlace = 1;
        made.pcDoc = doc_of<T>;
        made.pfnCheck = Checked<T>::check;
        made.pfnModel = model;
        return made;
    }
    static const YamlRecord record;
    static const YamlRecord *get() { return &record; } // only now is it made: a type may hold itself
};
template <class T> const YamlRecord Record<T>::record = make();

template <class Class, auto member> constexpr YamlField plain_field(const char *key)
{
    return Field<member>(key).template of<Class>(nullptr);
}

} // namespace detail
} // namespace zryaml

/// @cond
#define ZRYAML_ONE_MORE(Type, name) +1 // NOLINT(bugprone-macro-parentheses): a term of a sum
#define ZRYAML_ONE_CHECK(Type, name)                                                                   \
    static_assert(::zryaml::detail::can_bind<decltype(Type::name)>,                                    \
                  "the type of " #Type "::" #name " cannot be bound; describe it with ZRYAML_FIELDS, " \
                  "ZRYAML_ENUM or a zryaml::Convert of its own");
#define ZRYAML_ONE_FIELD(Type, name) ::zryaml::detail::plain_field<Type, &Type::name>(#name),
#define ZRYAML_ONE_NAME(Type, name) ::YamlName{#name, static_cast<::std::int64_t>(Type::name)},
/// @endcond

/// Describes a record type by 1 to 64 of its members, whose names are the keys: ZRYAML_FIELDS(Server, name, port).
/// Stands in the namespace of the type, behind it and behind the descriptions of the types of its members; for a
/// template, `template <class T> ZRYAML_FIELDS(Range<T>, low, high)`.
#define ZRYAML_FIELDS(Type, ...)                                                                            \
    constexpr ::zryaml::detail::FieldList<0 ZRYAML_EACH(ZRYAML_ONE_MORE, Type, __VA_ARGS__)> zryaml_fields( \
        ::zryaml::detail::Tag<Type>)                                                                        \
    {                                                                                                       \
        ZRYAML_EACH(ZRYAML_ONE_CHECK, Type, __VA_ARGS__)                                                    \
        return {{ZRYAML_EACH(ZRYAML_ONE_FIELD, Type, __VA_ARGS__)}};                                        \
    }

/// Names the values of an enumeration, as the file writes them: ZRYAML_ENUM(Mode, fast, safe). Stands in the namespace
/// of the type.
#define ZRYAML_ENUM(Type, ...)                                                                            \
    constexpr ::zryaml::detail::NameList<0 ZRYAML_EACH(ZRYAML_ONE_MORE, Type, __VA_ARGS__)> zryaml_names( \
        ::zryaml::detail::Tag<Type>)                                                                      \
    {                                                                                                     \
        return {{ZRYAML_EACH(ZRYAML_ONE_NAME, Type, __VA_ARGS__)}};                                       \
    }

#endif
