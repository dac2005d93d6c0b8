// SPDX-License-Identifier: Apache-2.0
// Opens and reads the file of a load. Whatever can be opened is read, also a named pipe; the path is resolved
// only to tell why it cannot be opened.
#include "source.h"

#include "load_explain.h"
#include "parse_internal.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace zryaml;
using namespace zryaml::parse;

struct zryaml::parse::Source::Part { // what one read of a pipe gave; its bytes follow
    Part *next;
    size_t length;
    [[nodiscard]] unsigned char *Bytes() noexcept { return reinterpret_cast<unsigned char *>(this + 1); }
};

namespace {

void OpenFailureLog(const char *path, int openError) noexcept
{
    char resolved[PATH_MAX];
    if (realpath(path, resolved) != nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_OPEN, "Failed to open the file. (File=%s)", path);
    } else {
        openError = errno; // before the log can change it
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "Failed to get real path. (InputFile=%s)", path);
    }
    OpenErrorExplain(path, openError);
}

// A signal that a host handles does not end the load.
ssize_t FileRead(int file, unsigned char *buffer, size_t size) noexcept
{
    ssize_t length = 0;
    do
        length = read(file, buffer, size);
    while (length < 0 && errno == EINTR);
    return length;
}

} // namespace

zryaml::parse::Source::Source(const char *path) noexcept : m_file(open(path, O_RDONLY | O_CLOEXEC))
{
    if (m_file >= 0)
        m_keeping = lseek(m_file, 0, SEEK_CUR) < 0;
    else
        OpenFailureLog(path, errno);
}

zryaml::parse::Source::~Source()
{
    if (m_file >= 0)
        (void)close(m_file);
    while (Part *part = m_first) {
        m_first = part->next;
        ZR_MemFree(part, yaml_MemHandleGet());
    }
}

void zryaml::parse::Source::Feed(yaml_parser_t &parser) noexcept
{
    if (m_file >= 0)
        yaml_parser_set_input(&parser, Read, this);
    else if (m_stream != nullptr)
        yaml_parser_set_input_file(&parser, m_stream);
    else
        yaml_parser_set_input_string(&parser, reinterpret_cast<const unsigned char *>(m_text.data()), m_text.size());
}

int zryaml::parse::Source::Read(void *source, unsigned char *buffer, size_t size, size_t *length) noexcept
{
    auto &from = *static_cast<Source *>(source);
    *length = 0;
    while (*length < size && !from.m_ended) { // a pipe gives less at a time than it will
        const ssize_t more = FileRead(from.m_file, buffer + *length, size - *length);
        if (more < 0)
            return 0;
        from.m_ended = more == 0;
        *length += static_cast<size_t>(more);
    }
    if (from.m_keeping && *length != 0)
        from.Keep(buffer, *length);
    return 1;
}

void zryaml::parse::Source::Keep(const unsigned char *bytes, size_t length) noexcept
{
    const auto size = static_cast<uint32_t>(sizeof(Part) + length); // libyaml reads 16 KiB at a time
    auto *part = static_cast<Part *>(ZR_MemAlloc(size, yaml_MemHandleGet()));
    if (part == nullptr) {
        m_keeping = false; // what follows cannot be told without this one
        return;
    }
    *part = {nullptr, length};
    memcpy(part->Bytes(), bytes, length);
    *m_end = part;
    m_end = &part->next;
}

bool zryaml::parse::Source::IsFolder() const noexcept
{
    const int file = m_stream != nullptr ? fileno(m_stream) : m_file;
    struct stat status = {};
    return file >= 0 && fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
}

size_t zryaml::parse::Source::KeptRead(uint64_t offset, unsigned char *buffer, size_t size) const noexcept
{
    for (Part *part = m_first; part != nullptr; part = part->next) {
        if (offset < part->length) {
            const size_t length = std::min(size, part->length - offset);
            memcpy(buffer, part->Bytes() + offset, length);
            return length;
        }
        offset -= part->length;
    }
    return 0;
}

size_t zryaml::parse::Source::ReadAgain(uint64_t offset, unsigned char *buffer, size_t size) const noexcept
{
    if (m_first != nullptr)
        return KeptRead(offset, buffer, size);
    if (m_file >= 0) {
        const ssize_t length = pread(m_file, buffer, size, static_cast<off_t>(offset));
        return length > 0 ? static_cast<size_t>(length) : 0;
    }
    if (m_stream != nullptr)
        return fseek(m_stream, static_cast<long>(offset), SEEK_SET) == 0 ? fread(buffer, 1, size, m_stream) : 0;
    if (offset >= m_text.size())
        return 0;
    const size_t length = std::min(size, m_text.size() - offset);
    memcpy(buffer, m_text.data() + offset, length);
    return length;
}
