// SPDX-License-Identifier: Apache-2.0
//
// The text of one log record: formatted, then made safe to print as part of one line.

#ifndef ZR_LOG_TEXT_H
#define ZR_LOG_TEXT_H

#include <cstdarg>
#include <cstddef>
#include <memory>
#include <new>
#include <span>

#include "zr_base.h"

namespace zr {

// A buffer for a text: on the stack; on the heap if that is too small; the small one again if the heap is exhausted.
template <size_t LocalBytes> class TextRoom {
public:
    [[nodiscard]] std::span<char> Get(size_t ulBytes) noexcept
    {
        if (ulBytes > LocalBytes)
            m_heap.reset(new (std::nothrow) char[ulBytes]);
        return m_heap != nullptr ? std::span(m_heap.get(), ulBytes) : std::span(m_local);
    }

private:
    char m_local[LocalBytes];
    std::unique_ptr<char[]> m_heap;
};

class LogText {
public:
    // Formats like vprintf. If that fails, the format itself becomes the text.
    LogText(const char *format, va_list arguments) noexcept ZR_PRINTF(2, 0);
    LogText(const LogText &) = delete;
    LogText &operator=(const LogText &) = delete;

    // The finished line, owned by this object.
    [[nodiscard]] const char *Get() const noexcept { return m_text; }

private:
    TextRoom<1024> m_room;
    const char *m_text;
};

} // namespace zr

#endif // ZR_LOG_TEXT_H
