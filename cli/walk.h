// SPDX-License-Identifier: Apache-2.0
// A walk over a value and all below it, in document order, without recursion.
#pragma once

#include <zr_yaml.h>

namespace zryaml::cli {

class Visitor {
public:
    virtual ~Visitor() = default;
    // A value begins. stChild has its key or index, both unset for the value that the walk starts from.
    virtual void Begin(const YamlChild &stChild) = 0;
    // The map or sequence that began last and has not ended ends. A scalar has no end.
    virtual void End(uint32_t uiType) = 0;
};

void ValueWalk(const YamlListNode &stTop, Visitor &stVisitor);

} // namespace zryaml::cli
