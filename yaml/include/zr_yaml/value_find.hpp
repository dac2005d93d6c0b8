// SPDX-License-Identifier: Apache-2.0
// How a value goes down to others, and what an absent or wrong one says about itself. Part of zr_yaml.hpp.
#ifndef ZR_YAML_VALUE_FIND_HPP
#define ZR_YAML_VALUE_FIND_HPP

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include <zr_yaml.h>
#include <zr_yaml/value.hpp>
#include <zr_yaml/value_walk.hpp>

namespace zryaml {

inline std::string Value::path() const
{
    const YamlListNode *present = missing_ ? missing_->nearest : node_;
    std::string text(ZRYAML_ValuePathGet(present, 0, nullptr) + std::size_t{1}, '\0');
    (void)ZRYAML_ValuePathGet(present, static_cast<std::uint32_t>(text.size()), text.data());
    text.pop_back();
    if (missing_)
        return detail::joined(std::move(text), missing_->tail);
    return text;
}

inline Value Value::operator[](std::string_view key) const
{
    const YamlListNode *found = ZRYAML_ChildFind(node_, key.empty() ? "" : key.data(), key.size());
    if (found != nullptr)
        return Value(found);
    return below(Type::map, "no key " + detail::quoted(key), detail::escaped(key));
}

inline Value Value::element(std::uint64_t index) const
{
    YamlChild child{};
    if (is_sequence() && index < YAML_INDEX_NONE &&
        ZRYAML_ChildGet(node_, static_cast<std::uint32_t>(index), &child) == YAML_OK)
        return Value(child.pstValue);
    const std::string number = std::to_string(index);
    return below(Type::sequence, "no element " + number, '[' + number + ']');
}

inline Value Value::follow(std::string_view path, detail::PathReader reader) const
{
    Value value = *this;
    detail::Step step;
    while (reader.next(step))
        value = step.is_index ? value.element(step.index) : value[step.key];
    if (reader.problem() != nullptr)
        return broken(reader.problem(), std::string(path));
    return value;
}

// What is asked for is not below this value: absent, or a mistake if the value is of a kind that has no such children.
inline Value Value::below(Type wanted, const std::string &what, const std::string &tail) const
{
    const bool wrong = exists() && type() != wanted && !text().value_or("something").empty();
    if (wrong)
        return missing(
            YAML_ERR_NODE_TYPE,
            what + ": the value above it is " + detail::type_name(type()) + ", not " + detail::type_name(wanted), tail);
    return missing(YAML_ERR_NOT_FOUND, "there is " + what, tail);
}

// The path is malformed, which counts more than that something is absent.
inline Value Value::broken(const char *problem, const std::string &tail) const
{
    Value value = missing(YAML_ERR_KEY, {}, tail);
    detail::Missing record = *value.missing_;
    record.code = YAML_ERR_KEY;
    record.message = std::string("the key path is malformed: ") + problem;
    value.missing_ = std::make_shared<const detail::Missing>(std::move(record));
    return value;
}

inline Value Value::missing(std::uint32_t code, std::string message, const std::string &tail) const
{
    detail::Missing record =
        missing_ ? *missing_ : detail::Missing{ZRYAML_DocumentGet(node_), node_, code, std::move(message), {}};
    record.tail = detail::joined(std::move(record.tail), tail);
    Value value;
    value.missing_ = std::make_shared<const detail::Missing>(std::move(record));
    return value;
}

inline Error Value::not_a(Type wanted) const
{
    if (missing_)
        return error(missing_->code, missing_->message);
    if (!exists())
        return error(YAML_ERR_NOT_FOUND, "there is no value");
    return error(wanted == Type::scalar ? YAML_ERR_NOT_SCALAR : YAML_ERR_NODE_TYPE,
                 std::string("the value is ") + detail::type_name(type()) + ", not " + detail::type_name(wanted));
}

inline Error Value::error(std::uint32_t code, std::string message, std::string hint) const
{
    Error error;
    error.code = code;
    error.message = std::move(message);
    error.hint = std::move(hint);
    error.file = ZRYAML_NameGet(missing_ ? missing_->document : ZRYAML_DocumentGet(node_));
    error.path = path();
    std::tie(error.line, error.column) = place(missing_ ? missing_->nearest : node_);
    return error;
}

template <class Vector> Result<Vector> Value::get_elements() const
{
    if (!is_sequence())
        return not_a(Type::sequence);
    Vector out;
    for (const Value &child : *this) {
        Result<typename Vector::value_type> element = child.template get<typename Vector::value_type>();
        if (!element.has_value())
            return std::move(element).error();
        out.push_back(*std::move(element));
    }
    return out;
}

} // namespace zryaml

#endif
