// SPDX-License-Identifier: Apache-2.0
// Finds out, after a load has failed, where in the text the person went wrong and says it in plain words. libyaml's own
// message often points at the place where it gave up instead. Nothing here runs for a load that succeeds.
#pragma once

#include <cstdio>
#include <string_view>
#include <yaml.h>

namespace zryaml::parse {

struct Source { // what is being loaded: a file, or a text in memory
    FILE *pstFile;
    std::string_view svText;
};

// Adds place and hint of a failed parse call to the error record.
void ParseErrorExplain(const yaml_parser_t &stParser, const Source &stSource) noexcept;

} // namespace zryaml::parse
