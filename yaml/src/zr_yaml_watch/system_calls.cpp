// SPDX-License-Identifier: Apache-2.0
// The system calls of a watch, in a table that tests replace. Descriptors are closed by exec; reading never waits.
#include "../folder_names.h"
#include "watch_internal.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/epoll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/timerfd.h>
#include <sys/vfs.h>
#include <unistd.h>

using namespace zryaml;
using namespace zryaml::watch;

namespace {

constexpr YamlWatchCalls Own = {
    .pfnOpen = [](const char *path, int flags) { return open(path, flags | O_CLOEXEC); },
    .pfnClose = [](int file) { return close(file); },
    .pfnRead = [](int file, void *buffer, size_t size) -> long { return read(file, buffer, size); },
    .pfnFstat = [](int file, struct stat *status) { return fstat(file, status); },
    .pfnStatx =
        [](const char *path, struct statx *status) {
            return statx(AT_FDCWD, path, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, STATX_TYPE | STATX_MNT_ID, status);
        },
    .pfnStatfs = [](const char *path, struct statfs *status) { return statfs(path, status); },
    .pfnReadlink = [](const char *path, char *buffer, size_t size) -> long { return readlink(path, buffer, size); },
    .pfnFolderRead = [](const char *path,
                        struct dirent ***entries) { return scandir(path, entries, IsDocumentName, InByteOrder); },
    .pfnWatchMake = [] { return inotify_init1(IN_CLOEXEC | IN_NONBLOCK); },
    .pfnWatchAdd = [](int file, const char *path, uint32_t mask) { return inotify_add_watch(file, path, mask); },
    .pfnWatchRemove = [](int file, int watch) { return inotify_rm_watch(file, watch); },
    .pfnTimerMake = [] { return timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK); },
    .pfnTimerSet =
        [](int file, const struct itimerspec *time) { return timerfd_settime(file, TFD_TIMER_ABSTIME, time, nullptr); },
    .pfnPollMake = [] { return epoll_create1(EPOLL_CLOEXEC); },
    .pfnPollAdd =
        [](int poll, int file) {
            struct epoll_event event = {};
            event.events = EPOLLIN;
            return epoll_ctl(poll, EPOLL_CTL_ADD, file, &event);
        },
};

constinit std::atomic<const YamlWatchCalls *> g_calls = &Own;

} // namespace

const YamlWatchCalls &zryaml::watch::System() noexcept
{
    return *g_calls.load(std::memory_order_acquire);
}

const YamlWatchCalls *yaml_WatchCallsSet(const YamlWatchCalls *pstCalls)
{
    return g_calls.exchange(pstCalls != nullptr ? pstCalls : &Own);
}
