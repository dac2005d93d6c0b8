// SPDX-License-Identifier: Apache-2.0
// Findings are kept as they come and put into document order once, by one walk over the document. Of two that say the
// same about one value one is kept; and where an unknown key probably stands for a missing one, only the first is told.
#include "finding.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <unordered_map>

#include <zr_yaml_layers.h>

namespace zryaml::schema {

namespace {

constexpr size_t MostFindings = 10000; // kept; of the rest only the number

using Order = std::unordered_map<const YamlListNode *, uint64_t>;

// Numbers the values that somebody asks for, in the order of a walk.
void WalkNumber(const YamlListNode *value, uint64_t &next, Order &order)
{
    const auto found = order.find(value);
    if (found != order.end())
        found->second = next;
    ++next;
    for (const YamlChild &child : Children(value))
        WalkNumber(child.pstValue, next, order);
}

// A key's value hangs below the key, and the key in its map.
const YamlListNode *KeyNode(const Value &value) noexcept
{
    return value.isKey && value.node != nullptr ? value.node->pstFather : value.node;
}

const YamlListNode *PathNode(const Value &value) noexcept
{
    const YamlListNode *key = KeyNode(value);
    return value.isKey && key != nullptr ? key->pstFather : key;
}

std::string PathOf(const YamlListNode *value)
{
    std::string path(ZRYAML_ValuePathGet(value, 0, nullptr), '\0');
    (void)ZRYAML_ValuePathGet(value, static_cast<uint32_t>(path.size() + 1), path.data());
    return path;
}

} // namespace

void Findings::Add(Finding finding)
{
    if (findings_.size() < MostFindings)
        findings_.push_back(std::move(finding));
    else
        ++leftOut_;
}

void Findings::Append(Findings &&other)
{
    for (Finding &finding : other.findings_)
        Add(std::move(finding));
    leftOut_ += other.leftOut_;
}

bool Findings::AreAt(const Value &value) const noexcept
{
    return std::ranges::all_of(findings_, [&](const Finding &finding) {
        return finding.value.node == value.node && finding.value.isKey == value.isKey;
    });
}

void Findings::Tidy(std::span<const YamlListNode *const> tops)
{
    if (findings_.size() < 2)
        return;
    std::set<std::tuple<const YamlListNode *, std::string_view>> guesses; // map and key
    for (const Finding &finding : findings_) {
        if (finding.value.isKey && !finding.key.empty())
            guesses.emplace(PathNode(finding.value), finding.key);
    }
    std::set<std::tuple<const YamlListNode *, bool, std::string>> said;
    std::erase_if(findings_, [&](const Finding &finding) {
        const bool isGuessed = !finding.value.isKey && guesses.contains({finding.value.node, finding.key});
        return isGuessed || !said.emplace(finding.value.node, finding.value.isKey, finding.message).second;
    });

    Order order;
    for (const Finding &finding : findings_)
        order.emplace(finding.value.node, 0);
    uint64_t next = 0;
    for (const YamlListNode *top : tops)
        WalkNumber(top, next, order);
    std::ranges::stable_sort(findings_, {}, [&](const Finding &finding) { return order[finding.value.node]; });
}

void Findings::Report(YamlProblems **problems, uint32_t code) const
{
    YamlProblem problem = {};
    for (const Finding &finding : findings_) {
        const YamlListNode *place = KeyNode(finding.value);
        const std::string path = PathOf(PathNode(finding.value));
        YamlOrigin origin = YAML_ORIGIN_INIT; // of layers, the one that the place lies in
        (void)ZRYAML_OriginGet(place, 0, &origin);
        problem.uiLine = origin.uiLine;
        problem.uiColumn = origin.uiColumn;
        ZRYAML_ValueWrittenGet(place, &problem.uiFirstLine, &problem.uiFirstColumn);
        problem.uiCode = code != YAML_OK ? code : finding.code;
        problem.pcSource = origin.pcSource;
        problem.pcPath = path.c_str();
        problem.pcMessage = finding.message.c_str();
        problem.pcHint = finding.hint.c_str();
        (void)ZRYAML_ProblemReport(problems, &problem);
    }
    for (uint64_t left = 0; left < leftOut_; ++left) // counted by the list, which is full
        (void)ZRYAML_ProblemReport(problems, &problem);
}

} // namespace zryaml::schema
