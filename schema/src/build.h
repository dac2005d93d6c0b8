// SPDX-License-Identifier: Apache-2.0
// Makes a compiled schema of documents: loads them, checks them against the meta-schema, resolves references, and
// compiles each subschema that is reached once.
#pragma once

#include "compiled.h"
#include "finding.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace zryaml::schema {

class Build {
public:
    // Fills an empty schema. What is wrong goes to the list, which may be null.
    Build(YamlSchema &made, YamlProblems **problems) : made_(made), problems_(problems) {}

    // Each gives false if there is anything wrong.
    bool FileCompile(const char *path);
    bool TextCompile(std::string_view text, const char *name);

    // For keywords: a schema that holds for the same value as its owner, and one that holds for something in it.
    const Schema *Here(Schema &owner, const YamlListNode *node);
    const Schema *Below(const YamlListNode *node);
    // A pattern, compiled once for each text; null if it is none, which is then said at the node.
    const Pattern *PatternOf(const YamlListNode *node, std::string_view text);
    // Notes what is wrong at a place of the schema.
    void Fault(const YamlListNode *node, std::string message, std::string hint = {});

private:
    // build_load.cpp
    const YamlListNode *FileLoad(const std::string &path);
    const YamlListNode *TextLoad(std::string_view text, const char *name);
    const YamlListNode *Loaded(Document document);
    void LoadFault();
    bool MetaLoad();
    bool DocumentAdd(const YamlListNode *root, const std::string &uri);
    bool IsDraft7(const YamlListNode *root);
    bool MetaCheck(const YamlListNode *node);

    // build_reference.cpp
    void IdsCollect(const YamlListNode *node, const std::string &base);
    const YamlListNode *ReferenceFind(const YamlListNode *reference);
    const YamlListNode *ResourceFind(const YamlListNode *reference, const std::string &uri);
    const YamlListNode *FileFind(const YamlListNode *reference, const std::string &uri);
    const YamlListNode *PointerFollow(const YamlListNode *reference, const YamlListNode *node,
                                      std::string_view fragment);
    const YamlListNode *Step(const YamlListNode *node, const std::string &name);
    [[nodiscard]] const std::string &BaseOf(const YamlListNode *node) const;

    // build.cpp
    bool Compile(const YamlListNode *root, const std::string &uri);
    void FaultsReport();
    void Drain();
    void SchemaCompile(Schema &schema);
    void ReferencesShorten();
    uint32_t HereDepth(Schema &schema, uint32_t level);

    YamlSchema &made_;
    YamlProblems **problems_;
    Findings faults_;
    bool failed_ = false;

    const Schema *meta_ = nullptr;
    std::string folder_;                // real path that files must lie below, with its last '/'; empty: none
    std::vector<std::string> prefixes_; // URIs that stand for the folder
    std::unordered_map<std::string, const YamlListNode *> resources_; // by URI, with a fragment for a name
    std::unordered_map<const YamlListNode *, std::string> bases_;     // of schemas that have one of their own
    std::unordered_set<const YamlListNode *> known_;                  // places that the meta-schema has been over
    std::unordered_map<const YamlListNode *, std::unordered_map<std::string, const YamlListNode *>> children_;
    std::unordered_map<const YamlListNode *, Schema *> compiled_;
    std::vector<Schema *> waiting_;
};

// The text of the meta-schema, made from the table of keywords.
std::string MetaSchemaText();
inline constexpr const char *MetaSchemaUri = "http://json-schema.org/draft-07/schema";

} // namespace zryaml::schema
