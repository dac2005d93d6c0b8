// SPDX-License-Identifier: Apache-2.0
// What a host's description says of one place in the document, for variables that name what no file writes.
#pragma once

#include "layers_internal.h"

#include <zr_yaml_bind.h>

namespace zryaml::layers {

class Description {
public:
    enum class Kind { Unknown, Scalar, Record, Sequence, Map };

    Description() = default; // of anything
    explicit Description(const YamlRecord *record) noexcept;

    [[nodiscard]] Kind What() const noexcept { return m_kind; }
    // Of an element of a sequence, or of a value of a map with any keys.
    [[nodiscard]] Description Element(uint64_t index) const noexcept;

    // Of the value of a key.
    [[nodiscard]] Description Below(std::string_view key) const noexcept;
    // How a text for such a place is taken.
    [[nodiscard]] Reads HowRead() const noexcept;

    // The keys of a record, by number: those of all alternatives where it can be one of several. NULL past the last.
    [[nodiscard]] const char *Key(uint32_t number) const noexcept;
    [[nodiscard]] Description Value(uint32_t number) const noexcept;

private:
    explicit Description(const YamlField &field) noexcept;
    static Description PartOf(const YamlField &field) noexcept;
    // The field with that number; a union's key that chooses comes before all, and has none.
    [[nodiscard]] const YamlField *Field(uint32_t number) const noexcept;

    Kind m_kind = Kind::Unknown;
    const YamlRecord *m_record = nullptr;
    const YamlField *m_field = nullptr; // of a union, a sequence or a map
};

} // namespace zryaml::layers
