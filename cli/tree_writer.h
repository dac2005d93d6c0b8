// SPDX-License-Identifier: Apache-2.0
// A value and all below it as JSON.
#pragma once

#include "document.h"
#include "json_writer.h"

namespace zryaml::cli {

inline rapidjson::SizeType size_of(std::string_view text)
{
    return static_cast<rapidjson::SizeType>(text.size());
}

template <class Writer> class TreeWriter {
public:
    // Scalars become strings.
    explicit TreeWriter(Writer &writer) : writer_(writer) {}

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
        const std::string_view text = scalar.text().value_or("");
        writer_.String(text.data(), size_of(text));
    }

    Writer &writer_;
};

} // namespace zryaml::cli
