// SPDX-License-Identifier: Apache-2.0
// JSON for people: each member and element stands on a line of its own. The caller keeps the brackets in pairs.
#pragma once

#include "describe.h"

namespace zryaml::bind {

class JsonOut {
public:
    explicit JsonOut(TextOut &out) noexcept : out_(out) {}
    void Open(char bracket) noexcept
    {
        out_.Put(bracket);
        indent_ += 2;
        first_ = true;
    }
    void Close(char bracket) noexcept
    {
        indent_ -= 2;
        if (!first_)
            Line();
        out_.Put(bracket);
        first_ = false;
    }
    void Next() noexcept // before each element
    {
        if (!first_)
            out_.Put(',');
        first_ = false;
        Line();
    }
    void Name(const char *name) noexcept // before each member's value
    {
        Next();
        String(name);
        Raw(": ");
    }
    void String(std::string_view text) noexcept;
    void Raw(std::string_view json) noexcept { out_.Put(json); }
    void Number(uint32_t number) noexcept { out_.Format("%u", number); }

    void Member(const char *name, const char *text) noexcept
    {
        Name(name);
        String(text);
    }

private:
    void Line() noexcept;

    TextOut &out_;
    uint32_t indent_ = 0;
    bool first_ = true;
};

// Where in a JSON text its writer is, as a reference "#/properties/a" to it. A path that is too long is cut, and no
// reference leads there.
class JsonPointer {
public:
    // What it returns goes back to Leave.
    uint32_t Enter(const char *name) noexcept;
    void Leave(uint32_t length) noexcept { text_[length_ = length] = '\0'; }
    [[nodiscard]] uint32_t Length() const noexcept { return length_; }
    [[nodiscard]] std::string_view Head(uint32_t length) const noexcept { return {text_, length}; }

private:
    char text_[1024] = "#";
    uint32_t length_ = 1;
};

} // namespace zryaml::bind
