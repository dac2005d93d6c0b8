// SPDX-License-Identifier: Apache-2.0
// zryaml get: the text of a scalar, checked against a type if one is asked for. A default stands in for what is absent
// and for nothing else, as in the C++ interface, which decides both.
#include "../document.h"
#include "../output.h"

#include <chrono>

namespace zryaml::cli {

namespace {

struct Type {
    std::string_view name;
    Result<std::string_view> (*read)(const Value &); // the text, if it is a value of the type
    YamlScalarType scalar;
};

template <class T> Result<std::string_view> typed_read(const Value &value)
{
    const Result<T> read = value.get<T>();
    return read.has_value() ? value.get<std::string_view>() : Result<std::string_view>(read.error());
}

using Nanoseconds = std::chrono::duration<std::int64_t, std::nano>;
constexpr Type types[] = {
    {"int", typed_read<std::int64_t>, YAML_SCALAR_TYPE(YAML_KIND_INT, 8)},
    {"uint", typed_read<std::uint64_t>, YAML_SCALAR_TYPE(YAML_KIND_UINT, 8)},
    {"float", typed_read<double>, YAML_SCALAR_TYPE(YAML_KIND_DOUBLE, 8)},
    {"bool", typed_read<bool>, YAML_SCALAR_TYPE(YAML_KIND_BOOL, 1)},
    {"duration", typed_read<Nanoseconds>, YAML_SCALAR_TYPE(YAML_KIND_DURATION, 8)},
    {"bytes", typed_read<Bytes>, YAML_SCALAR_TYPE(YAML_KIND_BYTES, 8)},
};
constexpr Type any_text = {"string", typed_read<std::string_view>, {}};

const Type &type_find(std::string_view name)
{
    for (const Type &type : types) {
        if (type.name == name)
            return type;
    }
    return any_text; // also where no type is asked for
}

// A default of the wrong type is a mistake on the command line, wherever the path leads.
void default_check(const Options &options, const Type &type)
{
    std::uint64_t value = 0;
    if (!options.fallback || &type == &any_text ||
        ZRYAML_ScalarRead(&type.scalar, options.fallback->c_str(), &value) == YAML_OK)
        return;
    char sentence[256];
    (void)ZRYAML_ScalarExplain(&type.scalar, options.fallback->c_str(), sizeof(sentence), sentence);
    Diagnostic diagnostic;
    diagnostic.message = std::string("--default: ") + sentence;
    diagnostic.code = YAML_ERR_PARAM;
    throw Failure(Status::misuse, std::move(diagnostic));
}

} // namespace

Status get_run(const Options &options)
{
    const Type &type = type_find(options.type);
    default_check(options, type);
    const OpenDocument open(options);
    const Value value = open.find();
    Result<std::string_view> text = type.read(value);
    if (options.fallback)
        text = text.value_or(*options.fallback);
    const std::string_view found = required(std::move(text));
    output_item(value.exists() ? open.text(value) : found, options.null);
    return Status::found;
}

} // namespace zryaml::cli
