// SPDX-License-Identifier: Apache-2.0
// The names of the codes, for diagnostics and for tools.
#include <zr_yaml.h>

namespace {

struct CodeName {
    uint32_t uiCode;
    const char *pcName;
};

#define CODE_NAME(code) \
    {                   \
        code, #code     \
    }
constexpr CodeName g_codeName[] = {
    CODE_NAME(YAML_OK),
    CODE_NAME(YAML_ERR_NOMEM),
    CODE_NAME(YAML_ERR_PARAM),
    CODE_NAME(YAML_ERR_KEY),
    CODE_NAME(YAML_ERR_NOT_FOUND),
    CODE_NAME(YAML_ERR_EMPTY),
    CODE_NAME(YAML_ERR_BUF),
    CODE_NAME(YAML_ERR_POOL),
    CODE_NAME(YAML_ERR_OPEN),
    CODE_NAME(YAML_ERR_PARSER_INIT),
    CODE_NAME(YAML_ERR_INDEX),
    CODE_NAME(YAML_ERR_SAME),
    CODE_NAME(YAML_ERR_EVENT),
    CODE_NAME(YAML_ERR_NODE_TYPE),
    CODE_NAME(YAML_ERR_READER),
    CODE_NAME(YAML_ERR_SCANNER),
    CODE_NAME(YAML_ERR_PARSE),
    CODE_NAME(YAML_ERR_NOT_SCALAR),
    CODE_NAME(YAML_ERR_SWITCH_OFF),
    CODE_NAME(YAML_ERR_ALIAS),
    CODE_NAME(YAML_ERR_ITER_END),
    CODE_NAME(YAML_ERR_VALUE),
    CODE_NAME(YAML_ERR_RANGE),
    CODE_NAME(YAML_ERR_UNKNOWN_KEY),
    CODE_NAME(YAML_ERR_MISSING_KEY),
    CODE_NAME(YAML_ERR_LAYER),
    CODE_NAME(YAML_ERR_EXPAND),
    CODE_NAME(YAML_ERR_SCHEMA),
};
#undef CODE_NAME

} // namespace

const char *ZRYAML_CodeNameGet(uint32_t uiCode)
{
    for (const CodeName &name : g_codeName) {
        if (name.uiCode == uiCode)
            return name.pcName;
    }
    return "";
}
