// SPDX-License-Identifier: Apache-2.0
// libyaml's parser alone: the floor of all loads.
#include "libyaml_file.h"

namespace zryaml::bench {

namespace {

void Load(const char *path)
{
    LibyamlFile file(EventLoop, path);
    yaml_event_t event;
    bool end = false;
    while (!end) {
        if (yaml_parser_parse(file.Get(), &event) == 0)
            LoadFail(EventLoop, path);
        end = event.type == YAML_STREAM_END_EVENT;
        yaml_event_delete(&event);
    }
}

} // namespace

const Peer EventLoop = {"event loop", Load, nullptr, nullptr};

} // namespace zryaml::bench
