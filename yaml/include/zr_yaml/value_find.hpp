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
#include <zr_yaml_layers.h>

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
    detail::Step step;
    step.key = key;
    return below(std::move(step));
}

inline Value Value::element(std::uint64_t index) const
{
    detail::Step step;
    step.is_index = true;
    step.index = index;
    return below(std::move(step));
}

// One step down. Which is absent and which a mistake in the file the C interface knows.
inline Value Value::below(detail::Step step) const
{
    const char *key = step.is_index ? nullptr : step.key.c_str();
    Value value;
    if (missing_)
        return missing(*missing_, detail::written(step));
    const std::uint32_t code = ZRYAML_StepTake(node_, key, step.key.size(), step.index, &value.node_);
    if (code == YAML_OK)
        return value;
    const std::string tail = detail::written(step);
    return missing({ZRYAML_DocumentGet(node_), node_, code, std::move(step), {}, {}}, tail);
}

inline Value Value::follow(std::string_view path, detail::PathReader reader) const
{
    Value value = *this;
    detail::Step step;
    while (reader.next(step))
        value = value.below(std::move(step));
    return reader.problem().empty() ? value : malformed(reader.code(), reader.problem(), path);
}

// A malformed path counts more than that something is absent.
inline Value Value::malformed(std::uint32_t code, std::string problem, std::string_view tail) const
{
    detail::Missing record{ZRYAML_DocumentGet(node_), node_, code, {}, {}, {}};
    if (missing_)
        record = *missing_;
    record.code = code;
    record.problem = std::move(problem);
    return missing(std::move(record), tail);
}

inline Value Value::missing(detail::Missing record, std::string_view tail) const
{
    Value value;
    record.tail = detail::joined(std::move(record.tail), tail);
    value.missing_ = std::make_shared<const detail::Missing>(std::move(record));
    return value;
}

// Why there is no value.
inline Error Value::absence() const
{
    if (!missing_)
        return error(YAML_ERR_NOT_FOUND, "there is no value");
    const detail::Missing &record = *missing_;
    if (!record.problem.empty() || record.document == nullptr)
        return error(record.code, record.problem.empty() ? "there is no document" : record.problem);
    const detail::Step &step = record.step;
    (void)ZRYAML_StepExplain(record.nearest, step.is_index ? nullptr : step.key.c_str(), step.key.size(), step.index);
    const YamlErrorInfo &info = *ZRYAML_LastErrorGet();
    return error(record.code, info.pcMessage, info.pcHint);
}

inline Error Value::not_a(Type wanted) const
{
    if (!exists())
        return absence();
    const std::uint32_t code = ZRYAML_KindExplain(node_, static_cast<std::uint32_t>(wanted));
    return error(code, ZRYAML_LastErrorGet()->pcMessage);
}

inline Error Value::error(std::uint32_t code, std::string message, std::string hint) const
{
    Error error;
    error.code = code;
    error.message = std::move(message);
    error.hint = std::move(hint);
    const YamlListNode *nearest = missing_ ? missing_->nearest : node_;
    const YamlHandle *document = missing_ ? missing_->document : ZRYAML_DocumentGet(node_);
    YamlOrigin origin = YAML_ORIGIN_INIT; // of several layers the one that the place is in
    error.file = ZRYAML_OriginGet(nearest, 0, &origin) == YAML_OK ? origin.pcSource : ZRYAML_NameGet(document);
    error.path = path();
    const bool malformed = missing_ && !missing_->problem.empty(); // which has no place in the file
    std::tie(error.line, error.column) = malformed ? std::pair(0U, 0U) : place(nearest);
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
