// SPDX-License-Identifier: Apache-2.0
/// @file
/// C++ types read from a document by one description of their members, C++17, header-only, on zr_yaml_bind.h.
///
/// @code
/// struct Server {
///     std::string name;
///     std::uint16_t port = 8080;
///     std::vector<int> cores;
/// };
/// ZRYAML_FIELDS(Server, name, port, cores)
///
/// zryaml::Result<Server, zryaml::Problems> server = zryaml::bind<Server>(document["servers"][0]);
/// if (!server)
///     std::cerr << server.error().what();
/// @endcode
///
/// Members may be whatever Value::get() reads (but no std::string_view, which would dangle), described types, and
/// std::optional, unique_ptr, vector, array, map and unordered_map by std::string, pair, tuple and variant of them,
/// enumerations with names, and types with a Convert of their own. They are default-constructed first: a member that
/// the document does not mention keeps what it has then. Move-only types are fine.
///
/// A variant is chosen by Field::chosen_by(), else by what the document holds: of scalars the first alternative that
/// fits, a std::string last; of maps and sequences the only one that fits; the problems of the nearest one if none
/// does.
///
/// Nothing throws. Where memory is short, the problem says so; default constructors and conversions may throw
/// std::bad_alloc, and nothing else.
#ifndef ZR_YAML_BIND_HPP
#define ZR_YAML_BIND_HPP

#include <string>
#include <utility>

#include <zr_yaml.hpp>
#include <zr_yaml/fields.hpp>
#include <zr_yaml/problem.hpp>

namespace zryaml {

namespace detail {

template <class T> std::uint32_t read_into(YamlHandle *document, const YamlListNode *node, T &out, YamlProblems **list)
{
    if constexpr (is_record<T> && !has_convert<T>)
        return ZRYAML_RecordRead(document, node, &Record<T>::record, &out, list);
    else
        return ZRYAML_FieldRead(document, node, &Element<T>::field, &out, list);
}

template <class T> Result<T, Problems> bind_node(YamlHandle *document, const YamlListNode *node, Problems *notes)
{
    static_assert(can_bind<T>, "this type cannot be bound; describe it with ZRYAML_FIELDS, ZRYAML_ENUM or a "
                               "zryaml::Convert of its own");
    T out{};
    YamlProblems *list = nullptr;
    const std::uint32_t code = read_into(document, node, out, &list);
    struct Free {
        YamlProblems *list;
        ~Free() { ZRYAML_ProblemsFree(list); }
    } const owner{list};
    if (code != YAML_OK)
        return Problems(list);
    if (notes != nullptr)
        *notes = Problems(list);
    return out;
}

inline Problems problems_of(const Error &error)
{
    Problem problem;
    problem.code = error.code;
    problem.line = error.line;
    problem.column = error.column;
    problem.source = error.file;
    problem.path = error.path;
    problem.message = error.message;
    problem.hint = error.hint;
    return Problems(std::move(problem));
}

template <class Write> std::string written(Write write)
{
    std::string text(write(0, nullptr) + std::size_t{1}, '\0');
    (void)write(static_cast<std::uint32_t>(text.size()), text.data());
    text.pop_back();
    return text;
}

} // namespace detail

/// Reads a value into a T.
///
/// @param value  Value; if it is absent, the error says so.
/// @param notes  Receives what is worth knowing after a success; NULL: not wanted.
/// @return The T, or all problems in document order.
template <class T> [[nodiscard]] Result<T, Problems> bind(const Value &value, Problems *notes = nullptr)
{
    if (!value.exists())
        return detail::problems_of(value.expect(Type::map).error());
    return detail::bind_node<T>(ZRYAML_DocumentGet(value.node()), value.node(), notes);
}

/// Reads a whole document into a T. An empty one is an empty map.
template <class T> [[nodiscard]] Result<T, Problems> bind(const Document &document, Problems *notes = nullptr)
{
    return detail::bind_node<T>(document.handle(), nullptr, notes);
}

/// @return A commented sample file for a described type, as ZRYAML_RecordSampleWrite writes it. The defaults are the
///         initial values of the members.
template <class T> [[nodiscard]] std::string sample()
{
    return detail::written([](std::uint32_t size, char *text) {
        return ZRYAML_RecordSampleWrite(&detail::Record<T>::record, size, text);
    });
}

/// @return A JSON Schema for a described type, as ZRYAML_RecordSchemaWrite writes it.
template <class T> [[nodiscard]] std::string schema()
{
    return detail::written([](std::uint32_t size, char *text) {
        return ZRYAML_RecordSchemaWrite(&detail::Record<T>::record, size, text);
    });
}

/// @return The environment variables that a layer takes for a described type, as ZRYAML_RecordEnvironmentWrite writes
///         them.
template <class T> [[nodiscard]] std::string environment(const std::string &prefix)
{
    return detail::written([&prefix](std::uint32_t size, char *text) {
        return ZRYAML_RecordEnvironmentWrite(&detail::Record<T>::record, prefix.c_str(), size, text);
    });
}

} // namespace zryaml

#endif
