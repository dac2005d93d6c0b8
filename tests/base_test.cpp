// SPDX-License-Identifier: Apache-2.0
//
// The base library: bounds-checked calls at their limits, a pool's blocks and counters, and what the log makes of its
// records.

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <latch>
#include <memory>
#include <new>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "zr_base.h"
#include "zr_safe.h"

#ifdef __has_feature
#define HAS_FEATURE(feature) __has_feature(feature)
#else
#define HAS_FEATURE(feature) 0
#endif

using namespace std::string_view_literals;

namespace {

// ---- Bounds-checked calls ----

struct SafeCase {
    int iLine;
    int (*pfnCall)(char *pc);
    int iResult;
    std::string_view svBuffer; // how the eight '#' at pc begin afterwards; the rest must be as before
};
#define CALL(call, ...)                                                       \
    {                                                                         \
        __LINE__, []([[maybe_unused]] char *pc) { return call; }, __VA_ARGS__ \
    }

char *Filled(char *pc)
{
    return static_cast<char *>(memcpy(pc, "abcdef\0", 8));
}

// Without the attribute that asks for literal formats.
int (*const g_pfnPrint)(char *, size_t, size_t, const char *, ...) = snprintf_s;

const SafeCase g_astSafe[] = {
    CALL(memset_s(pc, 5, 'z', 5), 0, "zzzzz"),
    CALL(memset_s(pc, 5, 'z', 6), ERANGE, "zzzzz"),
    CALL(memset_s(pc, 5, 'z', SIZE_MAX), ERANGE, "zzzzz"),
    CALL(memset_s(pc, 0, 'z', 1), ERANGE, ""),
    CALL(memset_s(nullptr, 5, 'z', 0), EINVAL, ""),
    CALL(strncpy_s(pc, 5, "abc", 3), 0, "abc\0"sv),
    CALL(strncpy_s(pc, 5, "abcde", 4), 0, "abcd\0"sv),
    CALL(strncpy_s(pc, 5, "abcde", 5), ERANGE, "\0"sv),
    CALL(strncpy_s(pc, 5, "abc", 0), 0, "\0"sv),
    CALL(strncpy_s(pc, 1, "", 9), 0, "\0"sv),
    CALL(strncpy_s(pc, 5, nullptr, 3), EINVAL, "\0"sv),
    CALL(strncpy_s(pc, 0, "abc", 3), EINVAL, ""),
    CALL(strncpy_s(pc, SIZE_MAX, "abc", 3), ERANGE, ""),
    CALL(strncpy_s(nullptr, 5, "abc", 3), EINVAL, ""),
    CALL(g_pfnPrint(pc, 6, 3, "%s", "abc"), 3, "abc\0"sv),
    CALL(g_pfnPrint(pc, 6, 0, "%s", ""), 0, "\0"sv),
    CALL(g_pfnPrint(pc, 0, 9, "%s", "a"), -1, ""),
    CALL(g_pfnPrint(pc, SIZE_MAX, 9, "%s", "a"), -1, ""),
    CALL(g_pfnPrint(pc, 6, 5, nullptr), -1, "\0"sv),
    CALL(g_pfnPrint(nullptr, 6, 5, "a"), -1, ""),
    CALL(g_pfnPrint(pc, 6, 5, "%%n"), 2, "%n\0"sv),
    CALL(g_pfnPrint(pc, 6, 5, "a%n", ""), -1, "\0"sv),
    CALL(g_pfnPrint(pc, 6, 5, "%1$n", ""), -1, "\0"sv),
    CALL(sscanf_s("abcd", "%s", pc, 0U), 0, ""),
    CALL(sscanf_s(" ", "%s", pc, 5U), -1, ""),
    CALL(memset_s(pc, SIZE_MAX / 2 + 1, 'z', 1), ERANGE, ""),
    CALL(strncpy_s(pc, 5, "abc", SIZE_MAX), ERANGE, "\0"sv),
    CALL(g_pfnPrint(pc, 6, 5, "%s", "abcde"), 5, "abcde\0"sv),
    CALL(g_pfnPrint(pc, 6, 9, "%s", "abcdef"), -1, "abcde\0"sv),
    CALL(g_pfnPrint(pc, 6, 3, "%s", "abcd"), -1, "abc\0"sv),
    CALL(g_pfnPrint(pc, 6, SIZE_MAX, "%s", "a"), -1, "\0"sv),
    CALL(g_pfnPrint(pc, 6, 5, "%%%-05hhn", ""), -1, "\0"sv),
    CALL(g_pfnPrint(pc, 6, 5, "ab%ls", L"\u20AC"), -1, "\0b\0"sv),
    CALL(sscanf_s("\t abcd e", "%s%c", pc, 5U, pc + 6, 1U), 2, "abcd\0# "sv),
    CALL(sscanf_s("abcde f", "%s%c", pc, 5U, pc + 6, 1U), 0, "\0"sv),
    CALL(sscanf_s("abcd", "%s%c", pc, 5U, pc + 6, 1U), 1, "abcd\0"sv),
    CALL(strncpy_s(Filled(pc), 8, pc + 3, 6), EINVAL, "\0bcdef\0\0"sv),
    CALL(strncpy_s(Filled(pc), 8, pc + 4, 6), 0, "ef\0def\0\0"sv),
    CALL(strncpy_s(Filled(pc) + 3, 5, pc, 3), 0, "abcabc\0\0"sv),
    CALL(strncpy_s(Filled(pc) + 2, 6, pc, 3), EINVAL, "ab\0def\0\0"sv),
    CALL(strncpy_s(Filled(pc) + 6, 2, pc + 5, 1), 0, "abcdeff\0"sv),
    CALL(strncpy_s(Filled(pc) + 6, 2, pc + 5, 2), EINVAL, "abcdef\0\0"sv),
};

TEST(Safe, WritesWhatFitsAndNothingElse)
{
    for (const SafeCase &stCase : g_astSafe) {
        std::string sBuffer(8, '#');
        EXPECT_EQ(stCase.pfnCall(sBuffer.data()), stCase.iResult) << stCase.iLine;
        EXPECT_EQ(sBuffer, std::string(stCase.svBuffer) + std::string(8 - stCase.svBuffer.size(), '#')) << stCase.iLine;
    }
}

TEST(Safe, ScansNumbers)
{
    struct {
        int iLine;
        const char *pcText, *pcFormat;
        int iResult;
        unsigned uiValue; // 77: not stored
    } const astNumber[] = {
        {__LINE__, "[007", "[%u]", 1, 7},         {__LINE__, "[4294967295", "[%u]", 1, UINT_MAX},
        {__LINE__, "[4294967296", "[%u]", 0, 77}, {__LINE__, "[00018446744073709551617", "[%u]", 0, 77},
        {__LINE__, "[-1]", "[%u]", 0, 77},        {__LINE__, "[-0]", "[%u]", 1, 0},
        {__LINE__, "[]", "[%u]", 0, 77},          {__LINE__, "[", "[%u]", -1, 77},
        {__LINE__, "", "[%u]", -1, 77},           {__LINE__, "{1}", "[%u]", 0, 77},
        {__LINE__, " \t+12", "%u", 1, 12},        {__LINE__, "2147483647", "%d", 1, INT_MAX},
        {__LINE__, "2147483648", "%d", 0, 77},    {__LINE__, "-2147483648", "%d", 1, 1U << 31U},
        {__LINE__, "-2147483649", "%d", 0, 77},   {__LINE__, "0xfFfFfFfF", "%x", 1, UINT_MAX},
        {__LINE__, "100000000", "%x", 0, 77},     {__LINE__, "0x", "%x", 0, 77},
        {__LINE__, "50 %", "%u %%", 1, 50},       {__LINE__, "5", "%u%n", -1, 5}, // no second argument: NULL
        {__LINE__, "5", "%u %lu", -1, 77},        {__LINE__, "5", "%2u", -1, 77},
        {__LINE__, "5", "%u%", -1, 77},           {__LINE__, nullptr, "%u", -1, 77},
        {__LINE__, "5", nullptr, -1, 77},
    };
    for (const auto &stCase : astNumber) {
        unsigned uiValue = 77;
        EXPECT_EQ(sscanf_s(stCase.pcText, stCase.pcFormat, &uiValue, nullptr), stCase.iResult) << stCase.iLine;
        EXPECT_EQ(uiValue, stCase.uiValue) << stCase.iLine;
    }
    int iRead = 0;
    unsigned uiValue = 0;
    EXPECT_EQ(sscanf_s(" 12x", "%u%n", &uiValue, &iRead), 1);
    EXPECT_EQ(iRead, 3);
}

// ---- Pool ----

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
    void *pOther = ZR_HandleInit("one");
    EXPECT_STREQ(InfoOf(pOne).pcName, "one");
    void *pBlock = ZR_MemAlloc(1, pOne);
    ZR_MemFree(nullptr, pOne);
    EXPECT_EQ(InfoOf(pOne).ulBlocksInUse, 1U);
    EXPECT_EQ(InfoOf(pOther).ulBlocksInUse, 0U);
    ZR_MemFree(pBlock, pOne);

