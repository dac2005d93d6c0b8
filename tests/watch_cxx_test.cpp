// SPDX-License-Identifier: Apache-2.0
// A type bound to watched layers: what readers get, who is told of a change, and what is wrong with a bad version.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <poll.h>
#include <zr_yaml/watch.hpp>

namespace watch_cxx_test {

struct Server {
    std::string name;
    std::uint16_t port = 8080;
};
ZRYAML_FIELDS(Server, name, port)

struct Config {
    std::string level = "info";
    std::vector<Server> servers;
};
ZRYAML_FIELDS(Config, level, servers)

namespace {

constexpr const char *Versions[][3] = {
    // text, what is told, who is called
    {"{level: debug, servers: [{name: a}]}", "changed", "all level "},
    {"{level: debug, servers: [{name: a, port: 1}, {name: b}]}", "changed", "all first second "},
    {"{level: debug, servers: [{name: a, prot: 1}]}", "servers[0]: unknown key 'prot'", ""},
    {"{level: debug, servers: [{name: a, port: 1}], x-y: 1}", "changed", "all second "},
};

std::string Polled(zryaml::Live<Config> &live)
{
    for (struct pollfd wake = {live.fd(), POLLIN, 0}; poll(&wake, 1, 5000) > 0;) {
        const zryaml::Result<bool, zryaml::Problems> polled = live.poll();
        if (!polled.has_value())
            return polled.error()[0].path + ": " + polled.error()[0].message;
        if (*polled)
            return "changed";
    }
    return "nothing";
}

TEST(Live, GivesTheNewestGoodVersionAndTellsOfIt)
{
    std::string folder = "/tmp/zryaml_live_XXXXXX";
    EXPECT_NE(mkdtemp(folder.data()), nullptr);
    const std::string path = folder + "/app.yaml";
    const auto Write = [&](const char *pcText) {
        std::ofstream(path + ".part") << pcText;
        (void)std::rename((path + ".part").c_str(), path.c_str());
    };
    const zryaml::Layers layers = zryaml::Layers().file(path);
    const auto missing = zryaml::Live<Config>::open(layers);
    EXPECT_EQ(missing.error()[0].message, "no such file");
    Write("{level: info, servers: [{name: a}]}");
    auto opened = zryaml::Live<Config>::open(layers);
    ASSERT_TRUE(opened) << opened.error().what();
    zryaml::Live<Config> live = *std::move(opened);
    std::string called;
    for (const auto &[name, at] : {std::pair("all", ""), std::pair("level", "level"), std::pair("first", "servers[0]"),
                                   std::pair("second", "servers[1]")})
        live.on_change(at, [&called, said = std::string(name)](const Config &) { called += said + ' '; });
    const std::shared_ptr<const Config> held = live.get();
    for (const auto &[text, told, whom] : Versions) {
        called.clear();
        Write(text);
        EXPECT_EQ(Polled(live), told) << text;
        EXPECT_EQ(called, whom) << text;
    }
    EXPECT_TRUE(held->level == "info" && live.get()->level == "debug" && live.get()->servers.size() == 1);
    (void)std::remove(path.c_str());
    (void)remove(folder.c_str());
}

} // namespace

} // namespace watch_cxx_test
