// SPDX-License-Identifier: Apache-2.0
// Memory that runs out: every single allocation of a load, and of making an iterator, fails once. Nothing may be left
// behind, the cause is in the log, and the next try works.
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

std::string Keys(const char *pcPrefix, int iCount)
{
    std::string text;
    for (int i = 0; i < iCount; ++i)
        text += pcPrefix + std::to_string(i) + ": " + std::to_string(i) + "\n";
    return text;
}

std::string ManyAnchors()
{
    std::string text;
    for (int i = 0; i < 70; ++i)
        text += "- &n" + std::to_string(i) + " [*a]\n";
    return "- &a x\n" + text + "- [*n0, *n69]\n";
}

// Between them, the documents use everything that takes memory.
const std::string g_astDocument[] = {
    "",
    "[a, [], {}, [b, {c: d, e: [{}]}]]",
    "a: &x 1\nb: &y [2, {c: *x}]\n&k d: *y\ne: [*k, *y, *x]\n",
    "b: &b {x: 1, y: [1, {z: 2}], z: {u: v}}\nm: {a: 0, <<: *b, w: 1}\nn: {<<: *b}\no: {y: 5, <<: *b}\n",
    "b: &b {x: 1, y: [1, {z: 2}], z: {u: v}}\nm: &m {<<: *b, x: [3], y: {q: 4}, z: *b}\nn: {k: *m, <<: *m}\n",
    "s: &s [{x: 1, y: 2}, {}, {z: [3, {w: 4}]}, {x: 5}]\nm: {<<: *s}\nn: {a: 1, <<: *s, z: 2}\n",
    "b: &b {x: 1}\nm: {&k <<: *b, x: &v 2, &l z: *b}\nn: [*v, *l]\n",
    "b: &b\n  <<: plain\n  x: 1\nm: {<<: *b, <<: *b}\n",
    Keys("k", 20),
    Keys("k", 120),
    "b: &b {" + std::string("x: 1, y: 2}\n") + "<<: *b\n" + Keys("k", 40) + "x: 3\n",
    "- &b\n  {a: 1, b: 2, c: 3, d: 4, e: 5, f: 6, g: 7, h: 8, i: 9, j: 10, k: 11, l: 12, m: 13, n: 14, o: 15, p: 16,"
    " q: 17, r: 18}\n- {z: 0, <<: *b, b: 1, y: [2]}\n- {<<: *b, <<: *b, r: *b}\n",
    ManyAnchors(),
};

size_t OpenFiles()
{
    const std::filesystem::directory_iterator stFiles("/proc/self/fd");
    return static_cast<size_t>(std::distance(begin(stFiles), end(stFiles)));
}

bool LogHasNoMemory()
{
    return std::any_of(Base().log.begin(), Base().log.end(), [](const LogRecord &stRecord) {
        return stRecord.uiLevel == 2 && stRecord.uiCode == YAML_ERR_NOMEM;
    });
}

struct AllocationFailure : testing::Test {
    void SetUp() override { Base().Reset(); }
    void TearDown() override
    {
        ZRYAML_DebugSwitchSet(0);
        Base().Reset();
    }
};

// Loads a file that must load; returns its tree and the number of allocations.
std::string GoodLoad(const char *pcPath, uint64_t &ulAllocations)
{
    Base().Reset();
    YamlHandle *pstHandle = ZRYAML_FileLoad(pcPath);
    ulAllocations = Base().ulAllocations;
    if (pstHandle == nullptr)
        return "refused: " + Base().LogText();
    const std::string text = TreeCheck(*pstHandle) + TreeText(*pstHandle);
    ZRYAML_HandleFree(pstHandle);
    return text;
}

void EachFails(const std::string &document)
{
    const TempFile stFile(document);
    uint64_t ulAllocations = 0;
    uint64_t ulAgain = 0;
    const std::string text = GoodLoad(stFile.Path(), ulAllocations);
    ASSERT_EQ(text.rfind("refused", 0), std::string::npos) << text;
    ASSERT_GT(ulAllocations, 0U);
    const size_t ulFiles = OpenFiles();
    for (uint64_t ul = 1; ul <= ulAllocations; ++ul) {
        SCOPED_TRACE(ul);
        Base().Reset();
        Base().ulFailAllocation = ul;
        YamlHandle *pstHandle = ZRYAML_FileLoad(stFile.Path());
        EXPECT_EQ(pstHandle, nullptr);
        EXPECT_TRUE(LogHasNoMemory()) << Base().LogText();
        EXPECT_EQ(Base().log.back().text, ul == 1 ? "Failed to allocate memory for handle." : "Parse file failed.");
        ZRYAML_HandleFree(pstHandle);
        EXPECT_EQ(Base().lBlocks, 0);
        EXPECT_EQ(OpenFiles(), ulFiles);
        EXPECT_EQ(GoodLoad(stFile.Path(), ulAgain), text);
        EXPECT_EQ(ulAgain, ulAllocations);
    }
}

} // namespace

TEST_F(AllocationFailure, EndsALoadCleanly)
{
    for (const uint32_t uiSwitch : {0U, 1U}) {
        ZRYAML_DebugSwitchSet(uiSwitch);
        for (const std::string &document : g_astDocument) {
            SCOPED_TRACE(document);
            EachFails(document);
        }
    }
    EXPECT_EQ(Base().lBlocks, 0);
}

TEST_F(AllocationFailure, EndsAnIteratorCleanly)
{
    YamlHandle *pstHandle = TextFileLoad("m: {a: 1}\ns: [{b: 2}]");
    ASSERT_NE(pstHandle, nullptr);
    const int64_t lBlocks = Base().lBlocks;
    for (const char *pcKey : {"m", "s"}) {
        Base().Reset();
        YamlIterator *pstIterator = yaml_IteratorCreate(pstHandle, "%s", pcKey);
        ASSERT_NE(pstIterator, nullptr);
        const uint64_t ulAllocations = Base().ulAllocations;
        yaml_IteratorDestroy(pstIterator);
        ASSERT_GT(ulAllocations, 0U);
        for (uint64_t ul = 1; ul <= ulAllocations; ++ul) {
            Base().Reset();
            Base().ulFailAllocation = ul;
            EXPECT_EQ(yaml_IteratorCreate(pstHandle, "%s", pcKey), nullptr);
            EXPECT_TRUE(LogHasNoMemory()) << Base().LogText();
            EXPECT_EQ(Base().lBlocks, lBlocks);
        }
        YamlKeyValue stPair = {};
        pstIterator = yaml_IteratorCreate(pstHandle, "%s", pcKey);
        ASSERT_NE(pstIterator, nullptr);
        EXPECT_EQ(yaml_NextKeyValueGet(pstIterator, &stPair), YAML_OK);
        yaml_IteratorDestroy(pstIterator);
    }
    ZRYAML_HandleFree(pstHandle);
    EXPECT_EQ(Base().lBlocks, 0);
}
