// SPDX-License-Identifier: Apache-2.0
// Sets and reads the mark of keys that have been read.
#include "read_mark.h"

using namespace zryaml;
using namespace zryaml::query;

bool zryaml::query::IsKey(const YamlListNode &node) noexcept
{
    const YamlListNode *father = node.pstFather;
    return father != nullptr && father->uiDataType == YAML_DATATYPE_MAP && father->pstFather != nullptr;
}

bool zryaml::query::IsRead(const YamlListNode &key) noexcept
{
    return (__atomic_load_n(&key.uiState, __ATOMIC_RELAXED) & NODE_READ) != 0;
}

void zryaml::query::ReadMarkAlways(const YamlListNode &node) noexcept
{
    for (const YamlListNode *pst = &node; pst != nullptr; pst = pst->pstFather) {
        if (!IsKey(*pst))
            continue;
        if (IsRead(*pst))
            return; // and so are all above
        // The bit is the library's own and the only one that changes after the load.
        __atomic_fetch_or(&const_cast<YamlListNode *>(pst)->uiState, NODE_READ, __ATOMIC_RELAXED);
    }
}
