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
#include <vector>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "zr_base.h"
#include "zr_safe.h"

#ifdef __has_feature
#define HAS_FEATURE(feature) __has_feature(feature)
#else
#define HAS_FEATURE(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || HAS_FEATURE(address_sanitizer) || \
    HAS_FEATURE(thread_sanitizer)
#define SANITIZED 1
#endif

namespace {

// ---- Bounds-checked calls. Every destination lies in a buffer of '#', so that a byte too many shows. ----

struct CopyCase {
    int iLine;
    size_t ulDestMax;
    const char *pcSource;
    size_t ulCount;
    int iResult;
    std::string sBuffer; // its first eight bytes afterwards
};

const std::string g_sNul(1, '\0');

TEST(Safe, Memset)
{
    const CopyCase astCase[] = {
        {__LINE__, 5, "", 0, 0, "########"},
        {__LINE__, 5, "", 4, 0, "zzzz####"},
        {__LINE__, 5, "", 5, 0, "zzzzz###"},
        {__LINE__, 5, "", 6, ERANGE, "zzzzz###"},
        {__LINE__, 5, "", SIZE_MAX, ERANGE, "zzzzz###"},
        {__LINE__, 0, "", 1, ERANGE, "########"},
        {__LINE__, SIZE_MAX / 2 + 1, "", 1, ERANGE, "########"},
    };
    for (const CopyCase &stCase : astCase) {
        std::string sBuffer(8, '#');
        EXPECT_EQ(memset_s(sBuffer.data(), stCase.ulDestMax, 'z', stCase.ulCount), stCase.iResult) << stCase.iLine;
        EXPECT_EQ(sBuffer, stCase.sBuffer) << stCase.iLine;
    }
    EXPECT_EQ(memset_s(nullptr, 5, 0, 0), EINVAL);
}

TEST(Safe, Strncpy)
{
    const CopyCase astCase[] = {
        {__LINE__, 5, "abc", 3, 0, "abc" + g_sNul + "####"},
        {__LINE__, 5, "abcd", 9, 0, "abcd" + g_sNul + "###"},
        {__LINE__, 5, "abcde", 4, 0, "abcd" + g_sNul + "###"},
        {__LINE__, 5, "abcde", 5, ERANGE, g_sNul + "#######"},
        {__LINE__, 5, "abcde", 9, ERANGE, g_sNul + "#######"},
        {__LINE__, 5, "abc", 0, 0, g_sNul + "#######"},
        {__LINE__, 1, "", 9, 0, g_sNul + "#######"},
        {__LINE__, 1, "a", 9, ERANGE, g_sNul + "#######"},
        {__LINE__, 5, nullptr, 3, EINVAL, g_sNul + "#######"},
        {__LINE__, 5, "abc", SIZE_MAX, ERANGE, g_sNul + "#######"},
        {__LINE__, 0, "abc", 3, EINVAL, "########"},
        {__LINE__, SIZE_MAX, "abc", 3, ERANGE, "########"},
    };
    for (const CopyCase &stCase : astCase) {
        std::string sBuffer(8, '#');
        const int iResult = strncpy_s(sBuffer.data(), stCase.ulDestMax, stCase.pcSource, stCase.ulCount);
        EXPECT_EQ(iResult, stCase.iResult) << stCase.iLine;
        EXPECT_EQ(sBuffer, stCase.sBuffer) << stCase.iLine;
    }
    EXPECT_EQ(strncpy_s(nullptr, 5, "abc", 3), EINVAL);
}

TEST(Safe, StrncpyOverlap)
{
    struct Case {
        int iLine;
        size_t ulDest, ulSource, ulCount;
        int iResult;
    };
    const Case astCase[] = {
        // "abcdef" and its NUL
        {__LINE__, 0, 0, 6, EINVAL}, {__LINE__, 1, 0, 6, EINVAL}, {__LINE__, 0, 3, 6, EINVAL},
        {__LINE__, 0, 4, 6, 0},      {__LINE__, 3, 0, 3, 0},      {__LINE__, 2, 0, 3, EINVAL},
        {__LINE__, 6, 5, 1, 0},      {__LINE__, 6, 5, 2, EINVAL},
    };
    for (const Case &stCase : astCase) {
        char acText[8] = "abcdef";
        const size_t ulRoom = sizeof acText - stCase.ulDest;
        const std::string sExpected(&acText[stCase.ulSource], strnlen(&acText[stCase.ulSource], stCase.ulCount));
        EXPECT_EQ(strncpy_s(&acText[stCase.ulDest], ulRoom, &acText[stCase.ulSource], stCase.ulCount), stCase.iResult)
            << stCase.iLine;
        EXPECT_EQ(&acText[stCase.ulDest], stCase.iResult == 0 ? sExpected : "") << stCase.iLine;
    }
}

// Without the attribute that asks for literal formats.
int (*const g_pfnPrint)(char *, size_t, size_t, const char *, ...) = snprintf_s;

TEST(Safe, Print)
{
    struct Case {
        int iLine;
        size_t ulDestMax, ulCount;
        const char *pcFormat, *pcArgument;
        int iResult;
        std::string sBuffer;
    };
    const Case astCase[] = {
        {__LINE__, 6, 5, "%s", "abcd", 4, "abcd" + g_sNul + "###"},
        {__LINE__, 6, 5, "%s", "abcde", 5, "abcde" + g_sNul + "##"},
        {__LINE__, 6, 5, "%s", "abcdef", -1, "abcde" + g_sNul + "##"},
        {__LINE__, 6, 9, "%s", "abcdef", -1, "abcde" + g_sNul + "##"},
        {__LINE__, 6, 3, "%s", "abc", 3, "abc" + g_sNul + "####"},
        {__LINE__, 6, 3, "%s", "abcd", -1, "abc" + g_sNul + "####"},
        {__LINE__, 6, 0, "%s", "", 0, g_sNul + "#######"},
        {__LINE__, 1, 9, "%s", "a", -1, g_sNul + "#######"},
        {__LINE__, 0, 9, "%s", "a", -1, "########"},
        {__LINE__, SIZE_MAX, 9, "%s", "a", -1, "########"},
        {__LINE__, 6, SIZE_MAX, "%s", "a", -1, g_sNul + "#######"},
        {__LINE__, 6, 5, nullptr, "a", -1, g_sNul + "#######"},
        {__LINE__, 6, 5, "%%n", "a", 2, "%n" + g_sNul + "#####"},
        {__LINE__, 6, 5, "a%n", "", -1, g_sNul + "#######"},
        {__LINE__, 6, 5, "%%%-05hhn", "", -1, g_sNul + "#######"},
        {__LINE__, 6, 5, "%1$n", "", -1, g_sNul + "#######"},
        {__LINE__, 6, 5, "ab%ls", reinterpret_cast<const char *>(L"\u20AC"), -1, g_sNul + "b" + g_sNul + "#####"},
    };
    for (const Case &stCase : astCase) {
        std::string sBuffer(8, '#');
        const int iResult =
            g_pfnPrint(sBuffer.data(), stCase.ulDestMax, stCase.ulCount, stCase.pcFormat, stCase.pcArgument);
        EXPECT_EQ(iResult, stCase.iResult) << stCase.iLine;
        EXPECT_EQ(sBuffer, stCase.sBuffer) << stCase.iLine;
    }
    EXPECT_EQ(g_pfnPrint(nullptr, 6, 5, "a"), -1);
}

TEST(Safe, ScanNumber)
{
    struct Case {
        int iLine;
        const char *pcText, *pcFormat;
        int iResult;
        int64_t lValue; // 77: not stored
    };
    const Case astCase[] = {
        {__LINE__, "[0]", "[%u]", 1, 0},
        {__LINE__, "[007", "[%u]", 1, 7},
        {__LINE__, "[4294967295", "[%u]", 1, UINT_MAX},
        {__LINE__, "[4294967296", "[%u]", 0, 77},
        {__LINE__, "[00018446744073709551617", "[%u]", 0, 77},
        {__LINE__, "[-1]", "[%u]", 0, 77},
        {__LINE__, "[-0]", "[%u]", 1, 0},
        {__LINE__, "[]", "[%u]", 0, 77},
        {__LINE__, "[", "[%u]", -1, 77},
        {__LINE__, "", "[%u]", -1, 77},
        {__LINE__, "{1}", "[%u]", 0, 77},
        {__LINE__, " \t+12", "%u", 1, 12},
        {__LINE__, "2147483647", "%d", 1, INT_MAX},
        {__LINE__, "2147483648", "%d", 0, 77},
        {__LINE__, "-2147483648", "%d", 1, INT_MIN},
        {__LINE__, "-2147483649", "%d", 0, 77},
        {__LINE__, "0xfFfFfFfF", "%x", 1, UINT_MAX},
        {__LINE__, "100000000", "%x", 0, 77},
        {__LINE__, "0x", "%x", 0, 77},
        {__LINE__, "50 %", "%u %%", 1, 50},
        {__LINE__, "5", "%u%n", -1, 5}, // no second argument: NULL
        {__LINE__, "5", "%u %lu", -1, 77},
        {__LINE__, "5", "%2u", -1, 77},
        {__LINE__, "5", "%u%", -1, 77},
        {__LINE__, nullptr, "%u", -1, 77},
        {__LINE__, "5", nullptr, -1, 77},
    };
    for (const Case &stCase : astCase) {
        unsigned uiValue = 77;
        EXPECT_EQ(sscanf_s(stCase.pcText, stCase.pcFormat, &uiValue, nullptr), stCase.iResult) << stCase.iLine;
        EXPECT_EQ(uiValue, static_cast<unsigned>(stCase.lValue)) << stCase.iLine;
    }
}

TEST(Safe, ScanText)
{
    struct Case {
        int iLine;
        const char *pcText;
        unsigned uiSize;
        int iResult;
        const char *pcWord;
        char cNext;
        int iRead;
    };
    const Case astCase[] = {
        {__LINE__, "abcd e", 5, 2, "abcd", ' ', 5}, {__LINE__, "\t abc\n", 5, 2, "abc", '\n', 6},
        {__LINE__, "abcde f", 5, 0, "", '#', -7},   {__LINE__, "abcd", 5, 1, "abcd", '#', -7},
        {__LINE__, "abcd", 0, 0, "####", '#', -7},  {__LINE__, " ", 5, -1, "####", '#', -7},
    };
    for (const Case &stCase : astCase) {
        char acWord[8] = "####";
        char cNext = '#';
        int iRead = -7;
        EXPECT_EQ(sscanf_s(stCase.pcText, "%s%c%n", acWord, stCase.uiSize, &cNext, 1U, &iRead), stCase.iResult)
            << stCase.iLine;
        EXPECT_STREQ(acWord, stCase.pcWord) << stCase.iLine;
        EXPECT_EQ(cNext, stCase.cNext) << stCase.iLine;
        EXPECT_EQ(iRead, stCase.iRead) << stCase.iLine;
    }
}

// ---- Pool ----

ZR_MemInfo InfoOf(void *pPool)
{
    ZR_MemInfo stInfo{};
    EXPECT_EQ(ZR_MemInfoGet(pPool, &stInfo), 0U);
    return stInfo;
}

TEST(Pool, Handle)
{
    char acName[] = "one";
    void *pOne = ZR_HandleInit(acName);
    acName[0] = '?';
    void *pOther = ZR_HandleInit("one");
    ASSERT_TRUE(pOne != nullptr && pOther != nullptr);
    EXPECT_NE(pOne, pOther);
    EXPECT_STREQ(InfoOf(pOne).pcName, "one");

    void *pBlock = ZR_MemAlloc(1, pOne);
    EXPECT_EQ(InfoOf(pOne).ulBlocksInUse, 1U);
    EXPECT_EQ(InfoOf(pOther).ulBlocksInUse, 0U);
    ZR_MemFree(nullptr, pOne);
    EXPECT_EQ(InfoOf(pOne).ulBlocksInUse, 1U);
    ZR_MemFree(pBlock, pOne);

    ZR_MemInfo stInfo{};
    EXPECT_EQ(ZR_HandleInit(nullptr), nullptr);
    EXPECT_EQ(ZR_MemAlloc(1, nullptr), nullptr);
    EXPECT_EQ(ZR_MemInfoGet(nullptr, &stInfo), uint32_t{EINVAL});
    EXPECT_EQ(ZR_MemInfoGet(pOne, nullptr), uint32_t{EINVAL});
}

TEST(Pool, SizesAndCounters)
{
    struct Case {
        int iLine;
        uint32_t uiSize;
        uint64_t ulHandedOut;
    };
    const Case astCase[] = {
        {__LINE__, 0, 16},
        {__LINE__, 1, 16},
        {__LINE__, 16, 16},
        {__LINE__, 17, 32},
        {__LINE__, 120, 128},
        {__LINE__, 511, 512},
        {__LINE__, 512, 512},
        {__LINE__, 513, 1024},
        {__LINE__, 1025, 2048},
        {__LINE__, 8192, 8192},
        {__LINE__, 8193, 8208},
        {__LINE__, 65472, 65472},
        {__LINE__, 65473, 65488},
        {__LINE__, 65536, 65536},
        {__LINE__, 5U << 20U, 5U << 20U},
        {__LINE__, UINT32_MAX, uint64_t{1} << 32U},
    };
    for (const Case &stCase : astCase) {
        void *pPool = ZR_HandleInit("sizes");
        std::array<char *, 2> apcBlock{};
        for (char *&pcBlock : apcBlock) {
            pcBlock = static_cast<char *>(ZR_MemAlloc(stCase.uiSize, pPool));
            ASSERT_NE(pcBlock, nullptr) << stCase.iLine;
            EXPECT_EQ(reinterpret_cast<uintptr_t>(pcBlock) % 16, 0U) << stCase.iLine;
            if (stCase.uiSize > 0)
                pcBlock[0] = pcBlock[stCase.uiSize - 1] = 'x';
        }
        EXPECT_EQ(InfoOf(pPool).ulBlocksInUse, 2U) << stCase.iLine;
        EXPECT_EQ(InfoOf(pPool).ulBytesInUse, 2 * stCase.ulHandedOut) << stCase.iLine;
        EXPECT_GE(InfoOf(pPool).ulBytesHeld, 2 * stCase.ulHandedOut) << stCase.iLine;
        for (char *pcBlock : apcBlock)
            ZR_MemFree(pcBlock, pPool);
        EXPECT_EQ(InfoOf(pPool).ulBlocksInUse, 0U) << stCase.iLine;
        EXPECT_EQ(InfoOf(pPool).ulBytesInUse, 0U) << stCase.iLine;
        ZR_MemFree(ZR_MemAlloc(0, pPool), pPool);
        EXPECT_EQ(InfoOf(pPool).ulBytesPeak, 2 * stCase.ulHandedOut) << stCase.iLine;
        EXPECT_LE(InfoOf(pPool).ulBytesHeld, 65536U) << stCase.iLine;
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
    if (pBlock != nullptr) {
        memset(static_cast<void *>(pBlock), static_cast<int>(uiSize % 251), uiSize);
        pBlock->uiSize = uiSize;
    }
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

TEST(Pool, BlocksStayApartInAnyOrder)
{
    void *pPool = ZR_HandleInit("order");
    std::mt19937 stRandom(1);
    std::vector<Stamped *> apBlock;
    for (int iRound = 0; iRound < 20; ++iRound) {
        for (int i = 0; i < 1000; ++i) {
            apBlock.push_back(StampedTake(pPool, 8 + static_cast<uint32_t>(stRandom() % (i % 50 == 0 ? 20000 : 600))));
            ASSERT_NE(apBlock.back(), nullptr);
        }
        std::shuffle(apBlock.begin(), apBlock.end(), stRandom);
        for (size_t ulLeft = iRound == 19 ? 0 : apBlock.size() / 3; apBlock.size() > ulLeft; apBlock.pop_back())
            ASSERT_TRUE(StampedGive(pPool, apBlock.back()));
    }
    EXPECT_EQ(InfoOf(pPool).ulBlocksInUse, 0U);
    EXPECT_EQ(InfoOf(pPool).ulBytesInUse, 0U);
}

TEST(Pool, KeepsMemoryForReuseWithinBounds)
{
    constexpr uint64_t Kept = uint64_t{16} << 20U;
    void *pPool = ZR_HandleInit("reuse");
    std::vector<void *> apBlock;
    const auto Document = [&](uint32_t uiSize, size_t ulBlocks) {
        for (apBlock.resize(ulBlocks); void *&pBlock : apBlock)
            pBlock = ZR_MemAlloc(uiSize, pPool);
        const uint64_t ulHeld = InfoOf(pPool).ulBytesHeld;
        for (void *pBlock : apBlock)
            ZR_MemFree(pBlock, pPool);
        return ulHeld;
    };
    const uint64_t ulHeld = Document(120, 20000);
    EXPECT_LE(ulHeld, 20000 * 128 + 2 * 65536U);
    for (int i = 0; i < 50; ++i)
        ASSERT_EQ(Document(120, 20000), ulHeld) << i;
    for (int i = 0; i < 50; ++i) // other sizes find the same memory
        ASSERT_LE(Document(i % 2 == 0 ? 40 : 3000, 400), ulHeld) << i;
    EXPECT_LE(InfoOf(pPool).ulBytesHeld, ulHeld);

    EXPECT_GE(Document(120, 200000), 200000 * 128U);
    EXPECT_LE(InfoOf(pPool).ulBytesHeld, Kept);
    EXPECT_EQ(InfoOf(pPool).ulBytesInUse, 0U);
}

TEST(Pool, FreedBlocksServeBeforeNewMemory)
{
    void *pPool = ZR_HandleInit("holes");
    std::vector<void *> apBlock(5000);
    const auto EveryOther = [&](auto pfnDo) {
        for (size_t i = 0; i < apBlock.size(); i += 2)
            pfnDo(apBlock[i]);
    };
    for (void *&pBlock : apBlock)
        pBlock = ZR_MemAlloc(120, pPool);
    const uint64_t ulHeld = InfoOf(pPool).ulBytesHeld;
    EveryOther([pPool](void *pBlock) { ZR_MemFree(pBlock, pPool); });
    EveryOther([pPool](void *&pBlock) { pBlock = ZR_MemAlloc(120, pPool); });
    EXPECT_EQ(InfoOf(pPool).ulBytesHeld, ulHeld);
    for (void *pBlock : apBlock)
        ZR_MemFree(pBlock, pPool);
    EXPECT_EQ(InfoOf(pPool).ulBlocksInUse, 0U);
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
    std::latch stStart(2);
    const auto Hammer = [&](uint32_t uiSeed) {
        std::mt19937 stRandom(uiSeed);
        stStart.arrive_and_wait();
        for (int i = 0; i < 100000; ++i)
            Swap(apSlot[stRandom() % apSlot.size()],
                 StampedTake(pPool, 8 + static_cast<uint32_t>(stRandom() % (i % 500 == 0 ? 100000 : 200))));
    };
    std::thread stOne(Hammer, 1);
    std::thread stOther(Hammer, 2);
    stOne.join();
    stOther.join();
    for (auto &pSlot : apSlot)
        Swap(pSlot, nullptr);
    EXPECT_EQ(uiBroken, 0U);
    EXPECT_EQ(InfoOf(pPool).ulBlocksInUse, 0U);
    EXPECT_EQ(InfoOf(pPool).ulBytesInUse, 0U);
}

#ifndef SANITIZED // The sanitizers' own mappings are beyond any limit.
TEST(PoolDeathTest, ShortOfMemory)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto Starve = [] {
        void *pPool = ZR_HandleInit("short");
        const rlimit stLimit{128U << 20U, 128U << 20U};
        if (setrlimit(RLIMIT_AS, &stLimit) != 0 || ZR_MemAlloc(1U << 30U, pPool) != nullptr)
            return 1;
        std::vector<void *> apBlock;
        apBlock.reserve(2U << 20U);
        while (void *pBlock = ZR_MemAlloc(120, pPool))
            apBlock.push_back(pBlock);
        if (apBlock.size() < 1000 || InfoOf(pPool).ulBlocksInUse != apBlock.size())
            return 2;
        for (void *pBlock : apBlock)
            ZR_MemFree(pBlock, pPool);
        return InfoOf(pPool).ulBytesInUse == 0 && ZR_MemAlloc(120, pPool) != nullptr ? 0 : 3;
    };
    EXPECT_EXIT(std::exit(Starve()), testing::ExitedWithCode(0), "");
}
#endif

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

struct Recorder {
    static void Write(const ZR_LogRecord *pstRecord, void *pContext)
    {
        auto *pstSelf = static_cast<Recorder *>(pContext);
        pstSelf->asText.emplace_back(pstRecord->pcText);
        pstSelf->stLast = *pstRecord;
    }

    std::vector<std::string> asText{};
    ZR_LogRecord stLast{};
    SinkGuard stGuard{Write, this};
};

TEST(Log, RecordReachesTheSink)
{
    Recorder stSink;
    errno = ENOENT;
    LOG(ZR_LOG_ERROR, "%s=%u (%zu, %X, %d)", "Key", 5U, size_t{6}, 0xABU, -1);
    EXPECT_EQ(errno, ENOENT);
    ASSERT_EQ(stSink.asText.size(), 1U);
    EXPECT_EQ(stSink.asText[0], "Key=5 (6, AB, -1)");
    EXPECT_STREQ(stSink.stLast.pcModule, "YAML");
    EXPECT_EQ(stSink.stLast.uiModuleId, 0x1900U);
    EXPECT_EQ(stSink.stLast.uiLevel, 2U);
    EXPECT_EQ(stSink.stLast.uiCode, 0x1900000BU);
    EXPECT_STREQ(stSink.stLast.pcFile, "file.cpp");
    EXPECT_EQ(stSink.stLast.uiLine, 7U);
    EXPECT_STREQ(stSink.stLast.pcFunction, "Fn");

    ZR_LogWrite(nullptr, 9, 0, nullptr, 0, nullptr, nullptr);
    EXPECT_EQ(stSink.asText.back(), "?");
    EXPECT_STREQ(stSink.stLast.pcModule, "?");
    EXPECT_STREQ(stSink.stLast.pcFile, "?");
    EXPECT_STREQ(stSink.stLast.pcFunction, "?");
}

TEST(Log, TextIsOneHarmlessLine)
{
    struct Case {
        int iLine;
        const char *pcText, *pcExpected;
    };
    const Case astCase[] = {
        {__LINE__, "", ""},
        {__LINE__, R"(a\nb ~)", R"(a\nb ~)"},
        {__LINE__, "a\nb\tc\r\n", R"(a\nb\tc\r\n)"},
        {__LINE__, "\x1b[2J\x01\x7f\x1f", R"(\x1b[2J\x01\x7f\x1f)"},
        {__LINE__, "\u0080\u009b\u00a0", "\\u0080\\u009b\u00a0"},
        {__LINE__, "\u2027\u2028\u2029\u202a", "\u2027\\u2028\\u2029\u202a"},
        {__LINE__, "\u00e9\u20ac\U0001f600\U0010ffff", "\u00e9\u20ac\U0001f600\U0010ffff"},
        {__LINE__, "\x80\xff\xc3", R"(\x80\xff\xc3)"},                 // stray and cut bytes
        {__LINE__, "\xc3(\xe2\x82", R"(\xc3(\xe2\x82)"},               // cut short by another character
        {__LINE__, "\xc0\x8a\xe0\x80\x8a", R"(\xc0\x8a\xe0\x80\x8a)"}, // a newline, overlong
        {__LINE__, "\xed\xa0\x80\xf4\x90\x80\x80", R"(\xed\xa0\x80\xf4\x90\x80\x80)"},
        {__LINE__, "\xf8\x88\x80\x80\x80", R"(\xf8\x88\x80\x80\x80)"},
    };
    Recorder stSink;
    for (const Case &stCase : astCase) {
        LOG(ZR_LOG_ERROR, "%s", stCase.pcText);
        EXPECT_EQ(stSink.asText.back(), stCase.pcExpected) << stCase.iLine;
    }
    LOG(ZR_LOG_ERROR, "unformattable %ls", L"\u20AC");
    EXPECT_EQ(stSink.asText.back(), "unformattable %ls");
}

struct LongCase {
    int iLine;
    size_t ulLength;
    char cFill;
    size_t ulWritten;
    const char *pcEnd;
};

// Keeps the length and the end of a text, without any memory from the heap.
struct Measure {
    static void Write(const ZR_LogRecord *pstRecord, void *pContext)
    {
        auto *pstSelf = static_cast<Measure *>(pContext);
        pstSelf->ulLength = strlen(pstRecord->pcText);
        memcpy(pstSelf->acEnd, pstRecord->pcText + pstSelf->ulLength - 8, 8);
    }
    void Check(const LongCase &stCase) const
    {
        EXPECT_EQ(ulLength, stCase.ulWritten) << stCase.iLine;
        EXPECT_TRUE(std::string_view(acEnd).ends_with(stCase.pcEnd)) << stCase.iLine << ' ' << acEnd;
    }

    size_t ulLength = 0;
    char acEnd[9] = {};
    SinkGuard stGuard{Write, this};
};

TEST(Log, LongTextIsWholeOrMarked)
{
    const LongCase astCase[] = {
        {__LINE__, 511, 'a', 511, "aa"},       {__LINE__, 512, 'a', 512, "aa"},
        {__LINE__, 5000, 'a', 5000, "aa"},     {__LINE__, 65535, 'a', 65535, "aa"},
        {__LINE__, 65536, 'a', 65538, "a..."}, {__LINE__, 65535, '\x01', 4 * 65535, "\\x01"},
    };
    Measure stSink;
    for (const LongCase &stCase : astCase) {
        LOG(ZR_LOG_ERROR, "%s", std::string(stCase.ulLength, stCase.cFill).c_str());
        stSink.Check(stCase);
    }
}

TEST(Log, LevelBelowTheLeastIsDropped)
{
    Recorder stSink;
    for (uint32_t uiLeast = ZR_LOG_NOTE; uiLeast <= ZR_LOG_NOTHING; ++uiLeast) {
        ZR_LogLevelSet(uiLeast);
        EXPECT_EQ(ZR_LogLevelGet(), uiLeast);
        for (uint32_t uiLevel = ZR_LOG_NOTE; uiLevel <= ZR_LOG_ERROR; ++uiLevel) {
            stSink.asText.clear();
            LOG(uiLevel, "any");
            EXPECT_EQ(stSink.asText.size(), uiLevel >= uiLeast ? 1U : 0U) << uiLeast << ' ' << uiLevel;
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
    struct Case {
        int iLine;
        const char *pcEnvironment;
        int iLevel;
        const char *pcOutput; // on standard error, without the time in front
    };
    const Case astCase[] = {
        {__LINE__, "", 1,
         "warning] YAML 0x1900000B file.cpp:7 Fn: a\\\\nb\n[^\n]*\\[zr\\] \\[error\\] YAML [^\n]* Fn: c\n$"},
        {__LINE__, "zr=trace", 0, "debug] YAML [^\n]*Fn: note\n[^\n]*a\\\\nb\n[^\n]*c\n$"},
        {__LINE__, "debug", 0, "debug] YAML [^\n]*Fn: note\n"},
        {__LINE__, "debug,zr=err", 2, "^[^\n]*error] YAML [^\n]*Fn: c\n$"},
        {__LINE__, "off,other=debug", 3, "^$"},
    };
    for (const Case &stCase : astCase) {
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

} // namespace

// ---- Short of memory. The program's own operator new fails when told to. ----

#if !HAS_FEATURE(thread_sanitizer) // clang's insists on an operator new of its own

namespace {

std::atomic<bool> g_bNewFails{false};
std::atomic<uint32_t> g_uiNewCalls{0};

void *NewBlock(size_t ulSize) noexcept
{
    ++g_uiNewCalls;
    return g_bNewFails ? nullptr : std::malloc(ulSize);
}

} // namespace

void *operator new(size_t ulSize)
{
    void *pBlock = NewBlock(ulSize);
    return pBlock != nullptr ? pBlock : throw std::bad_alloc();
}
void *operator new(size_t ulSize, const std::nothrow_t &) noexcept
{
    return NewBlock(ulSize);
}
void *operator new[](size_t ulSize)
{
    return operator new(ulSize);
}
void *operator new[](size_t ulSize, const std::nothrow_t &) noexcept
{
    return NewBlock(ulSize);
}
// Not inlined: g++ would see a block from an operator new given to free, and warn.
[[gnu::noinline]] void operator delete(void *pBlock) noexcept
{
    std::free(pBlock);
}
[[gnu::noinline]] void operator delete(void *pBlock, size_t) noexcept
{
    std::free(pBlock);
}
[[gnu::noinline]] void operator delete[](void *pBlock) noexcept
{
    std::free(pBlock);
}
[[gnu::noinline]] void operator delete[](void *pBlock, size_t) noexcept
{
    std::free(pBlock);
}

namespace {

TEST(ShortOfMemory, Handle)
{
    g_bNewFails = true;
    void *pPool = ZR_HandleInit("short");
    g_bNewFails = false;
    EXPECT_EQ(pPool, nullptr);
}

TEST(ShortOfMemory, RecordBelowTheLeastLevelNeedsNone)
{
    const Recorder stSink;
    ZR_LogLevelSet(ZR_LOG_WARNING);
    const uint32_t uiNewCalls = g_uiNewCalls;
    LOG(ZR_LOG_NOTE, "%5000d", 1);
    EXPECT_EQ(g_uiNewCalls, uiNewCalls);
    LOG(ZR_LOG_WARNING, "%5000d", 1);
    EXPECT_GT(g_uiNewCalls, uiNewCalls);
}

TEST(ShortOfMemory, LongTextIsMarked)
{
    const LongCase astCase[] = {
        {__LINE__, 511, 'a', 511, "aa"},
        {__LINE__, 512, 'a', 514, "a..."},
        {__LINE__, 511, '\x01', 1023, "\\x01..."},
    };
    Measure stSink;
    for (const LongCase &stCase : astCase) {
        const std::string sLong(stCase.ulLength, stCase.cFill);
        g_bNewFails = true;
        LOG(ZR_LOG_ERROR, "%s", sLong.c_str());
        g_bNewFails = false;
        stSink.Check(stCase);
    }
}

TEST(ShortOfMemoryDeathTest, DefaultSink)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto Write = [] {
        const std::string sLong(5000, 'a');
        g_bNewFails = true;
        LOG(ZR_LOG_ERROR, "lost: there is no logger yet");
        g_bNewFails = false;
        ZR_LogLevelSet(ZR_LOG_NOTE); // the host's word counts, whatever the start makes of the environment
        const uint32_t uiCode = ZR_BaseInit();
        g_bNewFails = true;
        LOG(ZR_LOG_ERROR, "%s", sLong.c_str());
        g_bNewFails = false;
        LOG(ZR_LOG_NOTE, "back");
        return static_cast<int>(uiCode + ZR_LogLevelGet());
    };
    EXPECT_EXIT(std::exit(Write()), testing::ExitedWithCode(0), "back\n$");
}

} // namespace

#endif
