// SPDX-License-Identifier: Apache-2.0
// zryaml list: pairs of key and text, one a line. A line has exactly two fields: what would break or divide it is
// written as an escape. NUL-terminated output is exact.
#include "../document.h"
#include "../output.h"

namespace zryaml::cli {

namespace {

// One field of a pair's line: printf '%b' gives the text back.
std::string field_text(std::string_view text)
{
    std::string field;
    for (const char character : text) {
        const size_t at = std::string_view("\\\n\r\t").find(character);
        if (at == std::string_view::npos)
            field += character;
        else
            field += {'\\', "\\nrt"[at]};
    }
    return field;
}

void pair_write(const OpenDocument &open, const Item &pair, bool null)
{
    if (!pair.value.is_scalar())
        return;
    if (null) {
        output_item(pair.key, true);
        output_item(open.text(pair.value), true);
    } else {
        output_item(field_text(pair.key) + '\t' + field_text(open.text(pair.value)));
    }
}

} // namespace

Status list_run(const Options &options)
{
    const OpenDocument open(options);
    const Value value = open.collection();
    for (const auto &[key, below] : value.items())
        pair_write(open, {key, below}, options.null);
    if (!value.is_sequence())
        return Status::found;
    for (const Value &element : value) { // the first key of each map
        if (element.is_map() && !element.empty())
            pair_write(open, *element.items().begin(), options.null);
    }
    return Status::found;
}

} // namespace zryaml::cli
