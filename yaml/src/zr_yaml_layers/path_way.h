// SPDX-License-Identifier: Apache-2.0
// A key path as steps that are followed in the document, whose keys have no escapes any more.
#pragma once

#include "layers_internal.h"

#include "../key_path.h"

namespace zryaml::layers {

class PathWay {
public:
    Step steps[StepsMax];

    // Reads a path of less than YAML_KEY_BUF_SIZE bytes, which then has no more steps than there is room for.
    [[nodiscard]] PathFault Read(std::string_view path) noexcept
    {
        PathReader reader(path);
        char *end = m_keys; // keys are no longer than they are written
        for (PathStep step = {}; m_count < StepsMax && reader.Next(step); ++m_count) {
            const size_t size = step.isIndex ? 0 : NameUnescape(step.text, end, step.text.size());
            steps[m_count] = {step.isIndex, {end, size}, step.index};
            end += size;
        }
        return reader.Fault();
    }
    [[nodiscard]] uint32_t Count() const noexcept { return m_count; }

private:
    char m_keys[YAML_KEY_BUF_SIZE];
    uint32_t m_count = 0;
};

} // namespace zryaml::layers
