// SPDX-License-Identifier: Apache-2.0
#include "fuzz_support.h"

#include <zr_base.h>

#include <algorithm>
#include <cstring>

[[maybe_unused]] static const bool g_bSetUp = [] {
    ZR_LogLevelSet(ZR_LOG_NOTHING);
    YamlLimits stLimits = YAML_LIMITS_INIT;
    ZRYAML_LimitsGet(&stLimits);
    stLimits.ulCopyBytes = uint64_t{1} << 20;
    return ZRYAML_LimitsSet(&stLimits) == YAML_OK;
}();

Document DocumentLoad(std::string_view svText)
{
    Document stDocument(ZRYAML_TextLoad(svText.data(), svText.size(), "fuzz"));
    const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
    Require((stDocument == nullptr) == (stError.uiCode != YAML_OK), "result and record differ", stError.pcMessage);
    Require((stDocument == nullptr) == (stError.pcMessage[0] != '\0'), "a refusal has no message");
    if (stDocument != nullptr)
        DocumentCheck(*stDocument);
    return stDocument;
}

TwoParts InputSplit(const uint8_t *pucData, size_t ulSize)
{
    const std::string_view svInput(reinterpret_cast<const char *>(pucData), ulSize);
    const size_t ulEnd = std::min(svInput.find('\n'), ulSize);
    std::string head(svInput.substr(0, ulEnd));
    head.resize(strlen(head.c_str())); // a path ends at a NUL
    return {head, svInput.substr(std::min(ulEnd + 1, ulSize))};
}
