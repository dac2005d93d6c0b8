// SPDX-License-Identifier: Apache-2.0
// Making the set of watches, and taking events. The way along a path is in path_way.cpp.
#include "../folder_names.h"
#include "watch_internal.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <sys/inotify.h>

using namespace zryaml;
using namespace zryaml::watch;

namespace {

constexpr uint32_t FolderMask =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr uint32_t FileMask = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;

int NameCompare(const void *one, const void *other) noexcept
{
    const auto &left = *static_cast<const WatchedName *>(one), &right = *static_cast<const WatchedName *>(other);
    return left.watch != right.watch ? (left.watch < right.watch ? -1 : 1)
           : left.name != right.name ? (left.name < right.name ? -1 : 1)
                                     : 0;
}

WatchedName *FirstOf(const GrowingArray<WatchedName> &names, int watch) noexcept
{
    return std::lower_bound(names.begin(), names.end(), watch,
                            [](const WatchedName &name, int number) { return name.watch < number; });
}

} // namespace

uint64_t zryaml::watch::TextSum(std::string_view text) noexcept
{
    uint64_t sum = 0xCBF29CE484222325; // FNV-1a
    for (const char character : text)
        sum = (sum ^ static_cast<unsigned char>(character)) * 0x100000001B3;
    return std::max<uint64_t>(sum, ItselfOnly + 1);
}

void zryaml::watch::PathWatch::Renew(const Settings &settings, const Wake &wake) noexcept
{
    const GrowingArray<WatchedName> before = m_names;
    m_names = {};
    m_blind = !Open(wake);
    for (const WatchedLayer &watched : settings.layers) {
        if (m_file < 0 || !IsOnDisk(watched.layer))
            continue;
        Follow(watched.path);
        if (IsFolder(watched.layer)) {
            FolderAdd(watched.path, DocumentNames);
            MembersFollow(watched.path);
        } else {
            FileAdd(watched.path);
        }
    }
    if (m_names.Count() > 1)
        qsort(m_names.begin(), m_names.Count(), sizeof(WatchedName), NameCompare);
    StaleRemove(before);
}

bool zryaml::watch::PathWatch::Open(const Wake &wake) noexcept
{
    if (m_file >= 0)
        return true;
    const int file = System().pfnWatchMake();
    if (file < 0)
        return false;
    if (!wake.Add(file)) {
        (void)System().pfnClose(file);
        return false;
    }
    m_file = file;
    return true;
}

void zryaml::watch::PathWatch::StaleRemove(GrowingArray<WatchedName> before) noexcept
{
    for (const WatchedName &name : before) {
        const WatchedName *now = FirstOf(m_names, name.watch);
        const bool seen = &name != before.begin() && (&name)[-1].watch == name.watch;
        if (!seen && (now == m_names.end() || now->watch != name.watch))
            (void)System().pfnWatchRemove(m_file, name.watch); // fails if what it was on is gone
    }
    before.Release();
}

void zryaml::watch::PathWatch::FolderAdd(const char *path, uint64_t name) noexcept
{
    Add(path, FolderMask, name);
}

void zryaml::watch::PathWatch::FileAdd(const char *path) noexcept
{
    Add(path, FileMask, ItselfOnly);
}

// What is gone again was told of by the folder that it was in.
void zryaml::watch::PathWatch::Add(const char *path, uint32_t mask, uint64_t name) noexcept
{
    const int watch = System().pfnWatchAdd(m_file, path, mask);
    if (watch < 0 ? errno != ENOENT && errno != ENOTDIR : !m_names.Add({watch, false, name}))
        m_blind = true;
}

Noticed zryaml::watch::PathWatch::Drain() noexcept
{
    constexpr uint32_t ReadsMax = 64; // the rest leaves the descriptor readable
    Noticed noticed;
    alignas(struct inotify_event) char buffer[4096];
    for (uint32_t reads = 0; m_file >= 0 && reads < ReadsMax; ++reads) {
        const long length = System().pfnRead(m_file, buffer, sizeof(buffer));
        if (length <= 0) {
            noticed.any |= length < 0 && errno != EAGAIN; // something was told, whatever it was
            break;
        }
        for (long at = 0; at < length;) {
            const auto *event = reinterpret_cast<const struct inotify_event *>(buffer + at);
            EventTake(event->wd, event->mask, event->len != 0 ? event->name : "", noticed);
            at += static_cast<long>(sizeof(*event) + event->len);
        }
    }
    for (const WatchedName &name : m_names)
        noticed.writing |= name.writing;
    return noticed;
}

// Events of watches that are no longer wanted may still come, and those of a name that does not count do.
void zryaml::watch::PathWatch::EventTake(int watch, uint32_t mask, std::string_view name, Noticed &noticed) noexcept
{
    if ((mask & IN_Q_OVERFLOW) != 0)
        noticed.any = true;
    for (WatchedName *entry = FirstOf(m_names, watch); entry != m_names.end() && entry->watch == watch; ++entry) {
        if ((mask & (IN_MODIFY | IN_CLOSE_WRITE)) != 0)
            entry->writing = (mask & IN_MODIFY) != 0;
        const bool counts = entry->name == DocumentNames ? IsDocumentName(name) : entry->name == TextSum(name);
        noticed.any |= name.empty() || counts;
    }
}

void zryaml::watch::PathWatch::Close() noexcept
{
    if (m_file >= 0)
        (void)System().pfnClose(m_file);
    m_names.Release();
}
