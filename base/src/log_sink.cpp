// SPDX-License-Identifier: Apache-2.0
//
// The current sink. One lock is held while a sink runs and while it is replaced, so a replaced sink no longer runs
// anywhere. A thread inside a sink never waits for that lock.

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
// In the memory that a thread has from its start, also where the library is opened at run time.
__attribute__((tls_model("initial-exec"))) constinit thread_local bool g_bInSink = false;

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
    } catch (...) { // The record is lost: its writer is C and cannot catch.
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
