// SPDX-License-Identifier: Apache-2.0
// What a layered document knows beside its tree: the sources that its nodes came from and the values that others took
// the place of. A document that was loaded alone has none of this.
//
// Invariants: 1. the number in a node's NODE_LAYER bits is that of its source; 2. a value with NODE_SHADOWS names the
// one whose place it took: a scalar or sequence in pstShadowed, a map in the table; 3. after the load both tables are
// in the order of the values' addresses.
#pragma once

#include "growing_array.h"
#include "node_tree.h"

namespace zryaml {

constexpr uint32_t SourcesMax = 1000; // fits the bits of a node

struct LayerSource {
    uint32_t layer;            // index in the caller's array
    bool isDocument;           // a file or a text, not a variable or an assignment
    char *name;                // path, name of the text, or as "environment APP_PORT"; a block of its own
    const YamlListNode *value; // what a variable or an assignment has set; else NULL
};

struct ValuePair {
    const YamlListNode *value;
    const YamlListNode *other;
};

} // namespace zryaml

struct YamlLayering {
    zryaml::GrowingArray<zryaml::LayerSource> sources;
    zryaml::GrowingArray<zryaml::ValuePair> shadows;    // of maps
    zryaml::GrowingArray<zryaml::ValuePair> references; // interpolated scalars, each with a scalar whose text it took
};

namespace zryaml {

// Gives a document an empty record of this. False if out of memory.
[[nodiscard]] bool LayeringMake(YamlHandle &handle) noexcept;
// Puts the tables in order, when all layers are in.
void LayeringSort(YamlHandle &handle) noexcept;
// Gives back what a document has of this.
void LayeringRelease(YamlHandle &handle) noexcept;

} // namespace zryaml
