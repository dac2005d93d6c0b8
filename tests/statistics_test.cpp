// SPDX-License-Identifier: Apache-2.0
// The debug switch and the statistics. The program's own clock_gettime stands in front of the C library's, so that the
// clock can be set for a test; while it is not set it passes every call on to the system.
#include "support/load_text.h"

#include <array>
#include <bit>
#include <optional>

#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

constexpr long Ms = 1'000'000;
const uint32_t g_uiSwitchAtStart = yaml_IsDebugSwitchOpen();
std::optional<timespec> g_stNow; // the clock, if it is set
long g_lStepNs = 0;              // by which each reading moves it on

struct Statistics : Recorded {
    ~Statistics() override { g_stNow.reset(); }
};

using Fields = std::array<uint32_t, 4>; // parse time, memory size, query count, average

} // namespace

extern "C" int clock_gettime(clockid_t iClock, timespec *pstTime) noexcept
{
    if (!g_stNow.has_value() || iClock != CLOCK_MONOTONIC)
        return static_cast<int>(syscall(SYS_clock_gettime, iClock, pstTime));
    *pstTime = *g_stNow;
    g_stNow->tv_nsec += g_lStepNs;
    return 0;
}

TEST_F(Statistics, SwitchKeepsWhatIsSet)
{
    EXPECT_EQ(g_uiSwitchAtStart, 0U);
    for (const uint32_t uiSwitch : {0xFFFFFFFFU, 2U, 0U}) {
        ZRYAML_DebugSwitchSet(uiSwitch);
        EXPECT_TRUE(yaml_IsDebugSwitchOpen() == uiSwitch && g_bYamlDebugSwitch == uiSwitch) << uiSwitch;
    }
    EXPECT_STREQ(g_pcYAMLMiniVer, "1.21.0");
    EXPECT_STREQ(g_pcYAMLInterSubVer, "B035");
    EXPECT_STREQ(g_pcYAMLOuterVer, ZRYAML_OUTER_VERSION);
}

TEST_F(Statistics, ElapsedMilliseconds)
{
    constexpr uint32_t Refused = 77;
    const std::tuple<timespec, timespec, uint32_t> astCase[] = {
        {{5, 900 * Ms}, {7, 100 * Ms}, 1200},        {{5, 100 * Ms}, {5, 100 * Ms}, 0},
        {{5, 100 * Ms}, {5, 102 * Ms - 1}, 1},       {{5, 100 * Ms}, {4294973, 100 * Ms}, 704}, // as 32 bits hold it
        {{5, 100 * Ms}, {5, 100 * Ms - 1}, Refused}, {{7, 900 * Ms}, {5, 950 * Ms}, Refused},
    };
    ZRYAML_DebugSwitchSet(2);
    for (const auto &[stStart, stEnd, uiExpected] : astCase) {
        YamlHandle stHandle = {};
        uint32_t uiElapse = stHandle.uiParseTime = Refused;
        timespec stStamp = {};
        g_stNow = stStart;
        yaml_StartPoint(&stStamp);
        g_stNow = stEnd;
        EXPECT_EQ(yaml_ElapseTimeGet(&stStamp, &uiElapse), uiExpected == Refused ? YAML_ERR_PARAM : YAML_OK);
        yaml_ParseElapseTimeGet(&stHandle, &stStamp);
        yaml_QueryDbgInfoRecord(&stHandle, &stStamp);
        EXPECT_TRUE(uiElapse == uiExpected && stHandle.uiParseTime == uiExpected) << uiExpected;
        EXPECT_EQ(stHandle.ulQueryTimeTotal, uiExpected == Refused ? 0U : uiExpected + 1U);
    }
    EXPECT_EQ(Base().LogText(), "");
}

TEST_F(Statistics, InfoOfCountedQueries)
{
    YamlHandle stHandle = {};
    YamlDebugInfo stInfo = {1, 2, 3, 4};
    EXPECT_EQ(ZRYAML_DebugInfoGet(&stHandle, &stInfo), YAML_ERR_SWITCH_OFF);
    EXPECT_EQ(std::bit_cast<Fields>(stInfo), (Fields{1, 2, 3, 4}));
    Base().Reset();
    ZRYAML_DebugSwitchSet(2);
    Base().bSecureCallsFail = true; // which is noted, and nothing else
    const std::tuple<uint32_t, uint64_t, uint32_t> astCase[] = {{0, 0, 0}, {3, 11, 3}, {3, 1ULL << 34U, 0x55555555}};
    for (const auto &[uiCount, ulTotal, uiAverage] : astCase) { // the last average has more than 32 bits
        stHandle.uiParseTime = 12;
        stHandle.uiMemSize = 34;
        stHandle.uiQueryCount = uiCount;
        stHandle.ulQueryTimeTotal = ulTotal;
        EXPECT_EQ(ZRYAML_DebugInfoGet(&stHandle, &stInfo), YAML_OK);
        EXPECT_EQ(std::bit_cast<Fields>(stInfo), (Fields{12, 34, uiCount, uiAverage}));
    }
    EXPECT_EQ(Base().LogText(), "1 16 Secure check fail.\n1 16 Secure check fail.\n1 16 Secure check fail.\n");
}

TEST_F(Statistics, LoadsAndQueriesAreTimed)
{
    for (const uint32_t uiSwitch : {0U, 1U, 2U}) {
        SCOPED_TRACE(uiSwitch);
        ZRYAML_DebugSwitchSet(uiSwitch);
        timespec stStamp = {1, 2};
        yaml_StartPoint(&stStamp);
        EXPECT_EQ(stStamp.tv_nsec == 2, uiSwitch == 0);
        g_stNow = {100, 0};
        g_lStepNs = 7 * Ms;
        YamlHandle *pstHandle = TextLoad("a: b\ns: [1]");
        EXPECT_EQ(pstHandle->uiParseTime, uiSwitch != 0 ? 7U : 0U);
        EXPECT_EQ(pstHandle->uiMemSize != 0, uiSwitch == 1);
        for (const char *pcPath : {"a", "s", "missing"}) // the last is not counted
            (void)ZRYAML_PropertyGet(pstHandle, "%s", pcPath);
        EXPECT_EQ(pstHandle->uiQueryCount, uiSwitch != 0 ? 2U : 0U);
        EXPECT_EQ(pstHandle->ulQueryTimeTotal, uiSwitch != 0 ? 16U : 0U);
        ZRYAML_DebugSwitchSet(1); // also for a document that was loaded before
        EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "a"), "b");
        EXPECT_EQ(pstHandle->uiQueryCount, uiSwitch != 0 ? 3U : 1U);
        ZRYAML_HandleFree(pstHandle);
    }
}

TEST_F(Statistics, CountOfMemoryStopsAtItsLargest)
{
    ZRYAML_DebugSwitchSet(1);
    YamlHandle *pstHandle = TextLoad("a: &a {k: v}\nb: {}");
    pstHandle->uiMemSize = UINT32_MAX - sizeof(YamlListNode) - 1;
    for (const uint32_t uiCounted : {UINT32_MAX - 1, UINT32_MAX, UINT32_MAX}) {
        yaml_ListNodeFree(yaml_ListNodeAlloc(pstHandle));
        EXPECT_EQ(pstHandle->uiMemSize, uiCounted);
    }
    ZRYAML_HandleFree(pstHandle);
}
