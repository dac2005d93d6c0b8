// SPDX-License-Identifier: Apache-2.0
// A value of the document as JSON Schema sees it: what kind it is, and when two of them are equal.
#pragma once

#include "number.h"

#include <cstdint>
#include <string>
#include <string_view>

#include <zr_yaml.h>

namespace zryaml::schema {

// Kinds are bits, so that a set of them is a number.
enum Kind : uint32_t {
    KindNull = 1U << 0U,
    KindBool = 1U << 1U,
    KindInt = 1U << 2U,
    KindFloat = 1U << 3U,
    KindString = 1U << 4U,
    KindMap = 1U << 5U,
    KindSequence = 1U << 6U,
};
constexpr uint32_t KindNumber = KindInt | KindFloat;
constexpr uint32_t KindAny = (1U << 7U) - 1;

struct Value {
    const YamlListNode *node = nullptr; // of a key: the key's value; null: a document without content
    uint32_t kind = KindMap;
    std::string_view text = {}; // of a scalar
    bool isKey = false;         // the key that leads to the node is meant, as a string
};

// An absent value is an empty map.
Value ValueOf(const YamlListNode *node) noexcept;
Value KeyOf(const YamlChild &child) noexcept;
// What the core schema of YAML 1.2 makes of a plain text.
uint32_t PlainKind(std::string_view text) noexcept;

// Numbers are equal by value, maps whatever the order of their keys.
bool IsEqual(const Value &a, const Value &b) noexcept;

// How many values there are in a value, itself included.
uint64_t SizeOf(const YamlListNode *node) noexcept;

// A hash that equal values share and that nobody can aim at.
uint64_t HashOf(const Value &value) noexcept;

// The children of a map or sequence, for a range loop.
class Children {
public:
    struct End {};
    class Iterator {
    public:
        explicit Iterator(const YamlListNode *value) noexcept : value_(value) { ++*this; }
        const YamlChild &operator*() const noexcept { return child_; }
        Iterator &operator++() noexcept
        {
            more_ = ZRYAML_ChildNextGet(value_, &child_) == YAML_OK;
            return *this;
        }
        bool operator==(End) const noexcept { return !more_; }

    private:
        const YamlListNode *value_;
        YamlChild child_ = YAML_CHILD_INIT;
        bool more_ = false;
    };
    explicit Children(const YamlListNode *value) noexcept : value_(value) {}
    [[nodiscard]] Iterator begin() const noexcept { return Iterator(value_); }
    [[nodiscard]] static End end() noexcept { return {}; }

private:
    const YamlListNode *value_;
};

// The value of a map's key; null if there is none.
inline const YamlListNode *ChildOf(const YamlListNode *map, std::string_view key) noexcept
{
    return ZRYAML_ChildFind(map, key.data(), key.size());
}

inline std::string_view TextOf(const YamlListNode *scalar) noexcept
{
    const char *text = ZRYAML_ValueTextGet(scalar);
    return text != nullptr ? text : "";
}

} // namespace zryaml::schema