    ZR_MemInfo stInfo{};
    EXPECT_EQ(ZR_HandleInit(nullptr), nullptr);
    EXPECT_EQ(ZR_MemAlloc(1, nullptr), nullptr);
    EXPECT_EQ(ZR_MemInfoGet(nullptr, &stInfo), uint32_t{EINVAL});
    EXPECT_EQ(ZR_MemInfoGet(pOne, nullptr), uint32_t{EINVAL});
}

TEST(Pool, SizesAndCounters)
{
    constexpr std::pair<uint32_t, uint64_t> g_astCase[] = {{0, 16},        {1, 16},
                                                           {16, 16},       {17, 32},
                                                           {511, 512},     {512, 512},
                                                           {513, 1024},    {1025, 2048},
                                                           {8192, 8192},   {8193, 8208},
                                                           {65472, 65472}, {65473, 65488},
                                                           {65536, 65536}, {UINT32_MAX, 1ULL << 32U}};
    for (const auto &[uiSize, ulHandedOut] : g_astCase) {
        SCOPED_TRACE(uiSize);
        void *pPool = ZR_HandleInit("sizes");
        std::array<char *, 2> apcBlock{};
        for (char *&pcBlock : apcBlock) {
            pcBlock = static_cast<char *>(ZR_MemAlloc(uiSize, pPool));
            ASSERT_NE(pcBlock, nullptr);
            EXPECT_EQ(reinterpret_cast<uintptr_t>(pcBlock) % 16, 0U);
            if (uiSize > 0)
                pcBlock[0] = pcBlock[uiSize - 1] = 'x';
        }
        EXPECT_EQ(InfoOf(pPool).ulBlocksInUse, 2U);
        EXPECT_EQ(InfoOf(pPool).ulBytesInUse, 2 * ulHandedOut);
        EXPECT_GE(InfoOf(pPool).ulBytesHeld, 2 * ulHandedOut);
        for (char *pcBlock : apcBlock)
            ZR_MemFree(pcBlock, pPool);
        ZR_MemFree(ZR_MemAlloc(0, pPool), pPool);
        EXPECT_EQ(InfoOf(pPool).ulBlocksInUse + InfoOf(pPool).ulBytesInUse, 0U);
        EXPECT_EQ(InfoOf(pPool).ulBytesPeak, 2 * ulHandedOut);
        EXPECT_LE(InfoOf(pPool).ulBytesHeld, 65536U);
    }
}

