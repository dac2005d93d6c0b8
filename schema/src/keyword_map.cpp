// SPDX-License-Identifier: Apache-2.0
// Keywords for maps: which keys there must be and how many.
#include "keyword.h"

#include <algorithm>

namespace zryaml::schema {

namespace {

bool SizeFault(Run &run, const Rule &rule, const Value &value, const char *what)
{
    if (run.IsQuiet())
        return false;
    return run.Fault({value, YAML_ERR_RANGE,
                      std::string("must have ") + what + " " + std::to_string(rule.count) +
                          (rule.count == 1 ? " key" : " keys") + ", has " +
                          std::to_string(ZRYAML_ChildCountGet(value.node))});
}

bool MaxPropertiesCheck(Run &run, const Rule &rule, const Value &value)
{
    return CountPaid(run, value) <= rule.count || SizeFault(run, rule, value, "at most");
}

bool MinPropertiesCheck(Run &run, const Rule &rule, const Value &value)
{
    return CountPaid(run, value) >= rule.count || SizeFault(run, rule, value, "at least");
}

// One pass over the keys of the map, as both may be many.
bool RequiredCheck(Run &run, const Rule &rule, const Value &value)
{
    size_t there = 0;
    (void)CountPaid(run, value);
    for (const YamlChild &child : Children(value.node))
        there += NamedFind(rule.named, child.pcKey) != nullptr ? 1U : 0U;
    if (there == rule.named.size() || run.IsQuiet())
        return there == rule.named.size();
    std::vector<bool> found(rule.named.size());
    for (const YamlChild &child : Children(value.node)) {
        if (const Named *named = NamedFind(rule.named, child.pcKey))
            found[static_cast<size_t>(named - rule.named.data())] = true;
    }
    for (size_t at = 0; at < found.size(); ++at) {
        const std::string_view name = rule.named[at].name;
        if (!found[at])
            (void)run.Fault({value, YAML_ERR_MISSING_KEY, "key " + Quoted(name) + " is missing", {}, name});
    }
    return false;
}

bool DependenciesCheck(Run &run, const Rule &rule, const Value &value)
{
    bool fits = true;
    for (const Named &named : rule.named) {
        if (ChildOf(value.node, named.name) == nullptr)
            continue;
        if (named.schema != nullptr)
            fits = run.Fits(*named.schema, value) && fits;
        for (const char *needed : named.needs) {
            if (ChildOf(value.node, needed) != nullptr)
                continue;
            fits = false;
            if (!run.IsQuiet())
                (void)run.Fault({value,
                                 YAML_ERR_MISSING_KEY,
                                 "key " + Quoted(needed) + " is missing, which " + Quoted(named.name) + " needs",
                                 {},
                                 needed});
        }
    }
    return fits;
}

bool PropertyNamesCheck(Run &run, const Rule &rule, const Value &value)
{
    bool fits = true;
    for (const YamlChild &child : Children(value.node)) {
        fits = run.Fits(*rule.schema, KeyOf(child)) && fits;
        if (!fits && (run.IsQuiet() || run.HasGivenUp()))
            break;
    }
    return fits;
}

void SizeAdd(Schema &schema, CheckFunction check, const YamlListNode *value)
{
    schema.rules.emplace_back(Rule{check, KindMap}).count = Number(TextOf(value)).Count();
}

} // namespace

void MaxPropertiesCompile(Build &, Schema &schema, const YamlListNode *value)
{
    SizeAdd(schema, MaxPropertiesCheck, value);
}

void MinPropertiesCompile(Build &, Schema &schema, const YamlListNode *value)
{
    SizeAdd(schema, MinPropertiesCheck, value);
}

void RequiredCompile(Build &, Schema &schema, const YamlListNode *value)
{
    Rule &rule = schema.rules.emplace_back(Rule{RequiredCheck, KindMap});
    for (const YamlChild &child : Children(value))
        rule.named.push_back({TextOf(child.pstValue)});
    std::ranges::sort(rule.named, {}, &Named::name);
}

void DependenciesCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    Rule &rule = schema.rules.emplace_back(Rule{DependenciesCheck, KindMap});
    for (const YamlChild &child : Children(value)) {
        Named &named = rule.named.emplace_back(Named{child.pcKey});
        if (child.uiType != YAML_DATATYPE_SEQ)
            named.schema = build.Here(schema, child.pstValue);
        for (const YamlChild &needed : Children(child.pstValue)) {
            if (child.uiType == YAML_DATATYPE_SEQ)
                named.needs.push_back(ZRYAML_ValueTextGet(needed.pstValue));
        }
    }
}

void PropertyNamesCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    schema.rules.emplace_back(Rule{PropertyNamesCheck, KindMap}).schema = build.Below(value);
}

} // namespace zryaml::schema
