// SPDX-License-Identifier: Apache-2.0
// The base library: bounds-checked calls at their limits, a pool's blocks and counters, what the log makes of its
// records, and all of them when memory is short.

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <set>
#include <string>
#include <thread>

#include <malloc.h>
#include <sys/resource.h>

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include <gtest/gtest.h>

#include "support/short_memory.h"
#include "zr_base.h"
#include "zr_safe.h"

namespace {

// Whether malloc is the C library's and can be limited; a sanitizer has mapped more from the start.
const bool CanBeLimited = mallinfo2().uordblks != 0;

constexpr size_t Most = SIZE_MAX / 2; // the largest size that is taken
const std::string g_sBefore("abcdef\0#####", 12);
std::string g_sBuffer = g_sBefore; // the calls below write here

// Expects one result of all these calls, and that the buffer then begins with a text, where '|' is a NUL, and is as
// before behind it.
void Gives(int iExpected, std::string sBegin, std::initializer_list<int> stResults, int iLine = __builtin_LINE())
{
    std::replace(sBegin.begin(), sBegin.end(), '|', '\0');
    EXPECT_EQ(std::set(stResults), std::set{iExpected}) << "line " << iLine;
    EXPECT_EQ(g_sBuffer, sBegin + g_sBefore.substr(sBegin.size())) << "line " << iLine;
    g_sBuffer = g_sBefore;
}

TEST(Safe, WritesWhatFitsAndNothingElse)
{
    const auto Copy = strncpy_s;
    int (*const Print)(char *, size_t, size_t, const char *, ...) = snprintf_s; // with formats that no compiler likes
    const auto Read = sscanf_s;
    char *const pc = g_sBuffer.data();
    Gives(0, "zzzzz", {memset_s(pc, 5, 'z', 5), memset_s(pc, Most, 'z', 5)});
    Gives(ERANGE, "zzzzz", {memset_s(pc, 5, 'z', 6), memset_s(pc, Most + 1, 'y', 1), Copy(pc, Most + 1, "abc", 3)});

    Gives(0, "de||efef|", {Copy(pc, 3, pc + 3, 2), Copy(pc + 3, 1, "", Most), Copy(pc + 6, Most, pc + 4, 2)});
    Gives(ERANGE, "|bcde|", {Copy(pc, 5, "abcdef", 6), Copy(pc + 5, 1, "", Most + 1)});
    // The copy's NUL would be in the source; the source's NUL would be in the copy; there is no source.
    Gives(EINVAL, "|bc|", {Copy(pc, 4, pc + 3, 6), Copy(pc + 6, 2, pc + 5, 2), Copy(pc + 3, 5, nullptr, 3)});
    Gives(EINVAL, "", {memset_s(nullptr, 5, 'z', 0), Copy(nullptr, 5, "abc", 3), Copy(pc, 0, "abc", 3)});

    Gives(2, "%n|", {Print(pc, 6, 2, "%%n"), Print(pc, Most, Most, "%%n")});
    Gives(0, "|", {Print(pc, 9, 9, "%s", "")});
    Gives(-1, "xy|xyz|", {Print(pc, 3, 9, "%s", "xyz"), Print(pc + 3, 9, 3, "%s", "xyz!")});
    Gives(-1, "|b|", {Print(pc, 3, 2, "ab%ls", L"\u20AC"), Print(pc + 2, 9, Most + 1, "a")});
    Gives(-1, "|b|", {Print(pc, 12, 11, "%%%-+ #'I.*$0123456789hlLqjztn", ""), Print(pc + 2, 7, 3, nullptr)});
    Gives(-1, "", {Print(nullptr, 6, 5, "a"), Print(pc, 0, 9, "a"), Print(pc, Most + 1, 9, "a")});

    Gives(3, "abcd|\te", {Read("\t abcd\tef", "%s%c%c", pc, 5U, pc + 5, 1U, pc + 6, 1U)});
    Gives(0, "|", {Read("abcde f", "%s%c", pc, 5U, pc, 1U), Read("a", "%s", pc + 1, 0U), Read("a", "%c", pc + 1, 0U)});
    Gives(-1, "", {Read("a", "%s%\0", pc, 5U), Read("a", "%s %lu", pc, 5U, pc), Read(" ", "%s", pc, 5U)});
    Gives(-1, "", {Read(nullptr, "a"), Read("a", nullptr), Read("a", "%s", nullptr, 5U), Read("a", "%c", nullptr, 5U)});
    Gives(-1, "", {Read("1", "%d", nullptr), Read("1", "%x", nullptr), Read("1", "%n", nullptr), Read("", "a")});

    // Numbers, the lowest byte first.
    Gives(1, "A|||B|||||||",
          {Read(" +65,", "%u;%n", pc, pc), Read("[066", "[%u]", pc + 4), Read("-0x5", "%u", pc + 8)});
    Gives(1, "A|||\7|||B|||", {Read(" 65 , %", "%u ,%%%n", pc, pc + 4), Read("66a", "%u%d", pc + 8, pc)});
    Gives(1, "\x1f|||\xf|||||||", {Read("0X1fg", "%x", pc), Read("fx1", "%x", pc + 4), Read("0", "%x", pc + 8)});
    Gives(1, "\xff\xff\xff\xff\xff\xff\xff\xff", {Read("4294967295", "%u", pc), Read("0xfFfFfFfF", "%x", pc + 4)});
    Gives(1, "\xff\xff\xff\x7f|||\x80", {Read("2147483647", "%d", pc), Read("-2147483648", "%d", pc + 4)});
    Gives(0, "", {Read("4294967296", "%u", pc), Read("0018446744073709551617", "%u", pc), Read("-1", "%u", pc)});
    Gives(0, "", {Read("2147483648", "%d", pc), Read("-2147483649", "%d", pc), Read("0x", "%x", pc)});
}

TEST(Pool, CountsItsOwnBlocks)
{
    EXPECT_EQ(ZR_HandleInit(nullptr), nullptr);
    for (size_t ulNews = 0; CanBeShort && ulNews < 2; ++ulNews) { // for the pool, and for its name
        const ShortMemory stShort(ulNews);
        EXPECT_EQ(ZR_HandleInit("short"), nullptr);
    }
    void *pPool = ZR_HandleInit(std::string("this name goes away, too").c_str());
    EXPECT_NE(ZR_HandleInit("this name goes away, too"), pPool);

    void *pLarge = ZR_MemAlloc(UINT32_MAX, pPool), *pSmall = ZR_MemAlloc(0, pPool);
    const size_t ulLarge = malloc_usable_size(pLarge), ulSmall = malloc_usable_size(pSmall);
    EXPECT_TRUE(ulLarge >= UINT32_MAX && ulSmall > 0);
    if (CanBeLimited) {
        const rlimit stLittle = {1U << 30U, RLIM_INFINITY}, stPlenty = {RLIM_INFINITY, RLIM_INFINITY};
        EXPECT_EQ(setrlimit(RLIMIT_AS, &stLittle), 0);
        EXPECT_EQ(ZR_MemAlloc(UINT32_MAX, pPool), nullptr);
        EXPECT_EQ(setrlimit(RLIMIT_AS, &stPlenty), 0);
    }
    ZR_MemFree(ZR_MemAlloc(1, nullptr), pPool); // gives no block, and frees none
    ZR_MemFree(pSmall, nullptr);
    ZR_MemFree(pLarge, pPool);
    ZR_MemFree(ZR_MemAlloc(17, pPool), pPool);

    ZR_MemInfo stInfo{};
    EXPECT_TRUE(ZR_MemInfoGet(nullptr, &stInfo) == EINVAL && ZR_MemInfoGet(pPool, nullptr) == EINVAL);
    EXPECT_EQ(ZR_MemInfoGet(pPool, &stInfo), 0U);
    EXPECT_STREQ(stInfo.pcName, "this name goes away, too");
    EXPECT_EQ(stInfo.ulBlocksInUse, 1U);
    EXPECT_EQ(stInfo.ulBytesInUse, ulSmall);
    EXPECT_EQ(stInfo.ulBytesPeak, ulLarge + ulSmall);
    ZR_MemFree(pSmall, pPool);
}

TEST(Pool, KeepsBlocksForTheNextDocumentWithinBounds)
{
    constexpr size_t Size = 8192, Bytes = size_t{32} << 20U;
    void *pPool = ZR_HandleInit("kept");
    const size_t ulBefore = mallinfo2().uordblks;
    for (int i = 0; i < 2; ++i) {
        ZR_MemFree(ZR_MemAlloc(Size / 2, pPool), pPool); // is neither kept nor a kept one
        std::set<void *> pBlocks;
        for (size_t ul = 0; ul < Bytes / Size + 1000; ++ul)
            EXPECT_GE(malloc_usable_size(*pBlocks.insert(ZR_MemAlloc(Size, pPool)).first), Size);
        EXPECT_EQ(pBlocks.size(), Bytes / Size + 1000);
        for (void *pBlock : pBlocks)
            ZR_MemFree(pBlock, pPool);
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

// What a text has become in the record, when the log may allocate so often.
const char *Written(const std::string &sText, size_t ulNews = SIZE_MAX)
{
    const ShortMemory stShort(ulNews);
    LOG(ZR_LOG_ERROR, "%s", sText.c_str());
    return strstr(g_acRecord, ": ") + 2;
}

// Expects a text to be written as it stands in the source.
#define ESCAPED(pcText) EXPECT_EQ('"' + std::string(Written(pcText)) + '"', #pcText)

TEST(Log, RecordIsOneHarmlessLine)
{
    EXPECT_EQ(ZR_LogSinkSet(Keep, nullptr), 0U);
    errno = ENOENT;
    LOG(ZR_LOG_ERROR, "%s=%u (%zu, %X, %d)", "Key", 5U, size_t{6}, 0xABU, -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_STREQ(g_acRecord, "YAML 1900 2 1900000b file.cpp:7 Fn: Key=5 (6, AB, -1)");
    ZR_LogWrite(nullptr, 9, 0, nullptr, 0, nullptr, nullptr);
    LOG(ZR_LOG_NOTE, "below the first level");
    EXPECT_STREQ(g_acRecord, "? 0 9 0 ?:0 ?: ?");
    LOG(ZR_LOG_ERROR, "unformattable %ls", L"\u20AC");
    EXPECT_STREQ(g_acRecord, "YAML 1900 2 1900000b file.cpp:7 Fn: unformattable %ls");

    const std::string sHarmless = "a\\nb ~\u00a0\u0800\u2027\u202a\ud7ff\ue000\U00010000\U0010ffff";
    EXPECT_EQ(Written(sHarmless), sHarmless);
    ESCAPED("\na\tc\r\x1b[2J\x01\x7f\x1f \u0080\u009f\u2028\u2029");
    // no UTF-8: stray, not continued, overlong, surrogate, too large, too long, cut
    ESCAPED("\x80\xc3( \xc1\xbf \xe0\x9f\xbf \xf0\x8f\xbf\xbf");
    ESCAPED("\xed\xa0\x80 \xed\xbf\xbf \xf4\x90\x80\x80 \xf8\x88\x80\x80\x80 \xe2\x82");

    // Long texts are whole or marked.
    EXPECT_EQ(Written(std::string(512, 'a')), std::string(512, 'a'));
    EXPECT_STREQ(Written(std::string(65535, '\x01')) + 4 * 65534, "\\x01");
    EXPECT_EQ(Written(std::string(65536, 'a')), std::string(65535, 'a') + "...");
    EXPECT_EQ(Written(std::string(512, 'a'), 0), std::string(511, 'a') + (CanBeShort ? "..." : "a"));
    EXPECT_STREQ(Written(std::string(255, '\x01') + "a", 0) + 4 * 254, CanBeShort ? "\\x01..." : "\\x01a");
}

TEST(Log, ReplacedSinkIsNeverCalledAgain)
{
    const ZR_LogSink pfnCount = [](const ZR_LogRecord *, void *pContext) { ++*static_cast<uint64_t *>(pContext); };
    uint64_t ulCommon = 0;
    std::atomic<uint64_t> ulOwn = 0;
    const auto Work = [&] {
        for (int i = 0; i < 20000; ++i) {
            uint64_t ulCount = 0; // is read and gone while other threads write
            ZR_LogSinkSet(pfnCount, &ulCount);
            LOG(ZR_LOG_ERROR, "tick");
            ZR_LogSinkSet(pfnCount, &ulCommon);
            ulOwn += ulCount;
        }
    };
    (void)std::pair(std::jthread(Work), std::jthread(Work)); // and joins them
    EXPECT_EQ(ulOwn + ulCommon, 40000U);
}

// Expects records of a program of its own on its standard error, without the time in front, and its least level; the
// host's own logger keeps its level.
void Prints(
    const char *pcOutput, uint32_t uiLevel, const char *pcEnvironment, void (*pfnFirst)() = [] {})
{
    const auto Write = [pfnFirst] {
        pfnFirst();
        ZR_BaseInit();
        LOG(ZR_LOG_ERROR, "c");
        g_ulNewsLeft = SIZE_MAX;
        LOG(ZR_LOG_NOTE, "note");
        LOG(ZR_LOG_WARNING, "a\nb");
        const bool bKept = spdlog::default_logger()->level() == spdlog::level::info;
        std::exit(bKept ? static_cast<int>(ZR_LogLevelGet()) : -1);
    };
    setenv("SPDLOG_LEVEL", pcEnvironment, 1);
    EXPECT_EXIT(Write(), testing::ExitedWithCode(static_cast<int>(uiLevel)), pcOutput) << pcEnvironment;
}

TEST(LogDeathTest, DefaultSink)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Prints("\\[zr] \\[error] YAML 0x1900000B file.cpp:7 Fn: c\n[^\n]*warning] [^\n]*: a\\\\nb\n$", ZR_LOG_WARNING, "");
    Prints("c\n[^\n]*debug] YAML [^\n]*Fn: note\n[^\n]*a\\\\nb\n$", ZR_LOG_NOTE, "zr=trace");
    Prints("debug] YAML [^\n]*Fn: note\n", ZR_LOG_NOTE, "debug");
    Prints("^[^\n]*error] YAML [^\n]*Fn: c\n$", ZR_LOG_ERROR, "debug,zr=err");
    Prints("^[^\n]*error] YAML [^\n]*Fn: c\n$", ZR_LOG_ERROR, " ZR = Err, zr=warn = , zr = Err ,debug,,zr=err=");
    Prints("^$", ZR_LOG_NOTHING, "off,other=debug");
    Prints(": c\n[^\n]*a\\\\nb\n$", ZR_LOG_WARNING, "zr=err", [] { ZR_LogLevelSet(ZR_LOG_WARNING); });
    Prints("^host: YAML [^\n]* Fn: c\nhost: YAML [^\n]* Fn: a\\\\nb\n$", ZR_LOG_WARNING, "zr=trace",
           [] { spdlog::stderr_logger_mt("zr")->set_pattern("host: %v"); });
    if (CanBeShort) // what is written meanwhile is lost
        Prints("^[^\n]*Fn: a\\\\nb\n$", ZR_LOG_WARNING, "zr=trace", [] { g_ulNewsLeft = 0; });
}

} // namespace
