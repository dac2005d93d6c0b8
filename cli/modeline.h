// SPDX-License-Identifier: Apache-2.0
// The schema that a document names for editors, in a first line such as
//   # yaml-language-server: $schema=server.schema.json
#pragma once

#include <optional>
#include <string>

namespace zryaml::cli {

// Where the schema is: a path, a relative one made relative to the folder of the file, or a URL as it stands. None if
// the file names none or cannot be read twice.
[[nodiscard]] std::optional<std::string> modeline_schema(const std::string &file);

[[nodiscard]] bool is_url(const std::string &place);

} // namespace zryaml::cli
