// SPDX-License-Identifier: Apache-2.0
// The way that the name of an environment variable goes: components between "__", each of which finds a key or is an
// index.
#pragma once

#include "layers_internal.h"

namespace zryaml::layers {

struct Variable {
    std::string_view name; // all of it
    std::string_view path; // behind the prefix
    const char *text;
};

class ComponentReader {
public:
    explicit ComponentReader(std::string_view path) noexcept : m_rest(path) {}

    // False behind the last component.
    [[nodiscard]] bool Next() noexcept
    {
        if (m_ended)
            return false;
        const size_t end = m_rest.find("__");
        m_component = First(m_rest, end);
        m_ended = end == std::string_view::npos;
        m_rest.remove_prefix(m_ended ? m_rest.size() : end + 2);
        return true;
    }
    [[nodiscard]] std::string_view Component() const noexcept { return m_component; }

private:
    std::string_view m_rest;
    std::string_view m_component;
    bool m_ended = false;
};

// Whether a text is digits alone.
[[nodiscard]] bool IsNumber(std::string_view text) noexcept;

// Sets the value that a variable names.
void VariableApply(Stack &stack, const Variable &variable, uint32_t layer) noexcept;

} // namespace zryaml::layers
