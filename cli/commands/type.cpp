// SPDX-License-Identifier: Apache-2.0
// zryaml type: what stands at a path. That nothing does is an answer; that nothing can, below a scalar, is a mistake.
#include "../document.h"
#include "../output.h"

namespace zryaml::cli {

Status type_run(const Options &options)
{
    const OpenDocument open(options);
    const Value value = open.find();
    if (!value.exists() && !value.expect(Type::none).error().is_absent())
        throw failure_of(value.expect(Type::none).error());
    output_item(value.is_map() ? "map" : value.is_sequence() ? "sequence" : value.exists() ? "scalar" : "none");
    return value.exists() ? Status::found : Status::missing;
}

} // namespace zryaml::cli
