// SPDX-License-Identifier: Apache-2.0
// Reading the files and folders of layers. What is not there or cannot be a document is a finding; what the system
// refuses for a reason of its own ends the reading, which is then tried again.
#include "watch_internal.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

using namespace zryaml;
using namespace zryaml::watch;

namespace {

constexpr char OutOfMemory[] = "out of memory";

// Whether a call was refused for what stands there, not for the state of the system.
bool IsFinding(int error) noexcept
{
    return error == ENOENT || error == ENOTDIR || error == EACCES || error == EISDIR || error == ELOOP ||
           error == ENAMETOOLONG || error == ENXIO || error == EPERM;
}

void FindingSet(SourceCopy &source, int error) noexcept
{
    source.found = error == ENOENT || error == ENOTDIR ? Found::Absent : Found::Unfit;
    source.error = source.found == Found::Unfit ? error : 0;
    source.length = 0;
}

class OpenFile {
public:
    explicit OpenFile(const char *path) noexcept : m_file(System().pfnOpen(path, O_RDONLY | O_NONBLOCK | O_NOCTTY)) {}
    ~OpenFile()
    {
        if (m_file >= 0)
            (void)System().pfnClose(m_file);
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    [[nodiscard]] bool IsOpen() const noexcept { return m_file >= 0; }
    [[nodiscard]] bool Status(struct stat &status) const noexcept { return System().pfnFstat(m_file, &status) == 0; }
    // Reads on, up to the end or until the room is full. False if the system refuses.
    [[nodiscard]] bool Read(char *bytes, uint32_t room, uint32_t &length) const noexcept
    {
        while (length < room) {
            const long more = System().pfnRead(m_file, bytes + length, room - length);
            if (more == 0)
                return true;
            if (more < 0 && errno != EINTR)
                return false;
            length += more < 0 ? 0 : static_cast<uint32_t>(more);
        }
        return true;
    }

private:
    int m_file;
};

char *BlockTake(uint64_t size) noexcept
{
    return size <= UINT32_MAX ? static_cast<char *>(ZR_MemAlloc(static_cast<uint32_t>(size), yaml_MemHandleGet()))
                              : nullptr;
}

void BlockRelease(char *block) noexcept
{
    if (block != nullptr)
        ZR_MemFree(block, yaml_MemHandleGet());
}

uint64_t BytesMax() noexcept
{
    YamlLimits limits = YAML_LIMITS_INIT;
    ZRYAML_LimitsGet(&limits);
    return limits.ulFileBytes;
}

bool RoomMake(SourceCopy &source, uint64_t room) noexcept
{
    char *bytes = BlockTake(room);
    if (bytes == nullptr)
        return false;
    if (source.length != 0)
        memcpy(bytes, source.bytes, source.length);
    BlockRelease(source.bytes);
    source.bytes = bytes;
    return true;
}

// There is room for one byte more than expected, which tells when a file has grown while it is read.
uint32_t BytesRead(const OpenFile &file, SourceCopy &source, uint64_t size, YamlProblems **problems) noexcept
{
    constexpr uint64_t RoomMin = 256; // files of some file systems say that they are empty
    source.found = Found::Bytes;
    for (uint64_t room = std::max(size + 1, RoomMin);; room *= 2) {
        if (std::max<uint64_t>(size, source.length) > BytesMax())
            return FindingSet(source, EFBIG), YAML_OK;
        if (!RoomMake(source, room))
            return Tell(problems, YAML_ERR_NOMEM, source.name, OutOfMemory);
        if (!file.Read(source.bytes, static_cast<uint32_t>(room), source.length)) {
            if (IsFinding(errno))
                return FindingSet(source, errno), YAML_OK;
            return TellSystem(problems, YAML_ERR_READER, source.name, "the file cannot be read");
        }
        if (source.length < room)
            return YAML_OK;
    }
}

uint32_t FileRead(SourceCopy &source, YamlProblems **problems) noexcept
{
    const OpenFile file(source.path);
    if (!file.IsOpen()) {
        if (IsFinding(errno))
            return FindingSet(source, errno), YAML_OK;
        return TellSystem(problems, YAML_ERR_OPEN, source.name, "the file cannot be opened");
    }
    struct stat status = {};
    if (!file.Status(status))
        return TellSystem(problems, YAML_ERR_OPEN, source.name, "the file cannot be opened");
    if (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode))
        return source.found = Found::Pipe, YAML_OK;
    return BytesRead(file, source, static_cast<uint64_t>(status.st_size), problems);
}

// Name and path of a folder's file, in one block.
bool MemberName(SourceCopy &member, const SourceCopy &folder, const char *entry) noexcept
{
    const size_t name = strlen(folder.name) + strlen(entry) + 2;
    const size_t path = strlen(folder.path) + strlen(entry) + 2;
    member.block = BlockTake(uint64_t{name} + path);
    if (member.block == nullptr)
        return false;
    (void)snprintf(member.block, name, "%s/%s", folder.name, entry);
    (void)snprintf(member.block + name, path, "%s/%s", folder.path, entry);
    member.name = member.block;
    member.path = member.block + name;
    return true;
}

void CopyRelease(SourceCopy &source) noexcept
{
    BlockRelease(source.bytes);
    BlockRelease(source.block);
}

bool IsSame(const SourceCopy &one, const SourceCopy &other) noexcept
{
    return one.layer == other.layer && one.found == other.found && one.error == other.error &&
           one.length == other.length && strcmp(one.path, other.path) == 0 &&
           (one.length == 0 || memcmp(one.bytes, other.bytes, one.length) == 0);
}

} // namespace

