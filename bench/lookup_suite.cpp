// SPDX-License-Identifier: Apache-2.0
// One value, seven components deep, read in each library as its users would read it.
#include <span>

#include "peer.h"
#include "suite.h"
#include "text.h"

namespace zryaml::bench {

namespace {

// A document whose maps each have the wanted key in their middle, between scalars; "halls" is a sequence with the
// wanted element in its middle.
std::string DocumentText(uint32_t siblings)
{
    std::string text;
    std::string indent;
    const auto Others = [&](uint32_t first, uint32_t end) {
        for (uint32_t i = first; i < end; ++i)
            text += indent + Printed("name_%u: value\n", i);
    };
    const auto Level = [&](auto &self, std::span<const char *const> keys) -> void {
        const uint32_t middle = siblings / 2;
        Others(0, middle);
        text += indent + keys.front() + ":" + (keys.size() == 1 ? " 7443" : "") + "\n";
        const std::string outer = indent;
        indent += "  ";
        if (keys.front() == std::string_view("halls")) {
            for (uint32_t i = 0; i < middle; ++i)
                text += indent + "- {name: value}\n";
            text += indent + "-\n";
            indent += "  ";
        }
        if (keys.size() > 1)
            self(self, keys.subspan(1));
        indent = outer;
        Others(middle + 1, siblings);
    };
    constexpr const char *Keys[] = {"plant", "halls", "north", "rack", "unit", "listen", "port"};
    Level(Level, Keys);
    return text;
}

const Suite added([](const Setting &) {
    for (const uint32_t siblings : {2U, 8U, 32U}) {
        const std::string text = DocumentText(siblings);
        const auto Add = [&](const char *kind, const Peer &peer,
                             Contestant (*Peer::*read)(const std::string &, uint32_t, const std::string &)) {
            PairAdd(Printed("lookup/%s path, %u siblings/%s", kind, siblings, peer.name),
                    (Library.*read)(text, siblings / 2, "north"), (peer.*read)(text, siblings / 2, "north"));
        };
        for (const Peer &peer : {Fyaml, YamlCpp}) {
            Add("plain", peer, &Peer::plain);
            Add("formatted", peer, &Peer::formatted);
        }
    }
});

} // namespace

} // namespace zryaml::bench
