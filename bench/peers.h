// SPDX-License-Identifier: Apache-2.0
// The library and what it is measured against: ways to load a file and to release it again, as Debian ships the peers.
#pragma once

#include <string>
#include <vector>

namespace zryaml::bench {

// One way to load a file completely and to release all of it. Throws std::runtime_error or the peer's own exception.
struct Loader {
    const char *pcName;
    void (*pfnLoad)(const char *pcPath);
};

[[nodiscard]] Loader LibraryLoader();   // ZRYAML_FileLoad and ZRYAML_HandleFree
[[nodiscard]] Loader EventLoopLoader(); // libyaml: each event parsed and deleted, nothing kept
[[nodiscard]] Loader DocumentLoader();  // libyaml: yaml_parser_load
[[nodiscard]] Loader FyamlLoader();     // libfyaml: fy_document_build_from_file
[[nodiscard]] Loader YamlCppLoader();   // yaml-cpp: YAML::LoadFile

// Peer, version and compiler names, as "libyaml 0.2.5".
[[nodiscard]] std::vector<std::string> VersionsGet();

} // namespace zryaml::bench
