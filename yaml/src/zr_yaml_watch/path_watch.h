// SPDX-License-Identifier: Apache-2.0
// The kernel's telling of changes (inotify) over all that could change what a path leads to: each folder on the way,
// through every link, for the one name in it that counts, and the file itself, which may be written to by another name
// or lie on a mount of its own. A path that leads nowhere is watched as far as it leads.
//
// The set is made anew before each look. A folder is watched before it is looked into, so whatever changes meanwhile is
// told afterwards.
#pragma once

#include "../growing_array.h"
#include "wake.h"

#include <string_view>

namespace zryaml::watch {

struct Settings;

struct WatchedName {
    int watch;     // number of the kernel's watch
    bool writing;  // a file that somebody has written to and not closed yet
    uint64_t name; // what counts in a folder: TextSum of a name, or one of those below
};
constexpr uint64_t DocumentNames = 0; // the documents of a folder
constexpr uint64_t ItselfOnly = 1;    // a file

class PathWatch {
public:
    // Watches whatever the layers lead to now. What it cannot watch makes it blind.
    void Renew(const Settings &settings, const Wake &wake) noexcept;
    // Whether there may be changes that nobody tells of.
    [[nodiscard]] bool IsBlind() const noexcept { return m_blind; }
    // Takes what the kernel has told so far.
    [[nodiscard]] Noticed Drain() noexcept;
    void Close() noexcept;

private:
    [[nodiscard]] bool Open(const Wake &wake) noexcept;
    // Watches all that a path goes through, and what it ends at (path_way.cpp).
    void Follow(const char *path) noexcept;
    void MembersFollow(const char *folder) noexcept;
    void FolderAdd(const char *path, uint64_t name) noexcept;
    void FileAdd(const char *path) noexcept;
    void Add(const char *path, uint32_t mask, uint64_t name) noexcept;
    void StaleRemove(GrowingArray<WatchedName> before) noexcept;
    void EventTake(int watch, uint32_t mask, std::string_view name, Noticed &noticed) noexcept;

    int m_file = -1;
    bool m_blind = false;
    GrowingArray<WatchedName> m_names; // in the order of the kernel's numbers
};

// A number for a name. Two names with the same number cost a look too many.
[[nodiscard]] uint64_t TextSum(std::string_view text) noexcept;

} // namespace zryaml::watch
