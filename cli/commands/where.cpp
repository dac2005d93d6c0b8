// SPDX-License-Identifier: Apache-2.0
// zryaml where: the place of a value.
#include "../document.h"
#include "../output.h"

namespace zryaml::cli {

Status where_run(const Options &options)
{
    const OpenDocument open(options);
    const Value value = open.require();
    output_item(std::string(open.document().name()) + ':' + std::to_string(value.line()) + ':' +
                std::to_string(value.column()));
    return Status::found;
}

} // namespace zryaml::cli
