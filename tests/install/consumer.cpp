// SPDX-License-Identifier: Apache-2.0
// As consumer.c, in C++. The standard that it was compiled with comes last.
#include <zr_yaml.hpp>

#include <cstdint>
#include <cstdio>
#include <utility>

int main(int argc, char **argv)
{
    auto loaded = zryaml::Document::load(argc == 2 ? argv[1] : "");
    if (!loaded)
        return 1;
    const zryaml::Document doc = *std::move(loaded);
    const auto port = doc["servers"][1]["port"].get<std::uint16_t>();
    if (!port)
        return 1;
    std::printf("port %u of %zu servers, C++%ld\n", unsigned{*port}, doc["servers"].size(), __cplusplus / 100 % 100);
    return 0;
}
