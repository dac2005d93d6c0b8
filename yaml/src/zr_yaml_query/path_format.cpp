// SPDX-License-Identifier: Apache-2.0
// Makes a key path out of a format and its arguments.
#include "node_find.h"

#include <cstring>

using namespace zryaml;
using namespace zryaml::query;

namespace {

// A path that does not fit has been stored up to there; a format that is refused has stored nothing.
void RefusalExplain(char (&acPath)[YAML_KEY_BUF_SIZE], const char *keyFormat, bool isEmpty) noexcept
{
    if (isEmpty)
        return ErrorSentence("the key path is empty");
    if (acPath[0] != '\0')
        return ErrorSentence("the key path is longer than %d bytes", YAML_KEY_BUF_SIZE - 1);
    ErrorSentence("the format of the key path cannot be used");
    ErrorHintAdd("a '%%' that belongs to a key is written '%%%%', and %%n is always refused");
    const size_t shown = strnlen(keyFormat, sizeof(acPath) - 1);
    memcpy(acPath, keyFormat, shown);
    acPath[shown] = '\0';
}

} // namespace

uint32_t zryaml::query::PathFormat(char (&path)[YAML_KEY_BUF_SIZE], const char *keyFormat, va_list arguments) noexcept
{
    const size_t ulLength = strnlen(keyFormat, sizeof(path));
    if (ulLength > 0 && ulLength < sizeof(path) && memchr(keyFormat, '%', ulLength) == nullptr) {
        memcpy(path, keyFormat, ulLength + 1); // as it stands
        return YAML_OK;
    }
    path[0] = '\0';
    const int length = vsnprintf_s(path, sizeof(path), sizeof(path) - 1, keyFormat, arguments);
    if (length > 0)
        return YAML_OK;
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_BUF, "The input key is too long to format.");
    RefusalExplain(path, keyFormat, length == 0);
    return YAML_ERR_BUF;
}
