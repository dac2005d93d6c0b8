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
    std::shared_ptr<spdlog::logger> logger;
    uint32_t uiLevel; // least level, as the environment asks
};

[[nodiscard]] constexpr uint32_t LevelOf(spdlog::level::level_enum level) noexcept
{
    switch (level) {
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

[[nodiscard]] std::string_view Trimmed(std::string_view text) noexcept
{
    constexpr std::string_view g_space = " \t\r\n";
    const size_t first = std::min(text.find_first_not_of(g_space), text.size());
    return text.substr(first, text.find_last_not_of(g_space) + 1 - first);
}

// The level of a name in any case; nothing for a name that spdlog does not know.
[[nodiscard]] std::optional<spdlog::level::level_enum> NamedLevelOf(std::string_view name)
{
    std::string sName(name);
    std::ranges::transform(sName, sName.begin(), [](unsigned char c) { return static_cast<char>(tolower(c)); });
    const auto level = spdlog::level::from_str(sName);
    return level != spdlog::level::off || sName == "off" ? std::optional(level) : std::nullopt;
}

// The level that SPDLOG_LEVEL, such as "info,zr=debug", asks of the logger "zr" by name, or else of all loggers. Read
// here, as spdlog's own reader would set the level of every logger in the process, and those are the host's.
[[nodiscard]] std::optional<spdlog::level::level_enum> EnvironmentLevelGet()
{
    const char *levels = getenv("SPDLOG_LEVEL");
    std::optional<spdlog::level::level_enum> ofAll, own;
    for (std::string_view rest = levels != nullptr ? levels : ""; !rest.empty();) {
        const std::string_view item = rest.substr(0, rest.find(','));
        rest.remove_prefix(std::min(item.size() + 1, rest.size()));
        const size_t equals = item.find('=');
        const bool isNamed = equals != std::string_view::npos;
        if (isNamed && Trimmed(item.substr(0, equals)) != "zr")
            continue;
        if (const auto level = NamedLevelOf(Trimmed(item.substr(isNamed ? equals + 1 : 0))))
            (isNamed ? own : ofAll) = level;
    }
    return own ? own : ofAll;
}

[[nodiscard]] Backend BackendMake()
{
    if (auto host = spdlog::get("zr"))
        return {host, LevelOf(host->level())};
    auto logger = spdlog::stderr_logger_mt("zr");
    const uint32_t uiLevel = LevelOf(EnvironmentLevelGet().value_or(logger->level()));
    logger->set_level(spdlog::level::trace); // from here on ZR_LogLevelSet alone decides
    return {std::move(logger), uiLevel};
}

// Never destroyed, as other libraries may log while the process ends. A failure throws, and the next call tries again.
[[nodiscard]] const Backend &BackendGet()
{
    static const Backend *const g_backend = new Backend(BackendMake());
    return *g_backend;
}

// What spdlog and the run-time library keep for each thread is allocated when the thread first needs it, and the
// process ends if there is no memory for that.
[[nodiscard]] bool MemoryIsLeft() noexcept
{
    constexpr size_t enough = 16384;
    void *volatile probe = malloc(enough); // volatile, so that the compiler does not leave it out
    free(probe);
    return probe != nullptr;
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

void zr::LogSpdlogWrite(const ZR_LogRecord &record) noexcept
{
    if (!MemoryIsLeft())
        return; // the record is lost, the caller goes on
    try {
        BackendGet().logger->log(SpdlogLevelOf(record.uiLevel), "{} 0x{:08X} {}:{} {}: {}", record.pcModule,
                                 record.uiCode, record.pcFile, record.uiLine, record.pcFunction, record.pcText);
    } catch (...) { // the record is lost here, too
    }
}
