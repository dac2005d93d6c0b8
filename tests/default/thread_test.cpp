// SPDX-License-Identifier: Apache-2.0
// What several threads may do at once: load for the first time, load side by side, read one document, free another's.
// Run with the thread sanitizer as well, which finds the races that a lucky order hides.
#include <zr_base.h>
#include <zr_yaml.h>

#include <gtest/gtest.h>

#include <barrier>
#include <dlfcn.h>
#include <functional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr uint32_t Threads = 8;

std::atomic<uint32_t> g_uiPools; // created through ZR_HandleInit

// Runs the same work on several threads, which begin together; each gets its number.
void Together(const std::function<void(uint32_t)> &pfnWork)
{
    std::barrier stStart(Threads);
    std::vector<std::thread> threads;
    for (uint32_t ui = 0; ui < Threads; ++ui) {
        threads.emplace_back([&stStart, &pfnWork, ui] {
            stStart.arrive_and_wait();
            pfnWork(ui);
        });
    }
    for (std::thread &stThread : threads)
        stThread.join();
}

YamlHandle *Load(const std::string &text, const std::string &name)
{
    return ZRYAML_TextLoad(text.data(), text.size(), name.c_str());
}

struct SwitchOn { // the debug switch, as long as it lives
    SwitchOn() { ZRYAML_DebugSwitchSet(1); }
    ~SwitchOn() { ZRYAML_DebugSwitchSet(0); }
    SwitchOn(const SwitchOn &) = delete;
    SwitchOn &operator=(const SwitchOn &) = delete;
};

} // namespace

// Takes the place of the base library's own, counts, and takes its time, so that others come while the pool is made.
extern "C" void *ZR_HandleInit(const char *pcName)
{
    ++g_uiPools;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    static const auto pfnReal = reinterpret_cast<decltype(&ZR_HandleInit)>(dlsym(RTLD_NEXT, "ZR_HandleInit"));
    return pfnReal(pcName);
}

// ctest runs each test in a process of its own, so that these loads are the first.
TEST(Threads, MakeOnePoolByLoadingFirstTogether)
{
    const bool bFirst = yaml_MemHandleGet() == nullptr;
    const uint32_t uiBefore = g_uiPools;
    std::vector<void *> pools(Threads);
    std::vector<std::string> texts(Threads);
    Together([&](uint32_t ui) {
        YamlHandle *pstHandle = Load("a: " + std::to_string(ui), "first");
        pools[ui] = yaml_MemHandleGet();
        texts[ui] = ZRYAML_PropertyGet(pstHandle, "a");
        ZRYAML_HandleFree(pstHandle);
    });
    EXPECT_EQ(g_uiPools - uiBefore, bFirst ? 1U : 0U);
    EXPECT_EQ(std::set<void *>(pools.begin(), pools.end()), std::set<void *>{g_pstYamlMemHandle});
    for (uint32_t ui = 0; ui < Threads; ++ui)
        EXPECT_EQ(texts[ui], std::to_string(ui));
}

