// SPDX-License-Identifier: Apache-2.0
// A loaded document and its values: the one way from FILE and PATH to a value.
#pragma once

#include "failure.h"

#include <memory>
#include <string_view>
#include <zr_yaml.h>

namespace zryaml::cli {

class Document {
public:
    // Loads a file, or standard input for "-"; throws a Failure that tells unreadable from invalid.
    explicit Document(const std::string &stFile);

    // The value at a key path, or the top value without one; throws a Failure if there is none.
    [[nodiscard]] const YamlListNode &Find(const std::optional<std::string> &stPath) const;
    // The top value; NULL if the document is empty.
    [[nodiscard]] const YamlListNode *Top() const noexcept { return ZRYAML_RootGet(m_pstHandle.get()); }
    [[nodiscard]] YamlHandle *Handle() const noexcept { return m_pstHandle.get(); }
    // The failure of a command that cannot use a value, at the value's place.
    [[nodiscard]] Failure Unfit(const YamlListNode &stValue, uint32_t uiCode, std::string stMessage) const;

private:
    struct HandleFree {
        void operator()(YamlHandle *pstHandle) const noexcept { ZRYAML_HandleFree(pstHandle); }
    };
    std::string m_stFile;
    std::unique_ptr<YamlHandle, HandleFree> m_pstHandle;
};

// "scalar", "map", "sequence" or "none".
[[nodiscard]] const char *TypeName(uint32_t uiType) noexcept;

// The key path of a value.
[[nodiscard]] std::string PathOf(const YamlListNode &stValue);

// The path of a child, as it would be written to find it, from that of its collection.
[[nodiscard]] std::string ChildPath(std::string_view svPath, const YamlChild &stChild);

} // namespace zryaml::cli
