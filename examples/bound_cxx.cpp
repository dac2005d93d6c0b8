// SPDX-License-Identifier: Apache-2.0
#include <iostream>
#include <zr_yaml/bind.hpp>

struct App {
    std::string name;
    std::uint16_t port = 8080;
    std::vector<std::chrono::milliseconds> retries;
};
ZRYAML_FIELDS(App, name, port, retries)

int main(int argc, char **argv)
{
    auto conf = zryaml::Document::load(argc > 1 ? argv[1] : "examples/bound.yaml");
    if (!conf)
        return std::cout << conf.error().what() << "\n", 1;
    auto app = zryaml::bind<App>(*conf);
    if (!app)
        return std::cout << app.error().what(), 1;
    std::cout << app->name << " listens on " << app->port << " and tries " << app->retries.size() << " times more\n";
}
