// SPDX-License-Identifier: Apache-2.0
// zryaml dump: a picture of the document for people.
#include "../document.h"
#include "../output.h"
#include "../tree_writer.h"

namespace zryaml::cli {

namespace {

constexpr uint32_t first_size = 64 * 1024;
constexpr uint32_t last_size = INT32_MAX; // the library counts what it wrote in 31 bits

// The first map or sequence that has no children; absent if there is none.
Value empty_find(const Value &value)
{
    if (value.is_scalar())
        return {};
    if (value.empty())
        return value;
    for (const Value &child : value) {
        Value found = empty_find(child);
        if (found.exists())
            return found;
    }
    return {};
}

Failure dump_failure(const OpenDocument &open)
{
    Diagnostic diagnostic;
    diagnostic.file = open.document().name();
    diagnostic.message = ZRYAML_LastErrorGet()->pcMessage;
    diagnostic.code = ZRYAML_LastErrorGet()->uiCode;
    if (diagnostic.code == YAML_ERR_EMPTY) {
        diagnostic = open.remark(empty_find(open.root()), "an empty map or sequence cannot be dumped");
        diagnostic.level = YAML_PROBLEM_ERROR;
        diagnostic.code = YAML_ERR_EMPTY;
        diagnostic.hint = "zryaml json shows it";
    }
    return {Status::missing, std::move(diagnostic)};
}

// The document with *** in the place of what is hidden: its JSON reads as the same tree.
Document hidden_copy(const OpenDocument &open)
{
    JsonText json;
    TreeWriter<JsonText>(json, open).write(open.root());
    return required(Document::parse(json.text(), open.document().name()));
}

std::string dump_of(const OpenDocument &open, const Document &document)
{
    std::string text;
    uint32_t size = first_size;
    for (;;) {
        text.resize(size);
        if (ZRYAML_ContextDump(document.handle(), size, text.data()) == YAML_OK)
            return text.substr(0, text.find('\0'));
        if (ZRYAML_LastErrorGet()->uiCode != YAML_ERR_BUF || size == last_size)
            throw dump_failure(open);
        size = size > last_size / 2 ? last_size : size * 2;
    }
}

} // namespace

Status dump_run(const Options &options)
{
    const OpenDocument open(options);
    const bool hide = !options.redact.empty() && open.root().exists();
    output_item(hide ? dump_of(open, hidden_copy(open)) : dump_of(open, open.document()));
    return Status::found;
}

} // namespace zryaml::cli
