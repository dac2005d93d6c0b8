// SPDX-License-Identifier: Apache-2.0
// What a document may cost: how deep its collections go and how much its aliases and merges may copy.
#include "parse_internal.h"

using namespace zryaml;
using namespace zryaml::parse;

namespace {

constexpr uint64_t CopyBytesFactor = 16; // a document may copy its own bytes so many times, and then the limit

} // namespace

uint32_t zryaml::parse::DepthCheck(const YamlHandle &handle, uint32_t more) noexcept
{
    const uint32_t depth = handle.uiEventDepth + more;
    if (depth <= handle.stLimits.uiDepth)
        return YAML_OK;
    return Refuse(YAML_FAIL(YAML_ERR_EVENT, "The collections are nested too deep. (Depth=%u)", depth),
                  "they may be nested %u deep (limit uiDepth)", handle.stLimits.uiDepth);
}

uint32_t zryaml::parse::CopyCharge(YamlHandle &handle, uint64_t textBytes) noexcept
{
    const uint64_t ownShare = CopyBytesFactor * handle.ulOwnBytes;
    const uint64_t limit = handle.stLimits.ulCopyBytes;
    handle.ulCopyCharge += sizeof(YamlListNode) + textBytes;
    if (handle.ulCopyCharge <= ownShare || handle.ulCopyCharge - ownShare <= limit)
        return YAML_OK;
    return Refuse(YAML_FAIL(YAML_ERR_NOMEM, "The alias expansion is too large. (Alias=%s)",
                            handle.pcAlias != nullptr ? handle.pcAlias : ""),
                  "aliases and merges may copy %zu bytes and 16 times those of the document itself (limit ulCopyBytes)",
                  static_cast<size_t>(limit));
}
