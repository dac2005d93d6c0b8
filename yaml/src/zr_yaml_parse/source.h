// SPDX-License-Identifier: Apache-2.0
// What is being loaded: a text in memory, a file that the load has opened, or a stream of the caller's.
#pragma once

#include "../report.h"

#include <string_view>
#include <yaml.h>

namespace zryaml::parse {

class Source {
public:
    explicit Source(std::string_view text) noexcept : m_text(text) {}
    explicit Source(FILE *stream) noexcept : m_stream(stream) {}
    // Opens a file. Without success IsOpen is false, and the failure has been logged.
    explicit Source(const char *path) noexcept;
    ~Source();
    Source(const Source &) = delete;
    Source &operator=(const Source &) = delete;

    [[nodiscard]] bool IsOpen() const noexcept { return m_file >= 0; }
    // Makes the source what a parser reads.
    void Feed(yaml_parser_t &parser) noexcept;

    [[nodiscard]] bool IsFolder() const noexcept;
    // Gives bytes that the parser has had once more, up to a size. Of a pipe these are kept while
    // it is read; where memory was short for that, or a stream cannot go back, there are none.
    [[nodiscard]] size_t ReadAgain(uint64_t offset, unsigned char *buffer, size_t size) const noexcept;

private:
    struct Part;

    static int Read(void *source, unsigned char *buffer, size_t size, size_t *length) noexcept;
    void Keep(const unsigned char *bytes, size_t length) noexcept;
    [[nodiscard]] size_t KeptRead(uint64_t offset, unsigned char *buffer, size_t size) const noexcept;

    std::string_view m_text;
    FILE *m_stream = nullptr;
    int m_file = -1;
    bool m_ended = false;    // the file has said so
    bool m_keeping = false;  // a file that cannot go back: what is read is kept
    Part *m_first = nullptr; // parts that were kept, in order
    Part **m_end = &m_first; // where the next one goes
};

} // namespace zryaml::parse
