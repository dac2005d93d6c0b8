// SPDX-License-Identifier: Apache-2.0
// Subschemas wait in a queue, so that no schema makes this recurse; references are then shortened to where they lead,
// and schemas that would send one value round in a circle are refused.
#include "build.h"

#include "keyword.h"
#include "uri.h"

#include <algorithm>

namespace zryaml::schema {

namespace {

constexpr uint32_t DeepestHere = 100; // schemas that one value may meet, one through the other
constexpr uint32_t Circle = UINT32_MAX;

} // namespace

void Build::Fault(const YamlListNode *node, std::string message, std::string hint)
{
    faults_.Add({ValueOf(node), YAML_ERR_SCHEMA, std::move(message), std::move(hint)});
    failed_ = true;
}

const Schema *Build::Below(const YamlListNode *node)
{
    Schema *&schema = compiled_[node];
    if (schema == nullptr) {
        made_.schemas.emplace_back(Schema{node});
        schema = &made_.schemas.back();
        waiting_.push_back(schema);
    }
    return schema;
}

const Schema *Build::Here(Schema &owner, const YamlListNode *node)
{
    return owner.here.emplace_back(Below(node));
}

const Pattern *Build::PatternOf(const YamlListNode *node, std::string_view text)
{
    const auto found = made_.patterns.find(text);
    if (found != made_.patterns.end())
        return found->second.get();
    std::string fault;
    std::unique_ptr<Pattern> pattern = Pattern::Compile(text, fault);
    if (pattern == nullptr) {
        Fault(node, Quoted(text) + " is not a regular expression: " + fault);
        return nullptr;
    }
    return made_.patterns.emplace(text, std::move(pattern)).first->second.get();
}

void Build::SchemaCompile(Schema &schema)
{
    const Value value = ValueOf(schema.source);
    schema.never = value.kind == KindBool && (value.text.front() == 'f' || value.text.front() == 'F');
    if (value.kind != KindMap)
        return;
    const YamlListNode *reference = ChildOf(schema.source, "$ref");
    if (ZRYAML_ValueTypeGet(reference) == YAML_DATATYPE_SCALAR) {
        if (const YamlListNode *target = ReferenceFind(reference))
            schema.target = Here(schema, target);
        return; // nothing counts beside it
    }
    for (const Keyword &keyword : Keywords()) {
        const YamlListNode *child = keyword.compile != nullptr ? ChildOf(schema.source, keyword.name) : nullptr;
        if (child != nullptr)
            keyword.compile(*this, schema, child);
    }
}

void Build::Drain()
{
    while (!waiting_.empty()) {
        Schema *schema = waiting_.back();
        waiting_.pop_back();
        SchemaCompile(*schema);
    }
}

// Counts the schemas that one value meets through this one. A circle or a long way is a fault, said once.
uint32_t Build::HereDepth(Schema &schema, uint32_t level)
{
    if (schema.hereDepth == Circle) {
        Fault(schema.source, "leads back to itself without going into the value");
        return 1;
    }
    if (schema.hereDepth != 0)
        return schema.hereDepth;
    uint32_t depth = level; // where the limit is passed there is no need to go on
    if (level <= DeepestHere) {
        schema.hereDepth = Circle;
        depth = 1;
        for (const Schema *next : schema.here)
            depth = failed_ ? depth : std::max(depth, HereDepth(*compiled_[next->source], level + 1) + 1);
    }
    if (depth > DeepestHere && !failed_)
        Fault(schema.source,
              "more than " + std::to_string(DeepestHere) + " schemas hold for one value, each through the other");
    schema.hereDepth = depth;
    return depth;
}

// There is no circle any more.
void Build::ReferencesShorten()
{
    for (Schema &schema : made_.schemas) {
        while (schema.target != nullptr && schema.target->target != nullptr)
            schema.target = schema.target->target;
    }
}

void Build::FaultsReport()
{
    std::vector<const YamlListNode *> tops;
    for (const Document &document : made_.documents)
        tops.push_back(ZRYAML_RootGet(document.get()));
    faults_.Tidy(tops);
    faults_.Report(problems_, YAML_ERR_SCHEMA);
}

bool Build::Compile(const YamlListNode *root, const std::string &uri)
{
    if (DocumentAdd(root, uri)) {
        if (!folder_.empty())
            prefixes_.emplace_back(UriFolder(BaseOf(root)));
        made_.root = Below(root);
        Drain();
    }
    for (Schema &schema : made_.schemas) {
        if (!failed_)
            (void)HereDepth(schema, 1);
    }
    if (!failed_)
        ReferencesShorten();
    FaultsReport();
    return !failed_;
}

} // namespace zryaml::schema
