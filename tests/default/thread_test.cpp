// SPDX-License-Identifier: Apache-2.0
// What several threads may do at once: load for the first time, load side by side, read one document, free another's.
// Run with the thread sanitizer as well, which finds the races that a lucky order hides.
#include <zr_base.h>
#include <zr_yaml.h>

#include <gtest/gtest.h>

#include <atomic>
#include <dlfcn.h>
#include <string>
#include <thread>

namespace {

constexpr uint32_t Threads = 8, Rounds = 1000;

std::atomic<uint32_t> g_uiPools; // created through ZR_HandleInit

// Does the same work over and over on several threads; each gets its number.
void Together(const auto &fnWork)
{
    std::jthread astThread[Threads];
    for (uint32_t ui = 0; ui < Threads; ++ui)
        astThread[ui] = std::jthread([&fnWork, ui] {
            for (uint32_t uiRound = 0; uiRound < Rounds; ++uiRound)
                fnWork(ui);
        });
}

} // namespace

// Takes the place of the base library's own, counts, and takes its time, so that others come while the pool is made.
extern "C" void *ZR_HandleInit(const char *pcName)
{
    ++g_uiPools;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return reinterpret_cast<decltype(&ZR_HandleInit)>(dlsym(RTLD_NEXT, "ZR_HandleInit"))(pcName);
}

// One pool is made by those who load first, which these are: ctest runs each test in a process of its own. Every other
// document is refused, in a line of its own: each thread keeps its own error record. A document is freed by whoever
// loads the next, while the others go on loading.
TEST(Threads, LoadSideBySideAndFreeEachOthersDocuments)
{
    std::atomic<YamlHandle *> pstLast = nullptr;
    Together([&pstLast](uint32_t ui) {
        const std::string name = "file" + std::to_string(ui), bad = std::string(ui, '\n') + "k: 1\nk: 2\n";
        const std::string good = "b: &b {p: 1}\nc: {<<: *b, q: " + name + "}\nd: " + std::string(20000, 'd');
        YamlHandle *pstHandle = ZRYAML_TextLoad(good.data(), good.size(), "good");
        EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "c.q"), name.c_str());
        ZRYAML_HandleFree(pstLast.exchange(pstHandle));
        YamlLimits stLimits = YAML_LIMITS_INIT;
        ZRYAML_LimitsGet(&stLimits);
        EXPECT_EQ(ZRYAML_LimitsSet(&stLimits), YAML_OK);
        EXPECT_EQ(ZRYAML_TextLoad(bad.data(), bad.size(), name.c_str()), nullptr);
        const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
        EXPECT_TRUE(stError.uiCode == YAML_ERR_SAME && stError.uiLine == ui + 2 && stError.pcFile == name);
    });
    ZRYAML_HandleFree(pstLast);
    ZR_MemInfo stInfo = {};
    EXPECT_EQ(ZR_MemInfoGet(yaml_MemHandleGet(), &stInfo), 0U);
    EXPECT_STREQ(stInfo.pcName, "zr.yaml.memhdl");
    EXPECT_EQ(stInfo.ulBlocksInUse + stInfo.ulBytesInUse, 0U);
    EXPECT_EQ(g_uiPools, 1U);
}

// Each thread reads its own key and the common ones: no count is lost, and the keys that nobody reads stay.
TEST(Threads, ReadOneDocumentWithTheSwitchOn)
{
    ZRYAML_DebugSwitchSet(1);
    std::string text = "list: [1, 2]\nunread: u\n";
    for (uint32_t ui = 0; ui < Threads; ++ui)
        text += "own" + std::to_string(ui) + ": {x: {y: " + std::to_string(ui) + "}, z: 1}\n";
    YamlHandle *pstHandle = ZRYAML_TextLoad(text.data(), text.size(), "shared");
    Together([pstHandle](uint32_t ui) {
        EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "own%u.x.y", ui), std::to_string(ui).c_str());
        EXPECT_STREQ(ZRYAML_ValueTextGet(ZRYAML_PathFind(pstHandle, "own0.z")), "1");
        EXPECT_EQ(ZRYAML_ArraySizeGet(pstHandle, "list"), 2U);
        yaml_IteratorDestroy(yaml_IteratorCreate(pstHandle, "list"));
    });

    YamlDebugInfo stInfo = {};
    EXPECT_EQ(ZRYAML_DebugInfoGet(pstHandle, &stInfo), YAML_OK);
    EXPECT_EQ(stInfo.uiQueryCount, Threads * Rounds); // texts by key path, and no others, are timed
    EXPECT_GE(stInfo.uiQueryTimeAvg, 1U);
    std::string unread;
    for (YamlUnreadKey stKey = YAML_UNREAD_KEY_INIT; ZRYAML_UnreadKeyNext(pstHandle, &stKey) == YAML_OK;)
        unread += stKey.acPath + std::string(" ");
    EXPECT_EQ(unread, "unread own1.z own2.z own3.z own4.z own5.z own6.z own7.z ");
    ZRYAML_HandleFree(pstHandle);
    ZRYAML_DebugSwitchSet(0);
}
