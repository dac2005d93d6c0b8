// SPDX-License-Identifier: Apache-2.0
// What programs hand to the public calls: formats with arguments, names, and iterators that nobody made.
#include "support/load_text.h"

#include <gtest/gtest.h>

namespace {

struct Argument : Recorded {
    ~Argument() override { ZRYAML_HandleFree(pstHandle); }
    YamlHandle *pstHandle = ZRYAML_TextLoad("a: {b: x, c: [p, q]}", 20, nullptr);
};

} // namespace

TEST_F(Argument, OfFormats)
{
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "%c.%s[%u]", 'a', "c", 1U), "q");
    const wchar_t acNone[] = {wchar_t{0x110000}, 0};                             // no character, so there is no path
    char *(*const pfnGet)(YamlHandle *, const char *, ...) = ZRYAML_PropertyGet; // the format is not checked here
    EXPECT_EQ(pfnGet(pstHandle, "%ls", acNone), nullptr);
    EXPECT_STREQ(ZRYAML_LastErrorGet()->pcKeyPath, "%ls");
    Base().bSecureCallsFail = true; // is noted, and the text is there
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "{a}.{b}"), "x");
    EXPECT_EQ(Base().LogText(), "2 19000005 The input key is too long to format.\n"
                                "1 16 Secure check fail.\n1 16 Secure check fail.\n");
}

TEST_F(Argument, NoTextIsAnEmptyDocumentWithoutAName)
{
    EXPECT_STREQ(ZRYAML_NameGet(pstHandle), "");
    ZRYAML_HandleFree(std::exchange(pstHandle, ZRYAML_TextLoad(nullptr, 0, "none")));
    EXPECT_STREQ(ZRYAML_NameGet(pstHandle), "none");
}

TEST_F(Argument, IteratorsMayBeForeignOrOutliveTheDocument)
{
    char acKept[] = "kept";
    YamlKeyValue stPair = {acKept, acKept};
    YamlIterator astForeign[] = {{0x123456FE, YAML_DATATYPE_MAP, nullptr, nullptr},
                                 {YAML_NODE_MAGIC, YAML_DATATYPE_SCALAR, nullptr, &pstHandle->stRoot}};
    for (YamlIterator &stForeign : astForeign)
        EXPECT_EQ(yaml_NextKeyValueGet(&stForeign, &stPair), YAML_ERR_PARAM);
    EXPECT_TRUE(stPair.pcKey == acKept && stPair.pcValue == acKept);
    yaml_IteratorDestroy(&astForeign[0]);

    ZRYAML_DebugSwitchSet(1);
    YamlIterator *pstIter = yaml_IteratorCreate(pstHandle, "a");
    EXPECT_EQ(pstHandle->uiQueryCount + pstHandle->uiMemSize, 0U); // neither counted nor timed
    ZRYAML_HandleFree(std::exchange(pstHandle, nullptr));
    yaml_IteratorDestroy(pstIter);
}
