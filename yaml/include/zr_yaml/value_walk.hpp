// SPDX-License-Identifier: Apache-2.0
// Range-for over the elements of a sequence and the keys of a map. Part of zr_yaml.hpp.
#ifndef ZR_YAML_VALUE_WALK_HPP
#define ZR_YAML_VALUE_WALK_HPP

#include <cstddef>
#include <iterator>
#include <string_view>
#include <type_traits>

#include <zr_yaml.h>
#include <zr_yaml/value.hpp>

namespace zryaml {

/// One key of a map with its value, as Value::items() gives it. The text belongs to the document.
struct Item {
    std::string_view key; ///< the key's text
    Value value;          ///< its value
};

/// A place in a walk; usable as long as the document lives. Out is Value or Item.
template <class Out> class ChildIterator {
public:
    using value_type = Out;                             ///< what a step gives
    using reference = Out;                              ///< by value
    using pointer = void;                               ///< none
    using difference_type = std::ptrdiff_t;             ///< never asked for
    using iterator_category = std::input_iterator_tag;  ///< because of the references
    using iterator_concept = std::forward_iterator_tag; ///< several passes are fine

    /// The end of any walk.
    ChildIterator() = default;
    /// The first child of a value.
    explicit ChildIterator(const YamlListNode *parent) noexcept : parent_(parent) { ++*this; }

    /// @return The child at hand; not at the end.
    [[nodiscard]] Out operator*() const
    {
        if constexpr (std::is_same_v<Out, Item>)
            return Item{child_.pcKey, Value(child_.pstValue)};
        else
            return Value(child_.pstValue);
    }
    /// Goes on to the next child.
    ChildIterator &operator++() noexcept
    {
        if (ZRYAML_ChildNextGet(parent_, &child_) != YAML_OK)
            child_ = YAML_CHILD_INIT;
        return *this;
    }
    /// As above. @return The place before.
    ChildIterator operator++(int) noexcept // NOLINT(cert-dcl21-cpp): a const result could not be assigned on
    {
        ChildIterator before = *this;
        ++*this;
        return before;
    }
    /// @return Whether both are at the same child, or both at an end.
    friend bool operator==(const ChildIterator &left, const ChildIterator &right) noexcept
    {
        return left.child_.pstValue == right.child_.pstValue;
    }
    /// The opposite.
    friend bool operator!=(const ChildIterator &left, const ChildIterator &right) noexcept { return !(left == right); }

private:
    const YamlListNode *parent_ = nullptr;
    YamlChild child_ = YAML_CHILD_INIT;
};

/// The range that Value::items() gives; as light as a Value.
class Items {
public:
    /// The items of a map; none if it is no map.
    explicit Items(const Value &map) noexcept : map_(map.is_map() ? map.node() : nullptr) {}
    /// The first item.
    [[nodiscard]] ChildIterator<Item> begin() const noexcept { return ChildIterator<Item>(map_); }
    /// The end.
    [[nodiscard]] ChildIterator<Item> end() const noexcept { return {}; }

private:
    const YamlListNode *map_;
};

inline ChildIterator<Value> Value::begin() const
{
    return ChildIterator<Value>(node_);
}

inline ChildIterator<Value> Value::end() const
{
    return {};
}

inline Items Value::items() const
{
    return Items(*this);
}

} // namespace zryaml

#endif
