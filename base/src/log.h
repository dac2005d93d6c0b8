// SPDX-License-Identifier: Apache-2.0
//
// What the parts of the log share: the start, the sink in place, and the back end behind the default sink.

#ifndef ZR_LOG_H
#define ZR_LOG_H

#include <cstdint>

#include "zr_base.h"

namespace zr {

// Takes the first level from the environment; does so once, before any level set by a host.
void LogStart() noexcept;

// Hands a finished record to the sink in place; drops it when this thread is inside the sink already.
void LogSinkWrite(const ZR_LogRecord &stRecord) noexcept;

// The default sink.
void LogSpdlogWrite(const ZR_LogRecord &stRecord) noexcept;

// The least ZR_LOG_ level that the environment asks of the default sink; ZR_LOG_WARNING if it asks nothing.
[[nodiscard]] uint32_t LogSpdlogLevelGet() noexcept;

} // namespace zr

#endif // ZR_LOG_H
