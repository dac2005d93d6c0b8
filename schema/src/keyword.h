// SPDX-License-Identifier: Apache-2.0
// The keywords of draft-07 in one table: what the meta-schema says of each, where schemas lie in it, and what it
// compiles to.
#pragma once

#include "build.h"
#include "compiled.h"
#include "run.h"

#include <span>
#include <string_view>

namespace zryaml::schema {

// Where the schemas lie in a keyword's value.
enum class Holds : uint8_t {
    Nothing,
    Schema,       // it is one
    SchemaList,   // its elements
    SchemaOrList, // either
    SchemaMap,    // the values of its keys, if they are no sequences
};

struct Keyword {
    std::string_view name;
    const char *meta; // the schema of its value, as JSON
    Holds holds = Holds::Nothing;
    // Adds rules to the schema in which the keyword stands; null if it says nothing about values.
    void (*compile)(Build &build, Schema &schema, const YamlListNode *value) = nullptr;
};

// In the order in which a value is checked.
std::span<const Keyword> Keywords() noexcept;

// What keywords compile to, each in the file of its kind of value; see keyword_table.cpp for which belongs to which.
void TypeCompile(Build &build, Schema &schema, const YamlListNode *value);
void ConstCompile(Build &build, Schema &schema, const YamlListNode *value);
void EnumCompile(Build &build, Schema &schema, const YamlListNode *value);

void MaximumCompile(Build &build, Schema &schema, const YamlListNode *value);
void ExclusiveMaximumCompile(Build &build, Schema &schema, const YamlListNode *value);
void MinimumCompile(Build &build, Schema &schema, const YamlListNode *value);
void ExclusiveMinimumCompile(Build &build, Schema &schema, const YamlListNode *value);
void MultipleOfCompile(Build &build, Schema &schema, const YamlListNode *value);

void MaxLengthCompile(Build &build, Schema &schema, const YamlListNode *value);
void MinLengthCompile(Build &build, Schema &schema, const YamlListNode *value);
void PatternCompile(Build &build, Schema &schema, const YamlListNode *value);
void FormatCompile(Build &build, Schema &schema, const YamlListNode *value);

void MaxItemsCompile(Build &build, Schema &schema, const YamlListNode *value);
void MinItemsCompile(Build &build, Schema &schema, const YamlListNode *value);
void UniqueItemsCompile(Build &build, Schema &schema, const YamlListNode *value);
void ItemsCompile(Build &build, Schema &schema, const YamlListNode *value);
void AdditionalItemsCompile(Build &build, Schema &schema, const YamlListNode *value);
void ContainsCompile(Build &build, Schema &schema, const YamlListNode *value);

void MaxPropertiesCompile(Build &build, Schema &schema, const YamlListNode *value);
void MinPropertiesCompile(Build &build, Schema &schema, const YamlListNode *value);
void RequiredCompile(Build &build, Schema &schema, const YamlListNode *value);
void DependenciesCompile(Build &build, Schema &schema, const YamlListNode *value);
void PropertyNamesCompile(Build &build, Schema &schema, const YamlListNode *value);
void PropertiesCompile(Build &build, Schema &schema, const YamlListNode *value);
void PatternPropertiesCompile(Build &build, Schema &schema, const YamlListNode *value);
void AdditionalPropertiesCompile(Build &build, Schema &schema, const YamlListNode *value);

void AllOfCompile(Build &build, Schema &schema, const YamlListNode *value);
void AnyOfCompile(Build &build, Schema &schema, const YamlListNode *value);
void OneOfCompile(Build &build, Schema &schema, const YamlListNode *value);
void NotCompile(Build &build, Schema &schema, const YamlListNode *value);
void IfCompile(Build &build, Schema &schema, const YamlListNode *value);

// Checks that others look at: which rule of a schema tells branches apart.
bool ConstantsCheck(Run &run, const Rule &rule, const Value &value);
bool MembersCheck(Run &run, const Rule &rule, const Value &value);
bool AllOfCheck(Run &run, const Rule &rule, const Value &value);
// Whether a value is one of a rule's constants.
bool IsConstant(Run &run, const Rule &rule, const Value &value);
// How many children a map or sequence has, and the hash of a value: walks that the run pays for.
uint64_t CountPaid(Run &run, const Value &value);
uint64_t HashPaid(Run &run, const Value &value);
// What holds for a key by its name; null if nothing.
const Named *NamedFind(const std::vector<Named> &named, std::string_view key) noexcept;
// Says that a value is none of some constants, and which one was probably meant. Always false.
bool ConstantFault(Run &run, const Value &value, const std::vector<Value> &values);
// Says that a value is of another type. Always false.
bool TypeFault(Run &run, const Value &value, uint32_t types);

// Says of a value that fits no branch of "anyOf" or "oneOf" what is wrong in the branch that was probably meant.
// Always false.
bool ChoiceFault(Run &run, const std::vector<const Schema *> &branches, const Value &value);

// What a schema asks for in a few words, such as "an integer" or "one of a, b"; empty if that is not so simple.
std::string Described(const Schema &schema);

} // namespace zryaml::schema
