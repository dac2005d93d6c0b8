// SPDX-License-Identifier: Apache-2.0
// One check of one value: what has been found so far, and what may still be spent.
#pragma once

#include "compiled.h"
#include "finding.h"

#include <cstdint>
#include <optional>

namespace zryaml::schema {

// Invariants:
// 1. Where a check answers false, a finding says why, unless the run is quiet.
// 2. A run that has given up answers false to everything and finds nothing more.
class Run {
public:
    // What lies below the top decides what the check may cost.
    explicit Run(const YamlListNode *top) noexcept : top_(top) {}

    // Whether the value fits; finds all that is wrong.
    bool Fits(const Schema &schema, const Value &value);
    // Only answers, and as soon as it can.
    bool FitsQuietly(const Schema &schema, const Value &value);
    // What would be found, kept apart.
    Findings Trial(const Schema &schema, const Value &value);

    // Looks for a pattern in a text. Where that is too costly the whole check fails, and says so at the value.
    Pattern::Answer Find(const Pattern &pattern, std::string_view text, const Value &value);

    // Notes what is wrong. Always false, so that a check can return it.
    bool Fault(const Value &value, uint32_t code, const char *format, ...) __attribute__((format(printf, 4, 5)));
    bool Fault(Finding finding);
    void Append(Findings &&findings);
    [[nodiscard]] bool IsQuiet() const noexcept { return findings_ == nullptr; }
    // Pays for values that a rule has walked over; the next visit finds out if nothing is left.
    void Pay(uint64_t values);
    // Whether there is enough left for work that only makes sentences better, such as comparing so many names.
    bool CanAfford(uint64_t work);
    // Whether so many names may be compared for a hint, and hints are still of use.
    bool WantsHint(size_t names) { return !IsQuiet() && !findings_->IsLong() && CanAfford(names * StepsPerName); }
    [[nodiscard]] bool HasGivenUp() const noexcept { return gaveUp_; }

    // Checks the whole value. @return All that was found, in order.
    Findings Whole(const Schema &schema);

private:
    bool HasSteps(uint64_t steps);
    bool StepTake();
    void Spend(uint64_t steps);
    bool GiveUp(const Value &value, const char *why);
    bool RulesFit(const Schema &schema, const Value &value);

    const YamlListNode *top_;
    Findings *findings_ = nullptr; // null while the run is quiet
    Findings trouble_;             // what must not get lost in a trial
    std::optional<MatchRoom> room_;
    static constexpr uint64_t StepsPerName = 5;

    uint64_t stepsLeft_ = 1'000'000;
    uint64_t comfortLeft_ = 1'000'000;
    bool isExtended_ = false; // more steps have been given for a large document
    bool gaveUp_ = false;
    uint32_t depth_ = 0;
};

} // namespace zryaml::schema
