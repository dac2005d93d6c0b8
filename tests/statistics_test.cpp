// SPDX-License-Identifier: Apache-2.0
// The debug switch and the statistics. The program's own clock_gettime stands in front of the C library's, so that the
// clock can be set for a test; while it is not set it passes every call on to the system.
#include "support/recording_base.h"
#include "support/tree_check.h"

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
    {__LINE__, {5, 0}, {5, 0}, 0, 0},
    {__LINE__, {5, 100 * Ms}, {6, 100 * Ms}, 0, 1000},
    {__LINE__, {5, 999 * Ms + 999'999}, {6, 0}, 0, 0},
    {__LINE__, {5, 0}, {8, 1 * Ms}, 0, 3001},
    {__LINE__, {0, 0}, {4294967, 295 * Ms}, 0, 4294967295},
    {__LINE__, {0, 0}, {4294968, 0}, 0, 704}, // as 32 bits hold it
    {__LINE__, {5, 100 * Ms}, {5, 100 * Ms - 1}, YAML_ERR_PARAM, 77},
    {__LINE__, {5, 0}, {4, 999 * Ms}, YAML_ERR_PARAM, 77},
    {__LINE__, {7, 900 * Ms}, {5, 950 * Ms}, YAML_ERR_PARAM, 77},
};

struct MemoryCase {
    int iLine;
    const char *pcDocument;
    size_t ulNodes, ulTexts;
};
constexpr MemoryCase g_astMemory[] = {
    {__LINE__, "", 0, 0},
    {__LINE__, "a: b", 3, 4},
    {__LINE__, "[abc, '']", 3, 5},
    {__LINE__, "a: &x v\nb: *x", 5, 8},
    {__LINE__, "a: &x {k: v}\nb: *x", 9, 12},
    {__LINE__, "b: &b {k: 1}\nm: {<<: *b}", 9, 12},         // the "<<" is counted off again
    {__LINE__, "b: &b {k: 1}\nm: {<<: *b, k: 22}", 11, 17}, // a value that goes stays counted
};

} // namespace

extern "C" int clock_gettime(clockid_t iClock, timespec *pstTime) noexcept
{
    if (!g_stClock.bSet || iClock != CLOCK_MONOTONIC)
        return static_cast<int>(syscall(SYS_clock_gettime, iClock, pstTime));
    *pstTime = g_stClock.stNow;
    g_stClock.stNow.tv_nsec += g_stClock.lStepNs;
    return 0;
}

class Statistics : public testing::Test {
protected:
    void SetUp() override { Base().Reset(); }
    void TearDown() override
    {
        g_stClock.bSet = false;
        ZRYAML_DebugSwitchSet(0);
        Base().Reset();
    }
};

TEST_F(Statistics, SwitchKeepsWhatIsSet)
{
    EXPECT_EQ(g_uiSwitchAtStart, 0U);
    for (const uint32_t uiSwitch : {1U, 2U, 0xFFFFFFFFU, 0U}) {
        ZRYAML_DebugSwitchSet(uiSwitch);
        EXPECT_EQ(yaml_IsDebugSwitchOpen(), uiSwitch);
        EXPECT_EQ(g_bYamlDebugSwitch, uiSwitch);
    }
    EXPECT_EQ(Base().LogText(), "");
}

