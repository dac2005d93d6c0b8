// SPDX-License-Identifier: Apache-2.0
#include "document.h"
#include "load.h"

#include <zr_yaml/layers.hpp>

namespace zryaml::cli {

OpenDocument::OpenDocument(const Options &options, const std::string &file)
    : options_(options), document_(document_load(options, file, remarks_)), redactor_(options.redact, document_.root())
{}

OpenDocument::OpenDocument(const Options &options) : OpenDocument(options, options.files.front())
{
    const std::unique_ptr<Reporter> reporter = side_reporter_make(options);
    for (const Diagnostic &remark : remarks_)
        reporter->report(remark);
}

Diagnostic OpenDocument::remark(const Value &value, std::string message) const
{
    const std::optional<Origin> origin = value.origin();
    Diagnostic diagnostic;
    diagnostic.level = YAML_PROBLEM_WARNING;
    diagnostic.code = YAML_ERR_VALUE;
    diagnostic.file = origin ? origin->source : document_.name();
    diagnostic.message = std::move(message);
    diagnostic.path = value.path();
    diagnostic.line = value.line();
    diagnostic.column = value.column();
    return diagnostic;
}

Value OpenDocument::find() const
{
    if (options_.path == "") {
        Diagnostic diagnostic;
        diagnostic.file = document_.name();
        diagnostic.message = "the key path is empty";
        diagnostic.code = YAML_ERR_KEY;
        throw Failure(Status::misuse, std::move(diagnostic));
    }
    Value value = document_.at(options_.path.value_or(""));
    if (!value.exists() && is_malformed(value.expect(Type::none).error()))
        throw failure_of(value.expect(Type::none).error());
    return value;
}

Value OpenDocument::require() const
{
    Value value = find();
    if (!value.exists())
        throw failure_of(value.expect(Type::none).error());
    return value;
}

Value OpenDocument::collection() const
{
    const Value value = require();
    return value.is_scalar() ? required(value.expect(Type::map)) : value;
}

} // namespace zryaml::cli
