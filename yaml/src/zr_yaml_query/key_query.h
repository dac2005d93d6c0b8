// SPDX-License-Identifier: Apache-2.0
// One public read by key path: finds the node, and when the read has failed, however it did, adds the path and the
// document's name to the error record.
#pragma once

#include "query_internal.h"

namespace zryaml::query {

class KeyQuery {
public:
    KeyQuery(YamlHandle &stHandle, const char *pcKeyFormat, va_list stArgs) noexcept;
    ~KeyQuery();
    KeyQuery(const KeyQuery &) = delete;
    KeyQuery &operator=(const KeyQuery &) = delete;

    // The node at the path, or NULL (logged).
    [[nodiscard]] YamlListNode *Find() noexcept;
    // Whether the path's last component selected an element.
    [[nodiscard]] uint32_t Indexed() const noexcept { return m_uiIndexed; }

private:
    YamlHandle &m_stHandle;
    const char *m_pcKeyFormat;
    va_list m_stArgs;
    uint32_t m_uiIndexed = 0;
};

// Marks the key whose value a node is, or that it is, and all keys above as read, while the debug switch is on.
void ReadMark(const YamlListNode &stNode) noexcept;

} // namespace zryaml::query
