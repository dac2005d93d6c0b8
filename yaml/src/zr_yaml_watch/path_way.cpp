// SPDX-License-Identifier: Apache-2.0
// Going along a path as the kernel does, one name at a time and through every link, and watching each folder for the
// name that is looked up in it.
#include "watch_internal.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

using namespace zryaml;
using namespace zryaml::watch;

namespace {

// File systems that others change without a word to this kernel, or that make up their files.
bool IsSilent(const char *path) noexcept
{
    constexpr uint32_t Cifs = 0xFF534D42, Fuse = 0x65735546, Ceph = 0x00C36400, Lustre = 0x0BD00BD0, Gpfs = 0x47504653;
    struct statfs status = {};
    if (System().pfnStatfs(path, &status) != 0)
        return true;
    switch (static_cast<uint32_t>(status.f_type)) {
    case NFS_SUPER_MAGIC:
    case SMB_SUPER_MAGIC:
    case SMB2_SUPER_MAGIC:
    case AFS_SUPER_MAGIC:
    case CODA_SUPER_MAGIC:
    case OCFS2_SUPER_MAGIC:
    case V9FS_MAGIC:
    case PROC_SUPER_MAGIC:
    case SYSFS_MAGIC:
    case CGROUP2_SUPER_MAGIC:
    case Cifs:
    case Fuse:
    case Ceph:
    case Lustre:
    case Gpfs:
        return true;
    default:
        return false;
    }
}

bool StatusGet(const char *path, struct statx &status) noexcept
{
    return System().pfnStatx(path, &status) == 0;
}

class Way { // where a path has led so far, and what is left of it
public:
    explicit Way(const char *path) noexcept { Rest("", path); }

    // Takes the next name; false at the end.
    [[nodiscard]] bool Next() noexcept
    {
        do {
            m_rest += strspn(m_rest, "/");
            const size_t length = strcspn(m_rest, "/");
            m_name = {m_rest, length};
            m_rest += length;
            if (m_name == "..")
                Up();
        } while (m_name == "." || m_name == "..");
        return !m_name.empty() && Fits();
    }
    [[nodiscard]] std::string_view Name() const noexcept { return m_name; }
    [[nodiscard]] const char *Folder() noexcept { return m_reached[0] != '\0' ? m_reached : "/"; }

    // Goes to the name; Through follows where that is a link, else it is a folder or the end.
    void Down() noexcept
    {
        const size_t length = strlen(m_reached);
        const int size = static_cast<int>(m_name.size());
        (void)snprintf(m_reached + length, sizeof(m_reached) - length, "/%.*s", size, m_name.data());
    }
    void Up() noexcept
    {
        if (char *slash = strrchr(m_reached, '/'))
            *slash = '\0';
    }
    // Goes on along the text of the link that was reached. False if there are too many links, or too long ones.
    [[nodiscard]] bool Through(const char *target) noexcept
    {
        constexpr uint32_t LinksMax = 40; // as in the kernel
        if (target[0] == '/')
            m_reached[0] = '\0';
        else
            Up();
        return ++m_links <= LinksMax && Rest(target, m_rest);
    }
    [[nodiscard]] bool Fits() const noexcept { return strlen(m_reached) + m_name.size() + 1 < sizeof(m_reached); }

private:
    bool Rest(const char *first, const char *second) noexcept
    {
        char joined[sizeof(m_text)];
        const int length = snprintf(joined, sizeof(joined), "%s/%s", first, second);
        m_rest = static_cast<char *>(memcpy(m_text, joined, sizeof(joined)));
        return length < static_cast<int>(sizeof(joined));
    }

    char m_reached[PATH_MAX] = ""; // without links, nothing for the root
    char m_text[PATH_MAX];
    const char *m_rest = m_text;
    std::string_view m_name;
    uint32_t m_links = 0;
};

// Whether a file lies on another mount than its folder, and so cannot be replaced there.
bool IsMountedAlone(const struct statx &file, Way &way) noexcept
{
    struct statx folder = {};
    way.Up();
    return S_ISREG(file.stx_mode) && StatusGet(way.Folder(), folder) &&
           (file.stx_mask & folder.stx_mask & STATX_MNT_ID) != 0 && file.stx_mnt_id != folder.stx_mnt_id;
}

} // namespace

// Where the way ends early, the folder that was reached tells when it can go on.
void zryaml::watch::PathWatch::Follow(const char *path) noexcept
{
    Way way(path);
    struct statx status = {};
    bool ended = false;
    while (!ended && way.Next()) {
        FolderAdd(way.Folder(), TextSum(way.Name()));
        way.Down();
        if (!StatusGet(way.Folder(), status)) {
            m_blind |= errno != ENOENT && errno != ENOTDIR;
            ended = true;
        } else if (S_ISLNK(status.stx_mode)) {
            char target[PATH_MAX];
            const long length = System().pfnReadlink(way.Folder(), target, sizeof(target) - 1);
            target[length < 0 ? 0 : length] = '\0';
            ended = length < 0 || !way.Through(target);
        }
    }
    if (ended)
        way.Up();
    m_blind |= IsSilent(way.Folder());
    m_blind |= !ended && IsMountedAlone(status, way);
}

void zryaml::watch::PathWatch::MembersFollow(const char *folder) noexcept
{
    struct dirent **entries = nullptr;
    const int count = System().pfnFolderRead(folder, &entries);
    m_blind |= count < 0 && errno != ENOENT && errno != ENOTDIR;
    for (int at = 0; at < count; ++at) {
        char path[PATH_MAX];
        if (snprintf(path, sizeof(path), "%s/%s", folder, entries[at]->d_name) < static_cast<int>(sizeof(path))) {
            Follow(path);
            FileAdd(path);
        }
        free(entries[at]);
    }
    free(entries);
}
