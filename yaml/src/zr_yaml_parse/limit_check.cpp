// SPDX-License-Identifier: Apache-2.0
// What a document may cost: how deep its collections go and how much its aliases and merges may copy.
#include "parse_internal.h"

using namespace zryaml;
using namespace zryaml::parse;

namespace {

constexpr uint64_t CopyBytesFactor = 16; // a document may copy its own bytes so many times, and then the limit

} // namespace

uint32_t zryaml::parse::DepthCheck(const YamlHandle &stHandle, uint32_t uiMore) noexcept
{
    const uint32_t uiDepth = stHandle.uiEventDepth + uiMore;
    if (uiDepth <= stHandle.stLimits.uiDepth)
        return YAML_OK;
    return Refuse(YAML_FAIL(YAML_ERR_EVENT, "The collections are nested too deep. (Depth=%u)", uiDepth),
                  "they may be nested %u deep (limit uiDepth)", stHandle.stLimits.uiDepth);
}

uint32_t zryaml::parse::CopyCharge(YamlHandle &stHandle, uint64_t ulTextBytes) noexcept
{
    const uint64_t ulOwnShare = CopyBytesFactor * stHandle.ulOwnBytes;
    const uint64_t ulLimit = stHandle.stLimits.ulCopyBytes;
    stHandle.ulCopyCharge += sizeof(YamlListNode) + ulTextBytes;
    if (stHandle.ulCopyCharge <= ulOwnShare || stHandle.ulCopyCharge - ulOwnShare <= ulLimit)
        return YAML_OK;
    return Refuse(YAML_FAIL(YAML_ERR_NOMEM, "The alias expansion is too large. (Alias=%s)",
                            stHandle.pcAlias != nullptr ? stHandle.pcAlias : ""),
                  "aliases and merges may copy %zu bytes and 16 times those of the document itself (limit ulCopyBytes)",
                  static_cast<size_t>(ulLimit));
}
