// SPDX-License-Identifier: Apache-2.0
// A schema as it is checked: made once by Build, then only read.
#pragma once

#include "format.h"
#include "number.h"
#include "pattern.h"
#include "value.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <zr_yaml.h>

namespace zryaml::schema {

class Run;
struct Rule;
struct Schema;

// Says whether a value fits a rule, and tells the run if not.
using CheckFunction = bool (*)(Run &run, const Rule &rule, const Value &value);

struct Named { // what holds for one key
    std::string_view name;
    const Schema *schema = nullptr;
    std::vector<const char *> needs = {}; // keys that must stand beside it
};

struct PatternNamed { // what holds for each key that a pattern matches
    const Pattern *pattern;
    const Schema *schema;
};

struct Constant {
    uint64_t hash;
    Value value;
};

// One keyword of a schema, or a few that only work together. Which members are used depends on the check.
struct Rule {
    CheckFunction check;
    uint32_t kinds;       // of values that it says something about
    bool decides = false; // there is nothing more to say about a value that breaks it
    std::string_view text = {};
    uint64_t count = 0;
    Number number = {};
    const Format *format = nullptr;
    const Pattern *pattern = nullptr;
    const Schema *schema = nullptr; // for what no other member names
    std::vector<const Schema *> schemas = {};
    std::vector<Named> named = {}; // ordered by name
    std::vector<PatternNamed> patterns = {};
    std::vector<Constant> constants = {}; // ordered by hash
    std::vector<Value> values = {};       // the constants in the schema's order
};

struct Schema {
    const YamlListNode *source = nullptr;
    const Schema *target = nullptr; // where "$ref" leads in the end; nothing else counts then
    bool never = false;             // the schema false
    uint32_t types = KindAny;       // what "type" allows
    std::vector<Rule> rules = {};
    std::vector<const Schema *> here = {}; // checked against the same value: these must not lead back
    uint32_t hereDepth = 0;                // schemas that one value meets one through the other; 0: not counted yet

    // What holds in the place of a reference.
    [[nodiscard]] const Schema &Resolved() const noexcept { return target != nullptr ? *target : *this; }
    // The rule with a check; null if there is none.
    [[nodiscard]] const Rule *Find(CheckFunction check) const noexcept
    {
        for (const Rule &rule : rules) {
            if (rule.check == check)
                return &rule;
        }
        return nullptr;
    }
};

struct HandleFree {
    void operator()(YamlHandle *handle) const noexcept { ZRYAML_HandleFree(handle); }
};
using Document = std::unique_ptr<YamlHandle, HandleFree>;

} // namespace zryaml::schema

// All that a loaded schema owns. Texts and values in it look into the documents.
struct YamlSchema {
    std::vector<zryaml::schema::Document> documents;
    std::deque<zryaml::schema::Schema> schemas; // they do not move
    std::map<std::string, std::unique_ptr<zryaml::schema::Pattern>, std::less<>> patterns;
    const zryaml::schema::Schema *root = nullptr;
};
