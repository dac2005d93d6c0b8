// SPDX-License-Identifier: Apache-2.0
// Builds the tree of a document from parse events, one after the other.
#pragma once

#include "map_key.h"

#include <yaml.h>

namespace zryaml::parse {

struct CollectionKind; // a sequence or a map (tree_build.cpp)
extern const CollectionKind SequenceKind, MapKind;

enum Expected : uint32_t { ExpectKey = 0, ExpectValue = 1, ExpectFirst = 2 }; // what the next scalar of a map is

struct TreeBuilder {
    YamlHandle &handle;
    YamlListNode *current;           // what the last event made or returned to
    uint32_t expected = ExpectFirst; // ExpectValue, or anything else for a key
    uint32_t lastEvent = 0;          // libyaml's type of the event before
    uint32_t documents = 0;          // that have begun
    bool mayHold = false;            // the caller settles a key that is held
    HeldKey held = {};

    // Passes an event to its handler (event_dispatch.cpp).
    [[nodiscard]] uint32_t Take(const yaml_event_t &event) noexcept;

    [[nodiscard]] inline uint32_t Handle(const yaml_event_t &event, uint32_t eventBefore) noexcept;
    // Tests a key that the event before left untested.
    [[nodiscard]] uint32_t Settle() noexcept { return held.key == nullptr ? YAML_OK : KeySettle(held); }

    // Makes a scalar of an event and hangs it in the open collection (tree_build.cpp).
    [[nodiscard]] uint32_t TakeScalar(const yaml_event_t &event) noexcept;
    // Hangs a scalar in the open collection, or in the open map as key or value. It becomes current.
    [[nodiscard]] uint32_t PlaceScalar(YamlListNode &scalar) noexcept;
    // Opens a collection below the root, in the open sequence or below the current key; refuses it in the place of a
    // key.
    [[nodiscard]] uint32_t Open(const CollectionKind &kind, uint32_t eventBefore, const yaml_char_t *anchor) noexcept;
    // Closes the innermost collection, finishes its anchor and makes it current.
    void Close(uint32_t dataType) noexcept;

    // Puts a copy of an anchored node where an alias of its name stands (alias.cpp).
    [[nodiscard]] uint32_t TakeAlias(const yaml_event_t &event) noexcept;
    [[nodiscard]] uint32_t PlaceCopy(const YamlAnchorNode &anchor) noexcept;
    // As an element of a sequence, as the value of the current key, and as what a "<<" merges (merge_key.cpp).
    [[nodiscard]] uint32_t PlaceElementCopy(YamlListNode *sequence, const YamlListNode &source) noexcept;
    [[nodiscard]] uint32_t PlaceValueCopy(const YamlListNode &source, bool isFirst) noexcept;
    [[nodiscard]] uint32_t PlaceCopyBelow(const YamlListNode &source) noexcept;
    [[nodiscard]] uint32_t Merge(const YamlListNode &source, bool isFirst) noexcept;
    // If the current node has just ended as the value of a "<<": merges it in the place of that key.
    [[nodiscard]] uint32_t MergeForm() noexcept;

    // What a load of layers makes of the node that an event has made or ended (layer_form.cpp).
    [[nodiscard]] uint32_t TakeLayerForm(const yaml_event_t &event) noexcept;
};

// Hangs a scalar in the open map: as a key, or as the value of the key before, as is expected. Where a key may be held,
// that is told.
[[nodiscard]] uint32_t ScalarPlaceInMap(YamlListNode &scalar, YamlListNode &before, uint32_t &expected,
                                        HeldKey *held) noexcept;
// Hangs a node at the end of the sequence that a node is or stands in.
void ElementPlace(YamlListNode &element, YamlListNode &current) noexcept;

} // namespace zryaml::parse
