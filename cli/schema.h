// SPDX-License-Identifier: Apache-2.0
// The schemas that check uses, each loaded once.
#pragma once

#include "document.h"

#include <map>
#include <zr_yaml_schema.h>

namespace zryaml::cli {

class Schemas {
public:
    // Loads the schema that --schema names; throws a Failure if it is none.
    explicit Schemas(const Options &options);

    // What the schema that the options or the document's first line name finds wrong; nothing without a schema. Throws
    // a Failure if the schema of the first line is none.
    [[nodiscard]] std::vector<Diagnostic> check(const OpenDocument &open, const std::string &file);

private:
    struct Free {
        void operator()(YamlSchema *schema) const noexcept { ZRYAML_SchemaFree(schema); }
    };
    const YamlSchema &load(const std::string &place);

    const Options &options_;
    std::map<std::string, std::unique_ptr<YamlSchema, Free>> schemas_;
};

} // namespace zryaml::cli
