// SPDX-License-Identifier: Apache-2.0
// Typed reads by key path: the text of a scalar as a value, by the rules of zr_yaml_scalar.h. What is absent is told
// apart from what is wrong by the rule of value_lookup.h.
#include "../scalar_text.h"
#include "../value_lookup.h"
#include "../value_source.h"
#include "key_query.h"

using namespace zryaml;
using namespace zryaml::query;

namespace {

uint32_t ValueConvert(KeyQuery &query, const YamlListNode &value, const YamlScalarType &type, void *variable) noexcept
{
    if (value.uiDataType != YAML_DATATYPE_SCALAR) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOT_SCALAR, "The value is not a scalar. (DataType=%u)", value.uiDataType);
        KindExplain(value, "a scalar");
        query.Explain();
        return YAML_ERR_NOT_SCALAR;
    }
    if (ZRYAML_ScalarRead(&type, value.pcValue, variable) == YAML_OK)
        return YAML_OK;
    char sentence[SentenceSize];
    char hint[SentenceSize];
    (void)ZRYAML_ScalarExplain(&type, value.pcValue, sizeof(sentence), sentence);
    (void)ZRYAML_ScalarHint(&type, sizeof(hint), hint);
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_VALUE, "The text is no such value: %s.", sentence);
    ErrorSentence("%s", sentence);
    ErrorHintAdd("%s", hint);
    ErrorPlaceAdd(value.uiLine, value.uiColumn);
    ErrorFileAdd(SourceNameOf(&value));
    query.Explain();
    return YAML_ERR_VALUE;
}

__attribute__((format(printf, 4, 0))) uint32_t TypedGet(YamlHandle *handle, const YamlScalarType &type, void *variable,
                                                        const char *format, va_list arguments) noexcept
{
    ErrorClear();
    if (handle == nullptr || variable == nullptr || format == nullptr)
        return YAML_FAIL(YAML_ERR_PARAM, "The parameter is null.");
    KeyQuery query(*handle, format, arguments);
    const YamlListNode *value = nullptr;
    const uint32_t code = query.Read(value);
    return code == YAML_OK ? ValueConvert(query, *value, type, variable) : code;
}

constexpr YamlScalarType IntType = YAML_SCALAR_TYPE(YAML_KIND_INT, sizeof(int64_t));
constexpr YamlScalarType UintType = YAML_SCALAR_TYPE(YAML_KIND_UINT, sizeof(uint64_t));
constexpr YamlScalarType DoubleType = YAML_SCALAR_TYPE(YAML_KIND_DOUBLE, sizeof(double));
constexpr YamlScalarType BoolType = YAML_SCALAR_TYPE(YAML_KIND_BOOL, sizeof(uint32_t));
constexpr YamlScalarType DurationType = YAML_SCALAR_TYPE(YAML_KIND_DURATION, sizeof(int64_t));
constexpr YamlScalarType BytesType = YAML_SCALAR_TYPE(YAML_KIND_BYTES, sizeof(uint64_t));

} // namespace

uint32_t ZRYAML_IntGet(YamlHandle *pstHandle, int64_t *plValue, const char *pcKeyFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    const uint32_t uiCode = TypedGet(pstHandle, IntType, plValue, pcKeyFormat, stArgs);
    va_end(stArgs);
    return uiCode;
}

uint32_t ZRYAML_UintGet(YamlHandle *pstHandle, uint64_t *pulValue, const char *pcKeyFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    const uint32_t uiCode = TypedGet(pstHandle, UintType, pulValue, pcKeyFormat, stArgs);
    va_end(stArgs);
    return uiCode;
}

uint32_t ZRYAML_DoubleGet(YamlHandle *pstHandle, double *pdValue, const char *pcKeyFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    const uint32_t uiCode = TypedGet(pstHandle, DoubleType, pdValue, pcKeyFormat, stArgs);
    va_end(stArgs);
    return uiCode;
}

uint32_t ZRYAML_BoolGet(YamlHandle *pstHandle, uint32_t *puiValue, const char *pcKeyFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    const uint32_t uiCode = TypedGet(pstHandle, BoolType, puiValue, pcKeyFormat, stArgs);
    va_end(stArgs);
    return uiCode;
}

uint32_t ZRYAML_DurationGet(YamlHandle *pstHandle, int64_t *plNanoseconds, const char *pcKeyFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    const uint32_t uiCode = TypedGet(pstHandle, DurationType, plNanoseconds, pcKeyFormat, stArgs);
    va_end(stArgs);
    return uiCode;
}

uint32_t ZRYAML_BytesGet(YamlHandle *pstHandle, uint64_t *pulBytes, const char *pcKeyFormat, ...)
{
    va_list stArgs;
    va_start(stArgs, pcKeyFormat);
    const uint32_t uiCode = TypedGet(pstHandle, BytesType, pulBytes, pcKeyFormat, stArgs);
    va_end(stArgs);
    return uiCode;
}
