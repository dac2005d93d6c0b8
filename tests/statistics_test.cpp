// SPDX-License-Identifier: Apache-2.0
// The debug switch and the statistics. The program's own clock_gettime stands in front of the C library's, so that the
// clock can be set for a test; while it is not set it passes every call on to the system.
#include "support/load_text.h"

#include <array>
#include <bit>

#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

struct FakeClock {
    bool bSet = false;
    timespec stNow = {0, 0};
    int64_t lStepNs = 0; // by which each reading moves it on
} thread_local g_stClock;

void ClockSet(timespec stNow, int64_t lStepNs = 0)
{
    g_stClock = {true, stNow, lStepNs};
}

const uint32_t g_uiSwitchAtStart = yaml_IsDebugSwitchOpen();
constexpr long Ms = 1'000'000;

struct ElapseCase {
    int iLine;
    timespec stStamp, stNow;
    uint32_t uiResult, uiElapse; // the number is 77 before
};
constexpr ElapseCase g_astElapse[] = {
    {__LINE__, {5, 900 * Ms}, {7, 100 * Ms}, 0, 1200},
    {__LINE__, {5, 100 * Ms}, {5, 100 * Ms + 999'999}, 0, 0},
    {__LINE__, {5, 100 * Ms}, {5, 101 * Ms}, 0, 1},
    {__LINE__, {5, 100 * Ms}, {6, 100 * Ms}, 0, 1000},
    {__LINE__, {5, 999 * Ms + 999'999}, {6, 0}, 0, 0},
    {__LINE__, {0, 0}, {4294967, 295 * Ms}, 0, 4294967295},
    {__LINE__, {0, 0}, {4294968, 0}, 0, 704}, // as 32 bits hold it
    {__LINE__, {5, 100 * Ms}, {5, 100 * Ms - 1}, YAML_ERR_PARAM, 77},
    {__LINE__, {7, 900 * Ms}, {5, 950 * Ms}, YAML_ERR_PARAM, 77},
};

#define BAD_INFO "2 16 The parameter is invalid to get debug information.\n"

using Fields = std::array<uint32_t, 4>; // parse time, memory size, query count, average
Fields FieldsOf(const YamlDebugInfo &stInfo)
{
    return std::bit_cast<Fields>(stInfo);
}

} // namespace

extern "C" int clock_gettime(clockid_t iClock, timespec *pstTime) noexcept
{
    if (!g_stClock.bSet || iClock != CLOCK_MONOTONIC)
        return static_cast<int>(syscall(SYS_clock_gettime, iClock, pstTime));
    *pstTime = g_stClock.stNow;
    g_stClock.stNow.tv_nsec += g_stClock.lStepNs;
    return 0;
}

struct Statistics : Recorded {
    ~Statistics() override { g_stClock.bSet = false; }
};

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
    for (const ElapseCase &stCase : g_astElapse) {
        SCOPED_TRACE(stCase.iLine);
        uint32_t uiElapse = 77;
        timespec stStamp = {1, 2};
        YamlHandle stHandle;
        yaml_HandleInit(&stHandle);
        ClockSet(stCase.stStamp);
        yaml_StartPoint(&stStamp);
        EXPECT_EQ(stStamp.tv_sec + stStamp.tv_nsec, 3);
        EXPECT_EQ(yaml_ElapseTimeGet(&stStamp, &uiElapse), YAML_ERR_SWITCH_OFF);

        ZRYAML_DebugSwitchSet(2);
        yaml_StartPoint(&stStamp);
        EXPECT_TRUE(stStamp.tv_sec == stCase.stStamp.tv_sec && stStamp.tv_nsec == stCase.stStamp.tv_nsec);
        ClockSet(stCase.stNow);
        stHandle.uiParseTime = uiElapse;
        EXPECT_EQ(yaml_ElapseTimeGet(&stStamp, &uiElapse), stCase.uiResult);
        EXPECT_EQ(uiElapse, stCase.uiElapse);
        for (const uint32_t uiSwitch : {2U, 0U}) { // the second time nothing is added
            ZRYAML_DebugSwitchSet(uiSwitch);
            yaml_ParseElapseTimeGet(&stHandle, &stStamp);
            yaml_QueryDbgInfoRecord(&stHandle, &stStamp);
            EXPECT_EQ(stHandle.uiParseTime, uiElapse);
            EXPECT_EQ(stHandle.uiQueryCount, stCase.uiResult == YAML_OK ? 1U : 0U);
            EXPECT_EQ(stHandle.ulQueryTimeTotal, stCase.uiResult == YAML_OK ? uint64_t{uiElapse} + 1 : 0U);
        }
        EXPECT_EQ(Base().LogText(), "");
    }
}

TEST_F(Statistics, InfoOfCountedQueries)
{
    YamlHandle stHandle;
    yaml_HandleInit(&stHandle);
    YamlDebugInfo stInfo = {1, 2, 3, 4};
    EXPECT_EQ(ZRYAML_DebugInfoGet(&stHandle, &stInfo), YAML_ERR_SWITCH_OFF);
    EXPECT_EQ(ZRYAML_DebugInfoGet(nullptr, &stInfo), YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_DebugInfoGet(&stHandle, nullptr), YAML_ERR_PARAM);
    EXPECT_EQ(Base().LogText(), "2 19000012 The debug switch has not been open.\n" BAD_INFO BAD_INFO);
    EXPECT_EQ(FieldsOf(stInfo), (Fields{1, 2, 3, 4}));
    Base().Reset();
    ZRYAML_DebugSwitchSet(2);
    EXPECT_EQ(ZRYAML_DebugInfoGet(&stHandle, &stInfo), YAML_OK);
    EXPECT_EQ(FieldsOf(stInfo), (Fields{0, 0, 0, 0}));
    ClockSet({10, 0});
    stHandle.uiParseTime = 12;
    stHandle.uiMemSize = 34;
    const struct {
        long lMs;
        Fields auiFields;
    } astQuery[] = {{2, {12, 34, 1, 3}}, {0, {12, 34, 2, 2}}, {5, {12, 34, 3, 3}}}; // 3 by 1, 4 by 2, 10 by 3
    for (const auto &stQuery : astQuery) {
        const timespec stStamp = {9, (1000 - stQuery.lMs) * Ms};
        yaml_QueryDbgInfoRecord(&stHandle, &stStamp);
        EXPECT_EQ(ZRYAML_DebugInfoGet(&stHandle, &stInfo), YAML_OK);
        EXPECT_EQ(FieldsOf(stInfo), stQuery.auiFields);
    }
    EXPECT_EQ(stHandle.ulQueryTimeTotal, 10U);
    EXPECT_EQ(Base().LogText(), "");
    stHandle.ulQueryTimeTotal = 3 * (uint64_t{1} << 32) + 16; // an average of more than 32 bits is cut
    Base().bSecureCallsFail = true;
    EXPECT_EQ(ZRYAML_DebugInfoGet(&stHandle, &stInfo), YAML_OK);
    EXPECT_EQ(FieldsOf(stInfo), (Fields{12, 34, 3, 5}));
    EXPECT_EQ(Base().LogText(), "1 16 Secure check fail.\n");
}

TEST_F(Statistics, LoadsAndQueriesAreTimed)
{
    for (const uint32_t uiSwitch : {0U, 1U, 2U}) {
        SCOPED_TRACE(uiSwitch);
        ZRYAML_DebugSwitchSet(uiSwitch);
        ClockSet({100, 0}, 7 * Ms);
        YamlHandle *pstHandle = TextFileLoad("a: b\ns: [1]");
        ASSERT_NE(pstHandle, nullptr);
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
