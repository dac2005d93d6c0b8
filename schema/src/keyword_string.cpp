// SPDX-License-Identifier: Apache-2.0
// Keywords for strings, which may be keys.
#include "keyword.h"

#include <algorithm>

namespace zryaml::schema {

namespace {

std::string Subject(const Value &value)
{
    return value.isKey ? "key " + Quoted(value.text) + " " : "";
}

// In characters.
uint64_t LengthOf(std::string_view text) noexcept
{
    return static_cast<uint64_t>(
        std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

bool LengthFault(Run &run, const Rule &rule, const Value &value, const char *what)
{
    if (run.IsQuiet())
        return false;
    const std::string count = std::to_string(rule.count);
    return run.Fault({value, YAML_ERR_RANGE,
                      Subject(value) + "must have " + what + " " + count +
                          (rule.count == 1 ? " character" : " characters") + ", has " +
                          std::to_string(LengthOf(value.text))});
}

bool MaxLengthCheck(Run &run, const Rule &rule, const Value &value)
{
    return LengthOf(value.text) <= rule.count || LengthFault(run, rule, value, "at most");
}

bool MinLengthCheck(Run &run, const Rule &rule, const Value &value)
{
    if (LengthOf(value.text) >= rule.count)
        return true;
    if (value.text.empty() && rule.count == 1)
        return run.Fault(value, YAML_ERR_RANGE, value.isKey ? "a key must not be empty" : "must not be empty");
    return LengthFault(run, rule, value, "at least");
}

bool PatternCheck(Run &run, const Rule &rule, const Value &value)
{
    if (run.Find(*rule.pattern, value.text, value) != Pattern::Answer::NoMatch) // or the run says so itself
        return true;
    if (run.IsQuiet())
        return false;
    const std::string subject = value.isKey ? "key " + Quoted(value.text) : Quoted(value.text);
    return run.Fault({value, YAML_ERR_VALUE, subject + " does not match the pattern " + Quoted(rule.pattern->Text())});
}

bool FormatCheck(Run &run, const Rule &rule, const Value &value)
{
    if (rule.format->isValid(value.text))
        return true;
    if (run.IsQuiet())
        return false;
    const std::string subject = value.isKey ? "key " + Quoted(value.text) : Quoted(value.text);
    const std::string why = rule.format->why != nullptr ? ": " + rule.format->why(value.text) : "";
    return run.Fault({value, YAML_ERR_VALUE, subject + " is not " + std::string(rule.format->phrase) + why});
}

void LengthAdd(Schema &schema, CheckFunction check, const YamlListNode *value)
{
    schema.rules.emplace_back(Rule{check, KindString}).count = Number(TextOf(value)).Count();
}

} // namespace

void MaxLengthCompile(Build &, Schema &schema, const YamlListNode *value)
{
    LengthAdd(schema, MaxLengthCheck, value);
}

void MinLengthCompile(Build &, Schema &schema, const YamlListNode *value)
{
    LengthAdd(schema, MinLengthCheck, value);
}

void PatternCompile(Build &build, Schema &schema, const YamlListNode *value)
{
    if (const Pattern *pattern = build.PatternOf(value, TextOf(value)))
        schema.rules.emplace_back(Rule{PatternCheck, KindString}).pattern = pattern;
}

void FormatCompile(Build &, Schema &schema, const YamlListNode *value)
{
    if (const Format *format = FormatFind(TextOf(value)))
        schema.rules.emplace_back(Rule{FormatCheck, KindString}).format = format;
}

} // namespace zryaml::schema