// A block that fills itself with one letter and can tell later whether anybody else wrote to it.
struct Stamped {
    uint32_t uiSize;
    char acFill[1]; // uiSize bytes in all
};

Stamped *StampedTake(void *pPool, uint32_t uiSize)
{
    auto *pBlock = static_cast<Stamped *>(ZR_MemAlloc(uiSize, pPool));
    memset(static_cast<void *>(pBlock), static_cast<int>(uiSize % 251), uiSize);
    pBlock->uiSize = uiSize;
    return pBlock;
}

bool StampedGive(void *pPool, Stamped *pBlock)
{
    const auto *pcByte = reinterpret_cast<const unsigned char *>(pBlock);
    bool bIntact = true;
    for (uint32_t uiAt = sizeof(uint32_t); uiAt < pBlock->uiSize; ++uiAt)
        bIntact = bIntact && pcByte[uiAt] == pBlock->uiSize % 251;
    ZR_MemFree(pBlock, pPool);
    return bIntact;
}

TEST(Pool, KeepsMemoryForReuseWithinBounds)
{
    void *pPool = ZR_HandleInit("reuse");
    std::vector<void *> apBlock;
    const auto Document = [&](uint32_t uiSize, size_t ulBlocks) {
        for (apBlock.resize(ulBlocks); void *&pBlock : apBlock)
            pBlock = ZR_MemAlloc(uiSize, pPool);
        for (size_t i = 0; i < ulBlocks; i += 2)
            ZR_MemFree(apBlock[i], pPool);
        for (size_t i = 0; i < ulBlocks; i += 2) // freed blocks serve before new memory
            apBlock[i] = ZR_MemAlloc(uiSize, pPool);
        const uint64_t ulHeld = InfoOf(pPool).ulBytesHeld;
        for (void *pBlock : apBlock)
            ZR_MemFree(pBlock, pPool);
        return ulHeld;
    };
    const uint64_t ulHeld = Document(120, 20000);
    EXPECT_LE(ulHeld, 20000 * 128 + 2 * 65536U);
    for (int i = 0; i < 20; ++i)
        ASSERT_EQ(Document(120, 20000), ulHeld) << i;
    for (int i = 0; i < 20; ++i) // other sizes find the same memory
        ASSERT_LE(Document(i % 2 == 0 ? 40 : 3000, 400), ulHeld) << i;
    EXPECT_GE(Document(120, 200000), 200000 * 128U);
    EXPECT_LE(InfoOf(pPool).ulBytesHeld, uint64_t{32} << 20U);
    EXPECT_EQ(InfoOf(pPool).ulBytesInUse, 0U);
}

