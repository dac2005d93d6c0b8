// SPDX-License-Identifier: Apache-2.0
// Random stacks of layers, loaded by the library and put together by a plain model: the same document, order of keys
// included, or a refusal by both. The numbers of the stacks are the seeds, so that a failing one comes back.
#include "support/layer_stack.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <random>

namespace {

struct Model { // one value; "tag" is that of the layer which writes it
    enum { Scalar, Map, Sequence } eKind = Scalar;
    std::string text = {}, tag = {};
    bool bPlain = true;
    std::vector<std::pair<std::string, Model>> keys = {}; // of a map; of a sequence without texts

    Model *Find(const std::string &key)
    {
        const auto it = std::ranges::find(keys, key, [](const auto &pair) { return pair.first; });
        return it != keys.end() ? &it->second : nullptr;
    }
    [[nodiscard]] bool IsEmpty() const { return eKind == Scalar && text.empty() && bPlain; }

    [[nodiscard]] std::string Written(bool bYaml) const
    {
        std::string out = bYaml ? tag + ' ' : "";
        if (eKind == Scalar)
            return out + (bYaml && bPlain ? text : '"' + text + '"');
        out += eKind == Map ? '{' : '[';
        for (const auto &[key, value] : keys)
            out.append(&key != &keys.front().first ? "," : "")
                .append(eKind == Map ? '"' + key + "\":" : "")
                .append(value.Written(bYaml));
        return out + (eKind == Map ? '}' : ']');
    }
};

struct Refused {};

// What a value is where nothing was.
Model Settled(Model value)
{
    std::erase_if(value.keys, [](const auto &pair) { return pair.second.tag == "!unset"; });
    for (auto &[key, below] : value.keys)
        below = Settled(below);
    if (value.tag.ends_with("pend") && value.eKind != Model::Sequence)
        throw Refused();
    value.tag = "";
    return value;
}

void Merge(Model &below, const Model &value)
{
    const bool bJoins = value.tag.ends_with("pend");
    if (bJoins && value.eKind != Model::Sequence)
        throw Refused();
    if (bJoins && !below.IsEmpty()) {
        if (below.eKind != Model::Sequence)
            throw Refused();
        const auto added = Settled(value).keys;
        below.keys.insert(value.tag == "!append" ? below.keys.end() : below.keys.begin(), added.begin(), added.end());
    } else if (value.tag.empty() && below.eKind == Model::Map && value.eKind == Model::Map) {
        for (const auto &[key, upper] : value.keys) {
            Model *pstOld = below.Find(key);
            if (upper.tag == "!unset")
                std::erase_if(below.keys, [&key = key](const auto &pair) { return pair.first == key; });
            else if (pstOld != nullptr)
                Merge(*pstOld, upper);
            else
                below.keys.emplace_back(key, Settled(upper));
        }
    } else if (!value.tag.empty() || below.eKind == Model::Scalar || !value.IsEmpty()) {
        below = Settled(value);
    }
}

using Way = std::vector<std::string>; // a key, or "[n]"

const Model g_flow = {Model::Map, "", "", true, {{"a", {Model::Sequence, "", "", true, {{"", {Model::Scalar, "f"}}}}}}};

// Where a variable or assignment sets a value, with all before it made.
Model &Place(Model &top, bool &bThere, const Way &way)
{
    Model *pst = &top;
    for (const std::string &step : way) {
        const bool bIndex = step[0] == '[';
        if (!bThere || pst->IsEmpty())
            *pst = {bIndex ? Model::Sequence : Model::Map};
        if (pst->eKind != (bIndex ? Model::Sequence : Model::Map))
            throw Refused();
        Model *pstNext = pst->Find(step);
        if (bIndex) {
            const size_t ulIndex = std::stoul(step.substr(1));
            if (ulIndex > pst->keys.size())
                throw Refused();
            pstNext = ulIndex < pst->keys.size() ? &pst->keys[ulIndex].second : nullptr;
        }
        bThere = pstNext != nullptr;
        pst = bThere ? pstNext : &pst->keys.emplace_back(bIndex ? "" : step, Model{}).second;
    }
    return *pst;
}

void Set(Model &top, bool &bTop, const Way &way, const std::string &text)
{
    bool bThere = std::exchange(bTop, true);
    Model &place = Place(top, bThere, way);
    const bool bFlow = text[0] == '{' && (!bThere || place.eKind != Model::Scalar);
    const Model value = bFlow ? g_flow : Model{Model::Scalar, text};
    if (bThere)
        Merge(place, value);
    else
        place = value;
}

// The way of a variable: capitals find what is like them, digits are an index at a sequence.
Way WayOf(Model &top, const Way &components)
{
    Way way;
    Model *pst = &top;
    for (const std::string &component : components) {
        std::string step = component;
        const bool bNumber = component[0] >= '0' && component[0] <= '9';
        if (pst != nullptr && pst->eKind == Model::Sequence && !bNumber)
            throw Refused();
        if (pst != nullptr && pst->eKind == Model::Sequence) {
            step = '[' + component + ']';
            const size_t ulIndex = std::stoul(component);
            pst = ulIndex < pst->keys.size() ? &pst->keys[ulIndex].second : nullptr;
        } else {
            std::ranges::transform(step, step.begin(), [](char c) { return static_cast<char>(std::tolower(c)); });
            std::vector<std::string> like;
            if (pst != nullptr)
                for (auto &[key, value] : pst->keys)
                    if (key == step || (step == "a_b" && (key == "A-b" || key == "a.b")))
                        like.push_back(key);
            if (like.size() > 1)
                throw Refused();
            step = like.empty() ? step : like[0];
            pst = pst != nullptr && pst->eKind == Model::Map ? pst->Find(step) : nullptr;
        }
        way.push_back(step);
    }
    return way;
}

class Generator {
public:
    explicit Generator(uint32_t uiSeed) : m_stRandom(uiSeed) {}

