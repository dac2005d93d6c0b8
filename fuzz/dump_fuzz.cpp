// SPDX-License-Identifier: Apache-2.0
// A dump into a buffer of any size, which is the number in the first line: the buffer is never left, its text is always
// terminated, and is the beginning of the whole dump.
#include "fuzz_support.h"

#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

constexpr char Canary = '\x5A';
constexpr size_t CanarySize = 16;

void SmallDumpCheck(YamlHandle &stHandle, uint32_t uiSize, const std::string &whole)
{
    std::vector<char> buffer(uiSize + CanarySize, Canary);
    const uint32_t uiResult = ZRYAML_ContextDump(&stHandle, uiSize, buffer.data());
    Require(std::string_view(&buffer[uiSize], CanarySize) == std::string(CanarySize, Canary), "the buffer is left");
    if (uiSize == 0)
        return Require(uiResult == YAML_ERR_PARAM, "a buffer of no bytes is taken");
    const size_t ulLength = strnlen(buffer.data(), uiSize);
    Require(ulLength < uiSize, "the text is not terminated");
    if (whole.empty()) // nothing there, an empty collection, or too large to be told
        return;
    std::string_view svText(buffer.data(), ulLength);
    Require((uiResult == YAML_OK) == (whole.size() < uiSize), "a buffer fits that should not, or the other way round");
    if (uiResult == YAML_OK)
        Require(ulLength + 2 == whole.size(), "the whole dump is cut");
    if (svText.ends_with(',')) // a bracket that does not fit would have taken its place
        svText.remove_suffix(1);
    Require(whole.starts_with(svText), "the text is not the beginning of the dump", svText);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *pucData, size_t ulSize)
{
    const TwoParts stInput = InputSplit(pucData, ulSize);
    const auto uiSize = static_cast<uint32_t>(strtoul(stInput.head.c_str(), nullptr, 10) % 100000);
    const Document stDocument = DocumentLoad(stInput.svBody);
    if (stDocument == nullptr)
        return 0;
    const std::string whole = DumpText(*stDocument);
    SmallDumpCheck(*stDocument, uiSize, whole);
    for (const size_t ulNear : {whole.size(), whole.size() + 1, whole.size() / 2})
        SmallDumpCheck(*stDocument, static_cast<uint32_t>(ulNear), whole);
    return 0;
}
