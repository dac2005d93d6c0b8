// SPDX-License-Identifier: Apache-2.0
//
// The default sink: spdlog's logger "zr", on standard error. Only this file knows spdlog, and it catches whatever
// spdlog throws.

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

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

[[nodiscard]] std::string_view Trimmed(std::string_view svText) noexcept
{
    constexpr std::string_view g_svSpace = " \t\r\n";
    const size_t ulFirst = std::min(svText.find_first_not_of(g_svSpace), svText.size());
    return svText.substr(ulFirst, svText.find_last_not_of(g_svSpace) + 1 - ulFirst);
}

// The level of a name in any case; nothing for a name that spdlog does not know.
[[nodiscard]] std::optional<spdlog::level::level_enum> NamedLevelOf(std::string_view svName)
{
    std::string sName(svName);
    std::ranges::transform(sName, sName.begin(), [](unsigned char c) { return static_cast<char>(tolower(c)); });
    const auto eLevel = spdlog::level::from_str(sName);
    return eLevel != spdlog::level::off || sName == "off" ? std::optional(eLevel) : std::nullopt;
}

// The level that SPDLOG_LEVEL, such as "info,zr=debug", asks of the logger "zr" by name, or else of all loggers. Read
// here, as spdlog's own reader would set the level of every logger in the process, and those are the host's.
[[nodiscard]] std::optional<spdlog::level::level_enum> EnvironmentLevelGet()
{
    const char *pcLevels = getenv("SPDLOG_LEVEL");
    std::optional<spdlog::level::level_enum> eOfAll, eOwn;
    for (std::string_view svRest = pcLevels != nullptr ? pcLevels : ""; !svRest.empty();) {
        const std::string_view svItem = svRest.substr(0, svRest.find(','));
        svRest.remove_prefix(std::min(svItem.size() + 1, svRest.size()));
        const size_t ulEquals = svItem.find('=');
        const bool bNamed = ulEquals != std::string_view::npos;
        if (bNamed && Trimmed(svItem.substr(0, ulEquals)) != "zr")
            continue;
        if (const auto eLevel = NamedLevelOf(Trimmed(svItem.substr(bNamed ? ulEquals + 1 : 0))))
            (bNamed ? eOwn : eOfAll) = eLevel;
    }
    return eOwn ? eOwn : eOfAll;
}

[[nodiscard]] Backend BackendMake()
{
    if (auto stHost = spdlog::get("zr"))
        return {stHost, LevelOf(stHost->level())};
    auto stLogger = spdlog::stderr_logger_mt("zr");
    const uint32_t uiLevel = LevelOf(EnvironmentLevelGet().value_or(stLogger->level()));
    stLogger->set_level(spdlog::level::trace); // from here on ZR_LogLevelSet alone decides
    return {std::move(stLogger), uiLevel};
}

// Never destroyed, as other libraries may log while the process ends. A failure throws, and the next call tries again.
[[nodiscard]] const Backend &BackendGet()
{
    static const Backend *const g_pstBackend = new Backend(BackendMake());
    return *g_pstBackend;
}

// What spdlog and the run-time library keep for each thread is allocated when the thread first needs it, and the
// process ends if there is no memory for that.
[[nodiscard]] bool MemoryIsLeft() noexcept
{
    constexpr size_t ulEnough = 16384;
    void *volatile pProbe = malloc(ulEnough); // volatile, so that the compiler does not leave it out
    free(pProbe);
    return pProbe != nullptr;
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
    if (!MemoryIsLeft())
        return; // the record is lost, the caller goes on
    try {
        BackendGet().stLogger->log(SpdlogLevelOf(stRecord.uiLevel), "{} 0x{:08X} {}:{} {}: {}", stRecord.pcModule,
                                   stRecord.uiCode, stRecord.pcFile, stRecord.uiLine, stRecord.pcFunction,
                                   stRecord.pcText);
    } catch (...) { // the record is lost here, too
    }
}
