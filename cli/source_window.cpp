// SPDX-License-Identifier: Apache-2.0
// Goes through a source once. Lines end where the YAML 1.1 scanner ends them: at CR, LF, CR LF, NEL, LS and PS. Like
// the library, counts every byte that does not continue a character as a column.
#include "source_window.h"
#include "input.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <zr_yaml.h>

namespace zryaml::cli {

namespace {

constexpr uint32_t window_side = 4096; // characters before the place and bytes behind it, more than a terminal shows

struct FileClose {
    void operator()(FILE *file) const noexcept { (void)fclose(file); }
};
using File = std::unique_ptr<FILE, FileClose>;

File text_open(std::string_view text)
{
    return File(text.empty() ? nullptr : fmemopen(const_cast<char *>(text.data()), text.size(), "rb"));
}

File source_open(const std::string &name)
{
    if (name == input_name)
        return text_open(input_text());
    struct stat status = {};
    const bool regular = stat(name.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    return File(regular ? fopen(name.c_str(), "rbe") : nullptr);
}

class Bytes { // a source, part by part
public:
    explicit Bytes(FILE *file) noexcept : file_(file) {}

    // What comes next, at least as long as a line end unless the source is shorter; empty at its end.
    std::string_view ahead() noexcept
    {
        if (end_ - begin_ < longest_ahead) {
            memmove(part_, part_ + begin_, end_ - begin_);
            end_ -= begin_;
            begin_ = 0;
            end_ += fread(part_ + end_, 1, sizeof(part_) - end_, file_);
        }
        return {part_ + begin_, end_ - begin_};
    }
    void skip(size_t length) noexcept { begin_ += length; }

private:
    static constexpr size_t longest_ahead = 3;
    FILE *file_;
    char part_[65536];
    size_t begin_ = 0, end_ = 0;
};

bool may_end_line(char byte) noexcept
{
    return byte == '\n' || byte == '\r' || byte == '\xC2' || byte == '\xE2';
}

// Length of the line end that a text begins with; 0 if it begins with none.
size_t line_end_length(std::string_view text) noexcept
{
    for (const std::string_view end : {"\r\n", "\n", "\r", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
        if (text.substr(0, end.size()) == end)
            return end.size();
    }
    return 0;
}

bool begins_character(char byte) noexcept
{
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

// Goes on by up to so many characters of a line and gives how many it went.
uint32_t characters_skip(Bytes &bytes, uint32_t most)
{
    uint32_t skipped = 0;
    for (std::string_view ahead = bytes.ahead(); !ahead.empty() && line_end_length(ahead) == 0; ahead = bytes.ahead()) {
        size_t length = 0;
        do {
            const bool begins = begins_character(ahead[length]);
            if (begins && skipped == most)
                return bytes.skip(length), skipped;
            skipped += begins ? 1 : 0;
        } while (++length < ahead.size() && !may_end_line(ahead[length]));
        bytes.skip(length);
    }
    return skipped;
}

// Goes to the start of a line, 1-based; false if there is none.
bool line_reach(Bytes &bytes, uint32_t line)
{
    for (uint32_t at = 1; at < line; ++at) {
        (void)characters_skip(bytes, UINT32_MAX);
        bytes.skip(line_end_length(bytes.ahead()));
        if (bytes.ahead().empty())
            return false;
    }
    return !bytes.ahead().empty();
}

SourceWindow line_read(Bytes &bytes, uint32_t column)
{
    SourceWindow window;
    const uint32_t skipped = characters_skip(bytes, column > window_side ? column - window_side : 0);
    window.column = skipped + 1;
    window.cut_before = skipped > 0;
    bool reached = false;
    uint32_t at = skipped;
    for (std::string_view ahead = bytes.ahead(); !ahead.empty() && line_end_length(ahead) == 0; ahead = bytes.ahead()) {
        const bool begins = begins_character(ahead.front());
        at += begins ? 1 : 0;
        if (at == column && begins) {
            reached = true;
            window.place = window.text.size();
        }
        window.cut_after = reached && begins && window.text.size() - window.place >= window_side;
        if (window.cut_after)
            break;
        window.text += ahead.front();
        bytes.skip(1);
    }
    if (!reached)
        window.place = window.text.size();
    return window;
}

std::optional<SourceWindow> window_read(const File &source, uint32_t line, uint32_t column)
{
    if (source == nullptr)
        return std::nullopt;
    Bytes bytes(source.get());
    const std::string_view start = bytes.ahead().substr(0, 3);
    if (start.substr(0, 2) == "\xFF\xFE" || start.substr(0, 2) == "\xFE\xFF")
        return std::nullopt; // UTF-16
    if (start == "\xEF\xBB\xBF")
        bytes.skip(start.size()); // the byte order mark is in no column
    if (!line_reach(bytes, line))
        return std::nullopt;
    return line_read(bytes, column);
}

} // namespace

std::optional<SourceWindow> source_window(const std::string &file, uint32_t line, uint32_t column)
{
    return window_read(source_open(file), line, column);
}

std::optional<SourceWindow> text_window(std::string_view text, uint32_t line, uint32_t column)
{
    return window_read(text_open(text), line, column);
}

std::optional<std::string> source_text(const std::string &file)
{
    const File source = source_open(file);
    if (source == nullptr)
        return std::nullopt;
    YamlLimits limits = YAML_LIMITS_INIT;
    (void)ZRYAML_LimitsGet(&limits);
    std::string text;
    for (Bytes bytes(source.get()); !bytes.ahead().empty() && text.size() <= limits.ulFileBytes;) {
        const std::string_view part = bytes.ahead();
        text += part;
        bytes.skip(part.size());
    }
    return text;
}

} // namespace zryaml::cli
