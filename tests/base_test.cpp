// SPDX-License-Identifier: Apache-2.0
// The base library: bounds-checked calls at their limits, a pool's blocks and counters, what the log makes of its
// records, and all of them when memory is short.

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include <malloc.h>
#include <sys/resource.h>

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include <gtest/gtest.h>

#include "support/rows.h"
#include "support/short_memory.h"
#include "zr_base.h"
#include "zr_safe.h"

namespace {

// A call, its result, and how the twelve '#' at pc begin afterwards, each NUL shown as '|'.
using SafeCase = std::tuple<const char *, int (*)(char *), int, const char *>;
#define CALL(call, ...) \
    SafeCase(           \
        #call, []([[maybe_unused]] char *pc) { return call; }, __VA_ARGS__)
#define SCAN(text, format, result, number) CALL(Scan(pc, text, format), result, number)

char *Set(char *pc)
{
    return static_cast<char *>(memcpy(pc, "abcdef\0", 8));
}

constexpr auto Copy = strncpy_s;
// Without the attribute that asks for literal formats.
int (*const Print)(char *, size_t, size_t, const char *, ...) = snprintf_s;

// Scans for a number and for %n, and writes to pc what is stored.
int Scan(char *pc, const char *pcText, const char *pcFormat)
{
    unsigned uiValue = 77;
    int iRead = 0;
    const int iResult = sscanf_s(pcText, pcFormat, &uiValue, &iRead, nullptr);
    if (uiValue != 77)
        pc = std::to_chars(pc, pc + 12, uiValue).ptr;
    if (iRead != 0)
        std::to_chars(pc + 1, pc + 3, iRead);
    return iResult;
}

TEST(Safe, WritesWhatFitsAndNothingElse)
{
    const auto stCases = Rows(
        CALL(memset_s(pc, 5, 'z', 5), 0, "zzzzz"), CALL(memset_s(pc, 5, 'z', 6), ERANGE, "zzzzz"),
        CALL(memset_s(pc, 0, 'z', 1), ERANGE, ""), CALL(memset_s(pc, SIZE_MAX / 2 + 1, 'z', 1), ERANGE, ""),
        CALL(memset_s(nullptr, 5, 'z', 0), EINVAL, ""), CALL(Copy(pc, 5, "abc", 3), 0, "abc|"),
        CALL(Copy(pc, 5, "abcde", 4), 0, "abcd|"), CALL(Copy(pc, 5, "abcde", 5), ERANGE, "|"),
        CALL(Copy(pc, 5, "abc", SIZE_MAX), ERANGE, "|"), CALL(Copy(pc, 5, "abc", 0), 0, "|"),
        CALL(Copy(pc, 1, "", 9), 0, "|"), CALL(Copy(pc, 5, nullptr, 3), EINVAL, "|"),
        CALL(Copy(pc, 0, "abc", 3), EINVAL, ""), CALL(Copy(pc, SIZE_MAX, "abc", 3), ERANGE, ""),
        CALL(Copy(nullptr, 5, "abc", 3), EINVAL, ""), CALL(Copy(Set(pc), 8, pc + 3, 6), EINVAL, "|bcdef||"),
        CALL(Copy(Set(pc), 8, pc + 4, 6), 0, "ef|def||"), CALL(Copy(Set(pc) + 3, 5, pc, 3), 0, "abcabc||"),
        CALL(Copy(Set(pc) + 2, 6, pc, 3), EINVAL, "ab|def||"), CALL(Copy(Set(pc) + 6, 2, pc + 5, 1), 0, "abcdeff|"),
        CALL(Copy(Set(pc) + 6, 2, pc + 5, 2), EINVAL, "abcdef||"), CALL(Print(pc, 6, 3, "%s", "abc"), 3, "abc|"),
        CALL(Print(pc, 6, 5, "%s", "abcde"), 5, "abcde|"), CALL(Print(pc, 6, 9, "%s", "abcdef"), -1, "abcde|"),
        CALL(Print(pc, 6, 3, "%s", "abcd"), -1, "abc|"), CALL(Print(pc, 6, 0, "%s", ""), 0, "|"),
        CALL(Print(pc, 6, SIZE_MAX, "%s", "a"), -1, "|"), CALL(Print(pc, 0, 9, "%s", "a"), -1, ""),
        CALL(Print(pc, SIZE_MAX, 9, "%s", "a"), -1, ""), CALL(Print(pc, 6, 5, nullptr), -1, "|"),
        CALL(Print(nullptr, 6, 5, "a"), -1, ""), CALL(Print(pc, 6, 5, "%%n"), 2, "%n|"),
        CALL(Print(pc, 6, 5, "a%n", ""), -1, "|"), CALL(Print(pc, 6, 5, "%1$n", ""), -1, "|"),
        CALL(Print(pc, 6, 5, "%%%-05hhn", ""), -1, "|"), CALL(Print(pc, 6, 5, "ab%ls", L"\u20AC"), -1, "|b|"),
        CALL(sscanf_s("abcd", "%s", pc, 0U), 0, ""), CALL(sscanf_s("abcd", "%c", pc, 0U), 0, ""),
        CALL(sscanf_s("abcd", "%s", nullptr, 5U), -1, ""), CALL(sscanf_s("abcd", "%c", nullptr, 5U), -1, ""),
        CALL(sscanf_s("12", "%d", nullptr), -1, ""), CALL(sscanf_s("12", "%x", nullptr), -1, ""),
        CALL(sscanf_s(" ", "%s", pc, 5U), -1, ""),
        CALL(sscanf_s("\t abcd e", "%s%c", pc, 5U, pc + 6, 1U), 2, "abcd|# "),
        CALL(sscanf_s("abcde f", "%s%c", pc, 5U, pc + 6, 1U), 0, "|"),
        CALL(sscanf_s("abcd", "%s%c", pc, 5U, pc + 6, 1U), 1, "abcd|"), SCAN("[007", "[%u]", 1, "7"),
        SCAN("[4294967295", "[%u]", 1, "4294967295"), SCAN("[4294967296", "[%u]", 0, ""), SCAN("[-1]", "[%u]", 0, ""),
        SCAN("[-0]", "[%u]", 1, "0"), SCAN("[]", "[%u]", 0, ""), SCAN("[", "[%u]", -1, ""), SCAN("", "[%u]", -1, ""),
        SCAN("{1}", "[%u]", 0, ""), SCAN(" \t+12", "%u", 1, "12"), SCAN("00018446744073709551617", "%u", 0, ""),
        SCAN("2147483647", "%d", 1, "2147483647"), SCAN("2147483648", "%d", 0, ""),
        SCAN("-2147483648", "%d", 1, "2147483648"), SCAN("-2147483649", "%d", 0, ""), SCAN("x", "%d", 0, ""),
        SCAN("0xfFfFfFfF", "%x", 1, "4294967295"), SCAN("0X1fg", "%x", 1, "31"), SCAN("0", "%x", 1, "0"),
        SCAN("100000000", "%x", 0, ""), SCAN("0x", "%x", 0, ""), SCAN("50 %", "%u %%", 1, "50"),
        SCAN("5", "%u %lu", -1, ""), SCAN("5", "%2u", -1, ""), SCAN("5", "%u%", -1, ""), SCAN(nullptr, "%u", -1, ""),
        SCAN("5", nullptr, -1, ""), SCAN(" 12x", "%u%n", 1, "12#3"), SCAN("5", "%u%n%n", -1, "5#1"));
    for (const auto &[pcCall, pfnCall, iResult, pcBuffer] : stCases) {
        std::string sBuffer(12, '#');
        std::string sExpected = pcBuffer;
        sExpected.resize(sBuffer.size(), '#');
        EXPECT_EQ(pfnCall(sBuffer.data()), iResult) << pcCall;
        std::replace(sBuffer.begin(), sBuffer.end(), '\0', '|');
        EXPECT_EQ(sBuffer, sExpected) << pcCall;
    }
}

ZR_MemInfo InfoOf(void *pPool)
{
    ZR_MemInfo stInfo{};
    EXPECT_EQ(ZR_MemInfoGet(pPool, &stInfo), 0U);
    return stInfo;
}

TEST(Pool, HandlesAreApartAndNullIsRefused)
{
    char acName[] = "one";
    void *pOne = ZR_HandleInit(acName);
    acName[0] = '?';
    void *pBlock = ZR_MemAlloc(1, pOne);
    ZR_MemFree(nullptr, pOne);
    ZR_MemFree(pBlock, nullptr);
    EXPECT_EQ(InfoOf(pOne).ulBlocksInUse, 1U);
    EXPECT_EQ(InfoOf(ZR_HandleInit("one")).ulBlocksInUse, 0U);
    EXPECT_STREQ(InfoOf(pOne).pcName, "one");
    ZR_MemFree(pBlock, pOne);

    ZR_MemInfo stInfo{};
    EXPECT_TRUE(ZR_HandleInit(nullptr) == nullptr && ZR_MemAlloc(1, nullptr) == nullptr);
    EXPECT_TRUE(ZR_MemInfoGet(nullptr, &stInfo) == EINVAL && ZR_MemInfoGet(pOne, nullptr) == EINVAL);
}

TEST(Pool, SizesAndCounters)
{
    void *pPool = ZR_HandleInit("sizes");
    uint64_t ulPeak = 0;
    for (const uint32_t uiSize : {0U, 1U, 17U, 1025U, 65536U, UINT32_MAX}) {
        SCOPED_TRACE(uiSize);
        char *apcBlock[2];
        uint64_t ulBytes = 0;
        for (char *&pcBlock : apcBlock) {
            pcBlock = static_cast<char *>(ZR_MemAlloc(uiSize, pPool));
            ASSERT_NE(pcBlock, nullptr);
            EXPECT_EQ(reinterpret_cast<uintptr_t>(pcBlock) % alignof(max_align_t), 0U);
            if (uiSize > 0)
                pcBlock[0] = pcBlock[uiSize - 1] = 'x';
            ulBytes += malloc_usable_size(pcBlock);
        }
        EXPECT_EQ(InfoOf(pPool).ulBlocksInUse, 2U);
        EXPECT_EQ(InfoOf(pPool).ulBytesInUse, ulBytes);
        for (char *pcBlock : apcBlock)
            ZR_MemFree(pcBlock, pPool);
        ulPeak = std::max(ulPeak, ulBytes);
        EXPECT_EQ(InfoOf(pPool).ulBlocksInUse + InfoOf(pPool).ulBytesInUse, 0U);
        EXPECT_EQ(InfoOf(pPool).ulBytesPeak, ulPeak);
    }
}

TEST(Pool, KeepsBlocksForTheNextDocumentWithinBounds)
{
    constexpr uint32_t Size = 8192;
    constexpr size_t Most = (size_t{32} << 20U) / Size;
    void *pPool = ZR_HandleInit("kept");
    const auto InUse = [] { return CanBeLimited ? mallinfo2().uordblks : 0; }; // a sanitizer does not tell
    const size_t ulBefore = InUse();
    for (int i = 0; i < 3; ++i) {
        std::vector<void *> apBlock(Most + 1000);
        for (void *&pBlock : apBlock)
            memset(pBlock = ZR_MemAlloc(Size, pPool), 'x', Size);
        EXPECT_EQ(std::set<void *>(apBlock.begin(), apBlock.end()).size(), apBlock.size());
        void *pOther = ZR_MemAlloc(Size / 2, pPool);
        for (void *pBlock : apBlock)
            ZR_MemFree(pBlock, pPool);
        ZR_MemFree(pOther, pPool);
        EXPECT_EQ(InfoOf(pPool).ulBytesInUse, 0U);
    }
    const size_t ulKept = InUse() - ulBefore;
    EXPECT_TRUE(!CanBeLimited || (ulKept >= Most * Size && ulKept < (Most + 100) * Size)) << ulKept;
}

TEST(Pool, ThreadsHandBlocksToEachOther)
{
    void *pPool = ZR_HandleInit("threads");
    std::atomic<uint32_t *> apSlot[64] = {};
    std::atomic<uint32_t> uiBroken{0};
    // A block is full of its own length, as long as nobody else writes to it.
    const auto Swap = [&](std::atomic<uint32_t *> &pSlot, uint32_t uiLength) {
        auto *puiNew = static_cast<uint32_t *>(uiLength != 0 ? ZR_MemAlloc(uiLength * 4, pPool) : nullptr);
        std::fill_n(puiNew, uiLength, uiLength);
        uint32_t *puiOld = pSlot.exchange(puiNew);
        if (puiOld != nullptr && std::count(puiOld, puiOld + *puiOld, *puiOld) != *puiOld)
            ++uiBroken;
        ZR_MemFree(puiOld, pPool);
    };
    const auto Hammer = [&](uint32_t uiSeed) {
        std::mt19937 stRandom(uiSeed);
        for (int i = 0; i < 100000; ++i)
            Swap(apSlot[stRandom() % std::size(apSlot)],
                 1 + static_cast<uint32_t>(stRandom() % (i % 500 == 0 ? 25000 : 50)));
    };
    {
        const std::jthread astThread[] = {std::jthread(Hammer, 1), std::jthread(Hammer, 2), std::jthread(Hammer, 3)};
        Hammer(4);
    }
    for (auto &pSlot : apSlot)
        Swap(pSlot, 0);
    EXPECT_EQ(uiBroken, 0U);
    EXPECT_EQ(InfoOf(pPool).ulBlocksInUse + InfoOf(pPool).ulBytesInUse, 0U);
}

ZR_LogModule g_stModule = {"YAML", 0x1900};

#define LOG(uiLevel, ...) ZR_LogWrite(&g_stModule, (uiLevel), 0x1900000B, "file.cpp", 7, "Fn", __VA_ARGS__)

// Puts a sink in place that takes every level, for as long as it lives. Keeps the last record without the heap.
struct Recorder {
    explicit Recorder(ZR_LogSink pfnSink = Keep)
    {
        EXPECT_EQ(ZR_LogSinkSet(pfnSink, this), 0U);
        ZR_LogLevelSet(ZR_LOG_NOTE);
    }
    ~Recorder()
    {
        EXPECT_EQ(ZR_LogSinkSet(nullptr, nullptr), 0U);
        ZR_LogLevelSet(ZR_LOG_WARNING);
    }

    static void Keep(const ZR_LogRecord *pst, void *pContext)
    {
        ++static_cast<Recorder *>(pContext)->uiRecords;
        (void)snprintf(acHead, sizeof acHead, "%s %x %u %x %s:%u %s", pst->pcModule, pst->uiModuleId, pst->uiLevel,
                       pst->uiCode, pst->pcFile, pst->uiLine, pst->pcFunction);
        (void)strncpy_s(acText, sizeof acText, pst->pcText, sizeof acText);
        errno = EBADF;
    }

    static inline char acHead[64], acText[4 * 65535 + 8];
    uint32_t uiRecords = 0;
};

TEST(Log, RecordReachesTheSink)
{
    Recorder stSink;
    errno = ENOENT;
    LOG(ZR_LOG_ERROR, "%s=%u (%zu, %X, %d)", "Key", 5U, size_t{6}, 0xABU, -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_STREQ(Recorder::acHead, "YAML 1900 2 1900000b file.cpp:7 Fn");
    EXPECT_STREQ(Recorder::acText, "Key=5 (6, AB, -1)");
    ZR_LogWrite(nullptr, 9, 0, nullptr, 0, nullptr, nullptr);
    EXPECT_STREQ(Recorder::acHead, "? 0 9 0 ?:0 ?");
    EXPECT_STREQ(Recorder::acText, "?");
    LOG(ZR_LOG_ERROR, "unformattable %ls", L"\u20AC");
    EXPECT_STREQ(Recorder::acText, "unformattable %ls");

    for (uint32_t uiLeast = ZR_LOG_NOTE; uiLeast <= ZR_LOG_NOTHING; ++uiLeast) {
        ZR_LogLevelSet(uiLeast);
        EXPECT_EQ(ZR_LogLevelGet(), uiLeast);
        stSink.uiRecords = 0;
        for (uint32_t uiLevel = ZR_LOG_NOTE; uiLevel <= ZR_LOG_ERROR; ++uiLevel) {
            LOG(uiLevel, "any");
            EXPECT_EQ(stSink.uiRecords, uiLevel + 1 - std::min(uiLeast, uiLevel + 1)) << uiLeast << ' ' << uiLevel;
        }
    }
}

std::string Written(const std::string &sText, size_t ulNews = SIZE_MAX)
{
    const Recorder stSink;
    const ShortMemory stShort(ulNews);
    LOG(ZR_LOG_ERROR, "%s", sText.c_str());
    g_ulNewsLeft = SIZE_MAX;
    return Recorder::acText;
}

TEST(Log, TextIsOneHarmlessLine)
{
    EXPECT_EQ(Written(""), "");
    EXPECT_EQ(Written("a\\nb ~\na\tc\r \x1b[2J\x01\x7f\x1f"), R"(a\nb ~\na\tc\r \x1b[2J\x01\x7f\x1f)");
    EXPECT_EQ(Written("\u0080\u009b\u00a0 \u2027\u2028\u2029\u202a"),
              "\\u0080\\u009b\u00a0 \u2027\\u2028\\u2029\u202a");
    EXPECT_EQ(Written("\u00e9\u20ac\U0001f600\U0010ffff"), "\u00e9\u20ac\U0001f600\U0010ffff");
    // no UTF-8: stray, cut, overlong, surrogate, too large, too long
    EXPECT_EQ(Written("\x80\xff\xc3( \xc0\x8a\xe0\x80\x8a\xc3"), R"(\x80\xff\xc3( \xc0\x8a\xe0\x80\x8a\xc3)");
    EXPECT_EQ(Written("\xed\xa0\x80\xf4\x90\x80\x80 \xf8\x88\x80\x80\x80\xe2\x82"),
              R"(\xed\xa0\x80\xf4\x90\x80\x80 \xf8\x88\x80\x80\x80\xe2\x82)");
}

TEST(Log, LongTextIsWholeOrMarked)
{
    const auto Many = [](size_t ulLength) { return std::string(ulLength, 'a'); };
    std::string sEscaped;
    for (int i = 0; i < 65535; ++i)
        sEscaped += "\\x01";
    for (const size_t ulWhole : {511U, 512U, 65535U})
        EXPECT_EQ(Written(Many(ulWhole)), Many(ulWhole));
    EXPECT_EQ(Written(Many(65536)), Many(65535) + "...");
    EXPECT_EQ(Written(std::string(65535, '\x01')), sEscaped);
    if (!CanBeShort)
        return;
    EXPECT_EQ(Written(Many(511), 0), Many(511));
    EXPECT_EQ(Written(Many(512), 0), Many(511) + "...");
    EXPECT_EQ(Written(std::string(511, '\x01'), 0), sEscaped.substr(0, 1020) + "...");
}

TEST(Log, SinkInsideSinkAndThrowingSink)
{
    const Recorder stSink([](const ZR_LogRecord *, void *pContext) {
        ++static_cast<Recorder *>(pContext)->uiRecords;
        LOG(ZR_LOG_ERROR, "dropped");
        EXPECT_EQ(ZR_LogSinkSet(nullptr, nullptr), uint32_t{EDEADLK});
        throw std::runtime_error("ends in the log");
    });
    LOG(ZR_LOG_ERROR, "one");
    LOG(ZR_LOG_ERROR, "two");
    EXPECT_EQ(stSink.uiRecords, 2U);
}

TEST(Log, ReplacedSinkIsNeverCalledAgain)
{
    const Recorder stLevel;
    std::unique_ptr<uint64_t> pulCount;
    const auto Write = [](const std::stop_token &stStop) {
        do
            LOG(ZR_LOG_NOTE, "tick %d", 1);
        while (!stStop.stop_requested());
    };
    const std::jthread stOne(Write);
    const std::jthread stOther(Write);
    uint64_t ulTotal = 0;
    for (int i = 0; i < 500 || ulTotal < 1000; ++i) {
        auto pulNext = std::make_unique<uint64_t>(0);
        const ZR_LogSink pfnCount = [](const ZR_LogRecord *, void *pContext) { ++*static_cast<uint64_t *>(pContext); };
        EXPECT_EQ(ZR_LogSinkSet(pfnCount, pulNext.get()), 0U);
        ulTotal += pulCount != nullptr ? *pulCount : 0; // read and released while the writers go on
        pulCount = std::move(pulNext);
    }
}

// Records of a program of its own, on its standard error without the time in front. Its exit code is the least level.
TEST(LogDeathTest, DefaultSink)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    enum Start { Plain, HostLogger, Short };
    const auto Write = [](Start eStart) {
        if (eStart == HostLogger)
            spdlog::stderr_logger_mt("zr")->set_pattern("host: %v");
        if (eStart == Short) {
            const ShortMemory stShort(0);
            LOG(ZR_LOG_ERROR, "%u", ZR_BaseInit());
        }
        const uint32_t uiCode = ZR_BaseInit() + ZR_BaseInit();
        LOG(ZR_LOG_NOTE, "note");
        LOG(ZR_LOG_WARNING, "a\nb");
        LOG(ZR_LOG_ERROR, "c");
        std::exit(static_cast<int>(uiCode + ZR_LogLevelGet()));
    };
    const auto Check = [Write](Start eStart, const char *pcEnvironment, int iLevel, const char *pcOutput) {
        setenv("SPDLOG_LEVEL", pcEnvironment, 1);
        EXPECT_EXIT(Write(eStart), testing::ExitedWithCode(iLevel), pcOutput) << pcEnvironment;
    };
    Check(Plain, "", 1,
          "warning] YAML 0x1900000B file.cpp:7 Fn: a\\\\nb\n[^\n]*\\[zr\\] \\[error\\] YAML [^\n]* Fn: c\n$");
    Check(Plain, "zr=trace", 0, "debug] YAML [^\n]*Fn: note\n[^\n]*a\\\\nb\n[^\n]*c\n$");
    Check(Plain, "debug", 0, "debug] YAML [^\n]*Fn: note\n");
    Check(Plain, "debug,zr=err", 2, "^[^\n]*error] YAML [^\n]*Fn: c\n$");
    Check(Plain, "off,other=debug", 3, "^$");
    Check(HostLogger, "zr=trace", 1, "^host: YAML [^\n]* Fn: a\\\\nb\nhost: YAML [^\n]* Fn: c\n$");
    if (CanBeShort)
        Check(Short, "zr=trace", 1, "^[^\n]*Fn: a\\\\nb\n[^\n]*c\n$"); // what is written meanwhile is lost
}

TEST(ShortOfMemory, HandleIsNone)
{
    for (const size_t ulNews : {0U, 1U}) { // for the pool, and for its name
        const ShortMemory stShort(CanBeShort ? ulNews : SIZE_MAX);
        EXPECT_EQ(ZR_HandleInit("short") == nullptr, CanBeShort);
    }
}

TEST(ShortOfMemory, PoolGivesNoBlockAndGoesOn)
{
    if (!CanBeLimited)
        GTEST_SKIP() << "a sanitizer has taken too much already";
    const auto Take = [] {
        const rlimit stLimit = {rlim_t{1} << 30U, RLIM_INFINITY};
        void *pPool = ZR_HandleInit("short");
        const bool bLimited = setrlimit(RLIMIT_AS, &stLimit) == 0;
        const bool bNone = ZR_MemAlloc(UINT32_MAX, pPool) == nullptr && InfoOf(pPool).ulBlocksInUse == 0;
        exit(bLimited && bNone && ZR_MemAlloc(1, pPool) != nullptr ? 0 : 1);
    };
    EXPECT_EXIT(Take(), testing::ExitedWithCode(0), "");
}

} // namespace
