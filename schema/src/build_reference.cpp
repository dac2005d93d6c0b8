// SPDX-License-Identifier: Apache-2.0
// Where "$id" and "$ref" lead: within a document, to a document by its $id, and to files below the schema's own folder.
// Nothing is ever fetched.
#include "build.h"

#include "keyword.h"
#include "uri.h"

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace zryaml::schema {

namespace {

// Undoes "~1" and "~0" of a JSON pointer.
std::string Unescaped(std::string_view token)
{
    std::string name;
    for (size_t at = 0; at < token.size(); ++at) {
        const bool isEscape =
            token[at] == '~' && at + 1 < token.size() && (token[at + 1] == '0' || token[at + 1] == '1');
        name += !isEscape ? token[at] : token[at + 1] == '1' ? '/' : '~';
        at += isEscape ? 1 : 0;
    }
    return name;
}

// A file that can be read; no pipe, on which a load would wait for ever.
bool IsFile(const char *path) noexcept
{
    struct stat status = {};
    return stat(path, &status) == 0 && S_ISREG(status.st_mode) && access(path, R_OK) == 0;
}

} // namespace

// Goes over the places where schemas stand, as the keywords say.
void Build::IdsCollect(const YamlListNode *node, const std::string &base)
{
    known_.insert(node);
    std::string own = base;
    const YamlListNode *id = ChildOf(node, "$ref") == nullptr ? ChildOf(node, "$id") : nullptr;
    if (ZRYAML_ValueTypeGet(id) == YAML_DATATYPE_SCALAR) {
        const std::string uri = UriResolve(base, TextOf(id));
        const SplitUri parts = FragmentSplit(uri);
        if (!parts.fragment.empty()) {
            resources_.emplace(uri, node);
        } else {
            own = parts.document;
            if (meta_ == nullptr || own != MetaSchemaUri)
                resources_.emplace(own, node);
            else
                resources_.insert_or_assign(own, node); // one's own copy of the meta-schema
        }
    }
    if (own != base || node->pstFather == nullptr || !bases_.contains(node))
        bases_.insert_or_assign(node, own);
    for (const Keyword &keyword : Keywords()) {
        const YamlListNode *value = keyword.holds != Holds::Nothing ? ChildOf(node, keyword.name) : nullptr;
        if (value == nullptr)
            continue;
        const bool isList = ZRYAML_ValueTypeGet(value) == YAML_DATATYPE_SEQ;
        if (keyword.holds == Holds::Schema || (keyword.holds == Holds::SchemaOrList && !isList)) {
            IdsCollect(value, own);
            continue;
        }
        for (const YamlChild &child : Children(value)) {
            if (child.uiType != YAML_DATATYPE_SEQ) // names, in "dependencies"
                IdsCollect(child.pstValue, own);
        }
    }
}

const std::string &Build::BaseOf(const YamlListNode *node) const
{
    static const std::string None;
    for (; node != nullptr; node = node->pstFather) {
        const auto found = bases_.find(node);
        if (found != bases_.end())
            return found->second;
    }
    return None;
}

const YamlListNode *Build::FileFind(const YamlListNode *reference, const std::string &uri)
{
    const std::string shown = Quoted(TextOf(reference));
    for (const std::string &prefix : prefixes_) {
        if (prefix.empty() || !uri.starts_with(prefix))
            continue;
        const std::optional<std::string> relative = PercentDecoded(std::string_view(uri).substr(prefix.size()));
        const std::unique_ptr<char, decltype(&std::free)> real(
            relative && !relative->empty() ? realpath((folder_ + *relative).c_str(), nullptr) : nullptr, std::free);
        if (real == nullptr || !IsFile(real.get())) {
            Fault(reference, "refers to " + shown + ", which is not there");
            return nullptr;
        }
        if (!std::string_view(real.get()).starts_with(folder_))
            break;
        const YamlListNode *root = FileLoad(real.get());
        return root != nullptr && DocumentAdd(root, uri) ? root : nullptr;
    }
    const bool isFile = uri.starts_with("file:") || uri.starts_with("schema:");
    Fault(reference,
          "refers to " + shown +
              (isFile ? ", which is not below the schema's own folder" : ", which is not at hand: nothing is fetched"));
    return nullptr;
}

const YamlListNode *Build::ResourceFind(const YamlListNode *reference, const std::string &uri)
{
    const auto found = resources_.find(uri);
    if (found != resources_.end())
        return found->second;
    const YamlListNode *root = FileFind(reference, uri);
    resources_.emplace(uri, root); // also where there is none: that is said once
    return root;
}

// The child that one token of a pointer names; null if there is none. Many references may lead through one node, so its
// children are put into an index first.
const YamlListNode *Build::Step(const YamlListNode *node, const std::string &name)
{
    const auto [index, isNew] = children_.try_emplace(node);
    if (isNew) {
        for (const YamlChild &child : Children(node))
            index->second.emplace(child.pcKey != nullptr ? child.pcKey : std::to_string(child.uiIndex), child.pstValue);
    }
    const auto found = index->second.find(name);
    return found != index->second.end() ? found->second : nullptr;
}

const YamlListNode *Build::PointerFollow(const YamlListNode *reference, const YamlListNode *node,
                                         std::string_view fragment)
{
    const std::optional<std::string> decoded = PercentDecoded(fragment);
    std::string_view pointer = decoded ? std::string_view(*decoded) : fragment;
    while (pointer.starts_with('/')) {
        pointer.remove_prefix(1);
        const std::string name = Unescaped(pointer.substr(0, pointer.find('/')));
        pointer.remove_prefix(std::min(pointer.find('/'), pointer.size()));
        const YamlListNode *next = Step(node, name);
        if (next == nullptr) {
            const char *guess = ZRYAML_NearestKeyGet(node, name.c_str());
            Fault(reference, "refers to " + Quoted(TextOf(reference)) + ", but there is no " + Quoted(name),
                  guess != nullptr ? "did you mean " + Quoted(guess) + "?" : std::string());
            return nullptr;
        }
        node = next;
    }
    if (pointer.empty())
        return node;
    Fault(reference, "refers to " + Quoted(TextOf(reference)) + ", but no schema has the $id " +
                         Quoted("#" + std::string(pointer)));
    return nullptr;
}

const YamlListNode *Build::ReferenceFind(const YamlListNode *reference)
{
    const std::string uri = UriResolve(BaseOf(reference), TextOf(reference));
    if (const auto named = resources_.find(uri); named != resources_.end() && named->second != nullptr)
        return named->second;
    const SplitUri parts = FragmentSplit(uri);
    const YamlListNode *root = ResourceFind(reference, std::string(parts.document));
    const YamlListNode *target = root != nullptr ? PointerFollow(reference, root, parts.fragment) : nullptr;
    if (target == nullptr || known_.contains(target))
        return target;
    if (!MetaCheck(target)) // a place that no keyword makes a schema
        return nullptr;
    IdsCollect(target, BaseOf(target));
    return target;
}

} // namespace zryaml::schema
