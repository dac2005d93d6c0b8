// SPDX-License-Identifier: Apache-2.0
// Makes a key path out of a format and its arguments.
#include "node_find.h"

#include <cstring>

using namespace zryaml;
using namespace zryaml::query;

namespace {

// A path that does not fit has been stored up to there; a format that is refused has stored nothing.
void RefusalExplain(char (&acPath)[YAML_KEY_BUF_SIZE], const char *pcKeyFormat, bool bEmpty) noexcept
{
    if (bEmpty)
        return ErrorSentence("the key path is empty");
    if (acPath[0] != '\0')
        return ErrorSentence("the key path is longer than %d bytes", YAML_KEY_BUF_SIZE - 1);
    ErrorSentence("the format of the key path cannot be used");
    ErrorHintAdd("a '%%' that belongs to a key is written '%%%%', and %%n is always refused");
    const size_t ulShown = strnlen(pcKeyFormat, sizeof(acPath) - 1);
    memcpy(acPath, pcKeyFormat, ulShown);
    acPath[ulShown] = '\0';
}

} // namespace

uint32_t zryaml::query::PathFormat(char (&acPath)[YAML_KEY_BUF_SIZE], const char *pcKeyFormat, va_list stArgs) noexcept
{
    const size_t ulLength = strnlen(pcKeyFormat, sizeof(acPath));
    if (ulLength > 0 && ulLength < sizeof(acPath) && memchr(pcKeyFormat, '%', ulLength) == nullptr) {
        memcpy(acPath, pcKeyFormat, ulLength + 1); // as it stands
        return YAML_OK;
    }
    acPath[0] = '\0';
    const int iLength = vsnprintf_s(acPath, sizeof(acPath), sizeof(acPath) - 1, pcKeyFormat, stArgs);
    if (iLength > 0)
        return YAML_OK;
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_BUF, "The input key is too long to format.");
    RefusalExplain(acPath, pcKeyFormat, iLength == 0);
    return YAML_ERR_BUF;
}
