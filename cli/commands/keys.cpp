// SPDX-License-Identifier: Apache-2.0
// zryaml keys: the key paths of what stands below a value, as the other commands take them. A control character in one
// is written as an escape; NUL-terminated output is exact.
#include "../document.h"
#include "../output.h"
#include "../text.h"

namespace zryaml::cli {

namespace {

void paths_write(const Value &collection, const Options &options)
{
    for (const Value &child : collection) {
        const std::string path = child.path();
        output_item(options.null ? path : visible_text(path), options.null);
        if (options.recursive)
            paths_write(child, options); // documents are 512 deep at most
    }
}

} // namespace

Status keys_run(const Options &options)
{
    const OpenDocument open(options);
    paths_write(open.collection(), options);
    return Status::found;
}

} // namespace zryaml::cli
