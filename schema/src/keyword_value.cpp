// SPDX-License-Identifier: Apache-2.0
// Keywords for values of any kind: type, const and enum. A value that breaks one of them is not judged further.
#include "keyword.h"

#include <algorithm>
#include <array>

namespace zryaml::schema {

namespace {

struct TypeName {
    std::string_view name;
    uint32_t kinds;
};
constexpr std::array TypeNames = {
    TypeName{"array", KindSequence}, TypeName{"boolean", KindBool},  TypeName{"integer", KindInt},
    TypeName{"null", KindNull},      TypeName{"number", KindNumber}, TypeName{"object", KindMap},
    TypeName{"string", KindString},
};

uint32_t KindsOf(std::string_view name) noexcept
{
    const auto *type = std::ranges::find(TypeNames, name, &TypeName::name);
    return type != TypeNames.end() ? type->kinds : 0;
}

bool HasType(const Value &value, uint32_t types) noexcept
{
    if ((value.kind & types) != 0)
        return true;
    return value.kind == KindFloat && (types & KindInt) != 0 && Number(value.text).IsWhole(); // 3.0
}

bool TypeCheck(Run &run, const Rule &rule, const Value &value)
{
    const auto types = static_cast<uint32_t>(rule.count);
    return HasType(value, types) || TypeFault(run, value, types);
}

// What a value is, behind "is".
std::string ShownWithKind(const Value &value)
{
    if ((value.kind & (KindMap | KindSequence)) != 0)
        return Shown(value);
    if (value.kind == KindNull)
        return value.text.empty() ? "empty" : "null";
    const char *kind = value.kind == KindString ? "the string "
                       : value.kind == KindBool ? "the boolean "
                                                : "the number ";
    return kind + (value.kind == KindString ? Quoted(value.text) : Shown(value));
}

void ConstantAdd(Rule &rule, const YamlListNode *node)
{
    const Value value = ValueOf(node);
    rule.values.push_back(value);
    rule.constants.push_back({HashOf(value), value});
}

Rule &ConstantsAdd(Schema &schema)
{
    Rule &rule = schema.rules.emplace_back(Rule{ConstantsCheck, KindAny});
    rule.decides = true;
    return rule;
}

} // namespace

bool TypeFault(Run &run, const Value &value, uint32_t types)
{
    if (run.IsQuiet())
        return false;
    std::string message;
    const std::string subject = value.isKey ? "key " + Quoted(value.text) + " " : "";
    const std::string wanted = ShownKinds(types);
    const bool oneNumber = (types & KindNumber) != 0 && wanted.find(" or ") == std::string::npos;
    if (value.kind == KindString && !value.isKey && (oneNumber || types == KindBool))
        message = Quoted(value.text) + " is not " + wanted;
    else
        message = subject + "must be " + wanted + ", is " + ShownWithKind(value);

    std::string hint;
    constexpr uint32_t Typed = KindNumber | KindBool | KindNull;
    if (value.kind == KindString && !value.text.empty() && (PlainKind(value.text) & types & Typed) != 0)
        hint = "without its quotes it is " + ShownKinds(PlainKind(value.text));
    else if (types == KindString && (value.kind & (KindNumber | KindBool)) != 0)
        hint = "in quotes it is one: \"" + Shown(value) + "\"";
    else if (types == KindBool && value.kind == KindString)
        hint = "a boolean is written true or false";
    return run.Fault({value, YAML_ERR_VALUE, std::move(message), std::move(hint)});
}

uint64_t CountPaid(Run &run, const Value &value)
{
    const uint64_t count = ZRYAML_ChildCountGet(value.node);
    run.Pay(count);
    return count;
}

uint64_t HashPaid(Run &run, const Value &value)
{
    if ((value.kind & (KindMap | KindSequence)) != 0)
        run.Pay(SizeOf(value.node));
    return HashOf(value);
}

bool IsConstant(Run &run, const Rule &rule, const Value &value)
{
    const uint64_t hash = HashPaid(run, value);
    for (auto at = std::ranges::lower_bound(rule.constants, hash, {}, &Constant::hash);
         at != rule.constants.end() && at->hash == hash; ++at) {
        if (IsEqual(at->value, value))
            return true;
    }
    return false;
}

bool ConstantFault(Run &run, const Value &value, const std::vector<Value> &values)
{
    if (run.IsQuiet())
        return false;
    const std::string subject = value.isKey ? "key " + Quoted(value.text) + " " : "";
    if (values.empty())
        return run.Fault({value, YAML_ERR_VALUE, subject + "is not allowed: the schema names no value"});
    std::string hint;
    if ((value.kind & (KindMap | KindSequence)) == 0 && run.WantsHint(values.size())) {
        std::vector<const char *> names;
        for (const Value &allowed : values) {
            if (!allowed.text.empty())
                names.push_back(allowed.text.data());
        }
        const char *nearest =
            ZRYAML_NearestTextGet(value.text.data(), names.data(), static_cast<uint32_t>(names.size()));
        if (nearest != nullptr && nearest != value.text)
            hint = "did you mean " + Quoted(nearest) + "?";
        else if (nearest != nullptr)
            hint =
                value.kind == KindString ? "write it without quotes" : "write it in quotes: \"" + Shown(value) + "\"";
    }
    const char *start = values.size() > 1 ? "must be one of " : "must be ";
    return run.Fault({value, YAML_ERR_VALUE, subject + start + ShownList(values), std::move(hint)});
}

bool ConstantsCheck(Run &run, const Rule &rule, const Value &value)
{
    return IsConstant(run, rule, value) || ConstantFault(run, value, rule.values);
}

void TypeCompile(Build &, Schema &schema, const YamlListNode *value)
{
    uint32_t types = KindsOf(TextOf(value));
    for (const YamlChild &child : Children(value))
        types |= KindsOf(TextOf(child.pstValue));
    schema.types = types;
    Rule &rule = schema.rules.emplace_back(Rule{TypeCheck, KindAny});
    rule.decides = true;
    rule.count = types;
}

void ConstCompile(Build &, Schema &schema, const YamlListNode *value)
{
    ConstantAdd(ConstantsAdd(schema), value);
}

void EnumCompile(Build &, Schema &schema, const YamlListNode *value)
{
    Rule &rule = ConstantsAdd(schema);
    for (const YamlChild &child : Children(value))
        ConstantAdd(rule, child.pstValue);
    std::ranges::sort(rule.constants, {}, &Constant::hash);
}

} // namespace zryaml::schema
