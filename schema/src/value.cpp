// SPDX-License-Identifier: Apache-2.0
// The hash is a polynomial at a secret point, so that no document can make all its elements collide.
#include "value.h"

#include <algorithm>
#include <random>

#include <zr_yaml_scalar.h>

namespace zryaml::schema {

namespace {

constexpr uint64_t Prime = (uint64_t{1} << 61U) - 1;

uint64_t SecretPoint() noexcept
{
    static const uint64_t point = [] {
        try {
            std::random_device device;
            return ((uint64_t{device()} << 32U) ^ device()) % (Prime - 2) + 2;
        } catch (...) {
            return reinterpret_cast<uintptr_t>(&KindNumber) % (Prime - 2) + 2; // no source of randomness: the address
        }
    }();
    return point;
}

class Hasher {
public:
    void Add(uint64_t word) noexcept
    {
        __extension__ using Wide = unsigned __int128;
        const Wide product = static_cast<Wide>(hash_ + (word & Prime)) * point_;
        const uint64_t sum = static_cast<uint64_t>(product & Prime) + static_cast<uint64_t>(product >> 61U);
        hash_ = sum >= Prime ? sum - Prime : sum;
    }
    void Add(std::string_view text) noexcept
    {
        constexpr size_t WordBytes = 7;
        Add(text.size());
        for (; !text.empty(); text.remove_prefix(std::min(WordBytes, text.size()))) {
            uint64_t word = 1;
            for (const char byte : text.substr(0, WordBytes))
                word = word << 8U | static_cast<unsigned char>(byte);
            Add(word);
        }
    }
    [[nodiscard]] uint64_t Get() const noexcept { return hash_; }

private:
    uint64_t point_ = SecretPoint();
    uint64_t hash_ = 0;
};

// Spreads a sum's terms, which would otherwise commute across keys.
uint64_t Mixed(uint64_t hash) noexcept
{
    hash = (hash ^ (hash >> 30U)) * 0xBF58476D1CE4E5B9U;
    hash = (hash ^ (hash >> 27U)) * 0x94D049BB133111EBU;
    return hash ^ (hash >> 31U);
}

bool IsTrue(std::string_view text) noexcept
{
    return text.starts_with('t') || text.starts_with('T');
}

bool MapsEqual(const YamlListNode *a, const YamlListNode *b) noexcept
{
    if (ZRYAML_ChildCountGet(a) != ZRYAML_ChildCountGet(b))
        return false;
    for (const YamlChild &child : Children(a)) {
        const YamlListNode *other = ChildOf(b, child.pcKey);
        if (other == nullptr || !IsEqual(ValueOf(child.pstValue), ValueOf(other)))
            return false;
    }
    return true;
}

bool SequencesEqual(const YamlListNode *a, const YamlListNode *b) noexcept
{
    YamlChild other = YAML_CHILD_INIT;
    for (const YamlChild &child : Children(a)) {
        if (ZRYAML_ChildNextGet(b, &other) != YAML_OK || !IsEqual(ValueOf(child.pstValue), ValueOf(other.pstValue)))
            return false;
    }
    return ZRYAML_ChildNextGet(b, &other) != YAML_OK;
}

uint32_t KindOfTag(uint32_t tag) noexcept
{
    switch (tag) {
    case YAML_TAG_NULL:
        return KindNull;
    case YAML_TAG_BOOL:
        return KindBool;
    case YAML_TAG_INT:
        return KindInt;
    case YAML_TAG_FLOAT:
        return KindFloat;
    default:
        return KindString;
    }
}

} // namespace

uint32_t PlainKind(std::string_view text) noexcept
{
    return KindOfTag(ZRYAML_PlainTagGet(text.data(), text.size()));
}

Value ValueOf(const YamlListNode *node) noexcept
{
    switch (ZRYAML_ValueTypeGet(node)) {
    case YAML_DATATYPE_SCALAR:
        return {node, KindOfTag(ZRYAML_CoreTagGet(node)), TextOf(node)};
    case YAML_DATATYPE_SEQ:
        return {node, KindSequence};
    default:
        return {node, KindMap};
    }
}

Value KeyOf(const YamlChild &child) noexcept
{
    return {child.pstValue, KindString, child.pcKey, true};
}

bool IsEqual(const Value &a, const Value &b) noexcept
{
    if ((a.kind & KindNumber) != 0 && (b.kind & KindNumber) != 0)
        return Number(a.text) == Number(b.text);
    if (a.kind != b.kind)
        return false;
    switch (a.kind) {
    case KindNull:
        return true;
    case KindBool:
        return IsTrue(a.text) == IsTrue(b.text);
    case KindString:
        return a.text == b.text;
    case KindMap:
        return MapsEqual(a.node, b.node);
    default:
        return SequencesEqual(a.node, b.node);
    }
}

uint64_t SizeOf(const YamlListNode *node) noexcept
{
    uint64_t size = 1;
    for (const YamlChild &child : Children(node))
        size += SizeOf(child.pstValue);
    return size;
}

uint64_t HashOf(const Value &value) noexcept
{
    Hasher hasher;
    hasher.Add((value.kind & KindNumber) != 0 ? KindNumber : value.kind);
    switch (value.kind) {
    case KindInt:
    case KindFloat:
        Number(value.text).EachPart([&](uint64_t part) { hasher.Add(part); });
        break;
    case KindBool:
        hasher.Add(IsTrue(value.text) ? 1 : 0);
        break;
    case KindString:
        hasher.Add(value.text);
        break;
    case KindSequence:
        for (const YamlChild &child : Children(value.node))
            hasher.Add(HashOf(ValueOf(child.pstValue)));
        break;
    case KindMap: {
        uint64_t sum = 0; // the order of keys does not count
        for (const YamlChild &child : Children(value.node)) {
            Hasher pair;
            pair.Add(std::string_view(child.pcKey));
            pair.Add(HashOf(ValueOf(child.pstValue)));
            sum += Mixed(pair.Get());
        }
        hasher.Add(sum);
        break;
    }
    default:
        break;
    }
    return hasher.Get();
}

} // namespace zryaml::schema
