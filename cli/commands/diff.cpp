// SPDX-License-Identifier: Apache-2.0
// zryaml diff: the scalars that differ between two documents, a line each. Exit status: 0 same, 1 different, 2 trouble.
#include "../change_line.h"
#include "../document.h"
#include "../output.h"

namespace zryaml::cli {

namespace {

Status changes_write(const Options &options)
{
    const OpenDocument old_open(options, options.files[0]);
    const OpenDocument new_open(options, options.files[1]);
    YamlChange change = YAML_CHANGE_INIT;
    Status status = Status::found;
    while (ZRYAML_ChangeNext(old_open.document().handle(), new_open.document().handle(), &change) == YAML_OK) {
        output_item(change_line(old_open.redactor(), new_open.redactor(), change));
        status = Status::missing;
    }
    return status;
}

} // namespace

Status diff_run(const Options &options)
{
    try {
        return changes_write(options);
    } catch (const Failure &failure) {
        throw Failure(Status::misuse, failure.diagnostics());
    }
}

} // namespace zryaml::cli
