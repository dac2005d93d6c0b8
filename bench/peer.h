// SPDX-License-Identifier: Apache-2.0
// The library and what it is measured against, a file each, as Debian ships the peers and with their default settings.
#pragma once

#include <benchmark/benchmark.h>
#include <stdexcept>
#include <string>
#include <string_view>

#include "measure.h"

namespace zryaml::bench {

struct Peer {
    const char *name;

    // Loads a file completely and releases all of it. Throws std::runtime_error or the peer's own exception.
    void (*load)(const char *path);

    // Read the text at "plant.halls[INDEX].KEY.rack.unit.listen.port" of a document, the first with the path in one
    // text, the second with index and key as values. NULL: keeps no document.
    Contestant (*plain)(const std::string &text, uint32_t index, const std::string &key);
    Contestant (*formatted)(const std::string &text, uint32_t index, const std::string &key);
};

extern const Peer Library;
extern const Peer EventLoop;    // libyaml: each event parsed and deleted, nothing kept
extern const Peer DocumentTree; // libyaml: yaml_parser_load
extern const Peer Fyaml;
extern const Peer YamlCpp;

[[noreturn]] inline void LoadFail(const Peer &peer, const char *path)
{
    throw std::runtime_error(std::string(peer.name) + " cannot load " + path);
}

// Wraps a read that returns a text, which must be the right one; the compiler may not leave it out.
template <typename Read> [[nodiscard]] Contestant ReadingOf(const Peer &peer, Read read)
{
    if (std::string_view(read()) != "7443")
        throw std::runtime_error(std::string(peer.name) + " finds the wrong text");
    return {Repeated([read = std::move(read)] { benchmark::DoNotOptimize(read()); })};
}

} // namespace zryaml::bench
