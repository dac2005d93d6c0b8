// SPDX-License-Identifier: Apache-2.0
#include <iostream>
#include <zr_yaml.hpp>

int main()
{
    zryaml::Result<zryaml::Document> conf = zryaml::Document::load("examples/servers.yaml");
    if (!conf) {
        std::cerr << conf.error().what() << "\n";
        return 1;
    }
    for (zryaml::Value server : (*conf)["servers"])
        std::cout << server["name"].text().value_or("?") << " listens on " << *server["port"].get<int>() << "\n";
}
