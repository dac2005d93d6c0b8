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

constinit std::atomic<uint32_t> g_uiLevel{ZR_LOG_WARNING};

[[nodiscard]] const char *TextOr(const char *pcText) noexcept
{
    return pcText != nullptr ? pcText : "?";
}

} // namespace

void zr::LogStart() noexcept
{
    [[maybe_unused]] static const bool g_bStarted = [] {
        g_uiLevel.store(LogSpdlogLevelGet(), std::memory_order_relaxed);
        return true;
    }();
}

void ZR_LogWrite(ZR_LogModule *pstModule, uint32_t uiLevel, uint32_t uiCode, const char *pcFile, uint32_t uiLine,
                 const char *pcFunction, const char *pcFormat, ...)
{
    if (uiLevel < g_uiLevel.load(std::memory_order_relaxed))
        return;

    const int iErrno = errno;
    va_list stArgs;
    va_start(stArgs, pcFormat);
    const zr::LogText stText(pcFormat != nullptr ? pcFormat : "?", stArgs);
    va_end(stArgs);

    zr::LogSinkWrite({.pcModule = TextOr(pstModule != nullptr ? pstModule->pcName : nullptr),
                      .uiModuleId = pstModule != nullptr ? pstModule->uiId : 0,
                      .uiLevel = uiLevel,
                      .uiCode = uiCode,
                      .pcFile = TextOr(pcFile),
                      .uiLine = uiLine,
                      .pcFunction = TextOr(pcFunction),
                      .pcText = stText.Get()});
    errno = iErrno;
}

void ZR_LogLevelSet(uint32_t uiLevel)
{
    zr::LogStart(); // first, so that the environment never overrides the host
    g_uiLevel.store(uiLevel, std::memory_order_relaxed);
}

uint32_t ZR_LogLevelGet(void)
{
    return g_uiLevel.load(std::memory_order_relaxed);
}
