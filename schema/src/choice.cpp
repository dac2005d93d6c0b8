// SPDX-License-Identifier: Apache-2.0
// Which branch of anyOf or oneOf was meant by a value that fits none. In this order: branches for another kind of value
// are left out; a key whose const or enum tells the branches apart decides; else the branch with the fewest problems.
#include "keyword.h"

#include <algorithm>
#include <optional>
#include <unordered_set>

namespace zryaml::schema {

namespace {

using Branches = std::vector<const Schema *>;

constexpr int DeepestLook = 8; // through allOf

// The kinds that a schema lets pass, as far as that is plain to see.
uint32_t KindsOf(Run &run, const Schema &branch, int depth = 0)
{
    if (!run.CanAfford(1))
        return KindAny;
    const Schema &schema = branch.Resolved();
    uint32_t kinds = schema.never ? 0 : schema.types;
    if (const Rule *parts = schema.Find(AllOfCheck); parts != nullptr && depth < DeepestLook) {
        for (const Schema *part : parts->schemas)
            kinds &= KindsOf(run, *part, depth + 1);
    }
    return kinds;
}

// The constants that a branch allows for a key; null if it names none.
const Rule *ConstantsOf(Run &run, const Schema &branch, std::string_view key, int depth = 0)
{
    if (!run.CanAfford(1))
        return nullptr;
    const Schema &schema = branch.Resolved();
    if (const Rule *members = schema.Find(MembersCheck)) {
        const Named *named = NamedFind(members->named, key);
        const Rule *constants = named != nullptr ? named->schema->Resolved().Find(ConstantsCheck) : nullptr;
        if (constants != nullptr)
            return constants;
    }
    const Rule *parts = depth < DeepestLook ? schema.Find(AllOfCheck) : nullptr;
    for (size_t at = 0; parts != nullptr && at < parts->schemas.size(); ++at) {
        if (const Rule *constants = ConstantsOf(run, *parts->schemas[at], key, depth + 1))
            return constants;
    }
    return nullptr;
}

// The values that branches allow, each once.
class Union {
public:
    void Add(const Rule &constants)
    {
        for (const Value &value : constants.values) {
            if (known_.insert(HashOf(value)).second)
                values_.push_back(value);
        }
    }
    [[nodiscard]] const std::vector<Value> &Values() const noexcept { return values_; }

private:
    std::vector<Value> values_;
    std::unordered_set<uint64_t> known_;
};

// What one key says about the branches: whether all of them name constants for it, and which of those allow its value.
struct Split {
    Branches chosen;
    Union allowed;
};

std::optional<Split> SplitBy(Run &run, const YamlChild &child, const Branches &branches)
{
    Split split;
    const Value value = ValueOf(child.pstValue);
    for (const Schema *branch : branches) {
        const Rule *constants = ConstantsOf(run, *branch, child.pcKey);
        if (constants == nullptr || !run.CanAfford(constants->values.size()))
            return std::nullopt;
        split.allowed.Add(*constants);
        if (IsConstant(run, *constants, value))
            split.chosen.push_back(branch);
    }
    return split;
}

bool FewestFault(Run &run, const Branches &branches, const Value &value)
{
    std::optional<Findings> best;
    for (const Schema *branch : branches) {
        Findings findings = run.Trial(*branch, value);
        if (!best || findings.Count() < best->Count())
            best = std::move(findings);
    }
    run.Append(std::move(*best));
    return false;
}

// Where every branch only names values, they are named together.
bool ConstantsFault(Run &run, const Branches &branches, const Value &value)
{
    Union allowed;
    for (const Schema *branch : branches) {
        const Rule *constants = branch->Resolved().Find(ConstantsCheck);
        if (constants == nullptr || !run.CanAfford(constants->values.size()))
            return FewestFault(run, branches, value);
        allowed.Add(*constants);
    }
    return ConstantFault(run, value, allowed.Values());
}

} // namespace

bool ChoiceFault(Run &run, const std::vector<const Schema *> &branches, const Value &value)
{
    if (run.IsQuiet() || run.HasGivenUp())
        return false;
    if (branches.empty())
        return run.Fault(value, YAML_ERR_SCHEMA, "is not allowed: the schema gives no choice");
    Branches left;
    uint32_t kinds = 0;
    for (const Schema *branch : branches) {
        const uint32_t allowed = KindsOf(run, *branch);
        kinds |= allowed;
        const bool isMeant = (allowed & value.kind) != 0 || (value.kind == KindFloat && (allowed & KindInt) != 0);
        if (isMeant)
            left.push_back(branch);
    }
    if (left.empty())
        return TypeFault(run, value, kinds);
    if (value.kind == KindMap) {
        for (const YamlChild &child : Children(value.node)) {
            const std::optional<Split> split = SplitBy(run, child, left);
            if (!split || split->chosen.size() == left.size())
                continue;
            if (split->chosen.empty())
                return ConstantFault(run, ValueOf(child.pstValue), split->allowed.Values());
            left = split->chosen;
            break;
        }
    }
    return ConstantsFault(run, left, value);
}

std::string Described(const Schema &schema)
{
    const Schema &resolved = schema.Resolved();
    if (resolved.rules.size() != 1)
        return {};
    if (const Rule *constants = resolved.Find(ConstantsCheck))
        return (constants->values.size() > 1 ? "one of " : "") + ShownList(constants->values);
    return resolved.types != KindAny ? ShownKinds(resolved.types) : std::string();
}

} // namespace zryaml::schema
