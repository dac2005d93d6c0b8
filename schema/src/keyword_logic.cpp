// SPDX-License-Identifier: Apache-2.0
// Keywords that put schemas together for one and the same value.
#include "keyword.h"

namespace zryaml::schema {

namespace {

bool AnyOfCheck(Run &run, const Rule &rule, const Value &value)
{
    for (const Schema *branch : rule.schemas) {
        if (run.FitsQuietly(*branch, value))
            return true;
    }
    return ChoiceFault(run, rule.schemas, value);
}

bool OneOfCheck(Run &run, const Rule &rule, const Value &value)
{
    size_t first = 0; // numbers from 1
    for (size_t at = 0; at < rule.schemas.size(); ++at) {
        if (!run.FitsQuietly(*rule.schemas[at], value))
            continue;
        if (first != 0)
            return run.Fault(value, YAML_ERR_SCHEMA,
                             "fits choices %zu and %zu of 'oneOf' in the schema, must fit one only", first, at + 1);
        first = at + 1;
    }
    return first != 0 || ChoiceFault(run, rule.schemas, value);
}

bool NotCheck(Run &run, const Rule &rule, const Value &value)
{
    if (!run.FitsQuietly(*rule.schema, value))
        return true;
    if (run.IsQuiet())
        return false;
    const std::string subject = value.isKey ? "key " + Quoted(value.text) + " " : "";
    const std::string excluded = Described(*rule.schema);
    return run.Fault(
        {value, YAML_ERR_SCHEMA,
         subject + (excluded.empty() ? "is what 'not' of the schema excludes" : "must not be " + excluded)});
}

bool IfCheck(Run &run, const Rule &rule, const Value &value)
{
    const Schema *next = rule.schemas[run.FitsQuietly(*rule.schema, value) ? 0 : 1];
    return next == nullptr || run.Fits(*next, value);
}

void BranchesAdd(Build &build, Schema &schema, CheckFunction check, const YamlListNode *value)
{
    Rule &rule = schema.rules.emplace_back(Rule{check, KindAny});
    for (const YamlChild &child : Children(value))
        rule.schemas.push_back(build.Here(schema, child.pstValue));
}

} // namespace

bool AllOfCheck(Run &run, const Rule &rule, const Value &value)
{
    bool fits = true;
    for (const Schema *part : rule.schemas) {
        fits = run.Fits(*part, value) && fits;
        if (!fits && run.IsQuiet())
            break;
    }
    return fits;
}

void AllOfCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    BranchesAdd(build, schema, AllOfCheck, value);
}

void AnyOfCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    BranchesAdd(build, schema, AnyOfCheck, value);
}

void OneOfCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    BranchesAdd(build, schema, OneOfCheck, value);
}

void NotCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    schema.rules.emplace_back(Rule{NotCheck, KindAny}).schema = build.Here(schema, value);
}

void IfCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    const YamlListNode *yes = ChildOf(schema.source, "then");
    const YamlListNode *no = ChildOf(schema.source, "else");
    Rule &rule = schema.rules.emplace_back(Rule{IfCheck, KindAny});
    rule.schema = build.Here(schema, value);
    for (const YamlListNode *branch : {yes, no})
        rule.schemas.push_back(branch != nullptr ? build.Here(schema, branch) : nullptr);
}

} // namespace zryaml::schema
