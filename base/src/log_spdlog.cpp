// SPDX-License-Identifier: Apache-2.0
//
// The default sink: spdlog's logger "zr", on standard error. This is the only file that knows spdlog; whatever spdlog
// throws ends here.

#include <memory>

#include <spdlog/cfg/env.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include "log.h"

namespace {

struct Backend {
    std::shared_ptr<spdlog::logger> stLogger;
    uint32_t uiLevel; // least level, as the environment asks
};

[[nodiscard]] constexpr uint32_t LevelOf(spdlog::level::level_enum eLevel) noexcept
{
    switch (eLevel) {
    case spdlog::level::trace:
    case spdlog::level::debug:
        return ZR_LOG_NOTE;
    case spdlog::level::info:
    case spdlog::level::warn:
        return ZR_LOG_WARNING;
    case spdlog::level::err:
        return ZR_LOG_ERROR;
    default:
        return ZR_LOG_NOTHING;
    }
}

[[nodiscard]] constexpr spdlog::level::level_enum SpdlogLevelOf(uint32_t uiLevel) noexcept
{
    if (uiLevel == ZR_LOG_NOTE)
        return spdlog::level::debug;
    return uiLevel == ZR_LOG_WARNING ? spdlog::level::warn : spdlog::level::err;
}

[[nodiscard]] Backend BackendMake()
{
    if (auto stHost = spdlog::get("zr"))
        return {stHost, LevelOf(stHost->level())};
    spdlog::cfg::load_env_levels();
    auto stLogger = spdlog::stderr_logger_mt("zr");
    const uint32_t uiLevel = LevelOf(stLogger->level());
    stLogger->set_level(spdlog::level::trace); // from here on ZR_LogLevelSet alone decides
    return {std::move(stLogger), uiLevel};
}

// Never destroyed, as other libraries may log while the process ends. A failure throws and is tried again next time.
[[nodiscard]] const Backend &BackendGet()
{
    static const Backend *const g_pstBackend = new Backend(BackendMake());
    return *g_pstBackend;
}

} // namespace

uint32_t zr::LogSpdlogLevelGet() noexcept
{
    try {
        return BackendGet().uiLevel;
    } catch (...) {
        return ZR_LOG_WARNING;
    }
}

void zr::LogSpdlogWrite(const ZR_LogRecord &stRecord) noexcept
{
    try {
        BackendGet().stLogger->log(SpdlogLevelOf(stRecord.uiLevel), "{} 0x{:08X} {}:{} {}: {}", stRecord.pcModule,
                                   stRecord.uiCode, stRecord.pcFile, stRecord.uiLine, stRecord.pcFunction,
                                   stRecord.pcText);
    } catch (...) { // Out of memory, as a rule: the record is lost, the caller goes on.
    }
}
