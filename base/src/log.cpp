// SPDX-License-Identifier: Apache-2.0
//
// The log call: filters by level, formats the text and passes the record on. A record below the least level costs one
// load and one comparison.

#include "log.h"

#include <atomic>
#include <cerrno>
#include <cstdarg>

#include "log_text.h"

namespace {

constinit std::atomic<uint32_t> g_level{ZR_LOG_WARNING};

[[nodiscard]] const char *TextOr(const char *text) noexcept
{
    return text != nullptr ? text : "?";
}

} // namespace

void zr::LogStart() noexcept
{
    [[maybe_unused]] static const bool g_isStarted = [] {
        g_level.store(LogSpdlogLevelGet(), std::memory_order_relaxed);
        return true;
    }();
}

void ZR_LogWrite(ZR_LogModule *pstModule, uint32_t uiLevel, uint32_t uiCode, const char *pcFile, uint32_t uiLine,
                 const char *pcFunction, const char *pcFormat, ...)
{
    if (uiLevel < g_level.load(std::memory_order_relaxed))
        return;

    const int kept = errno;
    va_list stArgs;
    va_start(stArgs, pcFormat);
    const zr::LogText text(pcFormat != nullptr ? pcFormat : "?", stArgs);
    va_end(stArgs);

    zr::LogSinkWrite({.pcModule = TextOr(pstModule != nullptr ? pstModule->pcName : nullptr),
                      .uiModuleId = pstModule != nullptr ? pstModule->uiId : 0,
                      .uiLevel = uiLevel,
                      .uiCode = uiCode,
                      .pcFile = TextOr(pcFile),
                      .uiLine = uiLine,
                      .pcFunction = TextOr(pcFunction),
                      .pcText = text.Get()});
    errno = kept;
}

void ZR_LogLevelSet(uint32_t uiLevel)
{
    zr::LogStart(); // first, so that the environment never overrides the host
    g_level.store(uiLevel, std::memory_order_relaxed);
}

uint32_t ZR_LogLevelGet(void)
{
    return g_level.load(std::memory_order_relaxed);
}
