// SPDX-License-Identifier: Apache-2.0
//
// The sink in place. One lock is held while a sink runs and while it is replaced, so that a replaced sink is never
// running any more. A thread that is inside a sink already never waits for that lock.

#include <cerrno>
#include <mutex>

#include "log.h"

namespace {

struct Sink {
    ZR_LogSink pfnWrite; // NULL: the default sink
    void *pContext;
};

constinit std::mutex g_stLock;
constinit Sink g_stSink{};
constinit thread_local bool g_bInSink = false;

} // namespace

void zr::LogSinkWrite(const ZR_LogRecord &stRecord) noexcept
{
    if (g_bInSink)
        return;
    const std::scoped_lock stHeld(g_stLock);
    g_bInSink = true;
    try {
        if (g_stSink.pfnWrite != nullptr)
            g_stSink.pfnWrite(&stRecord, g_stSink.pContext);
        else
            LogSpdlogWrite(stRecord);
    } catch (...) { // A sink that throws loses its record; the caller of the log is C.
    }
    g_bInSink = false;
}

uint32_t ZR_LogSinkSet(ZR_LogSink pfnSink, void *pContext)
{
    if (g_bInSink)
        return EDEADLK;
    const std::scoped_lock stHeld(g_stLock);
    g_stSink = {.pfnWrite = pfnSink, .pContext = pContext};
    return 0;
}
