// SPDX-License-Identifier: Apache-2.0
// properties, patternProperties and additionalProperties, which are one rule: the last holds for the keys that the
// others pass over.
#include "keyword.h"

#include <algorithm>

namespace zryaml::schema {

namespace {

Rule &MembersOf(Schema &schema)
{
    for (Rule &rule : schema.rules) {
        if (rule.check == MembersCheck)
            return rule;
    }
    return schema.rules.emplace_back(Rule{MembersCheck, KindMap});
}

// The key that was probably meant, unless it stands there as well.
const char *KeyGuess(const Rule &rule, const YamlChild &child, const YamlListNode *map)
{
    std::vector<const char *> names;
    names.reserve(rule.named.size());
    for (const Named &named : rule.named)
        names.push_back(named.name.data());
    const char *guess = ZRYAML_NearestTextGet(child.pcKey, names.data(), static_cast<uint32_t>(names.size()));
    return guess != nullptr && ChildOf(map, guess) == nullptr ? guess : nullptr;
}

bool UnknownFault(Run &run, const Rule &rule, const YamlChild &child, const YamlListNode *map)
{
    if (run.IsQuiet())
        return false;
    Finding finding = {KeyOf(child), YAML_ERR_UNKNOWN_KEY, "unknown key " + Quoted(child.pcKey)};
    if (const char *guess = run.WantsHint(rule.named.size()) ? KeyGuess(rule, child, map) : nullptr) {
        finding.hint = "did you mean " + Quoted(guess) + "?";
        finding.key = guess;
    }
    return run.Fault(std::move(finding));
}

bool MemberCheck(Run &run, const Rule &rule, const YamlChild &child, const YamlListNode *map)
{
    const Named *named = NamedFind(rule.named, child.pcKey);
    bool isKnown = named != nullptr;
    bool fits = true;
    const auto fit = [&](const Schema &schema) {
        const bool isForbidden = schema.Resolved().never; // then the key is at fault, whatever its value
        fits = run.Fits(schema, isForbidden ? KeyOf(child) : ValueOf(child.pstValue)) && fits;
    };
    if (isKnown)
        fit(*named->schema);
    for (const PatternNamed &pattern : rule.patterns) {
        const Pattern::Answer answer = run.Find(*pattern.pattern, child.pcKey, KeyOf(child));
        isKnown = isKnown || answer != Pattern::Answer::NoMatch;
        if (answer == Pattern::Answer::Match)
            fit(*pattern.schema);
    }
    if (isKnown || rule.schema == nullptr)
        return fits;
    if (rule.schema->Resolved().never)
        return UnknownFault(run, rule, child, map);
    fit(*rule.schema);
    return fits;
}

} // namespace

const Named *NamedFind(const std::vector<Named> &named, std::string_view key) noexcept
{
    const auto found = std::ranges::lower_bound(named, key, {}, &Named::name);
    return found != named.end() && found->name == key ? &*found : nullptr;
}

bool MembersCheck(Run &run, const Rule &rule, const Value &value)
{
    bool fits = true;
    (void)CountPaid(run, value);
    for (const YamlChild &child : Children(value.node)) {
        fits = MemberCheck(run, rule, child, value.node) && fits;
        if (!fits && (run.IsQuiet() || run.HasGivenUp()))
            break;
    }
    return fits;
}

void PropertiesCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    Rule &rule = MembersOf(schema);
    for (const YamlChild &child : Children(value))
        rule.named.push_back({child.pcKey, build.Below(child.pstValue)});
    std::ranges::sort(rule.named, {}, &Named::name);
}

void PatternPropertiesCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    Rule &rule = MembersOf(schema);
    for (const YamlChild &child : Children(value)) {
        if (const Pattern *pattern = build.PatternOf(child.pstValue, child.pcKey))
            rule.patterns.push_back({pattern, build.Below(child.pstValue)});
    }
}

void AdditionalPropertiesCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    MembersOf(schema).schema = build.Below(value);
}

} // namespace zryaml::schema