TEST_F(Statistics, ElapsedMilliseconds)
{
    for (const ElapseCase &stCase : g_astElapse) {
        SCOPED_TRACE(stCase.iLine);
        uint32_t uiElapse = 77;
        timespec stStamp = {1, 2};
        ZRYAML_DebugSwitchSet(0);
        ClockSet(stCase.stStamp);
        yaml_StartPoint(&stStamp);
        EXPECT_TRUE(stStamp.tv_sec == 1 && stStamp.tv_nsec == 2);
        EXPECT_EQ(yaml_ElapseTimeGet(&stStamp, &uiElapse), YAML_ERR_SWITCH_OFF);
        EXPECT_EQ(uiElapse, 77U);

        ZRYAML_DebugSwitchSet(2);
        yaml_StartPoint(&stStamp);
        EXPECT_TRUE(stStamp.tv_sec == stCase.stStamp.tv_sec && stStamp.tv_nsec == stCase.stStamp.tv_nsec);
        ClockSet(stCase.stNow);
        EXPECT_EQ(yaml_ElapseTimeGet(&stStamp, &uiElapse), stCase.uiResult);
        EXPECT_EQ(uiElapse, stCase.uiElapse);

        YamlHandle stHandle;
        yaml_HandleInit(&stHandle);
        stHandle.uiParseTime = 77;
        yaml_ParseElapseTimeGet(&stHandle, &stStamp);
        EXPECT_EQ(stHandle.uiParseTime, stCase.uiElapse);
        yaml_QueryDbgInfoRecord(&stHandle, &stStamp);
        EXPECT_EQ(stHandle.uiQueryCount, stCase.uiResult == 0 ? 1U : 0U);
        EXPECT_EQ(stHandle.ulQueryTimeTotal, stCase.uiResult == 0 ? uint64_t{stCase.uiElapse} + 1 : 0U);
        ZRYAML_DebugSwitchSet(0);
        yaml_QueryDbgInfoRecord(&stHandle, &stStamp);
        yaml_ParseElapseTimeGet(&stHandle, &stStamp);
        EXPECT_EQ(stHandle.uiQueryCount, stCase.uiResult == 0 ? 1U : 0U);
        EXPECT_EQ(stHandle.uiParseTime, stCase.uiElapse);
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
    EXPECT_EQ(Base().LogText(), "2 19000012 The debug switch has not been open.\n"
                                "2 16 The parameter is invalid to get debug information.\n"
                                "2 16 The parameter is invalid to get debug information.\n");
    EXPECT_TRUE(stInfo.uiParseTime == 1 && stInfo.uiMemSize == 2 && stInfo.uiQueryCount == 3 &&
                stInfo.uiQueryTimeAvg == 4);
    Base().Reset();
    ZRYAML_DebugSwitchSet(2);
    EXPECT_EQ(ZRYAML_DebugInfoGet(&stHandle, &stInfo), YAML_OK);
    EXPECT_EQ(stInfo.uiQueryCount, 0U);
    EXPECT_EQ(stInfo.uiQueryTimeAvg, 0U);
    ClockSet({10, 0});
    for (const long lMs : {0L, 2L, 5L}) {
        const timespec stStamp = {9, 1000 * Ms - lMs * Ms};
        yaml_QueryDbgInfoRecord(&stHandle, &stStamp);
    }
    EXPECT_EQ(stHandle.ulQueryTimeTotal, 10U);
    stHandle.uiParseTime = 12;
    stHandle.uiMemSize = 34;
    Base().bSecureCallsFail = true;
    EXPECT_EQ(ZRYAML_DebugInfoGet(&stHandle, &stInfo), YAML_OK);
    EXPECT_EQ(Base().LogText(), "1 16 Secure check fail.\n");
    EXPECT_TRUE(stInfo.uiParseTime == 12 && stInfo.uiMemSize == 34 && stInfo.uiQueryCount == 3 &&
                stInfo.uiQueryTimeAvg == 3);
    stHandle.ulQueryTimeTotal = 3 * (uint64_t{1} << 32) + 16; // an average of more than 32 bits is cut
    EXPECT_EQ(ZRYAML_DebugInfoGet(&stHandle, &stInfo), YAML_OK);
    EXPECT_EQ(stInfo.uiQueryTimeAvg, 5U);
}

TEST_F(Statistics, LoadsAndQueriesAreTimed)
{
    for (const uint32_t uiSwitch : {0U, 1U, 2U}) {
        SCOPED_TRACE(uiSwitch);
        Base().Reset();
        ZRYAML_DebugSwitchSet(uiSwitch);
        ClockSet({100, 0}, 7 * Ms);
        YamlHandle *pstHandle = TextFileLoad("a: b\ns: [1]");
        ASSERT_NE(pstHandle, nullptr);
        EXPECT_EQ(pstHandle->uiParseTime, uiSwitch != 0 ? 7U : 0U);
        EXPECT_EQ(pstHandle->uiMemSize != 0, uiSwitch == 1);
        EXPECT_EQ(Base().log.empty(), uiSwitch != 1); // the trace of the events
        EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "a"), "b");
        EXPECT_EQ(ZRYAML_PropertyGet(pstHandle, "s"), nullptr);
        EXPECT_EQ(ZRYAML_PropertyGet(pstHandle, "missing"), nullptr);
        EXPECT_EQ(ZRYAML_ArraySizeGet(pstHandle, "s"), 1U);
        EXPECT_EQ(pstHandle->uiQueryCount, uiSwitch != 0 ? 2U : 0U);
        EXPECT_EQ(pstHandle->ulQueryTimeTotal, uiSwitch != 0 ? 16U : 0U);
        ZRYAML_DebugSwitchSet(1);
        EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "a"), "b");
        EXPECT_EQ(pstHandle->uiQueryCount, uiSwitch != 0 ? 3U : 1U);
        ZRYAML_HandleFree(pstHandle);
        EXPECT_EQ(TextFileLoad("a: [b"), nullptr);
        EXPECT_EQ(Base().lBlocks, 0);
    }
}

TEST_F(Statistics, MemoryIsCountedForTheDocument)
{
    for (const MemoryCase &stCase : g_astMemory) {
        SCOPED_TRACE(stCase.iLine);
        ZRYAML_DebugSwitchSet(1);
        YamlHandle *pstHandle = TextFileLoad(stCase.pcDocument);
        ASSERT_NE(pstHandle, nullptr);
        EXPECT_EQ(pstHandle->uiMemSize, sizeof(YamlHandle) + stCase.ulNodes * sizeof(YamlListNode) + stCase.ulTexts);
        YamlDebugInfo stInfo = {};
        EXPECT_EQ(ZRYAML_DebugInfoGet(pstHandle, &stInfo), YAML_OK);
        EXPECT_EQ(stInfo.uiMemSize, pstHandle->uiMemSize);
        ZRYAML_HandleFree(pstHandle);
    }
}

TEST_F(Statistics, VersionTexts)
{
    EXPECT_STREQ(g_pcYAMLMiniVer, "1.21.0");
    EXPECT_STREQ(g_pcYAMLInterSubVer, "B035");
    EXPECT_STREQ(g_pcYAMLOuterVer, ZRYAML_OUTER_VERSION);
}