uint32_t zryaml::watch::SourceCopies::Read(const Settings &settings, YamlProblems **problems) noexcept
{
    uint32_t code = YAML_OK;
    for (uint32_t number = 0; number < settings.layers.Count() && code == YAML_OK; ++number) {
        const WatchedLayer &from = settings.layers[number];
        if (!IsOnDisk(from.layer))
            continue;
        SourceCopy source = {};
        source.layer = number;
        source.name = from.layer.pcSource;
        source.path = from.path;
        code = IsFolder(from.layer) ? FolderRead(source, IsOptional(from.layer), problems)
                                    : Keep(source, FileRead(source, problems), problems);
    }
    return code;
}

uint32_t zryaml::watch::SourceCopies::FolderRead(SourceCopy &folder, bool optional, YamlProblems **problems) noexcept
{
    struct dirent **entries = nullptr;
    const int count = System().pfnFolderRead(folder.path, &entries);
    folder.found = Found::Folder;
    uint32_t code = YAML_OK;
    if (count < 0 && IsFinding(errno))
        FindingSet(folder, errno);
    else if (count < 0)
        code = TellSystem(problems, YAML_ERR_OPEN, folder.name, "the folder cannot be read");
    if (folder.found == Found::Absent && optional)
        folder.found = Found::Folder; // an empty one says the same
    code = Keep(folder, code, problems);
    for (int at = 0; at < count; ++at) {
        if (code == YAML_OK)
            code = MemberRead(folder, entries[at]->d_name, problems);
        free(entries[at]);
    }
    free(entries);
    return code;
}

uint32_t zryaml::watch::SourceCopies::MemberRead(const SourceCopy &folder, const char *entry,
                                                 YamlProblems **problems) noexcept
{
    SourceCopy member = {};
    member.layer = folder.layer;
    member.isMember = true;
    if (!MemberName(member, folder, entry))
        return Tell(problems, YAML_ERR_NOMEM, folder.name, OutOfMemory);
    return Keep(member, FileRead(member, problems), problems);
}

uint32_t zryaml::watch::SourceCopies::Keep(SourceCopy &source, uint32_t code, YamlProblems **problems) noexcept
{
    if (code == YAML_OK && m_sources.Add(source))
        return YAML_OK;
    if (code == YAML_OK)
        code = Tell(problems, YAML_ERR_NOMEM, source.name, OutOfMemory);
    CopyRelease(source);
    return code;
}

void zryaml::watch::SourceCopies::Release() noexcept
{
    for (SourceCopy &source : *this)
        CopyRelease(source);
    m_sources.Release();
}

void zryaml::watch::SourceCopies::Take(SourceCopies &other) noexcept
{
    Release();
    m_sources = other.m_sources;
    other.m_sources = {};
}

bool zryaml::watch::SourceCopies::Same(const SourceCopies &other) const noexcept
{
    return Count() == other.Count() && std::equal(begin(), end(), other.begin(), IsSame);
}

bool zryaml::watch::SourceCopies::Emptied(const SourceCopies &before) const noexcept
{
    return std::any_of(begin(), end(), [&before](const SourceCopy &now) {
        return now.found == Found::Bytes && now.length == 0 &&
               std::any_of(before.begin(), before.end(), [&now](const SourceCopy &then) {
                   return then.length != 0 && then.layer == now.layer && strcmp(then.path, now.path) == 0;
               });
    });
}
