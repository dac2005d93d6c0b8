// SPDX-License-Identifier: Apache-2.0
// Memory that runs out: every single allocation of a load, and of making an iterator, fails once. Nothing may be left
// behind, the cause is in the log, and the next try works.
#include "support/load_text.h"
#include "support/recording_base.h"

#include <gtest/gtest.h>

namespace {

#define BASE "b: &b {x: 1, y: [1, {z: 2}], z: {u: v}}\n"

// Between them, the documents use everything that takes memory.
const std::string g_astDocument[] = {
    "",
    "[a, [], {}, [b, {c: d, e: [{}]}]]",
    "a: &x 1\nb: &y [2, {c: *x}]\n&k d: *y\ne: [*k, *y, *x]\n",
    BASE "m: {a: 0, <<: *b, w: 1}\nn: {<<: *b}\no: {y: 5, <<: *b}\n",
    BASE "m: &m {<<: *b, x: [3], y: {q: 4}, z: *b}\nn: {k: *m, <<: *m}\n",
    "s: &s [{x: 1, y: 2}, {}, {z: [3, {w: 4}]}, {x: 5}]\nm: {<<: *s}\nn: {a: 1, <<: *s, z: 2}\n",
    "b: &b {x: 1}\nm: {&k <<: *b, x: &v 2, &l z: *b}\nn: [*v, *l]\n",
    "b: &b\n  <<: plain\n  x: 1\nm: {<<: *b, <<: *b}\n",
    Numbered(120, "k", ": 1\n"),                                            // an index of keys that grows
    "b: &b {x: 1, y: 2}\n<<: *b\n" + Numbered(40, "k", ": 1\n") + "x: 3\n", // one that holds merged keys
    "- &b {" + Numbered(18, "k", ": 1,") +
        "}\n- {z: 0, <<: *b, k1: 1, y: [2]}\n" // one that a merge makes
        "- {<<: *b, <<: *b, r: *b}\n",
    "- &a x\n" + Numbered(70, "- &n", " [*a]\n") + "- [*n0, *n69]\n", // an index of anchors that grows
};

struct AllocationFailure : testing::Test {
    void SetUp() override { Base().Reset(); }
    void TearDown() override
    {
        ZRYAML_DebugSwitchSet(0);
        Base().Reset();
    }
};

bool LogHasNoMemory()
{
    return Base().LogText().find("2 c ") != std::string::npos;
}

void EachFails(const std::string &document)
{
    const TempFile stFile(document);
    Base().Reset();
    const std::string text = FileRead(stFile.Path());
    const uint64_t ulAllocations = Base().ulAllocations;
    ASSERT_EQ(text.find("Parse file failed."), std::string::npos) << text;
    ASSERT_GT(ulAllocations, 0U);
    for (uint64_t ul = 1; ul <= ulAllocations; ++ul) {
        SCOPED_TRACE(ul);
        Base().Reset();
        Base().ulFailAllocation = ul;
        const std::string failed = FileRead(stFile.Path());
        EXPECT_EQ(failed, Base().LogText()); // neither a tree nor anything left
        EXPECT_TRUE(LogHasNoMemory()) << Base().LogText();
        EXPECT_EQ(Base().log.back().text, ul == 1 ? "Failed to allocate memory for handle." : "Parse file failed.");
        Base().Reset();
        EXPECT_EQ(FileRead(stFile.Path()), text);
        EXPECT_EQ(Base().ulAllocations, ulAllocations);
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
}

TEST_F(AllocationFailure, EndsAnIteratorCleanly)
{
    YamlHandle *pstHandle = TextFileLoad("m: {a: 1}\ns: [{b: 2}]");
    ASSERT_NE(pstHandle, nullptr);
    const int64_t lBlocks = Base().lBlocks;
    for (const char *pcKey : {"m", "s"}) {
        YamlIterator *pstIterator = nullptr;
        uint64_t ulFailed = 0;
        for (; pstIterator == nullptr && ulFailed < 10; ++ulFailed) {
            EXPECT_EQ(Base().lBlocks, lBlocks);
            Base().Reset();
            Base().ulFailAllocation = ulFailed + 1;
            pstIterator = yaml_IteratorCreate(pstHandle, "%s", pcKey);
            EXPECT_EQ(LogHasNoMemory(), pstIterator == nullptr) << Base().LogText();
        }
        EXPECT_GT(ulFailed, 1U); // at least one try has failed, the last one has not
        YamlKeyValue stPair = {};
        ASSERT_NE(pstIterator, nullptr);
        EXPECT_EQ(yaml_NextKeyValueGet(pstIterator, &stPair), YAML_OK);
        yaml_IteratorDestroy(pstIterator);
    }
    ZRYAML_HandleFree(pstHandle);
    EXPECT_EQ(Base().lBlocks, 0);
}
