// SPDX-License-Identifier: Apache-2.0
// Keywords for numbers.
#include "keyword.h"

namespace zryaml::schema {

namespace {

bool BoundFault(Run &run, const Rule &rule, const Value &value, const char *what)
{
    if (run.IsQuiet())
        return false;
    return run.Fault({value, YAML_ERR_RANGE, std::string("must be ") + what + " " + std::string(rule.text)});
}

// .nan is within no bound.
bool MaximumCheck(Run &run, const Rule &rule, const Value &value)
{
    return Number(value.text) <= rule.number || BoundFault(run, rule, value, "at most");
}

bool ExclusiveMaximumCheck(Run &run, const Rule &rule, const Value &value)
{
    return Number(value.text) < rule.number || BoundFault(run, rule, value, "less than");
}

bool MinimumCheck(Run &run, const Rule &rule, const Value &value)
{
    return Number(value.text) >= rule.number || BoundFault(run, rule, value, "at least");
}

bool ExclusiveMinimumCheck(Run &run, const Rule &rule, const Value &value)
{
    return Number(value.text) > rule.number || BoundFault(run, rule, value, "greater than");
}

bool MultipleOfCheck(Run &run, const Rule &rule, const Value &value)
{
    return Number(value.text).IsMultipleOf(rule.number) || BoundFault(run, rule, value, "a multiple of");
}

void BoundAdd(Schema &schema, CheckFunction check, const YamlListNode *value)
{
    Rule &rule = schema.rules.emplace_back(Rule{check, KindNumber});
    rule.text = TextOf(value);
    rule.number = Number(rule.text);
}

} // namespace

void MaximumCompile(Build &, Schema &schema, const YamlListNode *value)
{
    BoundAdd(schema, MaximumCheck, value);
}

void ExclusiveMaximumCompile(Build &, Schema &schema, const YamlListNode *value)
{
    BoundAdd(schema, ExclusiveMaximumCheck, value);
}

void MinimumCompile(Build &, Schema &schema, const YamlListNode *value)
{
    BoundAdd(schema, MinimumCheck, value);
}

void ExclusiveMinimumCompile(Build &, Schema &schema, const YamlListNode *value)
{
    BoundAdd(schema, ExclusiveMinimumCheck, value);
}

void MultipleOfCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    BoundAdd(schema, MultipleOfCheck, value);
    if (!schema.rules.back().number.CanDivide())
        build.Fault(value, "must be a finite number of 19 digits at most");
}

} // namespace zryaml::schema
