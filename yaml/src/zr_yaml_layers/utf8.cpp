// SPDX-License-Identifier: Apache-2.0
// Whether a text is UTF-8, as all texts of a document are. Variables and arguments can hold any bytes.
#include "layers_internal.h"

using namespace zryaml;
using namespace zryaml::layers;

namespace {

struct Lead { // what a first byte promises
    unsigned char mask, bits;
    uint32_t following;
    uint32_t least; // a smaller character has a shorter form
};
constexpr Lead Leads[] = {{0x80, 0x00, 0, 0}, {0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, 0x10000}};

bool IsCharacter(uint32_t character, uint32_t least) noexcept
{
    return character >= least && character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
}

// The length of the character that a text begins with; 0 if there is none.
size_t CharacterLength(std::string_view text) noexcept
{
    const auto first = static_cast<unsigned char>(text[0]);
    for (const Lead &lead : Leads) {
        if ((first & lead.mask) != lead.bits)
            continue;
        uint32_t character = first & static_cast<unsigned char>(~lead.mask);
        for (uint32_t at = 1; at <= lead.following; ++at) {
            const uint32_t byte = at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
            if ((byte & 0xC0) != 0x80)
                return 0;
            character = character << 6 | (byte & 0x3F);
        }
        return IsCharacter(character, lead.least) ? lead.following + 1 : 0;
    }
    return 0;
}

} // namespace

bool zryaml::layers::IsUtf8(std::string_view text) noexcept
{
    while (!text.empty()) {
        const size_t length = CharacterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}
