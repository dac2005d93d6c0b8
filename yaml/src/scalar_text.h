// SPDX-License-Identifier: Apache-2.0
// The rules by which a text is a value, as zr_yaml_scalar.h tells them, and the sentences for a text that is none.
#pragma once

#include <zr_yaml_scalar.h>

namespace zryaml {

enum class Fit {
    Yes,
    NoSuchValue, // the text is no value of this kind at all
    OutOfRange,  // it is one that the type does not hold
    TooFine,     // a duration that is no whole number of ticks
    NoWholeByte, // a size that is no whole number of bytes
    NoSuchType,
};

// A value of any kind; the type tells which member holds it. A float is held as a double.
union ScalarValue {
    int64_t whole;
    uint64_t natural; // unsigned kinds, and 0 or 1
    double number;
};

[[nodiscard]] Fit ScalarParse(const YamlScalarType &type, const char *text, ScalarValue &value) noexcept;
void ScalarStore(const YamlScalarType &type, ScalarValue value, void *variable) noexcept;
[[nodiscard]] ScalarValue ScalarLoad(const YamlScalarType &type, const void *variable) noexcept;
// Whether one value is less than another; false if either is no number.
[[nodiscard]] bool ScalarIsLess(const YamlScalarType &type, ScalarValue left, ScalarValue right) noexcept;

// The kind with its article, such as "an integer".
[[nodiscard]] const char *ScalarKindName(uint32_t kind) noexcept;

// Writes what ZRYAML_ScalarHint does; for an integer with these limits where they are not NULL.
uint32_t ScalarHint(const YamlScalarType &type, const char *least, const char *greatest, uint32_t size,
                    char *hint) noexcept;

constexpr uint32_t SentenceSize = 256; // holds any sentence and hint about a scalar

} // namespace zryaml
