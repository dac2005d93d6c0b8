// SPDX-License-Identifier: Apache-2.0
// A server's skeleton: one loop that waits for work and for a new configuration, two workers that each take the newest
// one for each piece of work. Run it, and edit the file meanwhile: watching_server examples/watching_server.yaml
// [PATH=TEXT...]
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <poll.h>
#include <sys/signalfd.h>
#include <thread>
#include <vector>

#include <zr_yaml/watch.hpp>

struct Log {
    std::string level = "info";
};
ZRYAML_FIELDS(Log, level)

struct Server {
    std::string name;
    std::uint16_t port = 8080;
};
ZRYAML_FIELDS(Server, name, port)

struct Config {
    Log log;
    std::vector<Server> servers;
    std::chrono::milliseconds pause{100};
};
ZRYAML_FIELDS(Config, log, servers, pause)

namespace {

using Configuration = zryaml::Live<Config>;

// One piece of work sees one configuration from beginning to end, whatever is reloaded meanwhile.
void work(const Configuration &live, const std::atomic<bool> &ends, std::atomic<std::uint64_t> &done)
{
    while (!ends) {
        const std::shared_ptr<const Config> conf = live.get();
        for (const Server &server : conf->servers)
            done += server.port != 0; // here a request would be answered
        std::this_thread::sleep_for(conf->pause);
    }
}

void loop(Configuration &live, int signals)
{
    std::array<pollfd, 2> wake{{{live.fd(), POLLIN, 0}, {signals, POLLIN, 0}}};
    while (poll(wake.data(), wake.size(), -1) > 0 && wake[1].revents == 0) {
        const zryaml::Result<bool, zryaml::Problems> polled = live.poll();
        if (!polled.has_value())
            (void)std::fprintf(stderr, "%skept the configuration in use\n", polled.error().what().c_str());
        else if (*polled)
            (void)std::printf("new configuration: %zu servers\n", live.get()->servers.size());
        (void)std::fflush(stdout);
    }
}

} // namespace

int main(int count, char **arguments)
{
    sigset_t ending;
    (void)sigemptyset(&ending);
    (void)sigaddset(&ending, SIGINT);
    (void)sigaddset(&ending, SIGTERM);
    (void)pthread_sigmask(SIG_BLOCK, &ending, nullptr); // before the workers begin

    zryaml::Layers layers;
    layers.file(count > 1 ? arguments[1] : "examples/watching_server.yaml").environment("SERVER_");
    for (int number = 2; number < count; ++number)
        layers.set(arguments[number], "command line");
    zryaml::Result<Configuration, zryaml::Problems> live = Configuration::open(layers);
    if (!live) {
        (void)std::fputs(live.error().what().c_str(), stderr);
        return 1;
    }
    live->on_change("log", [](const Config &now) { (void)std::printf("log level: %s\n", now.log.level.c_str()); });

    std::atomic<bool> ends = false;
    std::atomic<std::uint64_t> done = 0;
    std::array<std::thread, 2> workers;
    for (std::thread &worker : workers)
        worker = std::thread([&] { work(*live, ends, done); });
    (void)std::printf("ready: %zu servers\n", live->get()->servers.size());
    (void)std::fflush(stdout);
    loop(*live, signalfd(-1, &ending, SFD_CLOEXEC));
    ends = true;
    for (std::thread &worker : workers)
        worker.join();
    (void)std::printf("%s\n", done > 0 ? "worked" : "idle");
    return 0;
}
