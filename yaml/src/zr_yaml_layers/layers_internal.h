// SPDX-License-Identifier: Apache-2.0
// What the files of this folder share: one layered load under way, how it says what is wrong, and its steps.
#pragma once

#include "../document_load.h"
#include "../layer_tag.h"
#include "../layering.h"
#include "../report.h"
#include "../text_part.h"
#include "../value_source.h"

#include <string_view>

#include <zr_yaml_layers.h>

namespace zryaml::layers {

extern ZR_LogModule YamlLogModule;

// One layered load. Problems are gathered; nothing is handed out if there is one. Out of memory ends it at once.
struct Stack {
    YamlHandle *document = nullptr; // what the layers are put over each other in
    YamlLayerOptions options = {};
    YamlProblems *problems = nullptr;
    bool refused = false;    // there is a problem
    bool starved = false;    // out of memory
    bool overfull = false;   // too many sources
    bool incomplete = false; // a document could not be loaded, so whatever is missing may be in it
    bool tagged = false;     // the document at hand has tags of layers
};

// --- problems (stack_problem.cpp) ---

struct Spot { // what a problem is about
    const char *source;
    const YamlListNode *value = nullptr; // of the document at hand; gives the path
    const YamlListNode *place = nullptr; // gives line and column
    const char *hint = "";
    uint32_t code = YAML_ERR_LAYER;
    uint32_t level = YAML_PROBLEM_ERROR;
};
[[nodiscard]] inline Spot SpotOf(const YamlListNode &value) noexcept
{
    return {SourceNameOf(&value), &value, &value};
}
void Tell(Stack &stack, const Spot &spot, const char *format, ...) noexcept __attribute__((format(printf, 3, 4)));
// Adds the failure of a load, which is in the error record of the thread. The hint serves where it has none.
void LoadFailureAdd(Stack &stack, const char *source, const char *hint) noexcept;
void Starve(Stack &stack) noexcept;
// Makes the first error of a list the thread's error record.
void ErrorRecordSet(const YamlProblems *problems) noexcept;

// --- sources and what was shadowed (origin.cpp) ---

// From now on nodes are made in the name of a source: its kind and its name. A document's kind is empty. False if there
// are too many, or out of memory.
[[nodiscard]] bool SourceAdd(Stack &stack, uint32_t layer, const char *kind, std::string_view name) noexcept;
[[nodiscard]] const LayerSource &SourceOf(const Stack &stack, const YamlListNode &value) noexcept;
[[nodiscard]] LayerSource &SourceLast(const Stack &stack) noexcept;
void ShadowAdd(Stack &stack, YamlListNode &value, YamlListNode &shadowed) noexcept;

// --- nodes in the tree (tree_change.cpp) ---

// The next child, for walks that take children away.
[[nodiscard]] YamlListNode *NextChild(const YamlListNode &father, const YamlListNode &child) noexcept;
// Takes a node off its father.
void Unhook(YamlListNode &node) noexcept;
// Hangs a value below the root, a key or a sequence, as its last child.
void Hang(YamlListNode &father, YamlListNode &node) noexcept;
// Hangs a key into a map of the document, as its last one.
void KeyHang(Stack &stack, YamlListNode &map, YamlListNode &key) noexcept;
// A key without a value, at the end of a map of the document. NULL if out of memory.
[[nodiscard]] YamlListNode *KeyMake(Stack &stack, YamlListNode &map, std::string_view text) noexcept;
// Takes a key with its marked key out of its map.
void KeyDrop(YamlListNode &key) noexcept;
// The element with a number, which is looked for from the nearer end. NULL if there is none.
[[nodiscard]] YamlListNode *ElementAt(const YamlListNode &sequence, uint64_t index) noexcept;
// How many steps that takes, in a sequence that ends with a certain element.
[[nodiscard]] constexpr uint64_t ElementSteps(const YamlListNode &last, uint64_t index) noexcept
{
    const uint64_t fromEnd = index <= last.uPlace.uiNumber ? last.uPlace.uiNumber - index : 0;
    return index < fromEnd ? index : fromEnd;
}
[[nodiscard]] YamlListNode *KeyFind(const YamlListNode &map, std::string_view text) noexcept;
[[nodiscard]] const char *KindName(const YamlListNode &value) noexcept; // "a map"
// Whether a value is an empty plain scalar: a "key:" with nothing behind it.
[[nodiscard]] bool IsPlainEmpty(const YamlListNode &value) noexcept;

// --- tags (layer_tag.cpp) ---

// Tells and takes away a tag that can mean nothing where it stands, or on what it stands.
void TagCheck(Stack &stack, YamlListNode &node) noexcept;
// The same for a node and all below it, where nothing was: keys that are tagged !unset are dropped.
void TagsSettle(Stack &stack, YamlListNode &node) noexcept;

// --- putting one document over another (value_merge.cpp) ---

// Puts a value, which hangs elsewhere or nowhere yet, over one of the document.
void ValueMerge(Stack &stack, YamlListNode &below, YamlListNode &value) noexcept;
// Puts a loaded document over the one at hand, and takes it over.
void DocumentMerge(Stack &stack, YamlHandle *upper) noexcept;

// --- setting one value (value_set.cpp) ---

struct Step { // of the way to a value
    bool isIndex;
    std::string_view key;
    uint64_t index;
};
constexpr uint32_t StepsMax = YAML_EVENT_STACK_SIZE;

enum class Reads { AsWritten, Scalar, Flow }; // how a text is taken; AsWritten: by what stands there

// Sets the value at the end of the steps, in the name of the last source; what is not there on the way is made.
void ValueSet(Stack &stack, const Step *steps, uint32_t count, std::string_view text, Reads reads) noexcept;

[[nodiscard]] bool IsUtf8(std::string_view text) noexcept; // utf8.cpp

// --- the kinds of layers ---

void DocumentLayerApply(Stack &stack, const YamlLayer &layer, uint32_t number) noexcept; // document_layer.cpp
void EnvironmentApply(Stack &stack, const YamlLayer &layer, uint32_t number) noexcept;   // environment.cpp
void AssignmentApply(Stack &stack, const YamlLayer &layer, uint32_t number) noexcept;    // assignment.cpp

// The value of a variable, or NULL (environment.cpp).
[[nodiscard]] const char *VariableGet(const Stack &stack, std::string_view name) noexcept;

struct Followed {
    YamlListNode *value; // NULL: not there
    uint64_t steps;      // in long sequences
    bool malformed;
};
// Follows a key path from the top (path_follow.cpp).
[[nodiscard]] Followed PathFollow(const YamlHandle &document, std::string_view path) noexcept;

// Puts texts in the place of "${...}" in the whole document (interpolation.cpp).
void Interpolate(Stack &stack) noexcept;

} // namespace zryaml::layers
