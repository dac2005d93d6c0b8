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
void Together(const std::function<void(uint32_t)> &fnWork)
{
    std::barrier stStart(Threads);
    std::vector<std::jthread> threads;
    for (uint32_t ui = 0; ui < Threads; ++ui)
        threads.emplace_back([&stStart, &fnWork, ui] {
            stStart.arrive_and_wait();
            fnWork(ui);
        });
}

YamlHandle *Load(const std::string &text, const std::string &name)
{
    return ZRYAML_TextLoad(text.data(), text.size(), name.c_str());
}

} // namespace

// Takes the place of the base library's own, counts, and takes its time, so that others come while the pool is made.
extern "C" void *ZR_HandleInit(const char *pcName)
{
    ++g_uiPools;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    static const auto pfnReal = reinterpret_cast<decltype(&ZR_HandleInit)>(dlsym(RTLD_NEXT, "ZR_HandleInit"));
    return pfnReal(pcName);
}

// One pool is made by those who load first, which these are: ctest runs each test in a process of its own. Every other
// document is refused, in a line of its own: each thread keeps its own error record. Documents are freed by whoever
// comes next, while the others go on loading.
TEST(Threads, LoadSideBySideAndFreeEachOthersDocuments)
{
    std::atomic<YamlHandle *> apstSlot[Threads] = {};
    Together([&](uint32_t ui) {
        const std::string name = "file" + std::to_string(ui), deep = std::string(150, '[') + std::string(150, ']');
        for (uint32_t uiRound = 0; uiRound < 1000; ++uiRound) {
            YamlHandle *pstHandle = Load("b: &b {p: [1, 2]}\nc: {<<: *b, q: " + name + "}\nd: " + deep, name);
            EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "c.q"), name.c_str());
            ZRYAML_HandleFree(apstSlot[uiRound % Threads].exchange(pstHandle));
            EXPECT_EQ(Load(std::string(ui, '\n') + "k: 1\nk: 2\n", name), nullptr);
            const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
            EXPECT_TRUE(stError.uiCode == YAML_ERR_SAME && stError.uiLine == ui + 2 && stError.pcFile == name);
        }
    });
    for (const auto &pstSlot : apstSlot)
        ZRYAML_HandleFree(pstSlot);
    ZR_MemInfo stInfo = {};
    EXPECT_EQ(ZR_MemInfoGet(yaml_MemHandleGet(), &stInfo), 0U);
    EXPECT_STREQ(stInfo.pcName, "zr.yaml.memhdl");
    EXPECT_EQ(stInfo.ulBlocksInUse + stInfo.ulBytesInUse, 0U);
    EXPECT_EQ(g_uiPools, 1U);
}

// Each thread reads its own key and the common ones: no count is lost, and the keys that nobody reads stay.
TEST(Threads, ReadOneDocumentWithTheSwitchOn)
{
    constexpr uint32_t Rounds = 1000;
    ZRYAML_DebugSwitchSet(1);
    std::string text = "common: {list: [{a: 1}, {b: 2}], text: t}\nunread: u\n";
    for (uint32_t ui = 0; ui < Threads; ++ui)
        text += "own" + std::to_string(ui) + ": {x: {y: " + std::to_string(ui) + "}, z: 1}\n";
    YamlHandle *pstHandle = Load(text, "shared");
    Together([&](uint32_t ui) {
        for (uint32_t uiRound = 0; uiRound < Rounds; ++uiRound) {
            std::string keys;
            YamlKeyValue stPair = {};
            YamlIterator *pstIter = yaml_IteratorCreate(pstHandle, "common.list");
            while (yaml_NextKeyValueGet(pstIter, &stPair) == YAML_OK)
                keys += stPair.pcKey;
            yaml_IteratorDestroy(pstIter);
            EXPECT_EQ(keys, "ab");
            EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "own%u.x.y", ui), std::to_string(ui).c_str());
            EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "common.text"), "t");
            EXPECT_STREQ(ZRYAML_ValueTextGet(ZRYAML_PathFind(pstHandle, "own0.z")), "1");
        }
    });

    YamlDebugInfo stInfo = {};
    EXPECT_EQ(ZRYAML_DebugInfoGet(pstHandle, &stInfo), YAML_OK);
    EXPECT_EQ(stInfo.uiQueryCount, 2 * Threads * Rounds); // texts by key path, and no others, are timed
    EXPECT_GE(stInfo.uiQueryTimeAvg, 1U);
    std::string unread;
    for (YamlUnreadKey stKey = {}; ZRYAML_UnreadKeyNext(pstHandle, &stKey) == YAML_OK;)
        unread += stKey.acPath + std::string(" ");
    EXPECT_EQ(unread, "unread own1.z own2.z own3.z own4.z own5.z own6.z own7.z ");
    ZRYAML_HandleFree(pstHandle);
    ZRYAML_DebugSwitchSet(0);
}
