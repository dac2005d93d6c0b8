// SPDX-License-Identifier: Apache-2.0
// Reads by key path, other than the text of a scalar and the size of a sequence: value, kind and place.
#include "key_query.h"

using namespace zryaml;
using namespace zryaml::query;

namespace {

__attribute__((format(printf, 2, 0))) uint32_t ValueFind(YamlHandle *handle, const char *keyFormat, va_list arguments,
                                                         const YamlListNode *&value) noexcept
{
    ErrorClear();
    if (handle == nullptr || keyFormat == nullptr)
        return YAML_FAIL(YAML_ERR_PARAM, "The parameter is null.");
    return KeyQuery(*handle, keyFormat, arguments).ValueFind(value);
}

} // namespace

const YamlListNode *ZRYAML_ValueFind(YamlHandle *pstHandle, const char *pcKeyFormat, ...)
{
    const YamlListNode *pstValue = nullptr;
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    (void)ValueFind(pstHandle, pcKeyFormat, stArgs, pstValue);
    va_end(stArgs);
    return pstValue;
}

const YamlListNode *ZRYAML_PathFind(YamlHandle *pstHandle, const char *pcKeyPath)
{
    return ZRYAML_ValueFind(pcKeyPath != nullptr ? pstHandle : nullptr, "%s", pcKeyPath);
}

uint32_t ZRYAML_TypeGet(YamlHandle *pstHandle, const char *pcKeyFormat, ...)
{
    const YamlListNode *pstValue = nullptr;
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    (void)ValueFind(pstHandle, pcKeyFormat, stArgs, pstValue);
    va_end(stArgs);
    return ZRYAML_ValueTypeGet(pstValue);
}

uint32_t ZRYAML_PositionGet(YamlHandle *pstHandle, uint32_t *puiLine, uint32_t *puiColumn, const char *pcKeyFormat, ...)
{
    if (puiLine == nullptr || puiColumn == nullptr)
        pstHandle = nullptr; // refused below
    const YamlListNode *pstValue = nullptr;
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    const uint32_t uiCode = ValueFind(pstHandle, pcKeyFormat, stArgs, pstValue);
    va_end(stArgs);
    if (uiCode == YAML_OK)
        ZRYAML_ValuePositionGet(pstValue, puiLine, puiColumn);
    return uiCode;
}
