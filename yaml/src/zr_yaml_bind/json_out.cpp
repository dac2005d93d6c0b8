// SPDX-License-Identifier: Apache-2.0
#include "json_out.h"

#include <cstring>

namespace zryaml::bind {

void JsonOut::Line() noexcept
{
    out_.Put('\n');
    for (uint32_t column = 0; column < indent_; ++column)
        out_.Put(' ');
}

void JsonOut::String(std::string_view text) noexcept
{
    out_.Put('"');
    for (const char character : text) {
        if (static_cast<unsigned char>(character) < 0x20)
            out_.Format("\\u%04x", static_cast<unsigned>(character));
        else if (character == '"' || character == '\\')
            out_.Format("\\%c", character);
        else
            out_.Put(character);
    }
    out_.Put('"');
}

uint32_t JsonPointer::Enter(const char *name) noexcept
{
    const uint32_t before = length_;
    char part[8] = "/";
    for (;;) {
        const auto size = static_cast<uint32_t>(strlen(part));
        if (length_ + size < sizeof(text_)) {
            memcpy(text_ + length_, part, size + 1);
            length_ += size;
        }
        if (*name == '\0')
            return before;
        const auto character = static_cast<unsigned char>(*name++);
        const bool letter = (character | 0x20U) >= 'a' && (character | 0x20U) <= 'z';
        const bool plain = letter || (character >= '0' && character <= '9') || strchr("-_.", character) != nullptr;
        if (character == '~' || character == '/')
            (void)snprintf(part, sizeof(part), "~%c", character == '~' ? '0' : '1');
        else
            (void)snprintf(part, sizeof(part), plain ? "%c" : "%%%02X", character);
    }
}

} // namespace zryaml::bind