TEST(Pool, ThreadsHandBlocksToEachOther)
{
    void *pPool = ZR_HandleInit("threads");
    std::array<std::atomic<Stamped *>, 64> apSlot{};
    std::atomic<uint32_t> uiBroken{0};
    const auto Swap = [&](std::atomic<Stamped *> &pSlot, Stamped *pNew) {
        if (Stamped *pOld = pSlot.exchange(pNew); pOld != nullptr && !StampedGive(pPool, pOld))
            ++uiBroken;
    };
    std::latch stStart(4);
    const auto Hammer = [&](uint32_t uiSeed) {
        std::mt19937 stRandom(uiSeed);
        stStart.arrive_and_wait();
        for (int i = 0; i < 100000; ++i)
            Swap(apSlot[stRandom() % apSlot.size()],
                 StampedTake(pPool, 8 + static_cast<uint32_t>(stRandom() % (i % 500 == 0 ? 100000 : 200))));
    };
    std::vector<std::thread> stThreads;
    for (uint32_t uiSeed = 1; uiSeed <= 4; ++uiSeed)
        stThreads.emplace_back(Hammer, uiSeed);
    for (std::thread &stThread : stThreads)
        stThread.join();
    for (auto &pSlot : apSlot)
        Swap(pSlot, nullptr);
    EXPECT_EQ(uiBroken, 0U);
    EXPECT_EQ(InfoOf(pPool).ulBlocksInUse, 0U);
    EXPECT_EQ(InfoOf(pPool).ulBytesInUse, 0U);
}

// ---- Log ----

ZR_LogModule g_stModule = {"YAML", 0x1900};

#define LOG(uiLevel, ...) ZR_LogWrite(&g_stModule, (uiLevel), 0x1900000B, "file.cpp", 7, "Fn", __VA_ARGS__)

// Puts a sink in place that takes every level, for as long as it lives.
class SinkGuard {
public:
    SinkGuard(ZR_LogSink pfnSink, void *pContext)
    {
        EXPECT_EQ(ZR_LogSinkSet(pfnSink, pContext), 0U);
        ZR_LogLevelSet(ZR_LOG_NOTE);
    }
    ~SinkGuard()
    {
        EXPECT_EQ(ZR_LogSinkSet(nullptr, nullptr), 0U);
        ZR_LogLevelSet(ZR_LOG_WARNING);
    }
    SinkGuard(const SinkGuard &) = delete;
    SinkGuard &operator=(const SinkGuard &) = delete;
};

// Keeps the last record without any memory from the heap.
struct Recorder {
    static void Write(const ZR_LogRecord *pstRecord, void *pContext)
    {
        auto *pstSelf = static_cast<Recorder *>(pContext);
        ++pstSelf->uiRecords;
        pstSelf->stLast = *pstRecord;
        (void)strncpy_s(acText, sizeof acText, pstRecord->pcText, sizeof acText);
        errno = EBADF;
    }

    static char acText[4 * 65535 + 8];
    uint32_t uiRecords = 0;
    ZR_LogRecord stLast{};
    SinkGuard stGuard{Write, this};
};
char Recorder::acText[];

