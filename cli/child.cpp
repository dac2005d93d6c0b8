// SPDX-License-Identifier: Apache-2.0
#include "child.h"
#include "failure.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <poll.h>
#include <spawn.h>
#include <sys/signalfd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zryaml::cli {

namespace {

sigset_t ending_set() noexcept
{
    sigset_t set;
    (void)sigemptyset(&set);
    (void)sigaddset(&set, SIGINT);
    (void)sigaddset(&set, SIGTERM);
    return set;
}

// 0, or why it could not be started. The child takes signals as usual.
int child_start(const std::vector<std::string> &command, pid_t &child)
{
    std::vector<char *> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string &argument : command)
        arguments.push_back(const_cast<char *>(argument.c_str()));
    arguments.push_back(nullptr);
    sigset_t none;
    (void)sigemptyset(&none);
    posix_spawnattr_t attributes;
    (void)posix_spawnattr_init(&attributes);
    (void)posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    (void)posix_spawnattr_setsigmask(&attributes, &none);
    const int error = posix_spawnp(&child, arguments.front(), nullptr, &attributes, arguments.data(), environ);
    (void)posix_spawnattr_destroy(&attributes);
    return error;
}

// Waits until the child has ended, or passes a signal on that came for us.
void end_await(pid_t child, const EndSignals &signals) noexcept
{
    const int ended = static_cast<int>(syscall(SYS_pidfd_open, child, 0)); // the C library may not have it for C++
    struct pollfd wake[] = {{ended, POLLIN, 0}, {signals.descriptor(), POLLIN, 0}};
    while (ended >= 0 && poll(wake, 2, -1) < 0 && errno == EINTR)
        continue;
    if (ended >= 0 && wake[0].revents == 0 && wake[1].revents != 0)
        (void)kill(child, SIGTERM);
    if (ended >= 0)
        (void)close(ended);
}

} // namespace

EndSignals::EndSignals()
{
    const sigset_t ending = ending_set();
    (void)sigprocmask(SIG_BLOCK, &ending, nullptr);
    descriptor_ = signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor_ >= 0)
        return;
    Diagnostic diagnostic;
    diagnostic.message = std::string("signals cannot be waited for: ") + strerror(errno);
    throw Failure(Status::misuse, std::move(diagnostic));
}

EndSignals::~EndSignals()
{
    (void)close(descriptor_);
}

std::string child_run(const std::vector<std::string> &command, const EndSignals &signals)
{
    pid_t child = -1;
    if (const int error = child_start(command, child))
        return std::string("the program cannot be run: ") + strerror(error);
    end_await(child, signals);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR)
        continue;
    if (WIFSIGNALED(status))
        return "the program was ended by signal " + std::to_string(WTERMSIG(status));
    return WEXITSTATUS(status) == 0 ? "" : "the program ended with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace zryaml::cli
