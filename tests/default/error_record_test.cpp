// SPDX-License-Identifier: Apache-2.0
// The error record of a call whose log sink uses the library as well.
#include <zr_base.h>
#include <zr_yaml.h>

#include <gtest/gtest.h>

#include <tuple>

namespace {

struct Seen {
    uint32_t uiBefore, uiLoad, uiOwn; // codes: of the call that logs, and of two calls of the sink
};

void ReadingSink(const ZR_LogRecord *, void *pContext)
{
    auto &stSeen = *static_cast<Seen *>(pContext);
    stSeen.uiBefore = ZRYAML_LastErrorGet()->uiCode;
    YamlHandle *pstHandle = ZRYAML_TextLoad("a: 1", 4, "sink");
    stSeen.uiLoad = ZRYAML_LastErrorGet()->uiCode;
    (void)ZRYAML_PropertyGet(pstHandle, "no");
    stSeen.uiOwn = ZRYAML_LastErrorGet()->uiCode;
    ZRYAML_HandleFree(pstHandle);
}

TEST(ErrorRecord, OutlivesWhatASinkDoes)
{
    YamlHandle *pstHandle = ZRYAML_TextLoad("a: 1", 4, "");
    Seen stSeen = {};
    ASSERT_EQ(ZR_LogSinkSet(ReadingSink, &stSeen), 0U);
    for (const bool bFirst : {true, false}) { // of the thread: there are no texts yet
        const auto Told = [&stSeen] {
            const YamlErrorInfo &st = *ZRYAML_LastErrorGet();
            return std::tuple(st.uiCode, st.uiLine, st.uiFirstLine, std::string(st.pcMessage), std::string(st.pcFile),
                              stSeen.uiLoad, stSeen.uiOwn);
        };
        EXPECT_EQ(ZRYAML_TextLoad("a: 1\na: 2", 9, "doc"), nullptr);
        EXPECT_EQ(Told(), std::tuple(YAML_ERR_SAME, 2U, 1U, "the key 'a' stands twice in one map", "doc", YAML_OK,
                                     YAML_ERR_NOT_FOUND))
            << bFirst;
        EXPECT_EQ(stSeen.uiBefore, YAML_ERR_SAME);
        EXPECT_EQ(ZRYAML_TextLoad("a: [", 4, ""), nullptr);
        EXPECT_EQ(std::get<3>(Told()), "the '[' that opens here is not closed");
        EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "a"), "1");
        EXPECT_EQ(ZRYAML_LastErrorGet()->uiCode, YAML_OK);
    }
    EXPECT_EQ(ZR_LogSinkSet(nullptr, nullptr), 0U);
    ZRYAML_HandleFree(pstHandle);
}

} // namespace