// Each thread reads its own key and the common ones: no count is lost, and the one key that nobody reads stays.
TEST(Threads, ReadOneDocumentWithTheSwitchOn)
{
    constexpr uint32_t Rounds = 500;
    const SwitchOn stSwitch;
    std::string text = "common: {list: [{a: 1}, {b: 2}], text: t}\nunread: u\n";
    for (uint32_t ui = 0; ui < Threads; ++ui)
        text += "own" + std::to_string(ui) + ": {x: {y: " + std::to_string(ui) + "}, z: 1}\n";
    YamlHandle *pstHandle = Load(text, "shared");
    ASSERT_NE(pstHandle, nullptr);

    std::atomic<uint32_t> uiWrong = 0;
    Together([&](uint32_t ui) {
        for (uint32_t uiRound = 0; uiRound < Rounds; ++uiRound) {
            YamlKeyValue stPair = {};
            YamlIterator *pstIter = yaml_IteratorCreate(pstHandle, "common.list");
            while (yaml_NextKeyValueGet(pstIter, &stPair) == YAML_OK)
                uiWrong += stPair.pcKey[0] == 'a' || stPair.pcKey[0] == 'b' ? 0 : 1;
            yaml_IteratorDestroy(pstIter);
            uiWrong += ZRYAML_PropertyGet(pstHandle, "own%u.x.y", ui) == std::to_string(ui) ? 0 : 1;
            uiWrong += ZRYAML_PropertyGet(pstHandle, "common.text") == std::string("t") ? 0 : 1;
            uiWrong += ZRYAML_ValueTextGet(ZRYAML_PathFind(pstHandle, "own0.z")) == std::string("1") ? 0 : 1;
        }
    });
    EXPECT_EQ(uiWrong, 0U);

    YamlDebugInfo stInfo = {};
    ASSERT_EQ(ZRYAML_DebugInfoGet(pstHandle, &stInfo), YAML_OK);
    EXPECT_EQ(stInfo.uiQueryCount, 2 * Threads * Rounds); // texts by key path, and no others, are timed
    std::set<std::string> unread;
    for (YamlUnreadKey stKey = {}; ZRYAML_UnreadKeyNext(pstHandle, &stKey) == YAML_OK;)
        unread.insert(stKey.acPath);
    EXPECT_EQ(unread,
              (std::set<std::string>{"unread", "own1.z", "own2.z", "own3.z", "own4.z", "own5.z", "own6.z", "own7.z"}));
    ZRYAML_HandleFree(pstHandle);
}

// Every other document is refused, in a line of its own: each thread keeps its own error record.
TEST(Threads, LoadSideBySideWithTheirOwnErrors)
{
    std::atomic<uint32_t> uiWrong = 0;
    Together([&uiWrong](uint32_t ui) {
        const std::string name = "file" + std::to_string(ui);
        const std::string good = "b: &b {p: [1, 2]}\nc: {<<: *b, q: " + name + "}\n";
        const std::string bad = std::string(ui, '\n') + "k: 1\nk: " + name + "\n";
        for (uint32_t uiRound = 0; uiRound < 100; ++uiRound) {
            YamlHandle *pstHandle = Load(good, name);
            uiWrong += ZRYAML_PropertyGet(pstHandle, "c.q") == name ? 0 : 1;
            uiWrong += Load(bad, name) == nullptr ? 0 : 1;
            const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
            const bool bOwn = stError.uiCode == YAML_ERR_SAME && stError.uiLine == ui + 2 && stError.pcFile == name;
            uiWrong += bOwn ? 0 : 1;
            ZRYAML_HandleFree(pstHandle);
        }
    });
    EXPECT_EQ(uiWrong, 0U);
}

// A document may be freed by another thread than the one that loaded it, while the others go on loading.
TEST(Threads, FreeEachOthersDocuments)
{
    ZR_MemInfo stBefore = {};
    ASSERT_EQ(yaml_MemInit(), YAML_OK);
    ASSERT_EQ(ZR_MemInfoGet(g_pstYamlMemHandle, &stBefore), 0U);
    std::vector<YamlHandle *> handles(Threads);
    std::barrier stExchange(Threads);
    Together([&](uint32_t ui) {
        for (uint32_t uiRound = 0; uiRound < 50; ++uiRound) {
            handles[ui] = Load("a: &a [x, y, {z: w}]\nb: *a\n", "");
            stExchange.arrive_and_wait();
            ZRYAML_HandleFree(handles[(ui + 1) % Threads]);
            stExchange.arrive_and_wait();
        }
    });
    ZR_MemInfo stAfter = {};
    ASSERT_EQ(ZR_MemInfoGet(g_pstYamlMemHandle, &stAfter), 0U);
    EXPECT_EQ(stAfter.ulBlocksInUse, stBefore.ulBlocksInUse);
}