TEST(Log, RecordReachesTheSink)
{
    Recorder stSink;
    const ZR_LogRecord &stLast = stSink.stLast;
    const auto Names = [&stLast] {
        return std::string(stLast.pcModule) + ' ' + stLast.pcFile + ' ' + stLast.pcFunction + ' ' + Recorder::acText;
    };
    errno = ENOENT;
    LOG(ZR_LOG_ERROR, "%s=%u (%zu, %X, %d)", "Key", 5U, size_t{6}, 0xABU, -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(Names(), "YAML file.cpp Fn Key=5 (6, AB, -1)");
    EXPECT_EQ(stLast.uiModuleId, 0x1900U);
    EXPECT_EQ(stLast.uiLevel, 2U);
    EXPECT_EQ(stLast.uiCode, 0x1900000BU);
    EXPECT_EQ(stLast.uiLine, 7U);
    ZR_LogWrite(nullptr, 9, 0, nullptr, 0, nullptr, nullptr);
    EXPECT_EQ(Names(), "? ? ? ?");
}

TEST(Log, TextIsOneHarmlessLine)
{
    // control characters, line breaks, and what is no UTF-8: stray, cut, overlong, surrogate, too large
    constexpr std::pair<const char *, const char *> g_astCase[] = {
        {"", ""},
        {R"(a\nb ~)", R"(a\nb ~)"},
        {"a\nb\tc\r\n", R"(a\nb\tc\r\n)"},
        {"\x1b[2J\x01\x7f\x1f", R"(\x1b[2J\x01\x7f\x1f)"},
        {"\u0080\u009b\u00a0", "\\u0080\\u009b\u00a0"},
        {"\u2027\u2028\u2029\u202a", "\u2027\\u2028\\u2029\u202a"},
        {"\u00e9\u20ac\U0001f600\U0010ffff", "\u00e9\u20ac\U0001f600\U0010ffff"},
        {"\x80\xff\xc3", R"(\x80\xff\xc3)"},
        {"\xc3(\xe2\x82", R"(\xc3(\xe2\x82)"},
        {"\xc0\x8a\xe0\x80\x8a", R"(\xc0\x8a\xe0\x80\x8a)"},
        {"\xed\xa0\x80\xf4\x90\x80\x80", R"(\xed\xa0\x80\xf4\x90\x80\x80)"},
        {"\xf8\x88\x80\x80\x80", R"(\xf8\x88\x80\x80\x80)"}};
    const Recorder stSink;
    for (const auto &[pcText, pcExpected] : g_astCase) {
        LOG(ZR_LOG_ERROR, "%s", pcText);
        EXPECT_STREQ(Recorder::acText, pcExpected);
    }
    LOG(ZR_LOG_ERROR, "unformattable %ls", L"\u20AC");
    EXPECT_STREQ(Recorder::acText, "unformattable %ls");
}

TEST(Log, LevelBelowTheLeastIsDropped)
{
    Recorder stSink;
    for (uint32_t uiLeast = ZR_LOG_NOTE; uiLeast <= ZR_LOG_NOTHING; ++uiLeast) {
        ZR_LogLevelSet(uiLeast);
        EXPECT_EQ(ZR_LogLevelGet(), uiLeast);
        for (uint32_t uiLevel = ZR_LOG_NOTE; uiLevel <= ZR_LOG_ERROR; ++uiLevel) {
            stSink.uiRecords = 0;
            LOG(uiLevel, "any");
            EXPECT_EQ(stSink.uiRecords, uiLevel >= uiLeast ? 1U : 0U) << uiLeast << ' ' << uiLevel;
        }
    }
}

TEST(Log, SinkInsideSinkAndThrowingSink)
{
    int iCalls = 0;
    const SinkGuard stGuard(
        [](const ZR_LogRecord *, void *pContext) {
            ++*static_cast<int *>(pContext);
            LOG(ZR_LOG_ERROR, "dropped");
            EXPECT_EQ(ZR_LogSinkSet(nullptr, nullptr), uint32_t{EDEADLK});
            throw std::runtime_error("ends in the log");
        },
        &iCalls);
    LOG(ZR_LOG_ERROR, "one");
    LOG(ZR_LOG_ERROR, "two");
    EXPECT_EQ(iCalls, 2);
}

TEST(Log, ReplacedSinkIsNeverCalledAgain)
{
    const ZR_LogSink pfnCount = [](const ZR_LogRecord *, void *pContext) { ++*static_cast<uint64_t *>(pContext); };
    auto pulCount = std::make_unique<uint64_t>(0);
    const SinkGuard stGuard(pfnCount, pulCount.get());
    std::atomic<bool> bStop{false};
    const auto Write = [&bStop] {
        do
            LOG(ZR_LOG_NOTE, "tick %d", 1);
        while (!bStop);
    };
    std::thread stOne(Write);
    std::thread stOther(Write);
    uint64_t ulTotal = 0;
    for (int i = 0; i < 500 || ulTotal < 1000; ++i) {
        auto pulNext = std::make_unique<uint64_t>(0);
        EXPECT_EQ(ZR_LogSinkSet(pfnCount, pulNext.get()), 0U);
        ulTotal += *pulCount; // read and released while the writers go on
        pulCount = std::move(pulNext);
    }
    bStop = true;
    stOne.join();
    stOther.join();
}

TEST(LogDeathTest, DefaultSinkAndEnvironment)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    struct {
        int iLine;
        const char *pcEnvironment;
        int iLevel;
        const char *pcOutput; // on standard error, without the time in front
    } const astCase[] = {
        {__LINE__, "", 1,
         "warning] YAML 0x1900000B file.cpp:7 Fn: a\\\\nb\n[^\n]*\\[zr\\] \\[error\\] YAML [^\n]* Fn: c\n$"},
        {__LINE__, "zr=trace", 0, "debug] YAML [^\n]*Fn: note\n[^\n]*a\\\\nb\n[^\n]*c\n$"},
        {__LINE__, "debug", 0, "debug] YAML [^\n]*Fn: note\n"},
        {__LINE__, "debug,zr=err", 2, "^[^\n]*error] YAML [^\n]*Fn: c\n$"},
        {__LINE__, "off,other=debug", 3, "^$"},
    };
    for (const auto &stCase : astCase) {
        const auto Write = [&stCase] {
            setenv("SPDLOG_LEVEL", stCase.pcEnvironment, 1);
            const uint32_t uiCode = ZR_BaseInit() + ZR_BaseInit();
            LOG(ZR_LOG_NOTE, "note");
            LOG(ZR_LOG_WARNING, "a\nb");
            LOG(ZR_LOG_ERROR, "c");
            return static_cast<int>(uiCode + ZR_LogLevelGet());
        };
        EXPECT_EXIT(std::exit(Write()), testing::ExitedWithCode(stCase.iLevel), stCase.pcOutput) << stCase.iLine;
    }
}

