// SPDX-License-Identifier: Apache-2.0
// Reads standard input whole, up to one part more than the library takes.
#include "input.h"
#include "failure.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <zr_yaml.h>

namespace zryaml::cli {

namespace {

std::string input_read()
{
    YamlLimits limits = {};
    ZRYAML_LimitsGet(&limits);
    std::string text;
    char part[65536];
    size_t length = 0;
    do {
        length = fread(part, 1, sizeof(part), stdin);
        text.append(part, length);
    } while (length > 0 && text.size() <= limits.ulFileBytes);
    if (ferror(stdin) == 0)
        return text;
    Diagnostic diagnostic;
    diagnostic.file = input_name;
    diagnostic.message = std::string("cannot be read: ") + strerror(errno);
    diagnostic.code = YAML_ERR_READER;
    throw Failure(Status::misuse, std::move(diagnostic));
}

} // namespace

const std::string &input_text()
{
    static const std::string text = input_read(); // once: a diagnostic may ask for it again
    return text;
}

} // namespace zryaml::cli
