// SPDX-License-Identifier: Apache-2.0
// libyaml's parser over an open file; both are given back however the load ends.
#pragma once

#include <cstdio>
#include <yaml.h>

#include "peer.h"

namespace zryaml::bench {

class LibyamlFile {
public:
    LibyamlFile(const Peer &peer, const char *path) : m_file(fopen(path, "rb"))
    {
        if (m_file == nullptr || yaml_parser_initialize(&m_parser) == 0)
            LoadFail(peer, path);
        yaml_parser_set_input_file(&m_parser, m_file);
    }
    LibyamlFile &operator=(LibyamlFile &&) = delete;
    ~LibyamlFile()
    {
        yaml_parser_delete(&m_parser);
        (void)fclose(m_file);
    }
    yaml_parser_t *Get() { return &m_parser; }

private:
    FILE *m_file;
    yaml_parser_t m_parser{};
};

} // namespace zryaml::bench
