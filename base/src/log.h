// SPDX-License-Identifier: Apache-2.0
//
// Shared by the parts of the log: the start, the current sink, and the back end of the default sink.

#ifndef ZR_LOG_H
#define ZR_LOG_H

#include <cstdint>

#include "zr_base.h"

namespace zr {

// Sets the first level from the environment. Only the first call does; ZR_LogLevelSet calls it before its own level.
void LogStart() noexcept;

// Passes a finished record to the current sink, or drops it if this thread is inside the sink already.
void LogSinkWrite(const ZR_LogRecord &record) noexcept;

// The default sink.
void LogSpdlogWrite(const ZR_LogRecord &record) noexcept;

// The least ZR_LOG_ level that the environment asks of the default sink; ZR_LOG_WARNING if it asks nothing.
[[nodiscard]] uint32_t LogSpdlogLevelGet() noexcept;

} // namespace zr

#endif // ZR_LOG_H
