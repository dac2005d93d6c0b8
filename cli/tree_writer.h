// SPDX-License-Identifier: Apache-2.0
// A value and all below it as JSON.
#pragma once

#include "core_scalar.h"
#include "document.h"
#include "json_writer.h"

namespace zryaml::cli {

inline rapidjson::SizeType size_of(std::string_view text)
{
    return static_cast<rapidjson::SizeType>(text.size());
}

template <class Writer> class TreeWriter {
public:
    // Scalars become strings; with a reporter they are typed, and it is told of those that JSON cannot hold.
    TreeWriter(Writer &writer, const OpenDocument &open, Reporter *typed = nullptr)
        : writer_(writer), open_(open), typed_(typed)
    {}

    // Goes down as deep as the document, which is 512 at most.
    void write(const Value &value)
    {
        if (value.is_map()) {
            writer_.StartObject();
            for (const auto &[key, below] : value.items()) {
                writer_.Key(key.data(), size_of(key));
                write(below);
            }
            writer_.EndObject();
        } else if (value.is_sequence()) {
            writer_.StartArray();
            for (const Value &element : value)
                write(element);
            writer_.EndArray();
        } else {
            scalar_write(value);
        }
    }

private:
    void scalar_write(const Value &scalar)
    {
        if (!scalar.exists()) { // an empty document
            writer_.Null();
            return;
        }
        const std::string_view text = open_.text(scalar);
        const bool typed = typed_ != nullptr && !open_.redactor().hides(scalar);
        const CoreScalar core = typed ? core_scalar(scalar) : CoreScalar();
        if (core.literal.empty())
            writer_.String(text.data(), size_of(text));
        else
            writer_.RawValue(core.literal.data(), core.literal.size(), rapidjson::kNumberType);
        if (core.too_big)
            typed_->report(open_.remark(
                scalar, '\'' + std::string(text) + "' is not a number that JSON can hold, and is written as a string"));
    }

    Writer &writer_;
    const OpenDocument &open_;
    Reporter *typed_;
};

} // namespace zryaml::cli