    size_t Below(size_t ulLimit) { return m_stRandom() % ulLimit; }
    std::string Pick(const std::vector<std::string> &choices) { return choices[Below(choices.size())]; }

    Model Value(uint32_t uiDepth, bool bKey)
    {
        Model value;
        const size_t ulKind = uiDepth == 0 ? Below(2) : Below(8);
        value.eKind = uiDepth > 3 || ulKind > 5 ? Model::Scalar : ulKind % 2 == 0 ? Model::Map : Model::Sequence;
        if (uiDepth == 0 && Below(8) != 0)
            value.eKind = Model::Map;
        if (value.eKind == Model::Scalar) {
            value.text = Pick({"", "", "1", "x", "~"});
            value.bPlain = (bKey || !value.text.empty()) && Below(4) != 0; // no element can be nothing
        }
        for (size_t ul = value.eKind == Model::Scalar ? 0 : Below(4); ul > 0; --ul) {
            const std::string key = value.eKind == Model::Map ? Pick({"a", "b", "c", "A-b", "a.b"}) : "";
            if (value.eKind == Model::Sequence || value.Find(key) == nullptr)
                value.keys.emplace_back(key, Value(uiDepth + 1, value.eKind == Model::Map));
        }
        if (bKey && Below(8) == 0)
            value.tag =
                Pick({"!replace", "!unset", value.eKind == Model::Sequence ? "!append" : "!replace", "!prepend"});
        if (value.tag == "!prepend" && value.eKind != Model::Sequence && Below(8) != 0)
            value.tag = "";
        return value;
    }

    Way Components(const std::vector<std::string> &steps)
    {
        Way way(1 + Below(3));
        for (std::string &step : way)
            step = Pick(steps);
        return way;
    }

private:
    std::mt19937 m_stRandom;
};

std::string Joined(const Way &way, const std::string &separator)
{
    std::string text;
    for (const std::string &step : way)
        text += (text.empty() || step[0] == '[' ? "" : separator) + (step == "a.b" ? "{a.b}" : step);
    return text;
}

TEST(LayersModel, LayersGiveWhatThePlainModelGives)
{
    uint32_t uiLoaded = 0;
    for (uint32_t uiSeed = 0; uiSeed < 20000; ++uiSeed) {
        Generator stRandom(uiSeed);
        std::vector<std::string> lines;
        Model top;
        bool bTop = false, bRefused = false;
        const auto Try = [&](const auto &fnChange) {
            try {
                fnChange();
            } catch (const Refused &) {
                bRefused = true;
            }
        };
        for (size_t ul = 1 + stRandom.Below(4); ul > 0; --ul) {
            Model value = stRandom.Value(0, false);
            lines.push_back(value.Written(true));
            Try([&] { std::exchange(bTop, true) ? Merge(top, value) : void(top = Settled(value)); });
        }
        std::vector<Way> variables;
        for (size_t ul = stRandom.Below(3); ul > 0; --ul)
            variables.push_back(stRandom.Components({"A", "B", "C", "A_B", "0", "1", "2"}));
        std::ranges::sort(variables);
        variables.erase(std::unique(variables.begin(), variables.end()), variables.end());
        const std::string text = stRandom.Pick({"v", "", "{a: [f]}"});
        for (const Way &way : variables) {
            lines.push_back("$APP_" + Joined(way, "__") + '=' + text);
            Try([&] { Set(top, bTop, WayOf(top, way), text); });
        }
        for (size_t ul = stRandom.Below(3); ul > 0; --ul) {
            const Way way = stRandom.Components({"a", "b", "c", "A-b", "a.b", "[0]", "[1]", "[2]"});
            const std::string assigned = stRandom.Pick({"w", "", "{a: [f]}"});
            lines.push_back("--set " + Joined(way, ".") + '=' + assigned);
            Try([&] { Set(top, bTop, way, assigned); });
        }
        const std::string read = LayerStack(lines).Read();
        if (bRefused)
            ASSERT_EQ(read.substr(0, 1), "\n") << uiSeed << testing::PrintToString(lines);
        else
            ASSERT_EQ(read, top.Written(false)) << uiSeed << testing::PrintToString(lines);
        uiLoaded += bRefused ? 0 : 1;
    }
    EXPECT_GT(uiLoaded, 8000U);
}

} // namespace