// ---- Short of memory ----

bool g_bNewFails = false;

} // namespace

#if !HAS_FEATURE(thread_sanitizer) // clang's insists on an operator new of its own

// All that the base library itself takes from the heap comes from these two.
void *operator new(size_t ulSize, const std::nothrow_t &) noexcept
{
    return g_bNewFails ? nullptr : operator new(ulSize);
}
void *operator new[](size_t ulSize, const std::nothrow_t &) noexcept
{
    return g_bNewFails ? nullptr : operator new[](ulSize);
}

TEST(ShortOfMemory, HandleIsNone)
{
    g_bNewFails = true;
    void *pPool = ZR_HandleInit("short");
    g_bNewFails = false;
    EXPECT_EQ(pPool, nullptr);
}

TEST(ShortOfMemory, LongTextIsWholeOrMarked)
{
    struct {
        int iLine;
        bool bShort; // whether memory is
        size_t ulLength;
        char cFill;
        size_t ulWritten;
        const char *pcEnd;
    } const astCase[] = {
        {__LINE__, false, 511, 'a', 511, "aa"},
        {__LINE__, false, 512, 'a', 512, "aa"},
        {__LINE__, false, 65535, 'a', 65535, "aa"},
        {__LINE__, false, 65536, 'a', 65538, "a..."},
        {__LINE__, false, 65535, '\x01', 4 * 65535, "\\x01"},
        {__LINE__, true, 511, 'a', 511, "aa"},
        {__LINE__, true, 512, 'a', 514, "a..."},
        {__LINE__, true, 511, '\x01', 1023, "\\x01..."},
    };
    const Recorder stSink;
    for (const auto &stCase : astCase) {
        const std::string sLong(stCase.ulLength, stCase.cFill);
        g_bNewFails = stCase.bShort;
        LOG(ZR_LOG_ERROR, "%s", sLong.c_str());
        g_bNewFails = false;
        const std::string_view svText = Recorder::acText;
        EXPECT_EQ(svText.size(), stCase.ulWritten) << stCase.iLine;
        EXPECT_TRUE(svText.ends_with(stCase.pcEnd)) << stCase.iLine << ' ' << svText.substr(svText.size() - 8);
    }
}

#endif
