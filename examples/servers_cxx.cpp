// SPDX-License-Identifier: Apache-2.0
#include <iostream>
#include <zr_yaml/bind.hpp>

struct Server {
    std::string name;
    std::uint16_t port = 80;
    bool tls = false;
    std::vector<int> cores;
};
ZRYAML_FIELDS(Server, name, port, tls, cores)

int main()
{
    auto conf = zryaml::Document::load("examples/servers.yaml");
    if (!conf) {
        std::cerr << conf.error().what() << "\n";
        return 1;
    }
    auto servers = zryaml::bind<std::vector<Server>>((*conf)["servers"]);
    if (!servers) {
        std::cerr << servers.error().what();
        return 1;
    }
    for (const Server &server : *servers)
        std::cout << server.name << " listens on " << server.port << "\n";
}
