// SPDX-License-Identifier: Apache-2.0
// One read by a formatted key path. When it fails, however it does, the error record has the path, the document's name
// and what a person is told.
#pragma once

#include "node_find.h"
#include "read_mark.h"

namespace zryaml::query {

class KeyQuery {
public:
    KeyQuery(YamlHandle &handle, const char *keyFormat, va_list arguments) noexcept;
    ~KeyQuery() { va_end(m_args); }
    KeyQuery(const KeyQuery &) = delete;
    KeyQuery &operator=(const KeyQuery &) = delete;

    // By the rules of lookups by format: the node at the path, a key or an element; none with a code (logged).
    [[nodiscard]] Found NodeFind() noexcept;
    // Whether the path's last component selected an element.
    [[nodiscard]] uint32_t Indexed() const noexcept { return m_indexed; }
    // As above, the value there.
    [[nodiscard]] uint32_t ValueFind(const YamlListNode *&value) noexcept;

    // By the rule of typed reads (value_lookup.h): YAML_OK and the value, or YAML_ERR_NOT_FOUND (not logged),
    // _NODE_TYPE, _KEY, _INDEX or _BUF (logged).
    [[nodiscard]] uint32_t Read(const YamlListNode *&value) noexcept;

    // Adds path and document to a failure that has been noted since,
    void Explain() noexcept;
    // and says that the value of the node found is not of the kind wanted, such as "a scalar".
    void NodeExplain(const YamlListNode &node, const char *wanted) noexcept;

private:
    Found OrdinaryFind() noexcept;
    uint32_t OrdinaryRead(const YamlListNode *&value) noexcept;
    uint32_t PathMake() noexcept;
    void PathExplain() noexcept;

    YamlHandle &m_handle;
    const char *m_keyFormat;
    va_list m_args;
    uint32_t m_indexed = 0;
    bool m_hasPath = false;
    char m_path[YAML_KEY_BUF_SIZE]; // made when it is first needed
};

} // namespace zryaml::query
