// SPDX-License-Identifier: Apache-2.0
// Threads that read a watch's documents while its files change in every way. Each version says the same number in two
// files of one folder, so that a reader sees at once if it got half of one and half of another. Run with the thread
// sanitizer as well; ZRYAML_WATCH_CHANGES sets the number of changes.
#include <zr_base.h>
#include <zr_yaml_watch.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;

constexpr uint32_t Readers = 3, Usual = 300;

struct Files { // root/way/data is a link to the folder of a version
    Files()
    {
        EXPECT_NE(mkdtemp(root.data()), nullptr);
        fs::create_directory(root + "/way");
    }
    ~Files() { fs::remove_all(root); }
    Files(const Files &) = delete;
    Files &operator=(const Files &) = delete;

    void Write(const std::string &name, uint64_t version) const
    {
        std::ofstream(root + '/' + name) << "n: {v: " << version << "}\n";
    }
    void Swap(uint64_t version) const
    {
        const std::string name = root + "/way/" + std::to_string(version);
        fs::create_directory(name);
        std::ofstream(name + "/a.yaml") << "a: " << version << "\n" << std::string(version % 50, '#') << "\n";
        std::ofstream(name + "/b.yaml") << "b: " << version;
        fs::create_directory_symlink(std::to_string(version), root + "/way/new");
        const std::string old = fs::exists(root + "/way/data") ? fs::read_symlink(root + "/way/data").string() : "none";
        fs::rename(root + "/way/new", root + "/way/data");
        fs::remove_all(root + "/way/" + old);
    }
    // What happens beside the new version.
    void Disturb(uint64_t version) const
    {
        switch (version % 6) {
        case 0:
            return Write("extra.yaml", version);
        case 1:
            return void(fs::remove(root + "/extra.yaml"));
        case 2:
            return Write(".part", version), fs::rename(root + "/.part", root + "/extra.yaml");
        case 3:
            return fs::rename(root + "/way", root + "/away"), fs::rename(root + "/away", root + "/way");
        case 4:
            return void(std::ofstream(root + "/extra.yaml") << "n: [");
        default:
            return Write("unrelated", version);
        }
    }

    std::string root = "/tmp/zryaml_threads_XXXXXX";
};

uint64_t NumberAt(YamlHandle *pstHandle, const char *pcPath)
{
    uint64_t ulNumber = 0;
    EXPECT_EQ(ZRYAML_UintGet(pstHandle, &ulNumber, "%s", pcPath), YAML_OK) << pcPath;
    return ulNumber;
}

uint64_t Newest(YamlWatch *pstWatch)
{
    YamlHandle *pstHandle = ZRYAML_WatchAcquire(pstWatch);
    const uint64_t ulNumber = NumberAt(pstHandle, "a");
    ZRYAML_HandleRelease(pstHandle);
    return ulNumber;
}

void Read(YamlWatch *pstWatch, const std::atomic<bool> &bEnd)
{
    uint64_t ulLast = 0;
    for (uint64_t ulRound = 0; !bEnd; ++ulRound) {
        YamlHandle *pstHeld = ZRYAML_WatchAcquire(pstWatch);
        const uint64_t ulNumber = NumberAt(pstHeld, "a");
        if (ulRound % 1024 == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
        EXPECT_EQ(NumberAt(pstHeld, "b"), ulNumber);
        EXPECT_GE(ulNumber, ulLast);
        ulLast = ulNumber;
        ZRYAML_HandleRelease(pstHeld);
    }
}

uint32_t PollOnce(YamlWatch *pstWatch, int iTime)
{
    struct pollfd stPoll = {ZRYAML_WatchFdGet(pstWatch), POLLIN, 0};
    (void)poll(&stPoll, 1, iTime);
    return ZRYAML_WatchPoll(pstWatch, nullptr);
}

size_t Descriptors()
{
    return static_cast<size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

uint64_t ResidentPages()
{
    uint64_t ulAll = 0, ulResident = 0;
    std::ifstream("/proc/self/statm") >> ulAll >> ulResident;
    return ulResident;
}

TEST(WatchThreads, NeverSeeHalfAVersionAndGetTheLast)
{
    const char *pcChanges = getenv("ZRYAML_WATCH_CHANGES");
    const uint64_t ulChanges = pcChanges != nullptr ? strtoull(pcChanges, nullptr, 10) : Usual;
    ZR_LogLevelSet(ZR_LOG_NOTHING);
    const size_t ulDescriptors = Descriptors();
    const Files files;
    files.Swap(1);
    const std::string folder = files.root + "/way/data", extra = files.root + "/extra.yaml";
    const YamlLayer layers[] = {{YAML_LAYER_FOLDER, 0, folder.c_str(), nullptr, 0, nullptr},
                                {YAML_LAYER_FILE_OPTIONAL, 0, extra.c_str(), nullptr, 0, nullptr}};
    YamlWatchOptions stOptions = YAML_WATCH_OPTIONS_INIT;
    stOptions.uiSettle = 1;
    YamlWatch *pstWatch = ZRYAML_WatchOpen(layers, 2, &stOptions, nullptr);
    ASSERT_NE(pstWatch, nullptr);
    [[maybe_unused]] uint64_t ulWarm = 0;
    {
        std::atomic<bool> bEnd = false;
        std::jthread threads[Readers];
        for (std::jthread &thread : threads)
            thread = std::jthread([&] { Read(pstWatch, bEnd); });
        for (uint64_t ulVersion = 2; ulVersion <= ulChanges; ++ulVersion) {
            files.Disturb(ulVersion);
            files.Swap(ulVersion);
            for (uint32_t ui = 0; ui <= ulVersion % 3; ++ui)
                (void)PollOnce(pstWatch, 3);
            if (ulVersion == ulChanges / 4)
                ulWarm = ResidentPages();
        }
        fs::remove(extra);
        for (uint32_t ui = 0; ui < 1000 && Newest(pstWatch) != ulChanges; ++ui)
            (void)PollOnce(pstWatch, 100);
        bEnd = true;
    }
    EXPECT_EQ(Newest(pstWatch), ulChanges);
#ifndef __SANITIZE_ADDRESS__                   // which keeps what was freed
    EXPECT_LE(ResidentPages(), ulWarm + 2048); // 8 MiB: the thread sanitizer takes some for itself
#endif
    ZRYAML_WatchClose(pstWatch);
    ZR_MemInfo stInfo = {};
    EXPECT_EQ(ZR_MemInfoGet(yaml_MemHandleGet(), &stInfo), 0U);
    EXPECT_EQ(stInfo.ulBlocksInUse + stInfo.ulBytesInUse, 0U);
    EXPECT_EQ(Descriptors(), ulDescriptors);
}

} // namespace
