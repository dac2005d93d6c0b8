// SPDX-License-Identifier: Apache-2.0
// What the writers of samples, schemas and lists of variables share: a text that grows in the caller's buffer, the
// fields of a description, and what is said of them in words.
#pragma once

#include "plan.h"

#include <string_view>

namespace zryaml::bind {

class TextOut { // counts what does not fit
public:
    TextOut(uint32_t size, char *buffer) noexcept : buffer_(buffer), size_(buffer != nullptr ? size : 0) {}
    void Put(char character) noexcept
    {
        if (used_ + 1 < size_)
            buffer_[used_] = character;
        ++used_;
    }
    void Put(std::string_view text) noexcept
    {
        for (const char character : text)
            Put(character);
    }
    void Format(const char *format, ...) noexcept __attribute__((format(printf, 2, 3)));
    // Terminates the text. The length of the whole text.
    uint32_t End() noexcept
    {
        if (size_ != 0)
            buffer_[used_ < size_ ? used_ : size_ - 1] = '\0';
        return used_;
    }

private:
    char *buffer_;
    uint32_t size_;
    uint32_t used_ = 0;
};

// The records that are being written, the innermost first: one of them within itself is not written again.
struct OpenRecord {
    const YamlRecord *record;
    const OpenRecord *outer;
    uint32_t mark; // of the writer
};
[[nodiscard]] const OpenRecord *OpenFind(const OpenRecord *open, const YamlRecord *record) noexcept;

// What a sequence, map or optional holds, as a field of its own without rules but its limits.
[[nodiscard]] YamlField ElementOf(const YamlField &field) noexcept;
// One part of a union or tuple.
[[nodiscard]] YamlField PartOf(const YamlField &field, uint32_t index) noexcept;

constexpr size_t ScalarLongest = 1024;

// The default of a scalar as a text: that of the description, else what the model holds (NULL: there is none). False if
// there is neither, or if it does not fit the field.
[[nodiscard]] bool InitialText(const YamlField &field, const void *model, char (&text)[ScalarLongest]) noexcept;
// A text that fits a scalar.
void FirstText(const YamlField &field, char (&text)[ScalarLongest]) noexcept;

// Kind and range: "integer, 1 to 1023", "one of fast, safe"; nothing for what has parts.
void FactsPut(TextOut &out, const YamlField &field) noexcept;

// Whether a field is a scalar or holds an optional one.
[[nodiscard]] bool IsScalarField(const YamlField &field) noexcept;

} // namespace zryaml::bind
