// SPDX-License-Identifier: Apache-2.0
//
// The current sink. One lock is held while a sink runs and while it is replaced, so a replaced sink no longer runs
// anywhere. A thread inside a sink never waits for that lock.

#include <cerrno>
#include <mutex>

#include "log.h"

namespace {

struct Sink {
    ZR_LogSink write; // NULL: the default sink
    void *pContext;
};

constinit std::mutex g_lock;
constinit Sink g_sink{};
// In the memory that a thread has from its start, also where the library is opened at run time.
__attribute__((tls_model("initial-exec"))) constinit thread_local bool g_isInSink = false;

} // namespace

void zr::LogSinkWrite(const ZR_LogRecord &record) noexcept
{
    if (g_isInSink)
        return;
    const std::scoped_lock held(g_lock);
    g_isInSink = true;
    try {
        if (g_sink.write != nullptr)
            g_sink.write(&record, g_sink.pContext);
        else
            LogSpdlogWrite(record);
    } catch (...) { // The record is lost: its writer is C and cannot catch.
    }
    g_isInSink = false;
}

uint32_t ZR_LogSinkSet(ZR_LogSink pfnSink, void *pContext)
{
    if (g_isInSink)
        return EDEADLK;
    const std::scoped_lock held(g_lock);
    g_sink = {.write = pfnSink, .pContext = pContext};
    return 0;
}
