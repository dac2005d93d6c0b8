// SPDX-License-Identifier: Apache-2.0
// zryaml size: the number of elements of a sequence.
#include "../document.h"
#include "../output.h"

namespace zryaml::cli {

Status size_run(const Options &options)
{
    const OpenDocument open(options);
    const Value value = required(open.find().expect(Type::sequence));
    output_item(std::to_string(value.size()));
    return Status::found;
}

} // namespace zryaml::cli
