// SPDX-License-Identifier: Apache-2.0
// zryaml where: the place of a value, and with --all also those of the values that it took the place of.
#include "../document.h"
#include "../output.h"
#include "../text.h"

#include <zr_yaml/layers.hpp>

namespace zryaml::cli {

Status where_run(const Options &options)
{
    const OpenDocument open(options);
    const Value value = open.require();
    const uint32_t last = options.all ? UINT32_MAX : 0;
    for (uint32_t shadowed = 0; shadowed <= last; ++shadowed) {
        const std::optional<Origin> origin = value.origin(shadowed);
        if (!origin)
            break;
        std::string line = origin->what();
        if (options.all && origin->text)
            line += ": " + visible_text(open.redactor().hides(value) ? Redactor::mark : *origin->text);
        output_item(line);
    }
    return Status::found;
}

} // namespace zryaml::cli
