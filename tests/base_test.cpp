// SPDX-License-Identifier: Apache-2.0
// The base library: bounds-checked calls at their limits, a pool's blocks and counters, what the log makes of its
// records, and all of them when memory is short.

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <malloc.h>
#include <sys/resource.h>

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include <gtest/gtest.h>

#include "support/short_memory.h"
#include "zr_base.h"
#include "zr_safe.h"

namespace {

constexpr size_t Most = SIZE_MAX / 2; // the largest size that is taken
const std::string g_sBefore("abcdef\0#####", 12);
std::string g_sBuffer = g_sBefore; // the calls below write here

// Expects one result of all these calls, and that the buffer then begins with a text, where '|' is a NUL, and is as
// before behind it.
void Gives(int iExpected, std::string sBegin, std::initializer_list<int> stResults, int iLine = __builtin_LINE())
{
    std::replace(sBegin.begin(), sBegin.end(), '|', '\0');
    EXPECT_EQ(std::vector(stResults), std::vector(stResults.size(), iExpected)) << "line " << iLine;
    EXPECT_EQ(g_sBuffer, sBegin + g_sBefore.substr(sBegin.size())) << "line " << iLine;
    g_sBuffer = g_sBefore;
}

TEST(Safe, WritesWhatFitsAndNothingElse)
{
    int (*const Print)(char *, size_t, size_t, const char *, ...) = snprintf_s; // with formats that no compiler likes
    char *const pc = g_sBuffer.data();
    Gives(0, "zzzzz", {memset_s(pc, 5, 'z', 5)});
    Gives(ERANGE, "zzzzz", {memset_s(pc, 5, 'z', 6), memset_s(pc, Most + 1, 'y', 1)});

    Gives(0, "de||", {strncpy_s(pc, 3, pc + 3, 2), strncpy_s(pc + 3, 1, "", Most)});
    Gives(0, "abcabc|", {strncpy_s(pc + 3, Most, pc, 3)});
    Gives(ERANGE, "|bcde|", {strncpy_s(pc, 5, "abcdef", 6), strncpy_s(pc + 5, 1, "", Most + 1)});
    // The copy's NUL would be in the source; the source's NUL would be in the copy; there is no source.
    Gives(EINVAL, "|bc|",
          {strncpy_s(pc, 4, pc + 3, 6), strncpy_s(pc + 6, 2, pc + 5, 2), strncpy_s(pc + 3, 5, nullptr, 3)});
    Gives(ERANGE, "", {strncpy_s(pc, Most + 1, "abc", 3)});
    Gives(EINVAL, "", {memset_s(nullptr, 5, 'z', 0), strncpy_s(nullptr, 5, "abc", 3), strncpy_s(pc, 0, "abc", 3)});

    Gives(2, "%n|", {Print(pc, 6, 2, "%%n")});
    Gives(-1, "xy|xyz|", {Print(pc, 3, 9, "%s", "xyz"), Print(pc + 3, 9, 3, "%s", "xyz!")});
    Gives(-1, "|b||e|",
          {Print(pc, 3, 2, "ab%ls", L"\u20AC"), Print(pc + 3, 9, Most + 1, "a"), Print(pc + 5, 7, 3, nullptr)});
    Gives(-1, "|", {Print(pc, 12, 11, "%%%-+ #'I.*$0123456789hlLqjztn", "")});
    Gives(-1, "", {Print(nullptr, 6, 5, "a"), Print(pc, 0, 9, "a"), Print(pc, Most + 1, 9, "a")});

    Gives(3, "abcd|\te", {sscanf_s("\t abcd\tef", "%s%c%c", pc, 5U, pc + 5, 1U, pc + 6, 1U)});
    Gives(1, "abcd|", {sscanf_s("abcd", "%s%c", pc, 5U, pc + 6, 1U)});
    Gives(0, "|", {sscanf_s("abcde f", "%s%c", pc, 5U, pc + 6, 1U)});
    Gives(0, "", {sscanf_s("abcd", "%s", pc, 0U), sscanf_s("abcd", "%c", pc, 0U)});
    Gives(-1, "",
          {sscanf_s(nullptr, "%s", pc, 5U), sscanf_s("a", nullptr, pc, 5U), sscanf_s(" ", "%s", pc, 5U),
           sscanf_s("a", "%s", nullptr, 5U), sscanf_s("a", "%c", nullptr, 5U), sscanf_s("1", "%d", nullptr),
           sscanf_s("1", "%x", nullptr), sscanf_s("1", "%n", nullptr), sscanf_s("a", "%s%\0", pc, 5U),
           sscanf_s("a", "%s %lu", pc, 5U, pc)});
}

// What comes of each text: the result of the scan, the number and the place for %n if they are stored.
std::string Scan(const char *pcFormat, std::initializer_list<const char *> stTexts)
{
    std::string answers;
    for (const char *pcText : stTexts) {
        unsigned uiNumber = 77, uiPlace = 77;
        answers += std::to_string(sscanf_s(pcText, pcFormat, &uiNumber, &uiPlace));
        answers += uiNumber != 77 ? "=" + std::to_string(uiNumber) : "";
        answers += uiPlace != 77 ? "@" + std::to_string(uiPlace) + ' ' : " ";
    }
    return answers;
}

TEST(Safe, ReadsNumbersThatFit)
{
    EXPECT_EQ(Scan("%u", {" \t+12", "4294967295", "4294967296", "0018446744073709551617"}), "1=12 1=4294967295 0 0 ");
    EXPECT_EQ(Scan("[%u]", {"[007", "[-0]", "[0x5", "[-1]", "[]", "{1}", "[", ""}), "1=7 1=0 1=0 0 0 0 -1 -1 ");
    EXPECT_EQ(Scan("%d", {"2147483647", "2147483648", "x"}), "1=2147483647 0 0 ");
    EXPECT_EQ(Scan("%d", {"-2147483648", "-2147483649"}), "1=2147483648 0 "); // as unsigned
    EXPECT_EQ(Scan("%x", {"0xfFfFfFfF", "0X1fg", "0", "fx1", "100000000", "0x"}), "1=4294967295 1=31 1=0 1=15 0 0 ");
    EXPECT_EQ(Scan("%u ,%%%n", {" 12 , %", "12 , x"}), "1=12@7 1=12 ");
}

TEST(Pool, HandleNeedsNameAndMemory)
{
    EXPECT_EQ(ZR_HandleInit(nullptr), nullptr);
    for (const size_t ulNews : {0U, 1U}) { // for the pool, and for its name
        const ShortMemory stShort(CanBeShort ? ulNews : SIZE_MAX);
        EXPECT_EQ(ZR_HandleInit("short") == nullptr, CanBeShort);
    }
}

TEST(Pool, CountsItsOwnBlocks)
{
    char acName[] = "one";
    void *pPool = ZR_HandleInit(acName);
    EXPECT_NE(ZR_HandleInit(acName), pPool);
    acName[0] = '?';
    std::vector<void *> apBlock;
    uint64_t ulBytes = 0;
    for (const uint32_t uiSize : {17U, UINT32_MAX, 0U}) {
        apBlock.push_back(ZR_MemAlloc(uiSize, pPool));
        EXPECT_EQ(reinterpret_cast<uintptr_t>(apBlock.back()) % alignof(max_align_t), 0U);
        EXPECT_GE(malloc_usable_size(apBlock.back()), std::max(uiSize, 1U));
        ulBytes += malloc_usable_size(apBlock.back());
    }
    ZR_MemFree(nullptr, pPool);
    ZR_MemFree(apBlock[0], nullptr);
    EXPECT_EQ(ZR_MemAlloc(1, nullptr), nullptr);
    if (CanBeLimited) {
        const rlimit stLittle = {rlim_t{1} << 30U, RLIM_INFINITY}, stPlenty = {RLIM_INFINITY, RLIM_INFINITY};
        EXPECT_EQ(setrlimit(RLIMIT_AS, &stLittle), 0);
        EXPECT_EQ(ZR_MemAlloc(UINT32_MAX, pPool), nullptr);
        EXPECT_EQ(setrlimit(RLIMIT_AS, &stPlenty), 0);
    }

    ZR_MemInfo stInfo{};
    EXPECT_TRUE(ZR_MemInfoGet(nullptr, &stInfo) == EINVAL && ZR_MemInfoGet(pPool, nullptr) == EINVAL);
    EXPECT_EQ(ZR_MemInfoGet(pPool, &stInfo), 0U);
    EXPECT_STREQ(stInfo.pcName, "one");
    EXPECT_EQ(stInfo.ulBlocksInUse, 3U);
    EXPECT_EQ(stInfo.ulBytesInUse, ulBytes);
    for (void *pBlock : apBlock)
        ZR_MemFree(pBlock, pPool);
    ZR_MemFree(ZR_MemAlloc(1, pPool), pPool);
    EXPECT_EQ(ZR_MemInfoGet(pPool, &stInfo), 0U);
    EXPECT_EQ(stInfo.ulBlocksInUse + stInfo.ulBytesInUse, 0U);
    EXPECT_EQ(stInfo.ulBytesPeak, ulBytes);
}

TEST(Pool, KeepsBlocksForTheNextDocumentWithinBounds)
{
    constexpr size_t Size = 8192, Bytes = size_t{32} << 20U;
    void *pPool = ZR_HandleInit("kept");
    const size_t ulBefore = mallinfo2().uordblks;
    for (int i = 0; i < 2; ++i) {
        std::set<void *> pBlocks;
        for (size_t ul = 0; ul < Bytes / Size + 1000; ++ul)
            EXPECT_GE(malloc_usable_size(*pBlocks.insert(ZR_MemAlloc(Size, pPool)).first), Size);
        EXPECT_EQ(pBlocks.size(), Bytes / Size + 1000);
        void *pSmaller = ZR_MemAlloc(Size / 2, pPool);
        for (void *pBlock : pBlocks)
            ZR_MemFree(pBlock, pPool);
        ZR_MemFree(pSmaller, pPool);
    }
    const size_t ulKept = mallinfo2().uordblks - ulBefore;
    EXPECT_TRUE(!CanBeLimited || (ulKept >= Bytes && ulKept < Bytes + 100 * Size)) << ulKept;
}

ZR_LogModule g_stModule = {"YAML", 0x1900};

#define LOG(uiLevel, ...) ZR_LogWrite(&g_stModule, (uiLevel), 0x1900000B, "file.cpp", 7, "Fn", __VA_ARGS__)

char g_acRecord[4 * 65535 + 64]; // the last one

// Keeps the record without the heap, and is otherwise as bad as a sink can be.
void Keep(const ZR_LogRecord *pst, void * /*pContext*/)
{
    (void)snprintf(g_acRecord, sizeof g_acRecord, "%s %x %u %x %s:%u %s: %s", pst->pcModule, pst->uiModuleId,
                   pst->uiLevel, pst->uiCode, pst->pcFile, pst->uiLine, pst->pcFunction, pst->pcText);
    LOG(ZR_LOG_ERROR, "dropped");
    EXPECT_EQ(ZR_LogSinkSet(nullptr, nullptr), uint32_t{EDEADLK});
    errno = EBADF;
    throw std::bad_alloc();
}

TEST(Log, RecordReachesTheSink)
{
    EXPECT_EQ(ZR_LogSinkSet(Keep, nullptr), 0U);
    errno = ENOENT;
    LOG(ZR_LOG_ERROR, "%s=%u (%zu, %X, %d)", "Key", 5U, size_t{6}, 0xABU, -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_STREQ(g_acRecord, "YAML 1900 2 1900000b file.cpp:7 Fn: Key=5 (6, AB, -1)");
    ZR_LogWrite(nullptr, 9, 0, nullptr, 0, nullptr, nullptr);
    EXPECT_STREQ(g_acRecord, "? 0 9 0 ?:0 ?: ?");
    LOG(ZR_LOG_ERROR, "unformattable %ls", L"\u20AC");
    EXPECT_STREQ(g_acRecord, "YAML 1900 2 1900000b file.cpp:7 Fn: unformattable %ls");

    for (const uint32_t uiLeast : {ZR_LOG_NOTHING, ZR_LOG_ERROR, ZR_LOG_WARNING, ZR_LOG_NOTE}) {
        ZR_LogLevelSet(uiLeast);
        EXPECT_EQ(ZR_LogLevelGet(), uiLeast);
        for (const uint32_t uiLevel : {ZR_LOG_NOTE, ZR_LOG_WARNING, ZR_LOG_ERROR}) {
            g_acRecord[0] = '\0';
            LOG(uiLevel, "any");
            EXPECT_EQ(g_acRecord[0] != '\0', uiLevel >= uiLeast) << uiLevel << ' ' << uiLeast;
        }
    }
}

// What a text has become in the record, when the log may allocate so often.
std::string Written(const std::string &sText, size_t ulNews = SIZE_MAX)
{
    EXPECT_EQ(ZR_LogSinkSet(Keep, nullptr), 0U);
    g_ulNewsLeft = ulNews;
    LOG(ZR_LOG_ERROR, "%s", sText.c_str());
    g_ulNewsLeft = SIZE_MAX;
    return strstr(g_acRecord, ": ") + 2;
}

TEST(Log, TextIsOneHarmlessLine)
{
    const std::string sHarmless = "a\\nb ~\u00a0\u0800\u2027\u202a\u20ac\ud7ff\ue000\U00010000\U0001f600\U0010ffff";
    EXPECT_EQ(Written(sHarmless), sHarmless);
    EXPECT_EQ(Written("\na\tc\r\x1b[2J\x01\x7f\x1f"), R"(\na\tc\r\x1b[2J\x01\x7f\x1f)");
    EXPECT_EQ(Written("\u0080\u009f\u2028\u2029"), R"(\u0080\u009f\u2028\u2029)");
    // no UTF-8: stray, not continued, overlong, surrogate, too large, too long, cut
    EXPECT_EQ(Written("\x80\xc3( \xc1\xbf \xe0\x9f\xbf \xf0\x8f\xbf\xbf"),
              R"(\x80\xc3( \xc1\xbf \xe0\x9f\xbf \xf0\x8f\xbf\xbf)");
    EXPECT_EQ(Written("\xed\xa0\x80 \xed\xbf\xbf \xf4\x90\x80\x80 \xf8\x88\x80\x80\x80 \xe2\x82"),
              R"(\xed\xa0\x80 \xed\xbf\xbf \xf4\x90\x80\x80 \xf8\x88\x80\x80\x80 \xe2\x82)");
}

TEST(Log, LongTextIsWholeOrMarked)
{
    std::string sEscaped;
    while (sEscaped.size() < 4 * 65535)
        sEscaped += "\\x01";
    EXPECT_EQ(Written(std::string(512, 'a')), std::string(512, 'a'));
    EXPECT_EQ(Written(std::string(65535, '\x01')), sEscaped);
    EXPECT_EQ(Written(std::string(65536, 'a')), std::string(65535, 'a') + "...");
    if (!CanBeShort)
        return;
    EXPECT_EQ(Written(std::string(511, 'a'), 0), std::string(511, 'a'));
    EXPECT_EQ(Written(std::string(512, 'a'), 0), std::string(511, 'a') + "...");
    EXPECT_EQ(Written(std::string(255, '\x01') + "a", 0), sEscaped.substr(0, 1020) + "...");
}

TEST(Log, ReplacedSinkIsNeverCalledAgain)
{
    constexpr uint64_t Rounds = 20000;
    const ZR_LogSink pfnCount = [](const ZR_LogRecord *, void *pContext) { ++*static_cast<uint64_t *>(pContext); };
    uint64_t ulCommon = 0;
    std::atomic<uint64_t> ulOwn = 0;
    const auto Work = [&] {
        for (uint64_t ul = 0; ul < Rounds; ++ul) {
            uint64_t ulCount = 0; // is read and gone while other threads write
            ZR_LogSinkSet(pfnCount, &ulCount);
            LOG(ZR_LOG_ERROR, "tick");
            ZR_LogSinkSet(pfnCount, &ulCommon);
            ulOwn += ulCount;
        }
    };
    (void)std::array{std::jthread(Work), std::jthread(Work), std::jthread(Work)}; // and joins them
    EXPECT_EQ(ulOwn + ulCommon, 3 * Rounds);
}

// Records of a program of its own, on its standard error without the time in front. Its exit code is the least level.
TEST(LogDeathTest, DefaultSink)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto Check = [](void (*pfnStart)(), const char *pcEnvironment, int iLevel, const char *pcOutput) {
        const auto Write = [pfnStart] {
            pfnStart();
            const uint32_t uiCode = ZR_BaseInit();
            LOG(ZR_LOG_ERROR, "c");
            g_ulNewsLeft = SIZE_MAX;
            LOG(ZR_LOG_NOTE, "note");
            LOG(ZR_LOG_WARNING, "a\nb");
            std::exit(static_cast<int>(uiCode + ZR_BaseInit() + ZR_LogLevelGet()));
        };
        setenv("SPDLOG_LEVEL", pcEnvironment, 1);
        EXPECT_EXIT(Write(), testing::ExitedWithCode(iLevel), pcOutput) << pcEnvironment;
    };
    const auto Plain = [] {};
    Check(Plain, "", 1, "\\[zr\\] \\[error\\] YAML 0x1900000B file.cpp:7 Fn: c\n[^\n]*warning] [^\n]*: a\\\\nb\n$");
    Check(Plain, "zr=trace", 0, "c\n[^\n]*debug] YAML [^\n]*Fn: note\n[^\n]*a\\\\nb\n$");
    Check(Plain, "debug", 0, "debug] YAML [^\n]*Fn: note\n");
    Check(Plain, "debug,zr=err", 2, "^[^\n]*error] YAML [^\n]*Fn: c\n$");
    Check(Plain, "off,other=debug", 3, "^$");
    Check([] { ZR_LogLevelSet(ZR_LOG_NOTE); }, "zr=err", 0, ": c\n[^\n]*: note\n[^\n]*a\\\\nb\n$");
    Check([] { spdlog::stderr_logger_mt("zr")->set_pattern("host: %v"); }, "zr=trace", 1,
          "^host: YAML [^\n]* Fn: c\nhost: YAML [^\n]* Fn: a\\\\nb\n$");
    if (CanBeShort) // what is written meanwhile is lost
        Check([] { g_ulNewsLeft = 0; }, "zr=trace", 1, "^[^\n]*Fn: a\\\\nb\n$");
}

} // namespace
