// SPDX-License-Identifier: Apache-2.0
// Keywords for sequences.
#include "keyword.h"

#include <algorithm>

namespace zryaml::schema {

namespace {

bool SizeFault(Run &run, const Value &value, const char *what, uint64_t count)
{
    if (run.IsQuiet())
        return false;
    return run.Fault({value, YAML_ERR_RANGE,
                      std::string("must have ") + what + " " + std::to_string(count) +
                          (count == 1 ? " element" : " elements") + ", has " +
                          std::to_string(ZRYAML_ChildCountGet(value.node))});
}

bool MaxItemsCheck(Run &run, const Rule &rule, const Value &value)
{
    return CountPaid(run, value) <= rule.count || SizeFault(run, value, "at most", rule.count);
}

bool MinItemsCheck(Run &run, const Rule &rule, const Value &value)
{
    return CountPaid(run, value) >= rule.count || SizeFault(run, value, "at least", rule.count);
}

struct Element {
    uint64_t hash;
    uint32_t index;
    const YamlListNode *node;
};

// Elements with one hash are compared with the first of them; by design of the hash there is hardly ever another.
bool UniqueItemsCheck(Run &run, const Rule &, const Value &value)
{
    std::vector<Element> elements;
    for (const YamlChild &child : Children(value.node))
        elements.push_back({HashPaid(run, ValueOf(child.pstValue)), child.uiIndex, child.pstValue});
    run.Pay(elements.size());
    std::ranges::stable_sort(elements, {}, &Element::hash);
    bool unique = true;
    const Element *first = nullptr;
    for (const Element &element : elements) {
        if (first == nullptr || first->hash != element.hash) {
            first = &element;
            continue;
        }
        const Value repeated = ValueOf(element.node);
        if (!IsEqual(ValueOf(first->node), repeated))
            continue;
        unique = false;
        if (run.IsQuiet())
            break;
        (void)run.Fault(repeated, YAML_ERR_SCHEMA, "is the same as element %u; the elements must differ", first->index);
    }
    return unique;
}

// The schemas are those of the first elements, the one schema that of all others.
bool ItemsCheck(Run &run, const Rule &rule, const Value &value)
{
    bool fits = true;
    for (const YamlChild &child : Children(value.node)) {
        const bool isListed = child.uiIndex < rule.schemas.size();
        const Schema *schema = isListed ? rule.schemas[child.uiIndex] : rule.schema;
        if (schema == nullptr)
            break;
        if (!isListed && schema->Resolved().never)
            return SizeFault(run, value, "at most", rule.schemas.size());
        fits = run.Fits(*schema, ValueOf(child.pstValue)) && fits;
        if (!fits && (run.IsQuiet() || run.HasGivenUp()))
            break;
    }
    return fits;
}

bool ContainsCheck(Run &run, const Rule &rule, const Value &value)
{
    for (const YamlChild &child : Children(value.node)) {
        if (run.FitsQuietly(*rule.schema, ValueOf(child.pstValue)))
            return true;
    }
    if (run.IsQuiet())
        return false;
    const std::string wanted = Described(*rule.schema);
    return run.Fault({value, YAML_ERR_SCHEMA,
                      wanted.empty() ? "has no element that fits 'contains' of the schema"
                                     : "must have an element that is " + wanted});
}

void SizeAdd(Schema &schema, CheckFunction check, const YamlListNode *value)
{
    schema.rules.emplace_back(Rule{check, KindSequence}).count = Number(TextOf(value)).Count();
}

} // namespace

void MaxItemsCompile(Build &, Schema &schema, const YamlListNode *value)
{
    SizeAdd(schema, MaxItemsCheck, value);
}

void MinItemsCompile(Build &, Schema &schema, const YamlListNode *value)
{
    SizeAdd(schema, MinItemsCheck, value);
}

void UniqueItemsCompile(Build &, Schema &schema, const YamlListNode *value)
{
    if (ValueOf(value).text.front() == 't' || ValueOf(value).text.front() == 'T')
        schema.rules.emplace_back(Rule{UniqueItemsCheck, KindSequence});
}

void ItemsCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    Rule &rule = schema.rules.emplace_back(Rule{ItemsCheck, KindSequence});
    if (ZRYAML_ValueTypeGet(value) != YAML_DATATYPE_SEQ) {
        rule.schema = build.Below(value);
        return;
    }
    for (const YamlChild &child : Children(value))
        rule.schemas.push_back(build.Below(child.pstValue));
}

// Says something only beside a list of schemas.
void AdditionalItemsCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    for (Rule &rule : schema.rules) {
        if (rule.check == ItemsCheck && rule.schema == nullptr)
            rule.schema = build.Below(value);
    }
}

void ContainsCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    schema.rules.emplace_back(Rule{ContainsCheck, KindSequence}).schema = build.Below(value);
}

} // namespace zryaml::schema
