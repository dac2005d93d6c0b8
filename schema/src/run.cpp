// SPDX-License-Identifier: Apache-2.0
// Each visit of a schema costs a step, and so do sixteen values that a rule walks over and each item that a pattern
// tries. A document may cost so many steps,
// and more the more values it holds; so a schema that multiplies its own work is stopped, and a large document is not.
// What only makes sentences better has steps of its own; where they run out, sentences are plainer.
#include "run.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <utility>

namespace zryaml::schema {

namespace {

constexpr uint64_t StepsPerValue = 200;
constexpr uint64_t ValuesPerStep = 16; // that a rule walks over
constexpr uint64_t StepsPerFault = 10; // to say it, also in a branch that is not chosen
// Schemas that are being checked, one within the other: by the document's depth, or by schemas that lead to others.
constexpr uint32_t DeepestCheck = 3000;

// What the check of a document may cost at least.
uint64_t StepsFor(const YamlListNode *value) noexcept
{
    uint64_t steps = StepsPerValue + Pattern::StepsFor(TextOf(value));
    for (const YamlChild &child : Children(value))
        steps += StepsFor(child.pstValue) + Pattern::StepsFor(child.pcKey != nullptr ? child.pcKey : "");
    return steps;
}

} // namespace

// A large document has its steps counted only where the first ones run out.
bool Run::HasSteps(uint64_t steps)
{
    if (steps > stepsLeft_ && !isExtended_) {
        isExtended_ = true;
        stepsLeft_ += StepsFor(top_);
    }
    return steps <= stepsLeft_;
}

bool Run::StepTake()
{
    if (!HasSteps(1))
        return GiveUp(ValueOf(top_), "the check was given up: the schema makes it too costly");
    --stepsLeft_;
    return true;
}

void Run::Pay(uint64_t values)
{
    Spend(values / ValuesPerStep);
}

void Run::Spend(uint64_t steps)
{
    (void)HasSteps(steps);
    stepsLeft_ -= std::min(steps, stepsLeft_);
}

bool Run::CanAfford(uint64_t work)
{
    const bool can = work <= comfortLeft_;
    comfortLeft_ -= can ? work : 0;
    return can;
}

bool Run::GiveUp(const Value &value, const char *why)
{
    if (!gaveUp_)
        trouble_.Add({value, YAML_ERR_SCHEMA, why});
    gaveUp_ = true;
    return false;
}

bool Run::Fits(const Schema &schema, const Value &value)
{
    if (gaveUp_)
        return false;
    if (depth_ == DeepestCheck)
        return GiveUp(value, "the check was given up here: schema and document lead too deep");
    if (!StepTake())
        return false;
    ++depth_;
    const bool fits = RulesFit(schema.Resolved(), value);
    --depth_;
    return fits;
}

bool Run::RulesFit(const Schema &schema, const Value &value)
{
    if (schema.never && !IsQuiet())
        return Fault({value, YAML_ERR_SCHEMA,
                      value.isKey ? "key " + Quoted(value.text) + " is not allowed" : "is not allowed here"});
    if (schema.never)
        return false;
    bool fits = true;
    for (const Rule &rule : schema.rules) {
        if ((rule.kinds & value.kind) == 0 || rule.check(*this, rule, value))
            continue;
        fits = false;
        if (rule.decides || IsQuiet() || gaveUp_)
            break;
    }
    return fits;
}

bool Run::FitsQuietly(const Schema &schema, const Value &value)
{
    Findings *const loud = std::exchange(findings_, nullptr);
    const bool fits = Fits(schema, value);
    findings_ = loud;
    return fits;
}

Findings Run::Trial(const Schema &schema, const Value &value)
{
    Findings findings;
    Findings *const outer = std::exchange(findings_, &findings);
    (void)Fits(schema, value);
    findings_ = outer;
    return findings;
}

Pattern::Answer Run::Find(const Pattern &pattern, std::string_view text, const Value &value)
{
    if (gaveUp_ || !StepTake())
        return Pattern::Answer::TooCostly;
    if (!room_)
        room_.emplace();
    (void)HasSteps(Pattern::StepsFor(text));
    const Pattern::Answer answer = pattern.Find(text, *room_, stepsLeft_);
    if (answer == Pattern::Answer::TooCostly)
        trouble_.Add(
            {value, YAML_ERR_SCHEMA, "cannot be checked: the pattern " + Quoted(pattern.Text()) + " takes too long"});
    return answer;
}

bool Run::Fault(const Value &value, uint32_t code, const char *format, ...)
{
    if (IsQuiet() || gaveUp_)
        return false;
    char text[512]; // what goes into a sentence is cut before
    va_list arguments;
    va_start(arguments, format);
    (void)vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    return Fault({value, code, text});
}

bool Run::Fault(Finding finding)
{
    if (IsQuiet() || gaveUp_)
        return false;
    Spend(StepsPerFault);
    findings_->Add(std::move(finding));
    return false;
}

void Run::Append(Findings &&findings)
{
    if (!IsQuiet() && !gaveUp_)
        findings_->Append(std::move(findings));
}

Findings Run::Whole(const Schema &schema)
{
    Findings findings = Trial(schema, ValueOf(top_));
    findings.Append(std::move(trouble_));
    findings.Tidy(std::span(&top_, 1));
    return findings;
}

} // namespace zryaml::schema
